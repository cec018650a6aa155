#include "lifetimes/combinedfit.h"

#include "tests/support/datarows.h"
#include "tests/support/pairedsamples.h"

#include <QTest>

#include <cmath>

using namespace lifetimes;

namespace
{

constexpr double kFourDigits = 5e-5;

#define COMPARE_DIGITS(value, expected)                                                                                \
    QVERIFY2(std::abs((value) / (expected)-1) < kFourDigits,                                                           \
             QByteArray::number(value, 'g', 10) + " for " + QByteArray::number(expected, 'g', 10))

} // namespace

class TestCombinedFit : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithAnotherProgram_data();
    void agreesWithAnotherProgram();
    void fitsOneKindAlone();
    void componentsCollideOneByOne();
    void estimatesTheErrorOfEachKind();
    void countsTheErrorOfTau0Once();
    void listsTheFasterSiteFirst();
};

void TestCombinedFit::agreesWithAnotherProgram_data()
{
    QTest::addColumn<QStringList>("row");
    for (const QStringList& row : support::dataRows("combinedfits.txt"))
        QTest::newRow(qPrintable(row[0])) << row;
}

void TestCombinedFit::agreesWithAnotherProgram()
{
    QFETCH(QStringList, row);
    const Measurements acridone = support::acridoneMeasurements();
    const CombinedFit fit = fitTogether(acridone, row[0].toInt(), {});
    COMPARE_DIGITS(fit.minimum.sumOfSquares, row[1].toDouble());
    QCOMPARE(fit.degreesOfFreedom, row[2].toInt());
    COMPARE_DIGITS(*fit.AICc, row[3].toDouble());
    const auto profiles = profilesOf(acridone, fit);
    for (int slot = 1; 4 * slot < row.size(); ++slot) {
        const auto i = static_cast<std::size_t>(slot);
        const QStringList constant = row.mid(4 * slot, 4);
        COMPARE_DIGITS(fit.minimum.values[i], constant[0].toDouble());
        COMPARE_DIGITS(fit.uncertainty.standardError[i], constant[1].toDouble());
        COMPARE_DIGITS(*profiles[i].low, constant[2].toDouble());
        COMPARE_DIGITS(*profiles[i].high, constant[3].toDouble());
    }
    QCOMPARE(fit.judgement.verdict, trust::Verdict::AtMinimum);
    QCOMPARE(fit.solutions.size(), std::size_t{1});
}

// Without lifetimes the fit is that of intensities with proportional errors, whose figures are in noisefits.txt.
void TestCombinedFit::fitsOneKindAlone()
{
    Measurements intensities = support::acridoneMeasurements(), lifetimes = intensities;
    for (std::size_t i = 1; i < intensities.samples.size(); ++i)
        intensities.samples[i].lifetime = lifetimes.samples[i].intensity = 0;
    const CombinedFit alone = fitTogether(intensities, 1, {});
    COMPARE_DIGITS(alone.minimum.values[1], 7175165865.0);
    COMPARE_DIGITS(alone.uncertainty.standardError[1], 1822352106.0);
    COMPARE_DIGITS(alone.errorWithTau0[1], 1822352106.0);
    COMPARE_DIGITS(*alone.AICc, -9.252222);
    // In (1 + K Q) (1 + kq2 tau0 Q) the factors can be exchanged; lifetimes would tell.
    QCOMPARE(fitTogether(intensities, 3, {}).solutions.size(), std::size_t{2});

    const CombinedFit collisions = fitTogether(lifetimes, 1, {});
    QCOMPARE(collisions.degreesOfFreedom, 5);
    for (const double residual : relativeResiduals(lifetimes, collisions, Kind::Lifetime))
        QVERIFY(std::abs(residual) < 0.02); // the published lifetimes follow a line within two percent
}

// Every component gets 1 / (1 / tau + kq2 Q).
void TestCombinedFit::componentsCollideOneByOne()
{
    constexpr double kq2 = 1.8e7;
    Measurements measurements{.samples = {}, .components = {{0.5, 150e-9}, {0.5, 900e-9}}, .Cp = 50e-6};
    for (const double Q : {0.0, 0.01, 0.03, 0.06, 0.1}) {
        double area = 0;
        for (const Component& component : measurements.components)
            area += component.amplitude / (1 / component.lifetime + kq2 * Q);
        measurements.samples.push_back({Q, 1e9 * area, area, 0});
    }
    const CombinedFit fit = fitTogether(measurements, 1, {});
    COMPARE_DIGITS(fit.minimum.values[1], kq2);
    QVERIFY(fit.minimum.sumOfSquares < 1e-15);
    const double ratio = measurements.ratio(Kind::Lifetime, 4);
    QVERIFY(std::abs(fittedRatios(measurements, fit, Kind::Lifetime, {0.1})[0] / ratio - 1) < 1e-8);
    QVERIFY(std::abs(1 + kq2 * measurements.tau0() * 0.1 - ratio) > 0.05 * ratio); // the mean lifetime alone is biased
}

// Without probe, ln intensity of a dark sphere is a straight line, and the lifetime is constant: two separate
// regressions.
void TestCombinedFit::estimatesTheErrorOfEachKind()
{
    const std::vector<double> Q{0, 1, 2, 3, 4, 5}, noise{1, -1, 2, -3, 2, -1};
    Measurements measurements{.samples = {}, .components = {{1, 20e-9}}, .Cp = 0};
    for (std::size_t i = 0; i < Q.size(); ++i)
        measurements.samples.push_back(
            {Q[i], std::exp(-0.5 * Q[i] + 0.01 * noise[i]), 20e-9 * std::exp(0.03 * noise[5 - i]), 0});
    const CombinedFit fit = fitTogether(measurements, 9, {1, true});
    // The noise has the mean 0, the sum of squares 20 and the slope -3 / 17.5 on Q.
    const double slope = 0.5 + 0.01 * 3 / 17.5, S1 = 1e-4 * (20 - 9 / 17.5), S2 = 9e-4 * 20;
    COMPARE_DIGITS(fit.minimum.values[1], slope);
    COMPARE_DIGITS(fit.errors.intensity, std::sqrt(S1 / 4));
    COMPARE_DIGITS(fit.errors.lifetime, std::sqrt(S2 / 5));
    COMPARE_DIGITS(fit.uncertainty.standardError[1], std::sqrt(S1 / 4 / 17.5));
    COMPARE_DIGITS(fit.uncertainty.halfWidth[1], 2.776445 * std::sqrt(S1 / 4 / 17.5)); // Student's t with 4
    COMPARE_DIGITS(*fit.AICc, 6 * std::log(S1 / 6) + 6 * std::log(S2 / 6) + 2 * 5 + 2 * 5 * 6 / (12 - 5 - 1.0));
    QVERIFY(canEstimateEach(measurements) && !complaint({1, true}, measurements));
    measurements.samples.back().lifetime = 0;
    QVERIFY(!canEstimateEach(measurements) && complaint({1, true}, measurements));
    QVERIFY(complaint({0, false}, measurements) && complaint({NAN, false}, measurements));
}

// Where quenching is strong, kq2 is 1 / (Q tau). Two equal samples: the variance of ln tau is s^2 / 2, and that of
// ln tau0 / tau is s^2 (1 + 1 / 2).
void TestCombinedFit::countsTheErrorOfTau0Once()
{
    constexpr double kDeviation = 0.001, kRatio = 1e6;
    Measurements measurements{.samples = {{0, 0, 1e-8, 0}}, .components = {{1, 1e-8}}, .Cp = 50e-6};
    for (const double deviation : {kDeviation, -kDeviation})
        measurements.samples.push_back({1, 0, 1e-8 / kRatio * std::exp(deviation), 0});
    const CombinedFit fit = fitTogether(measurements, 1, {});
    const double kq2 = fit.minimum.values[1], variance = 2 * kDeviation * kDeviation; // one degree of freedom
    COMPARE_DIGITS(kq2, 1e14);
    COMPARE_DIGITS(fit.uncertainty.standardError[1], kq2 * std::sqrt(1.5 * variance));
    COMPARE_DIGITS(fit.errorWithTau0[1], kq2 * std::sqrt(0.5 * variance));
}

void TestCombinedFit::listsTheFasterSiteFirst()
{
    std::mt19937 generator(1);
    for (const fit::Parameters& truth : {fit::Parameters{0, 0.5, 3e9, 5e7}, fit::Parameters{0, 2, 5e7, 3e9}}) {
        const support::PairedCase of{.model = 12, .truth = truth, .Q = {0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.8}};
        const CombinedFit fit = fitTogether(support::simulated(of, generator), 12, {});
        QVERIFY(fit.minimum.values[2] > fit.minimum.values[3]);
        QVERIFY(std::abs(fit.minimum.values[1] - 0.5) < fit.uncertainty.halfWidth[1]);
    }
}

QTEST_APPLESS_MAIN(TestCombinedFit)
#include "tst_combinedfit.moc"
