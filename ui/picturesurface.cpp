#include "ui/picturesurface.h"

#include "ui/fittingfont.h"
#include "ui/twips.h"

#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace ui
{
namespace
{

constexpr int kLabelPoints = 10;
constexpr double kTwipsPerPoint = 20;
constexpr double kRingTwips = 75;    // radius: a rim around the largest marker
constexpr double kRingPen = 1.5;     // pixels
constexpr double kDigitWidth = 0.45; // of the font's height: 6 of 13.3 pixels, as label positions assume

/// Tells assistive technology that the surface is a picture.
QAccessibleInterface* accessibleSurface(const QString&, QObject* object)
{
    auto* surface = qobject_cast<PictureSurface*>(object);
    return surface ? new QAccessibleWidget(surface, QAccessible::Graphic) : nullptr;
}

QPointF pixels(double x, double y) { return QPointF(x, y) / twipsPerPixel(); }

QRectF pixelBox(double x1, double y1, double x2, double y2)
{
    return QRectF(pixels(std::min(x1, x2), std::min(y1, y2)), pixels(std::max(x1, x2), std::max(y1, y2)));
}

} // namespace

PictureSurface::PictureSurface(QWidget* parent) : QWidget(parent)
{
    static const bool installed = (QAccessible::installFactory(accessibleSurface), true);
    Q_UNUSED(installed);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFontPoints(kLabelPoints);
}

double PictureSurface::widthTwips() const { return width() * twipsPerPixel(); }

double PictureSurface::heightTwips() const { return height() * twipsPerPixel(); }

QImage PictureSurface::picture()
{
    growToWidget();
    QImage shown = m_picture.copy(QRect(QPoint(0, 0), size() * m_picture.devicePixelRatio()));
    shown.setDevicePixelRatio(m_picture.devicePixelRatio());
    return shown;
}

// Stored in pixels of the picture, because a hidden window gets no resize event.
void PictureSurface::growToWidget()
{
    const qreal ratio = m_picture.isNull() ? devicePixelRatioF() : m_picture.devicePixelRatio();
    const QSize needed = (QSizeF(size()) * ratio).toSize().expandedTo(m_picture.size()).expandedTo({1, 1});
    if (needed == m_picture.size())
        return;
    QImage grown(needed, QImage::Format_RGB32);
    grown.fill(Qt::white);
    grown.setDevicePixelRatio(ratio);
    if (!m_picture.isNull())
        QPainter(&grown).drawImage(0, 0, m_picture);
    m_picture = grown;
}

template <typename Draw>
void PictureSurface::draw(Draw drawing)
{
    growToWidget();
    QPainter painter(&m_picture);
    drawing(painter);
    update();
}

void PictureSurface::clear()
{
    m_picture = QImage(); // the next one has the resolution of the screen that now shows the window
    growToWidget();
    update();
}

void PictureSurface::setFontPoints(int points)
{
    QFont natural = font();
    natural.setPixelSize(std::max(1, toPixels(points * kTwipsPerPoint)));
    m_labelFont = fittingFont(natural, "0", kDigitWidth * natural.pixelSize());
}

void PictureSurface::drawLine(double x1, double y1, double x2, double y2, const QColor& color)
{
    draw([&](QPainter& painter) {
        painter.setRenderHint(QPainter::Antialiasing, x1 != x2 && y1 != y2); // upright lines stay sharp
        painter.setPen(color);
        painter.drawLine(pixels(x1, y1), pixels(x2, y2));
    });
}

void PictureSurface::drawPoint(double x, double y, const QColor& color)
{
    draw([&](QPainter& painter) {
        painter.setPen(color);
        painter.drawPoint(pixels(x, y));
    });
}

void PictureSurface::drawCircle(double x, double y, double radius, const QColor& color, const QBrush& fill)
{
    draw([&](QPainter& painter) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(color);
        painter.setBrush(fill);
        painter.drawEllipse(pixels(x, y), radius / twipsPerPixel(), radius / twipsPerPixel());
    });
}

void PictureSurface::drawBox(double x1, double y1, double x2, double y2, const QColor& color)
{
    draw([&](QPainter& painter) {
        painter.setPen(color);
        painter.drawRect(pixelBox(x1, y1, x2, y2));
    });
}

void PictureSurface::fillBox(double x1, double y1, double x2, double y2, const QColor& color)
{
    draw([&](QPainter& painter) { painter.fillRect(pixelBox(x1, y1, x2, y2), color); });
}

void PictureSurface::drawText(double x, double y, const QString& text)
{
    draw([&](QPainter& painter) {
        painter.setFont(m_labelFont);
        painter.setPen(Qt::black);
        QPointF corner = pixels(x, y);
        if (corner.x() < width()) // a label that starts on the surface also ends on it
            corner.setX(std::min(corner.x(), width() - painter.fontMetrics().horizontalAdvance(text) - 1.0));
        painter.drawText(corner + QPointF(0, painter.fontMetrics().ascent()), text);
    });
}

void PictureSurface::paintEvent(QPaintEvent*)
{
    growToWidget();
    QPainter painter(this);
    painter.drawImage(0, 0, m_picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, kRingPen));
    for (const QPointF& ring : m_rings)
        painter.drawEllipse(ring / twipsPerPixel(), kRingTwips / twipsPerPixel(), kRingTwips / twipsPerPixel());
}

void PictureSurface::setRings(const QList<QPointF>& twips)
{
    m_rings = twips;
    update();
}

bool PictureSurface::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !tipAt)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), tipAt(QPointF(help->pos()) * twipsPerPixel()), this);
    return true;
}

} // namespace ui
