#include "trust/seriesplot.h"

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

constexpr double kRadius = 3; // of a mark, pixels

/// Numbers at an axis from 0 to an end: at least three, but not more steps than there is room for.
std::vector<double> ticks(double end, double mostSteps = plot::kMaxSteps)
{
    double step = plot::AxisStep(0, end);
    if (end / step < 2)
        step /= 2;
    if (end / step > mostSteps)
        step *= 2;
    return plot::evenSteps(0, end, step);
}

QString tickText(double value)
{
    const double size = std::abs(value);
    const bool plain = size == 0 || (size >= 1e-3 && size < 1e5);
    return QString::fromStdString(plain ? fit::plainText(value) : fit::formatNumber(value, "0.0e+0"));
}

/// From data to pixels.
struct Scale {
    QRectF area; // of the points
    double widest, lowest, highest;

    double x(double concentration) const { return area.left() + concentration / widest * area.width(); }
    double y(double value) const { return area.bottom() - (value - lowest) / (highest - lowest) * area.height(); }
    QPointF at(const QPointF& point) const { return {x(point.x()), y(point.y())}; }
};

void drawText(QPainter& painter, const QRectF& room, Qt::Alignment alignment, const QString& words)
{
    painter.drawText(room, static_cast<int>(alignment) | Qt::TextDontClip, words);
}

void drawAxes(QPainter& painter, const Scale& scale, const QPalette& palette)
{
    const QFontMetrics metrics = painter.fontMetrics();
    const double left = scale.area.left() - 2 * kRadius, bottom = scale.area.bottom() + 2 * kRadius;
    const double height = metrics.height();
    const auto line = [&](const QPointF& from, const QPointF& to, bool strong) {
        painter.setPen(strong ? palette.color(QPalette::Text) : palette.color(QPalette::Mid));
        painter.drawLine(from, to);
        painter.setPen(palette.color(QPalette::Text));
    };
    const auto level = [&](double value) {
        const double y = scale.y(value);
        line({left, y}, {scale.area.right(), y}, value == 0);
        drawText(painter, {0, y - height / 2, left - metrics.averageCharWidth(), height},
                 Qt::AlignRight | Qt::AlignVCenter, tickText(value));
    };
    const double room = scale.y(0) - scale.area.top();
    for (const double size : ticks(scale.highest, room / height)) {
        level(size);
        if (size > 0 && scale.lowest < 0)
            level(-size);
    }
    for (const double value : ticks(scale.widest)) {
        const double x = scale.x(value);
        line({x, scale.area.top()}, {x, bottom}, false);
        drawText(painter, {x - 1, bottom, 2, height}, Qt::AlignHCenter | Qt::AlignTop, tickText(value));
    }
    drawText(painter, {0, bottom + height, scale.area.right(), height}, Qt::AlignRight | Qt::AlignTop,
             SeriesPlot::tr("Q /M"));
}

bool isLine(Mark mark) { return mark == Mark::Line || mark == Mark::DashedLine; }

void drawMark(QPainter& painter, Mark mark, const QPointF& at)
{
    const QPointF across(kRadius, 0), up(0, kRadius);
    if (mark == Mark::Disc)
        painter.drawEllipse(at, kRadius, kRadius);
    else if (mark == Mark::Square)
        painter.drawRect(QRectF(at - across - up, at + across + up));
    else
        painter.drawPolygon(QPolygonF{at - 1.5 * across, at - 1.5 * up, at + 1.5 * across, at + 1.5 * up});
}

/// Squares and diamonds are empty, so that a disc at the same place stays visible.
void drawSeries(QPainter& painter, const Series& series, const QPolygonF& places)
{
    constexpr double kPen = 1.5; // pixels
    painter.setPen(QPen(series.color, kPen, series.mark == Mark::DashedLine ? Qt::DashLine : Qt::SolidLine));
    painter.setBrush(series.mark == Mark::Disc ? QBrush(series.color) : QBrush(Qt::NoBrush));
    if (isLine(series.mark))
        return painter.drawPolyline(places);
    for (const QPointF& place : places)
        drawMark(painter, series.mark, place);
}

} // namespace

SeriesPlot::SeriesPlot(const char* name, const QString& quantity, Range range, QWidget* parent)
    : QWidget(parent), m_quantity(quantity), m_range(range)
{
    setObjectName(name);
}

void SeriesPlot::setSeries(const QVector<Series>& series)
{
    m_series = series;
    m_widest = m_largest = 0;
    for (Series& one : m_series) {
        one.points.removeIf([](const QPointF& p) { return !std::isfinite(p.x()) || !std::isfinite(p.y()); });
        for (const QPointF& point : one.points) {
            m_widest = std::max(m_widest, point.x());
            m_largest = std::max(m_largest, std::abs(point.y()));
        }
    }
    update();
}

void SeriesPlot::alignColumns(SeriesPlot& above, SeriesPlot& below)
{
    above.m_neighbour = &below;
    below.m_neighbour = &above;
}

QSize SeriesPlot::minimumSizeHint() const
{
    constexpr int kCharacters = 30, kLines = 9; // room for five numbers on either side of zero
    return {kCharacters * fontMetrics().averageCharWidth(), kLines * fontMetrics().height()};
}

int SeriesPlot::widestNumber() const
{
    int width = 0;
    for (const double tick : ticks(m_largest))
        width = std::max(width, fontMetrics().horizontalAdvance(tickText(m_range == Range::AroundZero ? -tick : tick)));
    return width;
}

/// Entries stand behind the name of the quantity and wrap.
QVector<SeriesPlot::LegendEntry> SeriesPlot::legend() const
{
    const QFontMetrics metrics = fontMetrics();
    const int gap = 2 * metrics.averageCharWidth(), height = metrics.height();
    const double sample = 2.0 * height;
    QVector<LegendEntry> entries;
    QPointF corner(metrics.horizontalAdvance(m_quantity) + gap, 0);
    for (const Series& series : m_series) {
        if (series.name.isEmpty())
            continue;
        const double room = sample + metrics.horizontalAdvance(series.name);
        if (corner.x() + room > width())
            corner = {0, corner.y() + height};
        entries.append({{corner, QSizeF(room, height)}, &series});
        corner.rx() += room + gap;
    }
    return entries;
}

void SeriesPlot::drawLegend(QPainter& painter, const QVector<LegendEntry>& entries) const
{
    for (const auto& [room, series] : entries) {
        const double height = room.height(), y = room.center().y();
        const QPolygonF line{{room.left(), y}, {room.left() + 1.6 * height, y}}, point{{room.left() + 0.8 * height, y}};
        drawSeries(painter, *series, isLine(series->mark) ? line : point);
        painter.setPen(palette().color(QPalette::Text));
        drawText(painter, room, Qt::AlignRight | Qt::AlignVCenter, series->name);
    }
}

void SeriesPlot::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(Qt::LeftToRight); // else a right-to-left desktop shows "-4.1" as "4.1-"
    painter.fillRect(rect(), palette().color(QPalette::Base));
    const QFontMetrics metrics = painter.fontMetrics();
    const QVector<LegendEntry> entries = legend();
    const double margin = metrics.averageCharWidth() + 3 * kRadius,
                 words = entries.isEmpty() ? metrics.height() : entries.back().room.bottom();
    const int numbers = std::max(widestNumber(), m_neighbour ? m_neighbour->widestNumber() : 0);
    const double widest = std::max(m_widest, m_neighbour ? m_neighbour->m_widest : 0);
    const double highest = m_largest > 0 ? m_largest : 1;
    const Scale scale{
        QRectF(rect()).adjusted(numbers + margin, words + metrics.height() / 2.0, -2 * margin, -2.5 * metrics.height()),
        widest > 0 ? widest : 1, m_range == Range::AroundZero ? -highest : 0, highest};
    drawAxes(painter, scale, palette());
    drawText(painter, {0, 0, 1, double(metrics.height())}, Qt::AlignLeft | Qt::AlignTop, m_quantity);
    drawLegend(painter, entries);
    for (const Series& series : m_series) {
        QPolygonF places;
        for (const QPointF& point : series.points)
            places << scale.at(point);
        drawSeries(painter, series, places);
    }
}

} // namespace trust
