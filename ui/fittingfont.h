#pragma once

#include <QFont>

namespace ui
{

/// The font, condensed as far as a text needs to be `width` pixels wide at most, but never beyond legibility.
QFont fittingFont(const QFont& font, const QString& text, qreal width);

} // namespace ui
