#include "decay/quencheddecay.h"

#include <QtTest>

#include <cmath>

using models::ratio;

namespace
{
constexpr double kFewUlps = 1e-13; // room for some hundreds of roundings
constexpr double kTau0 = 20e-9;    // s
constexpr double kProbe = 50e-6;   // M
constexpr double kQuencher = 0.02; // M
const models::RatioArguments kArguments{kTau0, kProbe, {0, 50, 1e7, 1e6}};

bool near(double a, double b) { return std::abs(a - b) <= kFewUlps * std::abs(b); }
} // namespace

class TestRatioLaws : public QObject
{
    Q_OBJECT
private slots:
    void areOneWithoutQuencher();
    void areTheAreaUnderTheDecay();
};

void TestRatioLaws::areOneWithoutQuencher()
{
    for (int model = 1; model <= 13; ++model)
        QVERIFY2(near(ratio(model, 0.0, kArguments), 1.0), qPrintable(QString::number(model)));
    for (int model : {-1, 0, 14, 15, 1000000})
        QCOMPARE(ratio(model, kQuencher, kArguments), 0.0);
}

// A steady-state intensity is the area under the decay, so the two families of laws must agree where both describe the
// same physics. The laws of the sphere agree only without probe.
void TestRatioLaws::areTheAreaUnderTheDecay()
{
    const decay::Reference reference{1, {0, 1}, {0, 1 / kTau0}};
    for (int model : {1, 2, 4, 8, 12, 13}) {
        const double Cp = model == 8 ? 0 : kProbe;
        const fit::Parameters p{0, model == 1 ? 3e9 : 25.0, 2e8, 4e9};
        double area = 0;
        for (const auto& term : decay::quenchedDecay(model, {kQuencher, Cp, p}, reference))
            area += term.amplitude / term.rate;
        QVERIFY2(near(kTau0 / area, ratio(model, kQuencher, {kTau0, Cp, p})), qPrintable(QString::number(model)));
    }
}

QTEST_APPLESS_MAIN(TestRatioLaws)
#include "tst_ratiolaws.moc"
