#include "decay/curvefit.h"
#include "decay/curvesums.h"
#include "tests/bench/literallaws.h"
#include "tests/support/decaysessions.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <random>

using namespace decay;

namespace
{
constexpr double kSameValue = 1e-13;      // relative: room for some hundreds of roundings
constexpr double kDeepestExponent = 50.0; // beyond exp(-50) the rounding of the exponent exceeds this

/// Values in the fitting order of a model.
fit::Parameters parametersOf(int model, double K, double kq1, double kq2)
{
    if (model == 1)
        return {0, kq2};
    if (model >= 12)
        return model % 2 == 0 ? fit::Parameters{0, K, kq1, kq2} : fit::Parameters{0, K, kq1};
    if (model == 3 || model == 7)
        return {0, K, kq2};
    return model == 4 || model == 8 || model == 11 ? fit::Parameters{0, K, kq1} : fit::Parameters{0, K, kq1, kq2};
}

} // namespace

class TestCurveEvaluator : public QObject
{
    Q_OBJECT
private slots:
    void agreesWithTheFormulas();
    void hasTheSameBitsInWideRegisters();
    void staysFiniteWhereTheFormulasDo();

private:
    void compareWithTheFormulas(const Reference& reference, bool evenGrid);
};

void TestCurveEvaluator::agreesWithTheFormulas()
{
    for (const Reference& reference : {support::kPyrene, support::kRuRe, support::kAlbumin})
        for (const bool evenGrid : {true, false})
            compareWithTheFormulas(reference, evenGrid);
}

void TestCurveEvaluator::compareWithTheFormulas(const Reference& reference, bool evenGrid)
{
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
                const fit::Parameters a = parametersOf(model, K, kq, 10 * kq);
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
