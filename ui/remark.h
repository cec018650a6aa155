#pragma once

class QColor;
class QPainter;
class QRect;

/// How a cell or a box shows that there is a remark on its text.
namespace ui
{

/// The ground of a marked text: readable with the usual colour of texts, on light and on dark desktops.
QColor remarkGround(const QColor& ground);

/// A triangle in the upper right corner, for those who do not see the colour.
void paintRemarkCorner(QPainter& painter, const QRect& area, const QColor& color);

} // namespace ui
