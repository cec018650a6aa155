#pragma once

#include <QFont>

namespace ui
{

/// The font, condensed as far as a text needs to be `width` pixels wide at most, but never beyond legibility.
QFont fittingFont(const QFont& font, const QString& text, qreal width);

/// How many times as large as a usual text this font's is: 1 up to 12 points. What is measured out for texts of a usual
/// size gets as much larger.
qreal enlargement(const QFont& font);

} // namespace ui
