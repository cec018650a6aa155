#include "noise/leaveoneout.h"

#include "tests/support/noisyratios.h"

#include "tests/support/publishedratios.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace noise;

class TestLeaveOneOut : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithALineByHand();
    void theReferenceCountsIfItIsMeasured();
    void anOutlierStandsFirst_data();
    void anOutlierStandsFirst();
    void exactDataHaveNoInfluence();
};

// Ratios 1, 2.1, 2.9, 4.2 at 0, 1, 2, 3 M: the slope is 14.5/14, without the last sample 4.9/5. The sum drops by
// r^2 / (1 - h) with r = 3.2 - 3 * 14.5/14 and h = 9/14.
void TestLeaveOneOut::agreesWithALineByHand()
{
    constexpr double kHandCalculation = 1e-6;
    const RatioFit line{
        .points = support::ratioPoints({0, 1, 2, 3}, {1, 2.1, 2.9, 4.2}, 1), .model = 1, .Cp = 1e-6, .free = {1}};
    const NoiseFit fitted = fitUnder({Assumption::EqualOnRatios}, line, {0, 1});
    const std::vector<LeftOut> rows = leaveOneOut(fitted, line);
    QCOMPARE(rows.size(), std::size_t(3));
    QCOMPARE(rows[0].sample, 2);
    const double slope = 14.5 / 14, residual = 3.2 - 3 * slope;
    QVERIFY(std::abs(rows[2].values[1] - 0.98) < kHandCalculation);
    QVERIFY(std::abs(rows[2].outlyingness - residual * residual / (1 - 9.0 / 14)) < kHandCalculation);
    const double error = std::sqrt(fitted.minimum.sumOfSquares / 2 / 14);
    QVERIFY(std::abs(rows[2].influence - (slope - 0.98) / error) < kHandCalculation / error);
    QCOMPARE(rows[2].slot, std::size_t(1));
}

void TestLeaveOneOut::theReferenceCountsIfItIsMeasured()
{
    RatioFit line{
        .points = support::ratioPoints({0, 1, 2, 3}, {1, 2.2, 3.3, 4.4}, 1), .model = 1, .Cp = 1e-6, .free = {1}};
    const Errors typed{Assumption::AsTyped, {0.03, 0.01, 0.02, 0.01}}; // the reference is 10 % too bright
    const NoiseFit fitted = fitUnder(typed, line, {0, 1});
    const std::vector<LeftOut> rows = leaveOneOut(fitted, line);
    QCOMPARE(rows.size(), std::size_t(4));
    QCOMPARE(rows[0].sample, 1);
    QVERIFY(std::abs(rows[0].values[1] - 1) < 1e-5); // 2.2, 3.3, 4.4 are 1.1 times 2, 3, 4
    QVERIFY(std::abs(rows[0].outlyingness - fitted.minimum.sumOfSquares) < 1e-9);

    // Without the reference, intensities that fall as 1/Q do not tell a slope.
    const RatioFit steep{
        .points = support::ratioPoints({0, 1, 2, 3}, {1, 20, 41, 60}, 1), .model = 1, .Cp = 1e-6, .free = {1}};
    const std::vector<LeftOut> ofSteep = leaveOneOut(fitUnder({}, steep, {0, 20}), steep);
    QCOMPARE(ofSteep[0].undetermined, (leastsquares::FreeSlots{1}));
    QVERIFY(std::isinf(ofSteep[0].influence));
    QVERIFY(ofSteep[3].undetermined.empty() && std::isfinite(ofSteep[3].influence));

    line.points.count = 2;
    QVERIFY(leaveOneOut(fitUnder({}, line, {0, 1}), line).empty());
}

// One intensity of a quenched sample is 10 % too high or too low, all have an error of 1 %. Among few samples a bent
// curve follows the outlier.
void TestLeaveOneOut::anOutlierStandsFirst_data()
{
    QTest::addColumn<support::NoiseCase>("of");
    QTest::addColumn<bool>("must");
    for (const support::NoiseCase& of : support::noiseCases())
        for (const int samples : {7, 12, 20}) {
            const bool must = of.truth[2] == 0 || samples >= 12;
            QTest::addRow("Model %d, %d samples", of.model, samples)
                << support::NoiseCase{of.model, samples, of.truth} << must;
        }
}

void TestLeaveOneOut::anOutlierStandsFirst()
{
    QFETCH(support::NoiseCase, of);
    QFETCH(bool, must);
    const int sets = support::setsPerCase(100);
    constexpr double kOutlier = 0.1, kLeast = 95; // percent
    const unsigned seed = 1000000 * static_cast<unsigned>(of.model) + static_cast<unsigned>(of.samples);
    std::mt19937 generator(seed);
    int first = 0;
    for (int set = 0; set < sets; ++set) {
        RatioFit ratioFit = support::noisyRatios(of, {}, generator);
        const int outlier = std::uniform_int_distribution(2, of.samples)(generator);
        ratioFit.points.ratio[static_cast<std::size_t>(outlier)] /= 1 + (set % 2 == 0 ? kOutlier : -kOutlier);
        const std::vector<LeftOut> rows = leaveOneOut(fitUnder({}, ratioFit, of.truth), ratioFit);
        first += std::max_element(rows.begin(), rows.end(), [](const LeftOut& a, const LeftOut& b) {
                     return a.outlyingness < b.outlyingness;
                 })->sample == outlier;
    }
    const double share = 100.0 * first / sets;
    qInfo("the outlier stands first in %.1f %% of %d sets, seed %u", share, sets, seed);
    const double chance = sets < 1000 ? 3 * std::sqrt(kLeast * (100 - kLeast) / sets) : 0; // of a small number of sets
    QVERIFY(!must || share >= kLeast - chance);
}

void TestLeaveOneOut::exactDataHaveNoInfluence()
{
    const RatioFit line{
        .points = support::ratioPoints({0, 1, 2, 3}, {1, 2, 3, 4}, 1), .model = 1, .Cp = 0, .free = {1}};
    const NoiseFit fitted = fitUnder({.assumption = Assumption::EqualOnRatios}, line, {0, 1});
    QCOMPARE(fitted.uncertainty.standardError[1], 0.0);
    for (const LeftOut& row : leaveOneOut(fitted, line))
        QCOMPARE(row.influence, 0.0);
}

QTEST_APPLESS_MAIN(TestLeaveOneOut)
#include "tst_leaveoneout.moc"
