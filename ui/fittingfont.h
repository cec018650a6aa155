#pragma once

#include <QFont>

namespace ui
{

/// Percent of its natural width that a text may have to be `width` pixels wide at most, but never so little that it is
/// illegible; 100 where it fits.
int fittingStretch(qreal natural, qreal width);

/// The font, condensed as far as a text needs to be `width` pixels wide at most, but never beyond legibility.
QFont fittingFont(const QFont& font, const QString& text, qreal width);

/// How many times as large as a usual text this font's is: 1 up to 12 points. What is measured out for texts of a usual
/// size gets as much larger.
qreal enlargement(const QFont& font);

} // namespace ui
