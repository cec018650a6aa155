#include "trust/profileplot.h"

#include "trust/tableview.h"

#include <QPainter>

#include <algorithm>

namespace trust
{
namespace
{

/// From values and sums of squares to pixels. The line of the interval's end is at four fifths of the height.
struct Scale {
    QRectF area;
    double left, right, lowest, highest;

    QPointF at(const leastsquares::ProfilePoint& point) const
    {
        constexpr double kHeightOfEnd = 0.8;
        const double x = right > left ? (point.value - left) / (right - left) : 0.5;
        const double y = highest > lowest ? (point.sumOfSquares - lowest) / (highest - lowest) : 0;
        return {area.left() + x * area.width(), area.bottom() - kHeightOfEnd * y * area.height()};
    }
};

const leastsquares::ProfilePoint& lowestOf(const leastsquares::Profile& profile)
{
    return *std::min_element(profile.points.begin(), profile.points.end(),
                             [](const auto& a, const auto& b) { return a.sumOfSquares < b.sumOfSquares; });
}

/// The number below a point of the curve, and a line down to it.
void markValue(QPainter& painter, const Scale& scale, const leastsquares::ProfilePoint& point, Qt::Alignment side)
{
    const QPointF place = scale.at(point);
    painter.drawLine(place, QPointF(place.x(), scale.area.bottom()));
    const int height = painter.fontMetrics().height();
    painter.drawText(QRectF(place.x() - 1, scale.area.bottom(), 2, height),
                     static_cast<int>(side | Qt::AlignTop) | Qt::TextDontClip, qtText(figure(point.value)));
}

} // namespace

ProfilePlot::ProfilePlot(QWidget* parent) : QWidget(parent)
{
    setObjectName("picProfile");
    setAccessibleName(tr("Profile of the selected constant; the list of constants holds its interval"));
}

void ProfilePlot::setProfile(const leastsquares::Profile& profile, double highest, const QString& name)
{
    m_profile = profile;
    m_highest = highest;
    m_name = name;
    update();
}

QSize ProfilePlot::minimumSizeHint() const
{
    constexpr int kCharacters = 40, kLines = 10;
    return {kCharacters * fontMetrics().averageCharWidth(), kLines * fontMetrics().height()};
}

void ProfilePlot::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    if (m_profile.points.empty())
        return;
    const int line = painter.fontMetrics().height(), margin = 6 * painter.fontMetrics().averageCharWidth();
    const Scale scale{QRectF(rect()).adjusted(margin, 1.5 * line, -margin, -2.5 * line), m_profile.points.front().value,
                      m_profile.points.back().value, lowestOf(m_profile).sumOfSquares, m_highest};
    QPolygonF curve;
    for (const leastsquares::ProfilePoint& point : m_profile.points)
        curve << scale.at(point);
    painter.setPen(QPen(Qt::red, 2));
    painter.drawPolyline(curve);
    painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
    const double end = scale.at({scale.left, m_highest}).y();
    painter.drawLine(QPointF(scale.area.left(), end), QPointF(scale.area.right(), end));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawLine(scale.area.bottomLeft(), scale.area.bottomRight());
    markValue(painter, scale, m_profile.points.front(), Qt::AlignHCenter);
    markValue(painter, scale, m_profile.points.back(), Qt::AlignHCenter);
    const auto text = [&](const QRectF& room, Qt::Alignment alignment, const QString& words) {
        painter.drawText(room, static_cast<int>(alignment) | Qt::TextDontClip, words);
    };
    text({scale.area.left(), end - line, 1, double(line)}, Qt::AlignLeft | Qt::AlignTop,
         tr("95 %: sum of squares %1").arg(qtText(figure(m_highest))));
    text({scale.area.left(), 0, 1, double(line)}, Qt::AlignLeft | Qt::AlignTop,
         tr("Least sum of squares %1").arg(qtText(figure(scale.lowest))));
    text({0, scale.area.bottom() + line, double(width()), double(line)}, Qt::AlignHCenter | Qt::AlignTop, m_name);
}

} // namespace trust
