#include "noise/constanttext.h"

#include "models/sphere.h"
#include "noise/readyconstants.h"
#include "tests/support/datarows.h"
#include "tests/support/publishedratios.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace noise;

namespace
{

RatioFit acridone(int model, const leastsquares::FreeSlots& free = {1, 2})
{
    return {.points = support::ratioPoints(support::acridoneRatios()), .model = model, .Cp = 1e-3, .free = free};
}

fit::Parameters leastSquares(const RatioFit& ratioFit, const fit::Parameters& start)
{
    const auto problem = problemUnder(ratioFit, {Assumption::EqualOnRatios});
    return leastsquares::descend(*problem, start, ratioFit.free).values;
}

NoiseFit fitOf(const RatioFit& ratioFit, const fit::Parameters& start = {0, 1, 5e9})
{
    return fitUnder({Assumption::EqualOnRatios}, ratioFit, leastSquares(ratioFit, start));
}

const ReadyConstant& named(const std::vector<ReadyConstant>& constants, const std::string& start)
{
    return *std::find_if(constants.begin(), constants.end(),
                         [&](const ReadyConstant& constant) { return constant.name.starts_with(start); });
}

bool agree(double a, double b, double relative) { return std::abs(a - b) <= relative * std::abs(b); }

constexpr double kHandCalculation = 1e-6;
constexpr double kFirstOrder = 1e-3; // what curvature may change

} // namespace

class TestReadyConstants : public QObject
{
    Q_OBJECT

private slots:
    void errorsOfTypedValuesEnter();
    void areFirstOrderChangesOfTheFit();
    void sharesAndSpheresFollow();
    void roundsToTwoDigitsOfTheError();
    void printsWhatHasNoError();
};

// tau0 enters the laws only in products with rate constants: the products are determined, the rate constants carry the
// whole relative error of tau0, and K none of it.
void TestReadyConstants::errorsOfTypedValuesEnter()
{
    const RatioFit ratioFit = acridone(7);
    const AnalysedConstants analysed = fitOf(ratioFit).analysed;
    const auto without = readyConstants(analysed, ratioFit, 0.4);
    const auto with = readyConstants(analysed, ratioFit, 0.4, {.tau0 = 0.02, .s = 0.05, .Cp = 0.1});
    const ReadyConstant &K = named(with, "K"), &kq2 = named(with, "kq2"), &KSV = named(with, "KSV"),
                        &r = named(with, "r");
    QVERIFY(agree(kq2.error.tau0, 0.02 * kq2.value, kHandCalculation));
    QVERIFY(KSV.error.tau0 == 0 && K.error.tau0 == 0); // not even a rounding
    QVERIFY(agree(KSV.value, kq2.value * 17.6e-9, kHandCalculation));
    QVERIFY(agree(KSV.error.scatter, kq2.error.scatter * 17.6e-9, kHandCalculation));
    QVERIFY(agree(kq2.error.total(),
                  std::sqrt(std::pow(kq2.error.scatter, 2) + std::pow(kq2.error.tau0, 2) + std::pow(kq2.error.Cp, 2)),
                  kHandCalculation));
    // r = (s^3 + 3 K / c)^(1/3): dr/ds = s^2 / r^2, dr/dK = 1 / (c r^2)
    QVERIFY(agree(r.error.s, std::pow(0.4 / r.value, 2) * 0.05 * 0.4, kHandCalculation));
    QVERIFY(agree(r.error.scatter, K.error.scatter / (7.567461992 * r.value * r.value), kHandCalculation));
    QVERIFY(agree(r.error.Cp, K.error.Cp / (7.567461992 * r.value * r.value), kHandCalculation));
    for (const ReadyConstant& constant : without)
        QCOMPARE(constant.error.total(), constant.error.scatter);
}

void TestReadyConstants::areFirstOrderChangesOfTheFit()
{
    constexpr double kChange = 0.01;
    const fit::Parameters start{0, 0.8, 5e9};
    for (const leastsquares::FreeSlots& free : {leastsquares::FreeSlots{1, 2}, leastsquares::FreeSlots{1}}) {
        const RatioFit ratioFit = acridone(7, free);
        const AnalysedConstants analysed = fitOf(ratioFit, start).analysed;
        const auto parts = readyConstants(analysed, ratioFit, 0, {.tau0 = kChange, .s = 0, .Cp = kChange});
        RatioFit longer = ratioFit, denser = ratioFit;
        longer.points.tau0 *= 1 + kChange / 2;
        denser.Cp *= 1 + kChange / 2;
        const double byTau0 = 2 * (leastSquares(longer, start)[1] - analysed.values[1]);
        const double byCp = 2 * (leastSquares(denser, start)[1] - analysed.values[1]);
        QVERIFY(agree(parts[0].error.Cp, std::abs(byCp), 20 * kFirstOrder));
        if (free.size() == 1) { // the other constant is fixed, so that K must make up for a longer lifetime
            QVERIFY(agree(parts[0].error.tau0, std::abs(byTau0), 0.1));
            QVERIFY(parts[1].fixed);
            QCOMPARE(parts[1].error.total(), 0.0);
        }
    }
}

void TestReadyConstants::sharesAndSpheresFollow()
{
    const RatioFit sites{
        .points = support::ratioPoints(support::twoSiteRatios()), .model = 13, .Cp = 50e-6, .free = {1, 2}};
    const auto constants = readyConstants(fitOf(sites, {0, 1, 3e9}).analysed, sites, 0);
    const ReadyConstant &F = named(constants, "F"), &share = named(constants, "accessible share");
    QVERIFY(agree(share.value, 1 / 1.6, kFirstOrder));
    QVERIFY(agree(share.error.scatter, F.error.scatter / (1.6 * 1.6), kFirstOrder));
    QVERIFY(named(constants, "KSV").unit == "M⁻¹");

    // 1 M^-1 is a litre for 6.022e23 spheres, 1.6606 nm^3 for each, whose radius is 0.7346 nm
    QVERIFY(agree(models::interactionVolume(1), 1 / 0.6022, kHandCalculation));
    QVERIFY(agree(models::interactionRadius(1, 0), std::cbrt(3 / 0.6022 / (4 * M_PI)), kHandCalculation));
}

void TestReadyConstants::roundsToTwoDigitsOfTheError()
{
    for (const QStringList& row : support::dataRows("constantswitherrors.txt"))
        QCOMPARE(QString::fromStdString(withError(row[0].toDouble(), row[1].toDouble(), row[2].toStdString())), row[3]);
}

void TestReadyConstants::printsWhatHasNoError()
{
    QCOMPARE(printedUnit("M-1s-1"), std::string("M⁻¹ s⁻¹"));
    QCOMPARE(constantText({.name = "K", .unit = "M⁻¹", .value = 2, .fixed = true}),
             std::string("K = 2.0000 M⁻¹ (fixed)"));
    QCOMPARE(constantText({.name = "F", .unit = "", .value = 0.5, .error = {.scatter = INFINITY}}),
             std::string("F = 0.50000 (not determined)"));
}

QTEST_APPLESS_MAIN(TestReadyConstants)
#include "tst_readyconstants.moc"
