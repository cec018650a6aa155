#include "sternvolmer/models.h"

#include "decay/models.h"

#include <QtTest>

#include <cmath>

using sternvolmer::ratio;

namespace
{
constexpr double kFewUlps = 1e-13; // room for some hundreds of roundings
constexpr double kTau0 = 20e-9;    // s
constexpr double kProbe = 50e-6;   // M
constexpr double kQuencher = 0.02; // M

bool near(double a, double b) { return std::abs(a - b) <= kFewUlps * std::abs(b); }
} // namespace

class TestRatioModels : public QObject
{
    Q_OBJECT
private slots:
    void areOneWithoutQuencher();
    void followHandCalculation();
    void areTheAreaUnderTheDecay();
};

void TestRatioModels::areOneWithoutQuencher()
{
    for (int model = 1; model <= 13; ++model)
        QVERIFY2(near(ratio(model, 0.0, kTau0, kProbe, 50, 1e7, 1e6), 1.0), qPrintable(QString::number(model)));
    for (int model : {-1, 0, 14, 15, 1000000})
        QCOMPARE(ratio(model, kQuencher, kTau0, kProbe, 50, 1e7, 1e6), 0.0);
}

// Round numbers worked out on paper: tau0 kq1 = 3, tau0 kq2 = 2 per M, x = 0.5 M; with Cp the dilution 1 + K Cp is 2.
void TestRatioModels::followHandCalculation()
{
    const struct {
        int model;
        double Cp, p1, p2, p3, expected;
    } cases[]{{1, 0, 2e8, 0, 0, 2},
              {2, 0, 8, 3e8, 2e8, 10.0 / 3}, // 2 * 5 / (2 * 0.5 * 2 + 1)
              {3, 0, 8, 2e8, 0, 10},
              {4, 0, 8, 3e8, 0, 2.5}, // 5 / (2 * 0.5 + 1)
              {5, 0.5, 4, 0, 0, 2},   // Qf = 1/4: 4q^2 + q - 1/2 = 0
              {6, 0.5, 2, 3e8, 2e8, 12 / (5 * std::exp(-0.5) + 3)},
              {7, 0.5, 2, 2e8, 0, 1.5 * std::exp(0.5)},
              {8, 0.5, 2, 3e8, 0, 4 / (3 * std::exp(-0.5) + 1)},
              {9, 0.5, 2, 0, 0, std::exp(0.5)},
              {10, 0.5, 2, 1e8, 2e8, 1.5 / (0.5 * (1 - std::exp(-0.5)) + 0.5)},
              {11, 0.5, 2, 1e8, 0, 2},          // 1 / (1 - 1 * 0.5)
              {12, 0, 3, 2e8, 4e8, 6.0 / 2.25}, // 3 * 2 / ((0.75 * 2 + 0.25 * 4) * 0.5 + 1)
              {13, 0, 1, 4e8, 0, 1.5}};         // 3 / (0.5 * 2 + 1)
    for (const auto& c : cases) {
        const double value = ratio(c.model, 0.5, 1e-8, c.Cp, c.p1, c.p2, c.p3);
        QVERIFY2(near(value, c.expected), qPrintable(QString("model %1: %2").arg(c.model).arg(value, 0, 'g', 17)));
    }
}

// A steady-state intensity is the area under the decay, so the two families of laws must agree where both describe
// the same physics. The sphere does so without probe only.
void TestRatioModels::areTheAreaUnderTheDecay()
{
    const decay::Reference reference{1, {0, 1}, {0, 1 / kTau0}};
    for (int model : {1, 2, 4, 8, 12, 13}) {
        const double Cp = model == 8 ? 0 : kProbe;
        const fit::Parameters p{0, model == 1 ? 3e9 : 25.0, 2e8, 4e9};
        double area = 0;
        for (const auto& term : decay::quenchedDecay(model, kQuencher, reference, Cp, p))
            area += term.amplitude / term.rate;
        QVERIFY2(near(kTau0 / area, ratio(model, kQuencher, kTau0, Cp, p[1], p[2], p[3])),
                 qPrintable(QString::number(model)));
    }
}

QTEST_APPLESS_MAIN(TestRatioModels)
#include "tst_models.moc"
