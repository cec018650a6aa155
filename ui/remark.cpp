#include "ui/remark.h"

#include <QColor>
#include <QPainter>
#include <QPolygon>

namespace ui
{
namespace
{

constexpr QColor kOrange(255, 150, 0);
constexpr double kShare = 0.25; // of orange in the ground
constexpr int kCorner = 6;      // pixels

int mixed(int ground, int colour) { return qRound((1 - kShare) * ground + kShare * colour); }

} // namespace

QColor remarkGround(const QColor& ground)
{
    return {mixed(ground.red(), kOrange.red()), mixed(ground.green(), kOrange.green()),
            mixed(ground.blue(), kOrange.blue())};
}

void paintRemarkCorner(QPainter& painter, const QRect& area, const QColor& color)
{
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const QPoint corner(area.right() + 1, area.top());
    painter.drawPolygon(QPolygon({corner - QPoint(kCorner, 0), corner, corner + QPoint(0, kCorner)}));
    painter.restore();
}

} // namespace ui
