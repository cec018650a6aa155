#include "ui/picturesurface.h"
#include "ui/twips.h"

#include <QTest>

namespace
{

constexpr double kTwipsPerPixel = 15; // at the 96 dots per inch of the test platform
const QColor kWhite(Qt::white);

/// In pixels of the window.
QRectF inkOf(const QImage& picture)
{
    const qreal ratio = picture.devicePixelRatio();
    QRectF ink;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) != kWhite)
                ink |= QRectF(QPointF(x, y) / ratio, QSizeF(1, 1) / ratio);
    return ink;
}

} // namespace

class TestPictureSurface : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void textHangsFromItsCorner();

private:
    std::unique_ptr<ui::PictureSurface> m_surface;
};

void TestPictureSurface::init()
{
    QCOMPARE(ui::twipsPerPixel(), kTwipsPerPixel);
    m_surface = std::make_unique<ui::PictureSurface>();
    m_surface->resize(100, 80);
}

void TestPictureSurface::textHangsFromItsCorner()
{
    m_surface->drawText({150, 300}, "10");
    const QRectF ink = inkOf(m_surface->picture());
    QVERIFY2(ink.left() >= 10 && ink.left() < 15, qPrintable(QString::number(ink.left())));
    QVERIFY2(ink.top() >= 20, qPrintable(QString::number(ink.top())));
    QVERIFY2(ink.bottom() <= 37, qPrintable(QString::number(ink.bottom())));
    m_surface->clear();
    m_surface->drawText({1350, 300}, "1.e-2");
    const QRectF moved = inkOf(m_surface->picture());
    QVERIFY2(moved.left() < 90, "a label at the right edge moves left until it fits");
    QVERIFY2(moved.right() <= 99, "a label at the right edge moves left until it fits");
    m_surface->clear();
    m_surface->drawText({32767, 300}, "off the surface");
    QVERIFY(inkOf(m_surface->picture()).isNull());
}

QTEST_MAIN(TestPictureSurface)
#include "tst_picturesurface.moc"
