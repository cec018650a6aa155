#include "trust/residualplot.h"

#include "fit/numbertext.h"
#include "plot/axis.h"
#include "plot/evensteps.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace trust
{
namespace
{

constexpr double kRadius = 3; // of a point, pixels

/// Numbers at an axis from 0 to an end.
std::vector<double> ticks(double end) { return plot::evenSteps(0, end, plot::AxisStep(0, end)); }

QString tickText(double value)
{
    const double size = std::abs(value);
    const bool plain = size == 0 || (size >= 1e-3 && size < 1e5);
    return QString::fromStdString(plain ? fit::plainText(value) : fit::formatNumber(value, "0.0e+0"));
}

/// The largest width of the numbers at the vertical axis.
int widestText(const QFontMetrics& metrics, double largest)
{
    int width = 0;
    for (const double tick : ticks(largest))
        width = std::max(width, metrics.horizontalAdvance(tickText(-tick)));
    return width;
}

/// From data to pixels.
struct Scale {
    QRectF area;    // of the points; zero residuals are at half its height
    double widest;  // positive
    double largest; // positive

    double x(double concentration) const { return area.left() + concentration / widest * area.width(); }
    double y(double residual) const { return area.center().y() - residual / largest * area.height() / 2; }
};

void drawAxes(QPainter& painter, const Scale& scale, const QPalette& palette)
{
    const QFontMetrics metrics = painter.fontMetrics();
    const double left = scale.area.left() - 2 * kRadius, bottom = scale.area.bottom() + 2 * kRadius;
    const auto line = [&](const QPointF& from, const QPointF& to, bool strong) {
        painter.setPen(strong ? palette.color(QPalette::Text) : palette.color(QPalette::Mid));
        painter.drawLine(from, to);
    };
    const auto text = [&](const QRectF& room, Qt::Alignment alignment, const QString& words) {
        painter.setPen(palette.color(QPalette::Text));
        painter.drawText(room, static_cast<int>(alignment) | Qt::TextDontClip, words);
    };
    const auto level = [&](double value) {
        const double y = scale.y(value);
        line({left, y}, {scale.area.right(), y}, value == 0);
        text({0, y - metrics.height() / 2.0, left - metrics.averageCharWidth(), double(metrics.height())},
             Qt::AlignRight | Qt::AlignVCenter, tickText(value));
    };
    for (const double size : ticks(scale.largest)) {
        level(size);
        if (size > 0)
            level(-size);
    }
    for (const double value : ticks(scale.widest)) {
        const double x = scale.x(value);
        line({x, scale.area.top()}, {x, bottom}, false);
        text({x - 1, bottom, 2, double(metrics.height())}, Qt::AlignHCenter | Qt::AlignTop, tickText(value));
    }
    text({0, 0, scale.area.right(), double(metrics.height())}, Qt::AlignLeft | Qt::AlignTop,
         ResidualPlot::tr("Residual"));
    text({0, bottom + metrics.height(), scale.area.right(), double(metrics.height())}, Qt::AlignRight | Qt::AlignTop,
         ResidualPlot::tr("Q /M"));
}

} // namespace

ResidualPlot::ResidualPlot(QWidget* parent) : QWidget(parent)
{
    setObjectName("picResiduals");
    setAccessibleName(tr("Plot of the residuals; their list holds the same numbers"));
}

void ResidualPlot::setPoints(const QVector<QPointF>& points)
{
    m_points.clear();
    m_widest = m_largest = 0;
    for (const QPointF& point : points)
        if (std::isfinite(point.x()) && std::isfinite(point.y())) {
            m_points << point;
            m_widest = std::max(m_widest, point.x());
            m_largest = std::max(m_largest, std::abs(point.y()));
        }
    update();
}

QSize ResidualPlot::minimumSizeHint() const
{
    constexpr int kCharacters = 30, kLines = 9; // room for five numbers on either side of zero
    return {kCharacters * fontMetrics().averageCharWidth(), kLines * fontMetrics().height()};
}

void ResidualPlot::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(Qt::LeftToRight); // else a right-to-left desktop shows "-4.1" as "4.1-"
    painter.fillRect(rect(), palette().color(QPalette::Base));
    const QFontMetrics metrics = painter.fontMetrics();
    const double margin = metrics.averageCharWidth() + 3 * kRadius;
    const QMarginsF numbers(widestText(metrics, m_largest) + margin, 1.5 * metrics.height(), 2 * margin,
                            2.5 * metrics.height());
    const Scale scale{QRectF(rect()).marginsRemoved(numbers), m_widest > 0 ? m_widest : 1,
                      m_largest > 0 ? m_largest : 1};
    drawAxes(painter, scale, palette());
    painter.setPen(Qt::red);
    painter.setBrush(Qt::red);
    for (const QPointF& point : m_points)
        painter.drawEllipse(QPointF(scale.x(point.x()), scale.y(point.y())), kRadius, kRadius);
}

} // namespace trust
