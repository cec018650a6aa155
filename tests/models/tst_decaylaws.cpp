#include "decay/quencheddecay.h"

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
const decay::Reference kThree{3, {0, 0.2, 0.3, 0.5}, {0, 1 / 0.1e-9, 1 / 2e-9, 1 / 6e-9}};

double sumOfShares(const models::Populations& populations)
{
    double sum = 0;
    for (const models::Population& population : populations.members)
        sum += population.weight / populations.total;
    return sum;
}
} // namespace

class TestDecayLaws : public QObject
{
    Q_OBJECT
private slots:
    void areZeroWithoutALaw();
    void stopThePoissonSeriesAtItsShare();
    void endThePoissonSeriesForAnyMean();
};

void TestDecayLaws::areZeroWithoutALaw()
{
    const fit::Parameters p{0, 50, 1e7, 1e6};
    for (int model : {12, 13}) // two sites, three components
        QCOMPARE(intensity(model, 0.0, {0.03, kProbe, p}, kThree), 0.0);
    for (int model : {-3, 0, 5, 9, 16})
        QCOMPARE(intensity(model, kTime, {0.03, kProbe, p}, kOne), 0.0);
}

// Cumulative Poisson tables: the first term whose sum reaches 0.99 with collisions, 0.95 without. The first term with a
// quencher is always included.
void TestDecayLaws::stopThePoissonSeriesAtItsShare()
{
    constexpr struct {
        double mean;
        std::size_t termsWithCollisions, terms;
    } kCases[]{{0.0, 2, 2}, {0.1, 2, 2},   // 0.9953
               {0.5, 4, 3}, {1.0, 5, 4},   // 0.9098 0.9856 0.9982; 0.9197 0.9810 0.9963
               {2.0, 7, 6}, {10, 19, 16}}; // 0.9473 0.9834 0.9955; j = 15: 0.9513, j = 17: 0.9857, j = 18: 0.9928
    for (const auto& [mean, termsWithCollisions, terms] : kCases) {
        const auto full = models::poissonAndDynamicDecay(0.01, mean / 0.01, 1e7, 1e6);
        const auto plain = models::poissonDecay(0.01, mean / 0.01, 1e7);
        QCOMPARE(full.members.size(), termsWithCollisions);
        QCOMPARE(plain.members.size(), terms);
        QVERIFY(sumOfShares(full) >= 0.99 && sumOfShares(full) < 1 + kFewUlps);
        QVERIFY(sumOfShares(plain) >= 0.95 && sumOfShares(plain) < 1 + kFewUlps);
        QCOMPARE(full.members[0].addedRate, 1e6 * std::exp(-mean) * 0.01);
        QCOMPARE(plain.members[0].addedRate, 0.0);
        QCOMPARE(full.members.back().addedRate, static_cast<double>(termsWithCollisions - 1) * 1e7);
    }
}

// m^j reaches 1e200 after 200 / log10(m) terms at the latest, and the sum its cut-off before that for small means.
void TestDecayLaws::endThePoissonSeriesForAnyMean()
{
    constexpr std::size_t kLongest = 200;
    for (double mean : {1e-300, 1.0000001, 5.0, 15.0, 80.0, 1e3, 1e30, 1e250, -1e-9, -0.999, -1.01, -12.0, -15.0, -80.0,
                        -1e9, -1e250, kInfinity, -kInfinity, kNaN})
        QVERIFY2(models::poissonAndDynamicDecay(1.0, mean, 1e7, 1e6).members.size() <= kLongest,
                 qPrintable(QString::number(mean)));
    QCOMPARE(models::poissonDecay(1.0, 100.0, 1e7).members.size(), std::size_t{100}); // 100^100 is 1e200
}

QTEST_APPLESS_MAIN(TestDecayLaws)
#include "tst_decaylaws.moc"
