#include "plot/viewmap.h"

#include <QTest>

#include <limits>

class TestViewMap : public QObject
{
    Q_OBJECT

private slots:
    void roundsDownAndClamps_data();
    void roundsDownAndClamps();
    void fillsTheSurfaceExactly();
    void beforeTheFirstViewEverythingIsAtTheOrigin();
    void degenerateWorldsGoOffTheSurface();
};

void TestViewMap::roundsDownAndClamps_data()
{
    QTest::addColumn<double>("world");
    QTest::addColumn<float>("surface");
    QTest::newRow("down") << 10.9 << 10.0f;
    QTest::newRow("towards minus infinity") << -0.1 << -1.0f;
    QTest::newRow("exactly the limit") << 32767.0 << 32767.0f;
    QTest::newRow("a hair beyond the limit") << 32767.5 << 32767.0f;
    QTest::newRow("beyond the limit") << 40000.0 << 32767.0f;
    QTest::newRow("below the limit") << -40000.0 << -32767.0f;
    QTest::newRow("infinite") << -std::numeric_limits<double>::infinity() << -32767.0f;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 32767.0f;
}

void TestViewMap::roundsDownAndClamps()
{
    QFETCH(double, world);
    const plot::ViewMap map({0, 0, 100, 100}, {100, 100});
    QTEST(map.VtoWX(world), "surface");
    QTEST(map.VtoWY(world), "surface");
}

void TestViewMap::fillsTheSurfaceExactly()
{
    const plot::ViewMap map({-1, 2, 3, -2}, {4000, 3000});
    QCOMPARE(map.VtoWX(-1), 0.0f);
    QCOMPARE(map.VtoWX(3), 4000.0f);
    QCOMPARE(map.VtoWY(2), 0.0f);
    QCOMPARE(map.VtoWY(1), 750.0f);
    QCOMPARE(map.VtoWY(-2), 3000.0f);
}

void TestViewMap::beforeTheFirstViewEverythingIsAtTheOrigin()
{
    QCOMPARE(plot::ViewMap().VtoWX(12.5), 0.0f);
    QCOMPARE(plot::ViewMap().VtoWY(-3), 0.0f);
}

void TestViewMap::degenerateWorldsGoOffTheSurface()
{
    const plot::ViewMap map({2, 2, 2, 2}, {4000, 3000});
    QCOMPARE(map.VtoWX(-5), -32767.0f);
    QCOMPARE(map.VtoWX(5), 32767.0f); // infinity minus infinity
    QCOMPARE(plot::ViewMap({0, 0, 0, 0}, {4000, 3000}).VtoWX(1), 32767.0f);
}

QTEST_APPLESS_MAIN(TestViewMap)
#include "tst_viewmap.moc"
