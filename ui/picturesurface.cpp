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

QPointF pixels(const QPointF& twips) { return twips / twipsPerPixel(); }

QRectF pixelBox(const QPointF& corner, const QPointF& opposite)
{
    return QRectF(pixels(corner), pixels(opposite)).normalized();
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

void PictureSurface::drawLine(const QPointF& from, const QPointF& to, const QColor& color)
{
    draw([&](QPainter& painter) {
        painter.setRenderHint(QPainter::Antialiasing,
                              from.x() != to.x() && from.y() != to.y()); // upright lines stay sharp
        painter.setPen(color);
        painter.drawLine(pixels(from), pixels(to));
    });
}

void PictureSurface::drawPoint(const QPointF& point, const QColor& color)
{
    draw([&](QPainter& painter) {
        painter.setPen(color);
        painter.drawPoint(pixels(point));
    });
}

void PictureSurface::drawCircle(const QPointF& centre, double radius, const QColor& color, const QBrush& fill)
{
    draw([&](QPainter& painter) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(color);
        painter.setBrush(fill);
        painter.drawEllipse(pixels(centre), radius / twipsPerPixel(), radius / twipsPerPixel());
    });
}

void PictureSurface::drawBox(const QPointF& corner, const QPointF& opposite, const QColor& color)
{
    draw([&](QPainter& painter) {
        painter.setPen(color);
        painter.drawRect(pixelBox(corner, opposite));
    });
}

void PictureSurface::fillBox(const QPointF& corner, const QPointF& opposite, const QColor& color)
{
    draw([&](QPainter& painter) { painter.fillRect(pixelBox(corner, opposite), color); });
}

void PictureSurface::drawText(const QPointF& corner, const QString& text)
{
    draw([&](QPainter& painter) {
        painter.setFont(m_labelFont);
        painter.setPen(Qt::black);
        QPointF place = pixels(corner);
        if (place.x() < width()) // a label that starts on the surface also ends on it
            place.setX(std::min(place.x(), width() - painter.fontMetrics().horizontalAdvance(text) - 1.0));
        painter.drawText(place + QPointF(0, painter.fontMetrics().ascent()), text);
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
