#include "plot/axis.h"
#include "tests/support/plotrecorders.h"

#include <QTest>

#include <array>
#include <limits>

using support::Label;

namespace
{

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();

} // namespace

class TestAxis : public QObject
{
    Q_OBJECT

private slots:
    void stepsGiveFewIntervals_data();
    void stepsGiveFewIntervals();
    void linearAxes();
    void powersOfTen();
    void otherModesHaveNoYLabels();
    void axesAreDrawnLast();
    void noInputRunsAway();
};

void TestAxis::stepsGiveFewIntervals_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<double>("step");
    QTest::newRow("ten is just below its power") << 0.0 << 10.0 << 2.0;
    QTest::newRow("hundred too") << 0.0 << 100.0 << 20.0;
    QTest::newRow("tenth") << 0.0 << 0.1 << 0.1;
    QTest::newRow("thousandth") << 0.0 << 0.001 << 0.001;
    QTest::newRow("more than five") << 0.0 << 7.0 << 2.0;
    QTest::newRow("fewer") << 0.0 << 4.0 << 1.0;
    QTest::newRow("exactly five") << 0.0 << 5.0 << 1.0;
    QTest::newRow("nothing") << 0.0 << 0.0 << 1.0;
    QTest::newRow("fraction") << 0.0 << 0.3 << 0.1;
    QTest::newRow("larger fraction") << 0.0 << 0.6 << 0.2;
    QTest::newRow("either order") << 3.0 << 1.0 << 1.0;
}

void TestAxis::stepsGiveFewIntervals()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QTEST(plot::AxisStep(a, b), "step");
    QTEST(plot::AxisStep(b, a), "step");
}

// 25 twips per x unit from x = -5 on; 5000 twips for 1.25 y units.
void TestAxis::linearAxes()
{
    support::RecordingSurface surface;
    const plot::ViewMap map({-5, 1.0, 195, -0.25}, {5000, 5000});
    double xt = 100, yt = 0.5;
    plot::drawAxis(surface, map, "##0", xt, yt, plot::kLinearLabels);
    QCOMPARE(xt, 100.0);
    QCOMPARE(yt, -0.5); // y is walked downwards
    QCOMPARE(surface.clears, 1);
    QCOMPARE(surface.fontPoints, 10);
    // x: 4 twips to the left per character of "-100", " 0", " 100"; y: 6 pixels of 15 twips per character
    const std::vector<Label> expected{{-2375 - 16, 4002, "-1.e+2"}, {125 - 8, 4002, "0.e+0"},
                                      {2625 - 16, 4002, "1.e+2"},   {125 - 90, 0, "1"},
                                      {125 - 90, 2000, "1"},        {125 - 90, 4000, "0"}};
    QVERIFY(surface.labels == expected);
}

void TestAxis::powersOfTen()
{
    support::RecordingSurface surface;
    const plot::ViewMap map({0, 0, 100, -2.5}, {5000, 5000});
    double xt = 200, yt = 1;
    plot::drawAxis(surface, map, "##0", xt, yt, plot::kPowerLabels);
    // "0.e+0" is 5 characters wide, "-1.e+0" 6: 4 pixels each to the "10", 2 to the exponent, raised by 8 pixels
    const std::vector<Label> expected{{-8, 2, "0.e+0"},   {-300, 0, "1"},     {-360, 2000, "10"},
                                      {-180, 1880, "-1"}, {-360, 4000, "10"}, {-180, 3880, "-2"}};
    QVERIFY(surface.labels == expected);
}

void TestAxis::otherModesHaveNoYLabels()
{
    support::RecordingSurface surface;
    double xt = 200, yt = 1;
    plot::drawAxis(surface, plot::ViewMap({0, 0, 100, -2.5}, {5000, 5000}), "##0", xt, yt, 2);
    QCOMPARE(surface.labels.size(), 1u);
    QCOMPARE(surface.lines.size(), 6u);
}

void TestAxis::axesAreDrawnLast()
{
    support::RecordingSurface surface;
    double xt = 20, yt = 0.2;
    plot::drawAxis(surface, plot::ViewMap({-5, 1.05, 100, -0.05}, {5000, 5000}), "##0", xt, yt, 0);
    QCOMPARE(surface.lines.size(), 7u + 6u + 2u); // -20, 0 .. 100; 1.0, 0.8 .. 0.0; axes
    for (std::size_t i = 0; i < surface.lines.size(); ++i)
        QCOMPARE(surface.lines[i].c, i < 13 ? plot::kLightGrey : plot::kBlack);
    const support::Line& across = surface.lines[13];
    const support::Line& down = surface.lines[14];
    QCOMPARE(across.y1, across.y2);
    QCOMPARE(across.x2, 5000.0);
    QCOMPARE(down.x1, down.x2);
    QCOMPARE(down.y2, 5000.0);
}

void TestAxis::noInputRunsAway()
{
    const std::array<double, 9> hostile{0, 1, -1, kNaN, kInfinity, -kInfinity, kLargest, -kLargest, kSmallest};
    for (const double edge : hostile)
        for (const double far : hostile)
            for (const double spacing : hostile) {
                support::RecordingSurface surface;
                double xt = spacing, yt = spacing;
                plot::drawAxis(surface, plot::ViewMap({edge, edge, far, far}, {5000, 5000}), "##0", xt, yt, 1);
                QVERIFY(surface.lines.size() <= 2002);
            }
}

QTEST_APPLESS_MAIN(TestAxis)
#include "tst_axis.moc"
