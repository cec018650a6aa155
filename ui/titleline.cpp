#include "ui/titleline.h"

#include <QRawFont>
#include <QTextLayout>

#include <algorithm>

namespace ui
{
namespace
{

bool standsAlone(QChar character)
{
    switch (character.script()) {
    case QChar::Script_Common:
    case QChar::Script_Latin:
    case QChar::Script_Greek:
        return character.isPrint() && !character.isMark();
    default:
        return false;
    }
}

TitleLine sideBySide(const QRawFont& font, const QList<quint32>& glyphs)
{
    TitleLine line;
    QList<QPointF> places;
    for (const QPointF& advance : font.advancesForGlyphIndexes(glyphs)) {
        places.append({line.width, 0});
        line.width += advance.x();
    }
    QGlyphRun run;
    run.setRawFont(font);
    run.setGlyphIndexes(glyphs);
    run.setPositions(places);
    line.glyphs.append(run);
    return line;
}

TitleLine laidOut(const QFont& font, const QString& title)
{
    QTextOption leftToRight;
    leftToRight.setTextDirection(Qt::LeftToRight); // else a right-to-left desktop shows "0." as ".0"
    QTextLayout layout(title, font);
    layout.setTextOption(leftToRight);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setNumColumns(static_cast<int>(title.size()));
    line.setPosition({0, -line.ascent()});
    layout.endLayout();
    return {layout.glyphRuns(), line.naturalTextWidth()};
}

} // namespace

TitleLine titleLine(const QFont& font, const QString& title)
{
    const QRawFont own = QRawFont::fromFont(font);
    const QList<quint32> glyphs = own.glyphIndexesForString(title);
    const bool hasAll = !glyphs.contains(0);
    return hasAll && std::all_of(title.begin(), title.end(), standsAlone) ? sideBySide(own, glyphs)
                                                                          : laidOut(font, title);
}

} // namespace ui
