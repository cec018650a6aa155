#pragma once

#include <QGlyphRun>

class QFont;

namespace ui
{

/// A line of text as glyphs, placed from the left end of its base line.
struct TitleLine {
    QList<QGlyphRun> glyphs;
    qreal width = 0; // pixels
};

/// Letters that simply stand side by side are set without a layout. A layout takes longer and loads a set of fonts for
/// every script that it meets, and the first window has Greek letters in its titles.
TitleLine titleLine(const QFont& font, const QString& title);

} // namespace ui
