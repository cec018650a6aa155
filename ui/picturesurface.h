#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QWidget>

#include <functional>

class QPainter;

namespace ui
{

/// A drawing surface whose picture stays as drawn when it is covered, hidden or resized; new area is white.
/// Coordinates are in twips from the top-left corner, outlines one pixel wide.
class PictureSurface : public QWidget
{
    Q_OBJECT

public:
    explicit PictureSurface(QWidget* parent = nullptr);

    double widthTwips() const;
    double heightTwips() const;
    /// The picture as far as the surface shows it.
    QImage picture();

    void clear();
    void setFontPoints(int points);

    void drawLine(double x1, double y1, double x2, double y2, const QColor& color);
    void drawPoint(double x, double y, const QColor& color);
    /// fill: Qt::NoBrush leaves the inside as it is.
    void drawCircle(double x, double y, double radius, const QColor& color, const QBrush& fill);
    /// The points are opposite corners in any order.
    void drawBox(double x1, double y1, double x2, double y2, const QColor& color);
    void fillBox(double x1, double y1, double x2, double y2, const QColor& color);
    /// Black text whose top-left corner stands at the point.
    void drawText(double x, double y, const QString& text);

    /// Rings around these places, shown over the picture and not part of it.
    void setRings(const QList<QPointF>& twips);
    /// What to tell the user about a place, in twips, that is pointed at; an empty text tells nothing.
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
