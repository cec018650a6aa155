#include "ui/picturesurface.h"
#include "ui/twips.h"

#include <QAccessible>
#include <QTest>

namespace
{

constexpr double kTwipsPerPixel = 15; // at the 96 dots per inch of the test platform
const QColor kWhite(Qt::white);
const QColor kRed(255, 0, 0);

QRect inkOf(const QImage& picture)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) != kWhite)
                ink |= QRect(x, y, 1, 1);
    return ink;
}

} // namespace

class TestPictureSurface : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void drawsInTwipsWhileHidden();
    void circlesAreFilledOrLeftOpen();
    void picturesSurviveResizing();
    void textHangsFromItsCorner();
    void isAPictureForScreenReaders();

private:
    QColor at(int x, int y) { return m_surface->picture().pixelColor(x, y); }

    std::unique_ptr<ui::PictureSurface> m_surface;
};

void TestPictureSurface::init()
{
    QCOMPARE(ui::twipsPerPixel(), kTwipsPerPixel);
    m_surface = std::make_unique<ui::PictureSurface>();
    m_surface->resize(100, 80);
}

void TestPictureSurface::drawsInTwipsWhileHidden()
{
    QCOMPARE(m_surface->widthTwips(), 1500.0);
    QCOMPARE(m_surface->heightTwips(), 1200.0);
    m_surface->fillBox(450, 300, 150, 150, kRed);
    QCOMPARE(at(10, 10), kRed);
    QCOMPARE(at(29, 19), kRed);
    QCOMPARE(at(31, 21), kWhite);
    m_surface->drawBox(600, 600, 900, 900, kRed);
    QCOMPARE(at(40, 50), kRed);
    QCOMPARE(at(50, 50), kWhite);
    m_surface->drawPoint(75, 1050, kRed);
    QCOMPARE(at(5, 70), kRed);
    m_surface->drawLine(0, 1125, 32767, 1125, kRed);
    QCOMPARE(at(99, 75), kRed);
    m_surface->clear();
    QCOMPARE(at(10, 10), kWhite);
}

void TestPictureSurface::circlesAreFilledOrLeftOpen()
{
    m_surface->drawCircle(450, 600, 300, kRed, kRed);
    m_surface->drawCircle(1050, 600, 300, kRed, Qt::NoBrush);
    QCOMPARE(at(30, 40), kRed);
    QCOMPARE(at(70, 40), kWhite);
    QVERIFY(at(90, 40) != kWhite);
}

void TestPictureSurface::picturesSurviveResizing()
{
    m_surface->fillBox(1350, 0, 1500, 150, kRed);
    m_surface->resize(50, 40);
    QCOMPARE(m_surface->picture().size(), QSize(50, 40));
    m_surface->show();
    m_surface->hide();
    m_surface->resize(200, 160);
    QCOMPARE(at(95, 5), kRed);
    QCOMPARE(at(199, 159), kWhite);
    QCOMPARE(m_surface->grab().toImage().pixelColor(95, 5), kRed);
}

void TestPictureSurface::textHangsFromItsCorner()
{
    m_surface->drawText(150, 300, "10");
    const QRect ink = inkOf(m_surface->picture());
    QVERIFY2(ink.left() >= 10 && ink.left() < 15, qPrintable(QString::number(ink.left())));
    QVERIFY2(ink.top() >= 20 && ink.bottom() < 37, qPrintable(QString::number(ink.bottom())));
    m_surface->clear();
    m_surface->drawText(1350, 300, "1.e-2");
    const QRect moved = inkOf(m_surface->picture());
    QVERIFY2(moved.left() < 90 && moved.right() < 99, "a label at the right edge moves left until it fits");
    m_surface->clear();
    m_surface->drawText(32767, 300, "off the surface");
    QVERIFY(inkOf(m_surface->picture()).isNull());
}

void TestPictureSurface::isAPictureForScreenReaders()
{
    m_surface->setAccessibleName("Plot");
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(m_surface.get());
    QVERIFY(reader);
    QCOMPARE(reader->role(), QAccessible::Graphic);
    QCOMPARE(reader->text(QAccessible::Name), "Plot");
}

QTEST_MAIN(TestPictureSurface)
#include "tst_picturesurface.moc"
