#include "decay/quencheddecay.h"

#include <QtTest>

#include <cmath>
#include <limits>

using decay::intensity;
using fit::Parameters;

namespace
{
constexpr double kProbe = 50e-6; // M
constexpr double kTime = 15e-9;  // s
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const decay::Reference kOne{1, {0, 1}, {0, 1 / 20e-9}};
const decay::Reference kThree{3, {0, 0.2, 0.3, 0.5}, {0, 1 / 0.1e-9, 1 / 2e-9, 1 / 6e-9}};
} // namespace

class TestDecayLaws : public QObject
{
    Q_OBJECT
private slots:
    void areZeroWithoutALaw();
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
