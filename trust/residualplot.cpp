#include "trust/residualplot.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace trust
{

ResidualPlot::ResidualPlot(QWidget* parent) : QWidget(parent)
{
    setObjectName("picResiduals");
    setAccessibleName(tr("Plot of the residuals; their list holds the same numbers"));
    setMinimumSize(120, 90);
}

void ResidualPlot::setPoints(const QVector<QPointF>& points)
{
    m_points = points;
    update();
}

void ResidualPlot::paintEvent(QPaintEvent*)
{
    constexpr double kMargin = 8, kRadius = 3; // pixels
    double widest = 0, largest = 0;
    for (const QPointF& point : m_points)
        if (std::isfinite(point.x()) && std::isfinite(point.y())) {
            widest = std::max(widest, point.x());
            largest = std::max(largest, std::abs(point.y()));
        }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), Qt::white);
    const double middle = height() / 2.0;
    painter.setPen(Qt::gray);
    painter.drawLine(QPointF(0, middle), QPointF(width(), middle));
    painter.setPen(Qt::red);
    painter.setBrush(Qt::red);
    for (const QPointF& point : m_points)
        if (std::isfinite(point.x()) && std::isfinite(point.y()))
            painter.drawEllipse(QPointF(kMargin + (widest > 0 ? point.x() / widest : 0) * (width() - 2 * kMargin),
                                        middle - (largest > 0 ? point.y() / largest : 0) * (middle - kMargin)),
                                kRadius, kRadius);
}

} // namespace trust
