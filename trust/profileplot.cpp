#include "trust/profileplot.h"

#include "trust/tableview.h"

#include <QPainter>

#include <algorithm>

namespace trust
{
namespace
{

/// From a curve to pixels. The line of the interval's end is at four fifths of the height.
struct Scale {
    QRectF area;
    const ProfileCurve& curve;
    double lowest, highest;

    QPointF at(const leastsquares::ProfilePoint& point) const
    {
        constexpr double kHeightOfEnd = 0.8;
        const double y = highest > lowest ? (point.sumOfSquares - lowest) / (highest - lowest) : 0;
        return {area.left() + curve.along(point.value) * area.width(),
                area.bottom() - kHeightOfEnd * y * area.height()};
    }
};

/// The number below an end of the curve. At an end of the interval a line leads to it.
void markValue(QPainter& painter, const Scale& scale, const leastsquares::ProfilePoint& point, bool endsInterval)
{
    const QPointF place = scale.at(point);
    if (endsInterval)
        painter.drawLine(place, QPointF(place.x(), scale.area.bottom()));
    const int height = painter.fontMetrics().height();
    painter.drawText(QRectF(place.x() - 1, scale.area.bottom(), 2, height),
                     static_cast<int>(Qt::AlignHCenter | Qt::AlignTop) | Qt::TextDontClip, qtText(figure(point.value)));
}

} // namespace

ProfilePlot::ProfilePlot(QWidget* parent) : QWidget(parent)
{
    setObjectName("picProfile");
    setAccessibleName(tr("Profile of the selected constant; the list of constants holds its interval"));
}

void ProfilePlot::setProfile(const leastsquares::Profile& profile, const leastsquares::ProfilePoint& fitted,
                             double highest, const QString& name)
{
    m_curve = profileCurve(profile, fitted.value, highest);
    m_fitted = fitted;
    m_endsBelow = profile.low.has_value();
    m_endsAbove = profile.high.has_value();
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
    if (m_curve.points.empty())
        return;
    const int line = painter.fontMetrics().height(), margin = 6 * painter.fontMetrics().averageCharWidth();
    const Scale scale{QRectF(rect()).adjusted(margin, 1.5 * line, -margin, -2.5 * line), m_curve, m_fitted.sumOfSquares,
                      m_highest};
    QPolygonF curve;
    for (const leastsquares::ProfilePoint& point : m_curve.points)
        curve << scale.at(point);
    painter.setPen(QPen(Qt::red, 2));
    painter.drawPolyline(curve);
    painter.drawEllipse(scale.at(m_fitted), 3, 3);
    painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
    const double end = scale.at({m_fitted.value, m_highest}).y();
    painter.drawLine(QPointF(scale.area.left(), end), QPointF(scale.area.right(), end));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawLine(scale.area.bottomLeft(), scale.area.bottomRight());
    markValue(painter, scale, m_curve.points.front(), m_endsBelow);
    markValue(painter, scale, m_curve.points.back(), m_endsAbove);
    const auto text = [&](const QRectF& room, Qt::Alignment alignment, const QString& words) {
        painter.drawText(room, static_cast<int>(alignment) | Qt::TextDontClip, words);
    };
    text({scale.area.left(), end - line, 1, double(line)}, Qt::AlignLeft | Qt::AlignTop,
         tr("95 %: sum of squares %1").arg(qtText(figure(m_highest))));
    text({scale.area.left(), 0, 1, double(line)}, Qt::AlignLeft | Qt::AlignTop,
         tr("Least sum of squares %1").arg(qtText(figure(scale.lowest))));
    text({0, scale.area.bottom() + line, double(width()), double(line)}, Qt::AlignHCenter | Qt::AlignTop,
         m_curve.logarithmic ? tr("%1, logarithmic").arg(m_name) : m_name);
}

} // namespace trust
