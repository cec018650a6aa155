#include "noise/noisefit.h"

#include "models/catalogue.h"
#include "noise/leaveoneout.h"
#include "tests/support/datarows.h"
#include "tests/support/publishedratios.h"

#include <QTest>

#include <cmath>

using namespace noise;

namespace
{

constexpr double kFourDigits = 5e-5;

RatioFit ratioFitOf(const QString& set, int model)
{
    const int constants = models::row(model).parameterCount();
    RatioFit ratioFit{.points = {}, .model = model, .Cp = 50e-6, .free = leastsquares::freeSlots(constants, {})};
    if (set == "acridone")
        ratioFit.points = support::ratioPoints(support::acridoneRatios());
    else if (set == "hFis1")
        ratioFit.points = support::ratioPoints(support::hFis1Ratios());
    else
        ratioFit.points = support::ratioPoints(support::twoSiteRatios());
    return ratioFit;
}

/// The constants of an analysis that ends at the least sum.
fit::Parameters analysed(const RatioFit& ratioFit)
{
    fit::Parameters start{0, 1, 3e9, 0};
    if (ratioFit.free.size() == 1)
        start = {0, 3e9};
    const auto problem = problemUnder(ratioFit, {.assumption = Assumption::EqualOnRatios});
    return leastsquares::descend(*problem, start, ratioFit.free).values;
}

NoiseFit fitOf(const RatioFit& ratioFit, const Errors& errors)
{
    return fitUnder(errors, ratioFit, analysed(ratioFit));
}

QByteArray difference(double value, double expected)
{
    return QByteArray::number(value, 'g', 10) + " for " + QByteArray::number(expected, 'g', 10);
}

#define COMPARE_DIGITS(value, expected)                                                                                \
    QVERIFY2(std::abs((value) / (expected)-1) < kFourDigits, difference(value, expected))

} // namespace

class TestNoiseFit : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithAnotherProgram_data();
    void agreesWithAnotherProgram();
    void typedErrorsAreWeights();
    void knownErrorsNeedNoScatter();
    void aRatioThatIsNotPositiveHasNoValue();
    void exchangeableConstantsKeepTheirNames();
    void findsTheLowerOfTwoMinima();
    void followsABentValley();
    void fixedConstantsHaveNoErrors();
    void correlatesWithoutScatter();
    void saysWhatIsAssumedAndRefused();
};

void TestNoiseFit::agreesWithAnotherProgram_data()
{
    QTest::addColumn<QStringList>("row");
    for (const QStringList& row : support::dataRows("noisefits.txt"))
        QTest::newRow(qPrintable(row[0] + row[1] + row[2])) << row;
}

void TestNoiseFit::agreesWithAnotherProgram()
{
    QFETCH(QStringList, row);
    const RatioFit ratioFit = ratioFitOf(row[0], row[1].toInt());
    if (row[2] == "robust") {
        const AnalysedConstants constants = fitOf(ratioFit, {}).analysed;
        for (const std::size_t slot : ratioFit.free)
            COMPARE_DIGITS(constants.standardError[slot], row[static_cast<int>(slot) + 2].toDouble());
        if (row[0] == "acridone" && row[1] == "3") // calculated by hand from A J'S J A
            COMPARE_DIGITS(constants.correlation[1][2], -0.897883);
        return;
    }
    NoiseFit fitted = fitOf(ratioFit, {row[2] == "equal" ? Assumption::EqualOnRatios : Assumption::Proportional});
    COMPARE_DIGITS(fitted.minimum.sumOfSquares, row[3].toDouble());
    QCOMPARE(fitted.scatter.degreesOfFreedom, row[4].toInt());
    COMPARE_DIGITS(*fitted.AICc, row[5].toDouble());
    const auto profiles = profilesOf(fitted, ratioFit);
    for (const std::size_t slot : ratioFit.free) {
        const QStringList constant = row.mid(2 + 4 * static_cast<int>(slot), 4);
        COMPARE_DIGITS(fitted.minimum.values[slot], constant[0].toDouble());
        COMPARE_DIGITS(fitted.uncertainty.standardError[slot], constant[1].toDouble());
        COMPARE_DIGITS(*profiles[slot].low, constant[2].toDouble());
        COMPARE_DIGITS(*profiles[slot].high, constant[3].toDouble());
        if (row[2] == "equal")
            COMPARE_DIGITS(fitted.analysed.standardError[slot], constant[1].toDouble());
    }
}

// A sample with a huge error does not count: the other one and the reference determine the slope alone.
void TestNoiseFit::typedErrorsAreWeights()
{
    RatioFit ratioFit = ratioFitOf("hFis1", 3);
    const NoiseFit proportional = fitOf(ratioFit, {});
    const NoiseFit oneForAll = fitOf(ratioFit, {Assumption::AsTyped, {0.02}});
    COMPARE_DIGITS(oneForAll.uncertainty.standardError[1], proportional.uncertainty.standardError[1]);
    COMPARE_DIGITS(oneForAll.analysed.standardError[2], proportional.analysed.standardError[2]);

    RatioFit line = ratioFitOf("hFis1", 1);
    line.points = support::ratioPoints({0, 1, 2}, {1, 2, 4}, 1);
    const NoiseFit weighted = fitOf(line, {Assumption::AsTyped, {0.01, 0.01, 1e4}});
    COMPARE_DIGITS(weighted.minimum.values[1], 1.0);
    const NoiseFit otherwise = fitOf(line, {Assumption::AsTyped, {0.01, 1e4, 0.01}});
    COMPARE_DIGITS(otherwise.minimum.values[1], 1.5);
}

// The logarithm of the ratio of two intensities with known errors of 3 and 4 percent has an error of 5 percent.
void TestNoiseFit::knownErrorsNeedNoScatter()
{
    RatioFit line = ratioFitOf("hFis1", 1);
    line.points = support::ratioPoints({0, 1}, {1, 3}, 1);
    const NoiseFit known = fitOf(line, {Assumption::AsTyped, {0.03, 0.04}, true});
    COMPARE_DIGITS(known.minimum.values[1], 2.0);
    COMPARE_DIGITS(known.uncertainty.standardError[1], 0.05 * 3); // b = exp(ln 3) - 1
    COMPARE_DIGITS(known.analysed.standardError[1], 0.05 * 3);
    COMPARE_DIGITS(known.uncertainty.halfWidth[1], 1.959964 * 0.05 * 3);
    QVERIFY(known.scatter.degreesOfFreedom == 0 && known.hasErrors() && !known.chiSquareProbability);

    line.points = support::ratioPoints({0, 1, 1}, {1, 3, 3 * std::exp(0.1)}, 1);
    const NoiseFit two = fitOf(line, {Assumption::AsTyped, {0.03, 0.05, 0.05}, true});
    COMPARE_DIGITS(two.minimum.sumOfSquares, 0.1 * 0.1 / (0.05 * 0.05 + 0.05 * 0.05));
    COMPARE_DIGITS(*two.chiSquareProbability, std::erfc(1.0)); // of one degree of freedom at chi-square 2
    COMPARE_DIGITS(*two.AICc, 2.0 + 2 * 2);
}

void TestNoiseFit::aRatioThatIsNotPositiveHasNoValue()
{
    const RatioFit line = ratioFitOf("hFis1", 1);
    const auto problem = problemUnder(line, {});
    QVERIFY(std::isinf(leastsquares::sumOfSquares(*problem, {0, -1e9})));
    QVERIFY(std::isfinite(leastsquares::sumOfSquares(*problem, {0, 1e9})));
    RatioFit negative = line;
    negative.points.ratio[3] = -1;
    for (const Errors& errors : {Errors{}, Errors{Assumption::AsTyped, {0.01}, true}}) {
        const NoiseFit fitted = fitOf(negative, errors);
        QVERIFY(!fitted.isDefined() && !fitted.hasErrors() && !fitted.AICc && !fitted.chiSquareProbability);
        QVERIFY(leaveOneOut(fitted, negative).empty());
    }
    QVERIFY(fitOf(negative, {Assumption::EqualOnRatios}).hasErrors());
}

// In (1 + K Q) (1 + kq2 tau0 Q) the factors can be exchanged, and the probe's tiny concentration makes the sums differ.
void TestNoiseFit::exchangeableConstantsKeepTheirNames()
{
    const RatioFit ratioFit = ratioFitOf("acridone", 3);
    const fit::Parameters exchanged{0, 84.4, 7.05e7};
    const NoiseFit fitted = fitUnder({}, ratioFit, analysed(ratioFit), {&exchanged, 1});
    COMPARE_DIGITS(fitted.minimum.values[1], 1.2754937);
    QVERIFY(fitted.analysed.differing.empty());

    RatioFit few = ratioFit; // as many constants as samples: both solutions are exact, and roundings decide nothing
    few.points.count = 3;
    const NoiseFit near = fitUnder({}, few, analysed(few), {&exchanged, 1});
    const NoiseFit far = fitUnder({}, few, near.minimum.values, {&exchanged, 1});
    QVERIFY(near.minimum.values[1] < 10 && far.minimum.values[1] < 10);
}

// A rate constant that starts negative stays negative; another start is better.
void TestNoiseFit::findsTheLowerOfTwoMinima()
{
    const RatioFit line = ratioFitOf("hFis1", 1);
    const fit::Parameters negative{0, -1e6}, positive{0, 1e9};
    const NoiseFit stuck = fitUnder({}, line, negative);
    const NoiseFit found = fitUnder({}, line, negative, {&positive, 1});
    QVERIFY(stuck.minimum.values[1] < 0);
    COMPARE_DIGITS(found.minimum.values[1], 1694186484.0);
    QCOMPARE(found.analysed.values, negative);
    QCOMPARE(found.analysed.differing, (leastsquares::FreeSlots{1}));
    QVERIFY(fitOf(line, {}).analysed.differing.empty());
}

// Only K kq1 matters as long as the probe binds little quencher; beyond, K can grow without effect. A walk in steps too
// long loses this valley at K = 331 and ends the interval there.
void TestNoiseFit::followsABentValley()
{
    RatioFit ratioFit = ratioFitOf("hFis1", 11);
    ratioFit.Cp = 1e-5;
    ratioFit.ranges[1] = {1e-5, 1e9};
    NoiseFit fitted = fitUnder({}, ratioFit, {0, 230, 2.02e6});
    const leastsquares::Profile profile = profilesOf(fitted, ratioFit)[1];
    QVERIFY(!profile.low.has_value() && !profile.high.has_value());
}

void TestNoiseFit::fixedConstantsHaveNoErrors()
{
    RatioFit ratioFit = ratioFitOf("acridone", 3);
    const fit::Parameters values = analysed(ratioFit);
    ratioFit.free.clear();
    const NoiseFit fitted = fitUnder({.assumption = Assumption::EqualOnRatios}, ratioFit, values);
    QCOMPARE(fitted.analysed.standardError, fit::Parameters{});
    QCOMPARE(fitted.analysed.residualError.back(), std::sqrt(fitted.scatter.variance)); // nothing is taken up by a fit
    QVERIFY(leaveOneOut(fitted, ratioFit).empty());
}

// As many samples as constants: no errors, but the constants are still correlated.
void TestNoiseFit::correlatesWithoutScatter()
{
    RatioFit ratioFit = ratioFitOf("acridone", 3);
    ratioFit.points.count = 3;
    const NoiseFit fitted = fitOf(ratioFit, {});
    QVERIFY(std::abs(fitted.analysed.correlation[1][2]) > 0.5);
    QVERIFY(!fitted.hasErrors() && std::isnan(fitted.analysed.standardError[1]));
}

void TestNoiseFit::saysWhatIsAssumedAndRefused()
{
    const auto typed = [](std::vector<double> errors) {
        return complaint({Assumption::AsTyped, errors}, 3).has_value();
    };
    QVERIFY(!typed({0.01}) && !typed({0.01, 0.02, 0.01}));
    QVERIFY(typed({}) && typed({0.01, 0.02}) && typed({0}) && typed({0.01, -0.01, 0.01}) && typed({INFINITY}));
    QVERIFY(typed({1e-200}) && typed({1e200})); // their squares are 0 and infinite
    QVERIFY(typed(errorsFromPercent("abc")));
    QVERIFY(!complaint({}, 3).has_value());
    QVERIFY(sentence({}) != sentence({Assumption::AsTyped, {}, true}));
}

QTEST_APPLESS_MAIN(TestNoiseFit)
#include "tst_noisefit.moc"
