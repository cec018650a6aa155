#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QWidget>

#include <functional>

class QPainter;

namespace ui
{

/// A drawing surface that keeps its picture when it is covered, hidden or resized; new area is white.
/// Coordinates are in twips from the top-left corner, outlines one pixel wide.
class PictureSurface : public QWidget
{
    Q_OBJECT

public:
    explicit PictureSurface(QWidget* parent = nullptr);

    double widthTwips() const;
    double heightTwips() const;
    /// The visible part of the picture.
    QImage picture();

    void clear();
    void setFontPoints(int points);

    void drawLine(const QPointF& from, const QPointF& to, const QColor& color);
    void drawPoint(const QPointF& point, const QColor& color);
    /// fill: Qt::NoBrush leaves the inside as it is.
    void drawCircle(const QPointF& centre, double radius, const QColor& color, const QBrush& fill);
    /// Between opposite corners in any order.
    void drawBox(const QPointF& corner, const QPointF& opposite, const QColor& color);
    void fillBox(const QPointF& corner, const QPointF& opposite, const QColor& color);
    /// Black text with its top-left corner at the point.
    void drawText(const QPointF& corner, const QString& text);

    /// Shows rings around these places. They lie over the picture and are not part of it.
    void setRings(const QList<QPointF>& twips);
    /// Returns the tooltip for a place in twips; an empty text shows no tooltip.
    std::function<QString(const QPointF& twips)> tipAt;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    template <typename Draw>
    void draw(Draw drawing);
    void growToWidget();

    QImage m_picture;
    QFont m_labelFont;
    QList<QPointF> m_rings; // twips
};

} // namespace ui
