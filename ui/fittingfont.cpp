#include "ui/fittingfont.h"

#include "ui/twips.h"

#include <QFontMetricsF>

#include <algorithm>

namespace ui
{
namespace
{

constexpr int kUnstretched = 100; // percent
constexpr int kNarrowest = 60;
constexpr double kUsualTextTwips = 280; // height of a 12-point text
constexpr int kStep = 10;               // each stretch is a separate font, which takes time to load at its first use

} // namespace

int fittingStretch(qreal natural, qreal width)
{
    if (natural <= std::max(width, 0.0))
        return kUnstretched;
    return std::max(kNarrowest, static_cast<int>(kUnstretched * width / natural));
}

QFont fittingFont(const QFont& font, const QString& text, qreal width)
{
    const int fitting = fittingStretch(QFontMetricsF(font).horizontalAdvance(text), width);
    if (fitting == kUnstretched)
        return font;
    QFont condensed(font);
    condensed.setStretch(std::max(kNarrowest, fitting - fitting % kStep));
    return condensed;
}

qreal enlargement(const QFont& font)
{
    return std::max(1.0, QFontMetricsF(font).height() * twipsPerPixel() / kUsualTextTwips);
}

} // namespace ui
