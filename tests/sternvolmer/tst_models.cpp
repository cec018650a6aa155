#include "sternvolmer/models.h"

#include "decay/models.h"

#include <QtTest>

#include <cmath>

using sternvolmer::ratio;

namespace
{
constexpr double kFewUlps = 1e-13;  // room for some hundreds of roundings
constexpr double kNearLimit = 1e-5; // how near "tends to infinity" comes at 1e12 times the natural scale
constexpr double kTau0 = 20e-9;     // s
constexpr double kProbe = 50e-6;    // M
constexpr double kQuencher = 0.02;  // M

bool near(double a, double b, double tolerance = kFewUlps) { return std::abs(a - b) <= tolerance * std::abs(b); }
} // namespace

class TestRatioModels : public QObject
{
    Q_OBJECT
private slots:
    void areOneWithoutQuencher();
    void knowOnlyThirteenModels();
    void followHandCalculation_data();
    void followHandCalculation();
    void meetInTheirLimits_data();
    void meetInTheirLimits();
    void areTheAreaUnderTheDecay_data();
    void areTheAreaUnderTheDecay();
};

void TestRatioModels::areOneWithoutQuencher()
{
    for (int model = 1; model <= 13; ++model)
        QVERIFY2(near(ratio(model, 0.0, kTau0, kProbe, 50, 1e7, 1e6), 1.0), qPrintable(QString::number(model)));
}

void TestRatioModels::knowOnlyThirteenModels()
{
    for (int model : {-1, 0, 14, 15, 1000000})
        QCOMPARE(ratio(model, kQuencher, kTau0, kProbe, 50, 1e7, 1e6), 0.0);
}

// Round numbers worked out on paper: tau0 kq1 = 3, tau0 kq2 = 2 per M, x = 0.5 M.
void TestRatioModels::followHandCalculation_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<double>("Cp");
    QTest::addColumn<double>("p1");
    QTest::addColumn<double>("p2");
    QTest::addColumn<double>("p3");
    QTest::addColumn<double>("expected");
    const double e = std::exp(1.0);
    QTest::newRow("dynamic") << 1 << 0.0 << 2e8 << 0.0 << 0.0 << 2.0;
    QTest::newRow("complex and dynamic") << 2 << 0.0 << 8.0 << 3e8 << 2e8 << 10.0 / 3; // 2 * 5 / (2 * 0.5 * 2 + 1)
    QTest::newRow("dark complex and dynamic") << 3 << 0.0 << 8.0 << 2e8 << 0.0 << 10.0;
    QTest::newRow("complex") << 4 << 0.0 << 8.0 << 3e8 << 0.0 << 2.5;                 // 5 / (2 * 0.5 + 1)
    QTest::newRow("dark complex with probe") << 5 << 0.5 << 4.0 << 0.0 << 0.0 << 2.0; // Qf = 1/4: 4q^2 + q - 1/2 = 0
    QTest::newRow("sphere and dynamic") << 6 << 0.0 << 2.0 << 3e8 << 2e8 << 8.0 / (2.0 / e + 2.0);
    QTest::newRow("dark sphere and dynamic") << 7 << 0.5 << 2.0 << 2e8 << 0.0 << 1.5 * std::exp(0.5);
    QTest::newRow("sphere") << 8 << 0.0 << 2.0 << 3e8 << 0.0 << 4.0 / (3.0 / e + 1.0);
    QTest::newRow("dark sphere") << 9 << 0.0 << 2.0 << 0.0 << 0.0 << e;
    QTest::newRow("Poisson and dynamic") << 10 << 0.5 << 2.0 << 1e8 << 2e8 << 1.5 / (0.5 * (1 - std::exp(-0.5)) + 0.5);
    QTest::newRow("Poisson") << 11 << 0.5 << 2.0 << 1e8 << 0.0 << 2.0; // 1 / (1 - 1 * 0.5)
    QTest::newRow("two sites") << 12 << 0.0 << 3.0 << 2e8 << 4e8
                               << 6.0 / 2.25; // 3 * 2 / ((0.75 * 2 + 0.25 * 4) * 0.5 + 1)
    QTest::newRow("one of two sites") << 13 << 0.0 << 1.0 << 4e8 << 0.0 << 1.5; // 3 / (0.5 * 2 + 1)
}

void TestRatioModels::followHandCalculation()
{
    QFETCH(int, model);
    QFETCH(double, Cp);
    QFETCH(double, p1);
    QFETCH(double, p2);
    QFETCH(double, p3);
    QFETCH(double, expected);
    constexpr double tau0 = 1e-8;
    const double value = ratio(model, 0.5, tau0, Cp, p1, p2, p3);
    QVERIFY2(near(value, expected), qPrintable(QString::number(value, 'g', 17)));
}

void TestRatioModels::meetInTheirLimits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("limit");
    constexpr double x = kQuencher, t = kTau0, c = kProbe;
    constexpr double K = 80, kq = 5e9, huge = 1e21;
    const double dynamic = ratio(1, x, t, c, kq, 0, 0);
    QTest::newRow("a complex that decays at once is dark")
        << ratio(2, x, t, c, K, huge, kq) << ratio(3, x, t, c, K, kq, 0);
    QTest::newRow("the same without collisions") << ratio(4, x, t, c, K, huge, 0) << ratio(5, x, t, c, K, 0, 0);
    QTest::newRow("a complex that decays as before") << ratio(4, x, t, c, K, 0, 0) << 1.0;
    QTest::newRow("complex without collisions") << ratio(2, x, t, c, K, 1e7, 0) << ratio(4, x, t, c, K, 1e7, 0);
    QTest::newRow("no complex") << ratio(3, x, t, c, 1e-8, kq, 0) << dynamic;
    QTest::newRow("no sphere") << ratio(6, x, t, c, 1e-8, 1e7, kq) << dynamic;
    QTest::newRow("sphere that decays at once is dark") << ratio(8, x, t, c, K, huge, 0) << ratio(9, x, t, c, K, 0, 0);
    QTest::newRow("dark sphere without collisions") << ratio(7, x, t, c, K, 0, 0) << ratio(9, x, t, c, K, 0, 0);
    QTest::newRow("nobody beside the probe") << ratio(10, x, t, c, 0, 1e7, kq) << dynamic;
    QTest::newRow("Poisson without collisions") << ratio(10, x, t, c, K, 1e6, 0) << ratio(11, x, t, c, K, 1e6, 0);
    QTest::newRow("all probes in the first site") << ratio(12, x, t, c, 0, kq, 1e7) << dynamic;
    QTest::newRow("sites alike") << ratio(12, x, t, c, 0.7, kq, kq) << dynamic;
    QTest::newRow("second site out of reach") << ratio(12, x, t, c, 0.7, kq, 0) << ratio(13, x, t, c, 0.7, kq, 0);
    QTest::newRow("all probes out of reach") << ratio(13, x, t, c, 1e12, kq, 0) << 1.0;
}

void TestRatioModels::meetInTheirLimits()
{
    QFETCH(double, value);
    QFETCH(double, limit);
    QVERIFY2(near(value, limit, kNearLimit), qPrintable(QString("%1 %2").arg(value).arg(limit)));
}

// A steady-state intensity is the area under the decay, so the two families of laws must agree where both describe
// the same physics. The sphere does so without probe only.
void TestRatioModels::areTheAreaUnderTheDecay_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<double>("Cp");
    QTest::newRow("dynamic") << 1 << kProbe;
    QTest::newRow("complex and dynamic") << 2 << kProbe;
    QTest::newRow("complex") << 4 << kProbe;
    QTest::newRow("sphere") << 8 << 0.0;
    QTest::newRow("two sites") << 12 << kProbe;
    QTest::newRow("one of two sites") << 13 << kProbe;
}

void TestRatioModels::areTheAreaUnderTheDecay()
{
    QFETCH(int, model);
    QFETCH(double, Cp);
    const decay::Reference reference{1, {0, 1}, {0, 1 / kTau0}};
    const fit::Parameters p{0, model == 1 ? 3e9 : 25.0, 2e8, 4e9};
    double area = 0;
    for (const auto& term : decay::quenchedDecay(model, kQuencher, reference, Cp, p))
        area += term.amplitude / term.rate;
    QVERIFY(near(kTau0 / area, ratio(model, kQuencher, kTau0, Cp, p[1], p[2], p[3])));
}

QTEST_APPLESS_MAIN(TestRatioModels)
#include "tst_models.moc"
