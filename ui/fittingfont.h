#pragma once

#include <QFont>

namespace ui
{

/// The width in percent of its natural width at which a text fits into `width` pixels; 100 if it fits already. Never so
/// small that the text is illegible.
int fittingStretch(qreal natural, qreal width);

/// The font, condensed until a text fits into `width` pixels, but never so much that it is illegible.
QFont fittingFont(const QFont& font, const QString& text, qreal width);

/// Ratio of the font's size to a normal size: 1 up to 12 points. Sizes designed for normal texts are multiplied by this
/// ratio.
qreal enlargement(const QFont& font);

} // namespace ui
