#include "app/sessiontext.h"
#include "decay/curvefit.h"
#include "decay/curvesums.h"
#include "fit/report.h"
#include "tests/bench/jobs.h"
#include "tests/bench/literallaws.h"
#include "tests/support/decaysessions.h"
#include "tests/support/fitrun.h"

#include <QFile>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <random>

using namespace decay;
using support::engineParameters;
using support::scaled;
using support::Values;

namespace
{
constexpr double kSameValue = 1e-13;      // relative: room for some hundreds of roundings
constexpr double kDeepestExponent = 50.0; // beyond exp(-50) the rounding of the exponent exceeds this

struct Fit {
    fit::Options options;
    fit::Parameters start{};
};

Fit fitFrom(const Values& start, int logMode)
{
    Fit fit;
    fit.options.logMode = logMode;
    fit.options.parameterCount = static_cast<int>(start.size());
    fit.options.unitStepForZero = true;
    for (std::size_t j = 1; j <= start.size(); ++j) {
        fit.start[j] = logMode == 1 ? std::log(start[j - 1]) : start[j - 1];
        fit.options.aboveZero[j] = logMode == 1 ? 0 : 1;
    }
    return fit;
}

/// The visible result of a fit: its ending and its report.
QByteArray printed(const fit::Outcome& outcome, const Fit& fit, DecayProblem& problem)
{
    std::vector<fit::ReportLine> lines;
    const fit::Parameters real = fit::realParameters(fit.options.logMode, outcome.parameters);
    for (std::size_t j = 1; j <= static_cast<std::size_t>(fit.options.parameterCount); ++j)
        lines.push_back({"p :", real[j]});
    const std::string report = fit::reportText({.model = 0,
                                                .parameters = lines,
                                                .iterations = outcome.iterations,
                                                .statistics = problem.statistics(outcome.parameters),
                                                .status = static_cast<int>(outcome.status)});
    return "ending " + QByteArray::number(static_cast<int>(outcome.ending)) + " " +
           QByteArray::fromStdString(report).replace("\r\n", "; ");
}

/// The columns of a session that comes with the program.
support::TypedSheet shippedSheet(const char* name)
{
    QFile file(QString(VORLO_TEST_DATA "/../../samples/") + name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const auto session = app::readSession(file.readAll().toStdString(), app::Session());
    support::TypedSheet sheet;
    for (std::size_t column = 0; !session->cells[0][column].empty(); ++column) {
        sheet.emplace_back();
        for (std::size_t row = 0; row < session->cells.size(); ++row)
            sheet.back().push_back(session->cells[row][column]);
    }
    return sheet;
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
    void hasTheSameBitsInWideRegisters();
    void endsFitsAsTheFormulasDo_data();
    void endsFitsAsTheFormulasDo();
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
        support::tableFrom(support::simulatedSession(1, reference, {.p = {0, 1e8}}, support::kWideRange), 1);
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
                DecayProblem written(table, model, 0, support::kProbe), fast = written;
                fast.setEvaluation(models::Evaluation::Fast);
                written.CalcFity(a);
                fast.CalcFity(a);
                for (std::size_t s = 1; s <= support::kWideRange.size(); ++s)
                    for (std::size_t i = 0; i < 50; ++i) {
                        const double Q = written.samples().SampleData[s].Conc;
                        const double law = literal::decayIntensity({model, first, support::kProbe}, {first.T[i], Q}, a);
                        QVERIFY(written.samples().SampleData[s].IFit[i] == law); // QCOMPARE would allow for rounding
                        if (law < std::exp(-kDeepestExponent))
                            continue;
                        largest = std::max(largest, std::abs(fast.samples().SampleData[s].IFit[i] / law - 1));
                        ++compared;
                    }
            }
    QVERIFY2(compared > 5000 && largest < kSameValue,
             qPrintable(QString("%1 in %2 values").arg(largest).arg(compared)));
}

// Optimised builds choose the width at run time; the loops here are narrow in any build.
void TestCurveEvaluator::hasTheSameBitsInWideRegisters()
{
    std::mt19937 generator(7);
    std::uniform_real_distribution<double> size(0, 1);
    const auto fill = [&](auto& values) {
        std::generate(values.begin(), values.end(), [&] { return size(generator); });
    };
    const auto sameBits = [](const Grid& a, const Grid& b, std::size_t n) {
        return std::equal(a.begin(), a.begin() + n, b.begin());
    };
    for (const std::size_t n : {std::size_t{1}, std::size_t{50}, std::size_t{kGridSize}}) {
        Grid sum, first, factor;
        std::array<double, 7> weights;
        fill(sum), fill(first), fill(factor), fill(weights);
        Grid expected = sum;
        for (std::size_t i = 0; i < n; ++i) {
            double series = 0;
            for (std::size_t j = weights.size(); j-- > 0;)
                series = series * factor[i] + weights[j];
            expected[i] += first[i] * series;
            expected[i] += weights[0] * factor[i];
            expected[i] *= first[i];
        }
        addSeries(sum, n, {first, factor, weights});
        addWeighted(std::span(sum).first(n), weights[0], factor.data());
        multiply(std::span(sum).first(n), first.data());
        QVERIFY(sameBits(sum, expected, n));
    }
}

void TestCurveEvaluator::endsFitsAsTheFormulasDo_data()
{
    QTest::addColumn<SampleTable>("table");
    QTest::addColumn<double>("K");
    QTest::addColumn<double>("kq1");
    QTest::addColumn<double>("kq2");
    for (int region : {1, 2}) {
        QTest::addRow("acridone, fit region %d", region)
            << support::tableFrom(shippedSheet("acridone-iodide.vrl"), region) << 1.0 << 1e8 << 5e9;
        QTest::addRow("photocatalyst, fit region %d", region)
            << support::tableFrom(shippedSheet("ruthenium-rhenium-bnah.vrl"), region) << 50.0 << 1e7 << 1e7;
    }
    // A law with one constant fits a single decay to the last digit.
    QTest::newRow("a single decay") << support::tableFrom({{"0", "1", "1", "200"}, {"0.01", "1", "1", "130"}}) << 20.0
                                    << 3e6 << 3e8;
    QTest::newRow("decays that obey a law") << support::tableFrom({{"0", "1", "1", "200"},
                                                                   {"0.001", "1", "1", "100"},
                                                                   {"0.003", "1", "1", "50"},
                                                                   {"0.004", "1", "1", "40"}})
                                            << 200.0 << 5e6 << 4e9;
    QTest::newRow("two decays of some ten microseconds")
        << support::tableFrom({{"0", "2", "0.4", "24000", "0.6", "57000"},
                               {"0.002", "2", "0.9", "22000", "1.1", "51000"},
                               {"0.005", "2", "0.5", "19800", "0.5", "45100"},
                               {"0.01", "2", "0.55", "16500", "0.45", "37000"},
                               {"0.02", "2", "0.6", "12500", "0.4", "28600"}})
        << 20.0 << 3e5 << 8e5;
    const auto row = [](const char* name, int model, const Reference& reference, const Values& range, double K,
                        double kq1, double kq2) {
        const fit::Parameters p = engineParameters(parametersOf(model, K, kq1, kq2));
        QTest::newRow(name) << support::tableFrom(
                                   support::simulatedSession(model, reference, {.Cp = support::kProbe, .p = p}, range))
                            << K << kq1 << kq2;
    };
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

// Every model, including models that do not match the data, so that their constants stay undetermined.
void TestCurveEvaluator::endsFitsAsTheFormulasDo()
{
    QFETCH(SampleTable, table);
    QFETCH(double, K);
    QFETCH(double, kq1);
    QFETCH(double, kq2);
    bench::NoObserver observer;
    for (int model : {1, 2, 3, 4, 6, 7, 8, 10, 11, 12, 13, 14, 15})
        for (int logMode : {0, 1}) {
            const Fit fit = fitFrom(scaled(parametersOf(model, K, kq1, kq2), 0.8), logMode);
            DecayProblem problem(table, model, logMode, support::kProbe);
            literal::DecayProblem formulas(table, model, logMode, support::kProbe);
            const fit::Outcome expected = fit::gaussNewton(formulas, fit.options, fit.start, observer);
            const fit::Outcome outcome = fitCurves(problem, fit.options, fit.start, observer);
            QCOMPARE(printed(outcome, fit, problem), printed(expected, fit, problem));
        }
}

// Observations have noise here, and parameters agree far beyond the printed digits.
void TestCurveEvaluator::fitsTheTimedJobsAsTheFormulasDo()
{
    bench::NoObserver observer;
    for (int number = 1; number <= bench::kDecayJobs; ++number) {
        const bench::DecayJob& job = bench::decayJob(number);
        DecayProblem problem(job.samples, job.model, 0, bench::kProbe);
        literal::DecayProblem formulas(job.samples, job.model, 0, bench::kProbe);
        const fit::Outcome fast = fitCurves(problem, job.options, job.start, observer);
        const fit::Outcome plain = fit::gaussNewton(formulas, job.options, job.start, observer);
        QCOMPARE(fast.ending, plain.ending);
        QCOMPARE(fast.status, plain.status);
        QCOMPARE(fast.iterations, plain.iterations);
        for (std::size_t j = 1; j <= static_cast<std::size_t>(job.options.parameterCount); ++j)
            QVERIFY(std::abs(fast.parameters[j] / plain.parameters[j] - 1) < 1e-10);
    }
}

// A sample decays much more slowly than the reference: factors of the law leave the range of a double, although their
// product does not.
void TestCurveEvaluator::staysFiniteWhereTheFormulasDo()
{
    const SampleTable table = support::tableFrom({{"0", "1", "1", "1"}, {"1", "1", "1", "1000"}}, 1);
    for (const auto& [model, a] :
         {std::pair{1, fit::Parameters{0, -0.999e9}}, std::pair{8, fit::Parameters{0, 1, -0.999e9}},
          std::pair{11, fit::Parameters{0, 1e-6, -0.999e9}}}) {
        DecayProblem problem(table, model, 0, support::kProbe);
        problem.setEvaluation(models::Evaluation::Fast);
        literal::DecayProblem formulas(table, model, 0, support::kProbe);
        for (int point = 1; point <= problem.pointCount(); ++point)
            QVERIFY(std::abs(problem.residual(point, a) - formulas.residual(point, a)) < 1e-10);
    }
}

QTEST_APPLESS_MAIN(TestCurveEvaluator)
#include "tst_curveevaluator.moc"
