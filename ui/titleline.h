#pragma once

#include <QGlyphRun>

class QFont;

namespace ui
{

/// A line of text as glyphs, positioned relative to the left end of its base line.
struct TitleLine {
    QList<QGlyphRun> glyphs;
    qreal width = 0; // pixels
};

/// Latin and Greek need no shaping, so glyphs are placed directly. A text layout takes longer and loads a set of fonts
/// for every script in the text, and the first window has Greek letters in its titles.
TitleLine titleLine(const QFont& font, const QString& title);

} // namespace ui
