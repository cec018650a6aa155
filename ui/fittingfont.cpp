#include "ui/fittingfont.h"

#include <QFontMetricsF>

#include <algorithm>

namespace ui
{
namespace
{

constexpr int kUnstretched = 100; // percent
constexpr int kNarrowest = 60;

} // namespace

QFont fittingFont(const QFont& font, const QString& text, qreal width)
{
    const qreal needed = QFontMetricsF(font).horizontalAdvance(text);
    if (needed <= std::max(width, 0.0))
        return font;
    QFont condensed(font);
    condensed.setStretch(std::max(kNarrowest, static_cast<int>(kUnstretched * width / needed)));
    return condensed;
}

} // namespace ui
