#include "plot/axis.h"
#include "plot/curvecolor.h"
#include "plot/evensteps.h"
#include "plot/viewmap.h"
#include "tests/support/plotrecorders.h"

#include <QTest>

#include <array>
#include <limits>

using plot::CurveColor;
using plot::ViewMap;
using support::Label;

namespace
{

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();

} // namespace

class TestDrawing : public QObject
{
    Q_OBJECT

private slots:
    void mapsToWholeTwipsWithinTheLimits();
    void coloursSpreadOverTheHues();
    void stepsGiveFewIntervals();
    void linearAxes();
    void powersOfTen();
    void ticksRunToTheFarEdge();
    void noInputRunsAway();
};

void TestDrawing::mapsToWholeTwipsWithinTheLimits()
{
    const std::pair<double, float> cases[]{{10.9, 10},     {-0.1, -1},       {32767, 32767},       {32767.5, 32767},
                                           {40000, 32767}, {-40000, -32767}, {-kInfinity, -32767}, {kNaN, 32767}};
    const ViewMap same({0, 0, 100, 100}, {100, 100});
    for (const auto& [world, surface] : cases) {
        QCOMPARE(same.VtoWX(world), surface);
        QCOMPARE(same.VtoWY(world), surface);
    }
    const ViewMap map({-1, 2, 3, -2}, {4000, 3000});
    QVERIFY(map.VtoWX(-1) == 0);
    QVERIFY(map.VtoWX(3) == 4000);
    QVERIFY(map.VtoWY(2) == 0);
    QVERIFY(map.VtoWY(1) == 750);
    QVERIFY(map.VtoWY(-2) == 3000);
    QVERIFY(ViewMap().VtoWX(12.5) == 0);
    QVERIFY(ViewMap().VtoWY(-3) == 0); // before the first View all is at the origin
    const ViewMap degenerate({2, 2, 2, 2}, {4000, 3000});
    QVERIFY(degenerate.VtoWX(-5) == -32767);
    QVERIFY(degenerate.VtoWX(5) == 32767);
    QCOMPARE(ViewMap({0, 0, 0, 0}, {4000, 3000}).VtoWX(1), 32767.0f);
}

void TestDrawing::coloursSpreadOverTheHues()
{
    QCOMPARE(CurveColor(192, 17, 17), plot::rgb(200, 72, 72)); // points of a single sample
    QCOMPARE(CurveColor(192, 13, 13), plot::rgb(144, 64, 64)); // its line
    QCOMPARE(CurveColor(96, 17, 17), plot::rgb(72, 200, 200));
    QCOMPARE(CurveColor(144, 18, 18), plot::rgb(144, 208, 80));
    QCOMPARE(CurveColor(192, 19, 19), plot::rgb(216, 88, 88));
    QCOMPARE(CurveColor(0, 16, 0), plot::rgb(128, 128, 128));
    QCOMPARE(CurveColor(100, 32, 32), plot::rgb(255, 255, 255)); // 256 is clamped to 255
    QCOMPARE(CurveColor(0, 16, 16), plot::rgb(192, 64, 64));
    QCOMPARE(plot::HueComponent(-64, 8, 24), 8);
    QCOMPARE(plot::HueComponent(202, 8, 24), 13); // as 10, once around the circle
    QCOMPARE(plot::pointColor(1, 1), CurveColor(192, 17, 17));
    QCOMPARE(plot::pointColor(1, 3), CurveColor(96, 17, 17));
    QCOMPARE(plot::pointColor(3, 3), CurveColor(192, 19, 19));
    QCOMPARE(plot::lineColor(2, 3), CurveColor(144, 14, 14));
    QCOMPARE(plot::pointColor(1, 32), plot::rgb(120, 72, 200)); // hue 52.5 goes to the even neighbour
}

void TestDrawing::stepsGiveFewIntervals()
{
    constexpr struct {
        double a, b, step;
    } kCases[]{{0, 10, 2}, {0, 100, 20}, {0, 0.1, 0.1}, {0, 0.001, 0.001}, // a power is just below itself
               {0, 7, 2},  {0, 4, 1},    {0, 5, 1},     {0, 0, 1},         {0, 0.3, 0.1}, {0, 0.6, 0.2}, {3, 1, 1}};
    for (const auto& [a, b, step] : kCases) {
        QCOMPARE(plot::AxisStep(a, b), step);
        QCOMPARE(plot::AxisStep(b, a), step);
    }
}

// 25 twips per x unit from x = -5 on; 4000 twips per y unit from y = 1 down.
void TestDrawing::linearAxes()
{
    support::RecordingSurface surface;
    const plot::ViewMap map({-5, 1.0, 235, -0.25}, {6000, 5000});
    const auto [xt, yt] = plot::drawAxis(surface, map, {"##0", plot::kLinearLabels}, {100, 0.5});
    QCOMPARE(xt, 100.0);
    QCOMPARE(yt, -0.5); // y steps downwards
    QCOMPARE(surface.clears, 1);
    QCOMPARE(surface.fontPoints, 10);
    // x: 4 twips to the left per character of "-100", " 0", " 100"; y: 6 pixels of 15 twips per character
    const std::vector<Label> expected{
        {-2375 - 16, 4002, "-1.e+2"}, {125 - 8, 4002, "0.e+0"}, {2625 - 16, 4002, "1.e+2"}, {5125 - 16, 4002, "2.e+2"},
        {125 - 90, 0, "1"},           {125 - 90, 2000, "1"},    {125 - 90, 4000, "0"}};
    QVERIFY(surface.labels == expected);
    using plot::kBlack, plot::kLightGrey;
    const std::vector<support::Line> lines{{{-2375, 0, -2375, 5000}, kLightGrey}, {{125, 0, 125, 5000}, kLightGrey},
                                           {{2625, 0, 2625, 5000}, kLightGrey},   {{5125, 0, 5125, 5000}, kLightGrey},
                                           {{0, 0, 6000, 0}, kLightGrey},         {{0, 2000, 6000, 2000}, kLightGrey},
                                           {{0, 4000, 6000, 4000}, kLightGrey},   {{0, 4000, 6000, 4000}, kBlack},
                                           {{125, 0, 125, 5000}, kBlack}}; // the axes last, over the grid
    QVERIFY(surface.lines == lines);
}

void TestDrawing::powersOfTen()
{
    support::RecordingSurface surface;
    const plot::ViewMap map({0, 0, 100, -2.5}, {5000, 5000});
    plot::drawAxis(surface, map, {"##0", plot::kPowerLabels}, {200, 1});
    // "0.e+0" is 5 characters wide, "-1.e+0" 6: 4 pixels each to the "10", 2 to the exponent, raised by 8 pixels
    const std::vector<Label> expected{{-8, 2, "0.e+0"},   {-300, 0, "1"},     {-360, 2000, "10"},
                                      {-180, 1880, "-1"}, {-360, 4000, "10"}, {-180, 3880, "-2"}};
    QVERIFY(surface.labels == expected);
}

void TestDrawing::ticksRunToTheFarEdge()
{
    support::RecordingSurface surface;
    plot::drawAxis(surface, plot::ViewMap({-5, 1.05, 100, -0.05}, {5000, 5000}), {"##0", 0}, {20, 0.2});
    QCOMPARE(surface.lines.size(), 7u + 6u + 2u); // -20, 0 .. 100; 1.0, 0.8 .. 0.0; axes

    QCOMPARE(plot::evenSteps(0, 1e-8, 1e-9).size(), 11u); // a time axis in seconds

    support::RecordingSurface mirrored;
    const plot::ViewMap mirror({100, 1.05, -5, -0.05}, {5000, 5000});
    QCOMPARE(plot::drawAxis(mirrored, mirror, {"##0", 0}, {20, 0.2}).x, -20.0);
    QCOMPARE(mirrored.lines.size(), 6u + 6u + 2u); // 100, 80 .. 0

    support::RecordingSurface unlabelled;
    plot::drawAxis(unlabelled, plot::ViewMap({0, 0, 100, -2.5}, {5000, 5000}), {"##0", 2}, {200, 1});
    QCOMPARE(unlabelled.labels.size(), 1u); // other modes have no y labels
    QCOMPARE(unlabelled.lines.size(), 6u);
}

void TestDrawing::noInputRunsAway()
{
    const std::array<double, 9> hostile{0, 1, -1, kNaN, kInfinity, -kInfinity, kLargest, -kLargest, kSmallest};
    for (const double edge : hostile)
        for (const double far : hostile)
            for (const double spacing : hostile) {
                support::RecordingSurface surface;
                const plot::ViewMap map({edge, edge, far, far}, {5000, 5000});
                plot::drawAxis(surface, map, {"##0", 1}, {spacing, spacing});
                QVERIFY(surface.lines.size() <= 2002);
            }
}

QTEST_APPLESS_MAIN(TestDrawing)
#include "tst_drawing.moc"
