#include "analysis/fitter.h"
#include "analysis/messages.h"
#include "fit/realparameters.h"
#include "tests/support/callableproblem.h"

#include <QTest>

#include <cmath>
#include <functional>

namespace
{

constexpr double kFewUlps = 1e-14;

/// Fits a slope to the points (1, slope - 0.5) and (2, 2 slope + 0.25), whose deviations have no slope.
class SlopeFitter final : public analysis::Fitter
{
public:
    SlopeFitter() : Fitter(false) {}
    using Fitter::run;

    void setSlope(double slope) { m_problem->slope = slope; }
    void setStart(int count, double value) { analysis::configure(*this, {count, {0, value, value, value}, {}, {}}); }

private:
    struct Slope final : fit::Problem {
        double slope = 0;
        int logMode = 0;
        int pointCount() const override { return 2; }
        double residual(int point, const fit::Parameters& a) override
        {
            return point * (fit::realParameters(logMode, a)[1] - slope) + (point == 1 ? 0.5 : -0.25);
        }
    };

    std::shared_ptr<fit::Problem> problem() override
    {
        m_problem->logMode = logMode();
        return m_problem;
    }
    fit::Statistics statistics() override { return {.R2 = m_problem->slope / 10, .residualSum = m_problem->slope}; }
    void detach() override { m_problem = std::make_shared<Slope>(*m_problem); }
    void adopt(std::shared_ptr<fit::Problem> problem) override
    {
        m_problem = std::static_pointer_cast<Slope>(std::move(problem));
    }

    std::shared_ptr<Slope> m_problem = std::make_shared<Slope>();
};

/// Calls a function once, in the first iteration.
struct Interrupter final : support::PatientObserver {
    std::function<void()> action;
    void letEventsRun() override
    {
        if (const auto once = std::exchange(action, nullptr))
            once();
    }
};

} // namespace

class TestFitter : public QObject
{
    Q_OBJECT

private slots:
    void keepsSlotsWithoutLogarithm();
    void keepsItsOwnWhileAnotherRuns();
    void endsAsTheEngineSays_data();
    void endsAsTheEngineSays();
    void storesWhatTheModelHas_data();
    void storesWhatTheModelHas();
    void asksForNormalisedDataFirst();
};

void TestFitter::keepsSlotsWithoutLogarithm()
{
    SlopeFitter fitter;
    fitter.setInitialParameter(3, 1, 2, 3);
    fitter.setAboveZero(1, 0, 1);
    QCOMPARE(fitter.options().aboveZero, (fit::Flags{0, 1, 0, 1}));
    fitter.setLogMode(1);
    fitter.setInitialParameter(2, 1e7, 0, -5);
    fitter.setAboveZero(1, 1, 1);
    QCOMPARE(fitter.options().parameterCount, 2);
    QCOMPARE(fitter.parameters(), (fit::Parameters{0, std::log(1e7), 2, 3}));
    QCOMPARE(fitter.options().aboveZero, fit::Flags{}); // a logarithm may be negative
}

void TestFitter::keepsItsOwnWhileAnotherRuns()
{
    SlopeFitter fitter;
    fitter.setModel(1);
    fitter.setSlope(7);
    fitter.setStart(1, 1);
    Interrupter interrupter;
    interrupter.action = [&fitter] {
        fitter.setLogMode(1);
        fitter.setModel(5);
        fitter.setSlope(3);
        fitter.setStart(1, 2);
        support::PatientObserver patient;
        fitter.run(patient);
        QCOMPARE(fitter.getXaisqr(), 3.0);
        const auto run = analysis::finishedRun(fitter, {}, analysis::Kind::Fit);
        QVERIFY(std::abs(run.values[1] - 3) < 1e-3); // converges in steps in log mode
    };
    fitter.run(interrupter);
    QVERIFY(!interrupter.action);
    QVERIFY(std::abs(fitter.parameters()[1] - 7) < kFewUlps * 7);
    QVERIFY(fitter.model() == 1);
    QVERIFY(fitter.logMode() == 0);
    QVERIFY(fitter.iterations() == 2);
    QCOMPARE(fitter.getXaisqr(), 7.0);
}

void TestFitter::endsAsTheEngineSays_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("start");
    QTest::addColumn<int>("limit");
    QTest::addColumn<fit::Ending>("ending");
    QTest::addColumn<double>("iterations");
    QTest::addColumn<std::string>("error");
    // The first step finds the slope, the second finds nothing better.
    QTest::newRow("converged") << 1 << 1.0 << 100 << fit::Ending::Converged << 2.0 << std::string("OK");
    QTest::newRow("limit") << 1 << 1.0 << 0 << fit::Ending::LimitExceeded << 1.0 << std::string("not satisfied");
    QTest::newRow("no influence") << 2 << 1.0 << 100 << fit::Ending::Converged << 2.0 << std::string("*");
    QTest::newRow("no derivative") << 1 << 0.0 << 100 << fit::Ending::ArithmeticFault << 0.0 << std::string("OK");
}

void TestFitter::endsAsTheEngineSays()
{
    QFETCH(int, count);
    QFETCH(double, start);
    QFETCH(int, limit);
    SlopeFitter fitter;
    fitter.setModel(1);
    fitter.setSlope(0.3);
    fitter.setStart(count, start);
    fitter.setIteration(limit);
    support::PatientObserver patient;
    QTEST(fitter.run(patient), "ending");
    QTEST(fitter.iterations(), "iterations");
    QTEST(fitter.getError(), "error");
}

// Slots 2, 3, 4 and a probe of 0.82 nm: the radius is that of K = 2 M^-1.
void TestFitter::storesWhatTheModelHas_data()
{
    const double radius = std::cbrt(0.82 * 0.82 * 0.82 + 6 / 7.567461992);
    QTest::addColumn<int>("model");
    QTest::addColumn<app::ResultRecord>("expected");
    QTest::newRow("dynamic") << 1 << app::ResultRecord{"SV", 1, 0, 0, 2, 0, 0.09, "*", 0, 0.9};
    QTest::newRow("complex and dynamic") << 2 << app::ResultRecord{"SV", 2, 2, 3, 4, 0, 0.09, "*", 0, 0.9};
    QTest::newRow("sphere") << 9 << app::ResultRecord{"SV", 9, 2, 0, 0, 0, 0.09, "*", radius, 0.9};
    QTest::newRow("two sites") << 12 << app::ResultRecord{"SV", 12, 2, 0, 3, 4, 0.09, "*", 0, 0.9};
}

void TestFitter::storesWhatTheModelHas()
{
    QFETCH(int, model);
    QFETCH(app::ResultRecord, expected);
    SlopeFitter fitter;
    fitter.setModel(model);
    fitter.setSlope(0.9);
    fitter.setInitialParameter(3, 2, 3, 4);
    fitter.setStatus(3);
    fitter.getResults();
    for (const auto& [analysis, method] :
         {std::pair{models::Analysis::SternVolmer, "SV"}, {models::Analysis::Decay, "Decay"}}) {
        const app::ResultRecord result = analysis::resultOf(fitter, analysis, model, 0.82).value();
        QVERIFY(std::abs(result.R - expected.R) < kFewUlps);
        expected.R = result.R;
        expected.Method = method;
        QVERIFY(result == expected);
    }
    QCOMPARE(analysis::resultOf(fitter, models::Analysis::SternVolmer, model, 1e200).has_value(), expected.R == 0);
}

void TestFitter::asksForNormalisedDataFirst()
{
    QCOMPARE(analysis::decayComplaint(false, 5), "Please Normalize the data.");
    QCOMPARE(analysis::decayComplaint(true, 5), "Model 5 cannot be analyzed with decay curves.");
    QCOMPARE(analysis::decayComplaint(true, 4), std::nullopt);
}

QTEST_APPLESS_MAIN(TestFitter)
#include "tst_fitter.moc"
