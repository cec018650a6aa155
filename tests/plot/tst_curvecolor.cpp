#include "plot/curvecolor.h"

#include <QTest>

using plot::Color;

class TestCurveColor : public QObject
{
    Q_OBJECT

private slots:
    void mixesHueLightnessAndSaturation_data();
    void mixesHueLightnessAndSaturation();
    void samplesSpreadOverTheHues();
};

void TestCurveColor::mixesHueLightnessAndSaturation_data()
{
    QTest::addColumn<int>("h");
    QTest::addColumn<int>("LS");
    QTest::addColumn<int>("S");
    QTest::addColumn<Color>("color");
    QTest::newRow("one sample, points") << 192 << 17 << 17 << plot::rgb(200, 72, 72);
    QTest::newRow("one sample, line") << 192 << 13 << 13 << plot::rgb(144, 64, 64);
    QTest::newRow("cyan") << 96 << 17 << 17 << plot::rgb(72, 200, 200);
    QTest::newRow("green") << 144 << 18 << 18 << plot::rgb(144, 208, 80);
    QTest::newRow("brighter red") << 192 << 19 << 19 << plot::rgb(216, 88, 88);
    QTest::newRow("grey") << 0 << 16 << 0 << plot::rgb(128, 128, 128);
    QTest::newRow("256 is held at 255") << 100 << 32 << 32 << plot::rgb(255, 255, 255);
    QTest::newRow("lightness 16 takes the darker formula") << 0 << 16 << 16 << plot::rgb(192, 64, 64);
}

void TestCurveColor::mixesHueLightnessAndSaturation()
{
    QFETCH(int, h);
    QFETCH(int, LS);
    QFETCH(int, S);
    QTEST(plot::CurveColor(h, LS, S), "color");
}

void TestCurveColor::samplesSpreadOverTheHues()
{
    QCOMPARE(plot::HueComponent(-64, 8, 24), 8);
    QCOMPARE(plot::pointColor(1, 1), plot::CurveColor(192, 17, 17));
    QCOMPARE(plot::pointColor(1, 3), plot::CurveColor(96, 17, 17));
    QCOMPARE(plot::pointColor(3, 3), plot::CurveColor(192, 19, 19));
    QCOMPARE(plot::lineColor(2, 3), plot::CurveColor(144, 14, 14));
    QCOMPARE(plot::pointColor(1, 32), plot::CurveColor(52, 17, 17)); // 52.5 goes to the even neighbour
}

QTEST_APPLESS_MAIN(TestCurveColor)
#include "tst_curvecolor.moc"
