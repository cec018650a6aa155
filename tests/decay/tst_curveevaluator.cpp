#include "bench/jobs.h"
#include "bench/literallaws.h"
#include "decay/decayproblem.h"
#include "fit/report.h"
#include "tests/support/decaysessions.h"
#include "tests/support/fitrun.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <random>

using namespace decay;
using support::engineParameters;
using support::scaled;
using support::Values;

namespace
{
constexpr double kSameValue = 1e-13;      // relative: room for some hundreds of roundings
constexpr double kDeepestExponent = 50.0; // beyond exp(-50) the rounding of the exponent itself is larger than that

/// What a fit leaves for the user: how it ended, and its report.
QByteArray printed(fit::Problem& problem, const SampleTable& table, int model, int logMode, const Values& start)
{
    const support::FitRun run = support::runFit(problem, logMode, start, support::kPanelRule);
    std::vector<fit::ReportLine> lines;
    for (double value : run.values)
        lines.push_back({"p :", value});
    DecayProblem curves(table, model, logMode, support::kProbe);
    const std::string report = fit::reportText({.model = model,
                                                .parameters = lines,
                                                .iterations = run.outcome.iterations,
                                                .statistics = curves.statistics(run.outcome.parameters),
                                                .status = static_cast<int>(run.outcome.status)});
    return "ending " + QByteArray::number(static_cast<int>(run.outcome.ending)) + " " +
           QByteArray::fromStdString(report).replace("\r\n", "; ");
}

/// The formulas as written, rounded differently: every value is moved by up to a unit in the last place.
class RoundedFormulas final : public fit::Problem
{
public:
    RoundedFormulas(literal::DecayProblem& formulas, unsigned seed) : m_formulas(formulas), m_random(seed) {}
    int pointCount() const override { return m_formulas.pointCount(); }
    double residual(int point, const fit::Parameters& a) override
    {
        const double unit = std::numeric_limits<double>::epsilon();
        return m_formulas.residual(point, a) +
               m_formulas.value(point, a) * unit * (static_cast<int>(m_random() % 3) - 1);
    }

private:
    literal::DecayProblem& m_formulas;
    std::minstd_rand m_random;
};

/// What the formulas as written print, or nothing where the data leave so much open that another rounding of the same
/// formulas prints something else: there no two ways of calculating agree.
std::optional<QByteArray> printedByFormulas(const SampleTable& table, int model, int logMode, const Values& start)
{
    literal::DecayProblem formulas(table, model, logMode, support::kProbe);
    const QByteArray expected = printed(formulas, table, model, logMode, start);
    for (unsigned seed : {1u, 2u}) {
        RoundedFormulas rounded(formulas, seed);
        if (printed(rounded, table, model, logMode, start) != expected)
            return std::nullopt;
    }
    return expected;
}

/// Values in the fitting order of a model.
Values parametersOf(int model, double K, double kq1, double kq2)
{
    if (model == 1)
        return {kq2};
    if (model >= 12)
        return model % 2 == 0 ? Values{K, kq1, kq2} : Values{K, kq1};
    if (model == 3 || model == 7)
        return {K, kq2};
    return model == 4 || model == 8 || model == 11 ? Values{K, kq1} : Values{K, kq1, kq2};
}

} // namespace

class TestCurveEvaluator : public QObject
{
    Q_OBJECT
private slots:
    void agreesWithTheFormulas_data();
    void agreesWithTheFormulas();
    void printsWhatTheFormulasPrint_data();
    void printsWhatTheFormulasPrint();
    void fitsTheTimedJobsAsTheFormulasDo();
    void staysFiniteWhereTheFormulasDo();
};

void TestCurveEvaluator::agreesWithTheFormulas_data()
{
    QTest::addColumn<Reference>("reference");
    QTest::addColumn<bool>("evenGrid");
    QTest::newRow("one component") << support::kPyrene << true;
    QTest::newRow("two components") << support::kRuRe << true;
    QTest::newRow("three components") << support::kAlbumin << true;
    QTest::newRow("three components, uneven grid") << support::kAlbumin << false;
}

void TestCurveEvaluator::agreesWithTheFormulas()
{
    QFETCH(Reference, reference);
    QFETCH(bool, evenGrid);
    SampleTable table =
        support::tableFrom(support::simulatedSession(1, reference, 0, {0, 1e8}, support::kWideRange), 1);
    if (!evenGrid)
        for (double& t : table.SampleData[1].T)
            t *= t / table.TimeMax;
    const SampleRecord& first = table.SampleData[1];
    int compared = 0;
    double largest = 0;
    for (int model : {1, 2, 3, 4, 6, 7, 8, 10, 11, 12, 13, 14, 15})
        for (double K : {0.1, 5.0, 40.0, 700.0})
            for (double kq : {1e5, 1e7, 1e9}) {
                const fit::Parameters a = engineParameters(parametersOf(model, K, kq, 10 * kq));
                DecayProblem problem(table, model, 0, support::kProbe);
                problem.CalcFity(a);
                for (std::size_t s = 1; s <= support::kWideRange.size(); ++s)
                    for (std::size_t i = 0; i < 50; ++i) {
                        const SampleRecord& sample = problem.samples().SampleData[s];
                        const double law =
                            literal::decayIntensity(model, first.T[i], sample.Conc, first, support::kProbe, a);
                        if (law < std::exp(-kDeepestExponent))
                            continue;
                        largest = std::max(largest, std::abs(sample.IFit[i] / law - 1));
                        ++compared;
                    }
            }
    QVERIFY2(compared > 5000 && largest < kSameValue,
             qPrintable(QString("%1 in %2 values").arg(largest).arg(compared)));
}

void TestCurveEvaluator::printsWhatTheFormulasPrint_data()
{
    QTest::addColumn<int>("ownModel"); // the law of the data
    QTest::addColumn<SampleTable>("table");
    QTest::addColumn<double>("K");
    QTest::addColumn<double>("kq1");
    QTest::addColumn<double>("kq2");
    const auto row = [](const char* name, int model, const Reference& reference, const Values& range, double K,
                        double kq1, double kq2) {
        const fit::Parameters p = engineParameters(parametersOf(model, K, kq1, kq2));
        QTest::newRow(name) << model
                            << support::tableFrom(
                                   support::simulatedSession(model, reference, support::kProbe, p, range))
                            << K << kq1 << kq2;
    };
    for (int region : {1, 2})
        QTest::addRow("acridone, fit region %d", region)
            << 1 << support::tableFrom(support::kAcridoneSheet, region) << 1.0 << 1e8 << 5e9;
    row("two exponentials", 1, support::kRuRe, support::kWideRange, 10, 1e6, 1.8e7);
    row("three exponentials", 1, support::kAlbumin, support::kWideRange, 10, 1e8, 1.6e9);
    row("complex and dynamic", 2, support::kPyrene, support::kMicelleRange, 1290, 5.9e6, 1e9);
    row("dark complex", 3, support::kPyrene, support::kMicelleRange, 1290, 5.9e6, 1e9);
    row("complex", 4, support::kPyrene, support::kMicelleRange, 1290, 5.9e6, 1e9);
    row("sphere and dynamic", 6, support::kPyrene, support::kMicelleRange, 600, 5.9e6, 1e9);
    row("dark sphere", 7, support::kPyrene, support::kMicelleRange, 300, 5.9e6, 1e9);
    row("sphere", 8, support::kPyrene, support::kMicelleRange, 1290, 5.9e6, 1e9);
    row("micelles and dynamic", 10, support::kPyrene, support::kMicelleRange, 1290, 5.9e6, 1e9);
    row("micelles", 11, support::kPyrene, support::kMicelleRange, 1290, 5.9e6, 1e9);
    row("two sites", 12, support::kPyrene, support::kMicelleRange, 0.6, 8e9, 1e9);
    row("one of two sites", 13, support::kPyrene, support::kMicelleRange, 0.6, 8e9, 1e9);
}

void TestCurveEvaluator::printsWhatTheFormulasPrint()
{
    QFETCH(int, ownModel);
    QFETCH(SampleTable, table);
    QFETCH(double, K);
    QFETCH(double, kq1);
    QFETCH(double, kq2);
    constexpr int kEnough = 10; // of 26 fits: a law that is foreign to the data leaves its parameters open
    int determined = 0;
    for (int model : {1, 2, 3, 4, 6, 7, 8, 10, 11, 12, 13, 14, 15})
        for (int logMode : {0, 1}) {
            const Values start = scaled(parametersOf(model, K, kq1, kq2), 0.8);
            const std::optional<QByteArray> expected = printedByFormulas(table, model, logMode, start);
            QVERIFY2(expected || model != ownModel, "the data do not determine their own law");
            if (!expected)
                continue;
            ++determined;
            DecayProblem problem(table, model, logMode, support::kProbe);
            QCOMPARE(printed(problem, table, model, logMode, start), *expected);
        }
    QVERIFY2(determined >= kEnough, qPrintable(QString::number(determined)));
}

// Observations carry noise here, and parameters agree far beyond the printed digits.
void TestCurveEvaluator::fitsTheTimedJobsAsTheFormulasDo()
{
    bench::NoObserver observer;
    for (int number = 1; number <= bench::kDecayJobs; ++number) {
        const bench::DecayJob& job = bench::decayJob(number);
        DecayProblem problem(job.samples, job.model, 0, bench::kProbe);
        literal::DecayProblem formulas(job.samples, job.model, 0, bench::kProbe);
        const fit::Outcome fast = fit::gaussNewton(problem, job.options, job.start, observer);
        const fit::Outcome plain = fit::gaussNewton(formulas, job.options, job.start, observer);
        QCOMPARE(fast.ending, plain.ending);
        QCOMPARE(fast.status, plain.status);
        QCOMPARE(fast.iterations, plain.iterations);
        for (std::size_t j = 1; j <= static_cast<std::size_t>(job.options.parameterCount); ++j)
            QVERIFY(std::abs(fast.parameters[j] / plain.parameters[j] - 1) < 1e-10);
    }
}

// The reference has long decayed on the time scale of a sample that outlasts it: factors of the law leave the range of
// numbers where their product does not.
void TestCurveEvaluator::staysFiniteWhereTheFormulasDo()
{
    const SampleTable table = support::tableFrom({{"0", "1", "1", "1"}, {"1", "1", "1", "1000"}}, 1);
    for (const auto& [model, a] :
         {std::pair{1, fit::Parameters{0, -0.999e9}}, std::pair{8, fit::Parameters{0, 1, -0.999e9}},
          std::pair{11, fit::Parameters{0, 1e-6, -0.999e9}}}) {
        DecayProblem problem(table, model, 0, support::kProbe);
        literal::DecayProblem formulas(table, model, 0, support::kProbe);
        for (int point = 1; point <= problem.pointCount(); ++point)
            QVERIFY(std::abs(problem.residual(point, a) - formulas.residual(point, a)) < 1e-10);
    }
}

QTEST_APPLESS_MAIN(TestCurveEvaluator)
#include "tst_curveevaluator.moc"
