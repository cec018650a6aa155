#include "analysis/fitter.h"

#include <QTest>

#include <cmath>
#include <functional>

using analysis::Fitter;

namespace
{

constexpr double kFewUlps = 1e-14; // room for some tens of roundings

/// Residuals of the straight line y = slope x through one point at x = 1.
class LineProblem final : public fit::Problem
{
public:
    double observed = 0;
    int logMode = 0;
    int pointCount() const override { return 1; }
    double residual(int, const fit::Parameters& a) override { return slope(a) - observed; }
    double slope(const fit::Parameters& a) const { return logMode == 1 ? std::exp(a[1]) : a[1]; }
};

class LineFitter final : public Fitter, public fit::Observer
{
public:
    LineFitter() : Fitter(false) {}
    void observe(double y) { m_problem->observed = y; }
    fit::Ending fitNow() { return run(*this); }

    std::function<void()> atFirstEvent;

private:
    void letEventsRun() override
    {
        if (atFirstEvent)
            std::exchange(atFirstEvent, nullptr)();
    }
    bool keepGoing(double) override { return true; }
    std::shared_ptr<fit::Problem> problem() override
    {
        m_problem->logMode = logMode();
        return m_problem;
    }
    fit::Statistics statistics() override
    {
        const double residual = m_problem->slope(parameters()) - m_problem->observed;
        return {.R2 = 1, .residualSum = residual * residual};
    }
    void detach() override { m_problem = std::make_shared<LineProblem>(*m_problem); }
    void adopt(std::shared_ptr<fit::Problem> problem) override
    {
        m_problem = std::static_pointer_cast<LineProblem>(problem);
    }

    std::shared_ptr<LineProblem> m_problem = std::make_shared<LineProblem>();
};

} // namespace

class TestFitter : public QObject
{
    Q_OBJECT

private slots:
    void holdsLogarithmsInLogMode();
    void forcesAboveZeroOffInLogMode();
    void handsOutEachModelsConstants_data();
    void handsOutEachModelsConstants();
    void keepsToItsOwnConfigurationWhileAnotherRunPasses();
};

void TestFitter::holdsLogarithmsInLogMode()
{
    LineFitter fitter;
    fitter.setInitialParameter(3, 1, 2, 3);
    fitter.setLogMode(1);
    fitter.setInitialParameter(2, 1e7, 0, -5);
    QCOMPARE(fitter.parameters(), (fit::Parameters{0, std::log(1e7), 2, 3}));
}

void TestFitter::forcesAboveZeroOffInLogMode()
{
    LineFitter fitter;
    fitter.setAboveZero(1, 0, 1);
    QCOMPARE(fitter.options().aboveZero, (fit::Flags{0, 1, 0, 1}));
    fitter.setLogMode(1);
    fitter.setAboveZero(1, 0, 1);
    QCOMPARE(fitter.options().aboveZero, fit::Flags{});
}

void TestFitter::handsOutEachModelsConstants_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<QList<double>>("constants"); // K, F, kq1, kq2, kq22 of the parameters 2, 3, 4

    QTest::newRow("dynamic") << 1 << QList<double>{0, 0, 0, 2, 0};
    QTest::newRow("one-step, all") << 2 << QList<double>{2, 0, 3, 4, 0};
    QTest::newRow("one-step, no complex rate") << 3 << QList<double>{2, 0, 0, 3, 0};
    QTest::newRow("one-step, complex rate only") << 4 << QList<double>{2, 0, 3, 0, 0};
    QTest::newRow("static") << 5 << QList<double>{2, 0, 0, 0, 0};
    QTest::newRow("two sites") << 12 << QList<double>{0, 2, 0, 3, 4};
    QTest::newRow("two sites, one quenched") << 13 << QList<double>{0, 2, 0, 3, 0};
}

void TestFitter::handsOutEachModelsConstants()
{
    QFETCH(int, model);
    LineFitter fitter;
    fitter.setModel(model);
    fitter.setInitialParameter(3, 2, 3, 4);
    fitter.getResults();
    const QList<double> handedOut{fitter.getK(), fitter.getF(), fitter.getkq1(), fitter.getkq2(), fitter.getkq22()};
    QTEST(handedOut, "constants");
}

void TestFitter::keepsToItsOwnConfigurationWhileAnotherRunPasses()
{
    LineFitter fitter;
    const auto configure = [&fitter](int model, double observed) {
        fitter.setLogMode(0);
        fitter.setModel(model);
        fitter.setInitialParameter(1, 1, 0, 0);
        fitter.setIteration(3);
        fitter.observe(observed);
    };
    double inner = 0;
    fitter.atFirstEvent = [&] {
        configure(13, 7);
        fitter.fitNow();
        inner = fitter.parameters()[1];
    };
    configure(1, 5);
    fitter.fitNow();

    QVERIFY(std::abs(inner - 7) < kFewUlps * 7);
    QVERIFY(std::abs(fitter.parameters()[1] - 5) < kFewUlps * 5);
    QCOMPARE(fitter.model(), 1);
    QVERIFY(fitter.getXaisqr() < kFewUlps);
}

QTEST_APPLESS_MAIN(TestFitter)
#include "tst_fitter.moc"
