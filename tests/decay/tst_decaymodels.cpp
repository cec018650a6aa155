#include "decay/models.h"

#include <QtTest>

#include <cmath>
#include <limits>

using decay::intensity;
using fit::Parameters;

namespace
{
constexpr double kFewUlps = 1e-14; // room for some tens of roundings
constexpr double kProbe = 50e-6;   // M
constexpr double kTime = 15e-9;    // s
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const decay::Reference kOne{1, {0, 1}, {0, 1 / 20e-9}};
const decay::Reference kTwo{2, {0, 0.3, 0.7}, {0, 1 / 5e-9, 1 / 20e-9}};
const decay::Reference kThree{3, {0, 0.2, 0.3, 0.5}, {0, 1 / 0.1e-9, 1 / 2e-9, 1 / 6e-9}};

double unquenched(const decay::Reference& reference, double t)
{
    double sum = 0;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.components); ++k)
        sum += reference.A[k] * std::exp(-reference.Rate[k] * t);
    return sum;
}

double sumOfShares(const decay::Populations& populations)
{
    double sum = 0;
    for (const decay::Population& population : populations)
        sum += population.share;
    return sum;
}

bool near(double a, double b, double tolerance = kFewUlps) { return std::abs(a - b) <= tolerance; }
} // namespace

class TestDecayModels : public QObject
{
    Q_OBJECT
private slots:
    void leaveTheReferenceAloneWithoutQuencher();
    void startAtOne();
    void giveNothingWithoutALaw();
    void followHandCalculation_data();
    void followHandCalculation();
    void stopThePoissonSeriesAtItsShare_data();
    void stopThePoissonSeriesAtItsShare();
    void endThePoissonSeriesForAnyMean();
    void multiplyUpToTheNumber();
};

void TestDecayModels::leaveTheReferenceAloneWithoutQuencher()
{
    for (const decay::Reference& reference : {kOne, kTwo, kThree})
        for (int model : {1, 2, 3, 4, 6, 7, 8, 10, 11, 14, 15})
            QVERIFY2(
                near(intensity(model, kTime, 0.0, reference, kProbe, {0, 50, 1e7, 1e6}), unquenched(reference, kTime)),
                qPrintable(QString::number(model)));
}

void TestDecayModels::startAtOne()
{
    for (const decay::Reference& reference : {kOne, kTwo, kThree})
        for (int model : {1, 2, 3, 4, 6, 7, 8, 14, 15})
            QVERIFY2(near(intensity(model, 0.0, 0.03, reference, kProbe, {0, 50, 1e7, 1e6}), 1.0),
                     qPrintable(QString::number(model)));
    for (int model : {12, 13}) {
        QVERIFY(near(intensity(model, 0.0, 0.03, kTwo, kProbe, {0, 0.5, 1e7, 1e6}), 1.0));
        QCOMPARE(intensity(model, 0.0, 0.03, kThree, kProbe, {0, 0.5, 1e7, 1e6}), 0.0);
    }
}

void TestDecayModels::giveNothingWithoutALaw()
{
    for (int model : {-3, 0, 5, 9, 16})
        QCOMPARE(intensity(model, kTime, 0.03, kTwo, kProbe, {0, 50, 1e7, 1e6}), 0.0);
}

// Rates times the time, on paper: component 1 decays with 3, component 2 with 0.75; kq1 t = 0.5, kq2 Q t = 0.25.
void TestDecayModels::followHandCalculation_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<double>("K"); // F for two sites
    QTest::addColumn<double>("Cp");
    QTest::addColumn<double>("expected");
    const auto whole = [](double added) { return 0.3 * std::exp(-3.0 - added) + 0.7 * std::exp(-0.75 - added); };
    const double e = std::exp(1.0);
    // K Q = 1 and Cp = 0: all quencher is free, half of the probes are bound.
    QTest::newRow("complex and dynamic") << 2 << 10.0 << 0.0 << 0.5 * whole(0.25) + 0.5 * whole(0.5);
    QTest::newRow("dark complex") << 3 << 10.0 << 0.0 << whole(0.25);
    // K = 40, Cp = Q = 0.1: 40 q^2 + q - 0.1 = 0, so q = (sqrt(17) - 1) / 80.
    const double q = (std::sqrt(17.0) - 1) / 80;
    QTest::newRow("dark complex with probe") << 3 << 40.0 << 0.1 << whole(0.25 * q / 0.1);
    QTest::newRow("complex") << 4 << 10.0 << 0.0 << 0.5 * whole(0) + 0.5 * whole(0.5);
    QTest::newRow("sphere and dynamic") << 6 << 10.0 << 0.0 << whole(0.25 / e) / e + whole(0.5) * (1 - 1 / e);
    QTest::newRow("dark sphere") << 7 << 10.0 << 0.0 << whole(0.25 / e);
    QTest::newRow("sphere") << 8 << 10.0 << 0.0 << whole(0) / e + whole(0.5) * (1 - 1 / e);
    QTest::newRow("two sites") << 12 << 3.0 << 0.0 << 0.25 * std::exp(-3.5) + 0.75 * std::exp(-1.0);
    QTest::newRow("one of two sites") << 13 << 3.0 << 0.0 << 0.25 * std::exp(-3.5) + 0.75 * std::exp(-0.75);
    QTest::newRow("two sites, all components") << 14 << 3.0 << 0.0 << 0.25 * whole(0.5) + 0.75 * whole(0.25);
    QTest::newRow("one of two, all components") << 15 << 3.0 << 0.0 << 0.25 * whole(0.5) + 0.75 * whole(0);
}

void TestDecayModels::followHandCalculation()
{
    QFETCH(int, model);
    QFETCH(double, K);
    QFETCH(double, Cp);
    QFETCH(double, expected);
    constexpr double Q = 0.1;
    constexpr double kq1 = 0.5 / kTime, kq2 = 0.25 / kTime / Q;
    const bool twoParameters = model == 3 || model == 7;
    const double p2 = twoParameters ? kq2 : model >= 12 ? kq1 / Q : kq1;
    const double value = intensity(model, kTime, Q, kTwo, Cp, {0, K, p2, kq2});
    QVERIFY2(near(value, expected), qPrintable(QString::number(value, 'g', 17)));
}

void TestDecayModels::stopThePoissonSeriesAtItsShare_data()
{
    QTest::addColumn<double>("mean");
    QTest::addColumn<int>("termsWithCollisions"); // first cumulative probability >= 0.99
    QTest::addColumn<int>("terms");               // first cumulative probability >= 0.95
    // Cumulative Poisson tables. The first term with a quencher is always there.
    QTest::newRow("0") << 0.0 << 2 << 2;
    QTest::newRow("0.1") << 0.1 << 2 << 2;   // 0.9953
    QTest::newRow("0.5") << 0.5 << 4 << 3;   // 0.9098 0.9856 0.9982
    QTest::newRow("1") << 1.0 << 5 << 4;     // 0.9197 0.9810 0.9963
    QTest::newRow("2") << 2.0 << 7 << 6;     // 0.9473 0.9834 0.9955
    QTest::newRow("10") << 10.0 << 19 << 16; // j = 15: 0.9513, j = 17: 0.9857, j = 18: 0.9928
}

void TestDecayModels::stopThePoissonSeriesAtItsShare()
{
    QFETCH(double, mean);
    QFETCH(int, termsWithCollisions);
    QFETCH(int, terms);
    const auto full = decay::poissonAndDynamicDecay(0.01, mean / 0.01, 1e7, 1e6);
    const auto plain = decay::poissonDecay(0.01, mean / 0.01, 1e7);
    QCOMPARE(static_cast<int>(full.size()), termsWithCollisions);
    QCOMPARE(static_cast<int>(plain.size()), terms);
    QVERIFY(sumOfShares(full) >= 0.99 && sumOfShares(full) < 1 + kFewUlps);
    QVERIFY(sumOfShares(plain) >= 0.95 && sumOfShares(plain) < 1 + kFewUlps);
    QCOMPARE(full[0].addedRate, 1e6 * std::exp(-mean) * 0.01);
    QCOMPARE(plain[0].addedRate, 0.0);
    QCOMPARE(full.back().addedRate, (termsWithCollisions - 1) * 1e7);
}

// m^j reaches 1e200 after 200 / log10(m) terms at the latest, and the sum its cut-off before that for small means.
void TestDecayModels::endThePoissonSeriesForAnyMean()
{
    constexpr std::size_t kLongest = 200;
    for (double mean : {1e-300, 1.0000001, 5.0, 15.0, 80.0, 1e3, 1e30, 1e250, -1e-9, -0.999, -1.01, -12.0, -15.0, -80.0,
                        -1e9, -1e250, kInfinity, -kInfinity, kNaN})
        QVERIFY2(decay::poissonAndDynamicDecay(1.0, mean, 1e7, 1e6).size() <= kLongest,
                 qPrintable(QString::number(mean)));
    QCOMPARE(decay::poissonDecay(1.0, 100.0, 1e7).size(), std::size_t{100}); // 100^100 is 1e200
}

void TestDecayModels::multiplyUpToTheNumber()
{
    QCOMPARE(decay::Factorial(-2), 1.0);
    QCOMPARE(decay::Factorial(1), 1.0);
    QCOMPARE(decay::Factorial(5), 120.0);
    QCOMPARE(decay::Factorial(18), 6402373705728000.0);
}

QTEST_APPLESS_MAIN(TestDecayModels)
#include "tst_decaymodels.moc"
