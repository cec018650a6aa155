#include "ui/gridpainting.h"

#include "ui/fittingfont.h"
#include "ui/remark.h"
#include "ui/titleline.h"

#include <QPainter>
#include <QStyleOptionHeader>

namespace ui
{
namespace
{

constexpr int kTextMargin = 4; // pixels left and right of a text
constexpr int kFramePen = 2;   // pixels

/// Draws a title into its section. A title that is too long is narrowed, and then shortened if it still does not fit. A
/// condensed font would take time to load, and the first window has titles.
void drawTitle(QPainter& painter, const QWidget& header, const QStyleOptionHeader& section, const QString& title)
{
    const qreal room = section.rect.width() - 2 * kTextMargin;
    TitleLine line = titleLine(header.font(), title);
    const qreal narrowing = fittingStretch(line.width, room) / 100.0;
    if (line.width * narrowing > room) // a missing digit must be visible as an ellipsis
        line = titleLine(header.font(),
                         header.fontMetrics().elidedText(title, Qt::ElideRight, static_cast<int>(room / narrowing)));
    const QSize size(qRound(line.width * narrowing), header.fontMetrics().height());
    const QRect label = header.style()->subElementRect(QStyle::SE_HeaderLabel, &section, &header);
    const QRect place = QStyle::alignedRect(Qt::LeftToRight, section.textAlignment, size, label);
    painter.save();
    painter.setClipRect(section.rect, Qt::IntersectClip);
    painter.setPen(header.palette().color(QPalette::ButtonText));
    painter.translate(place.left(), place.top() + header.fontMetrics().ascent());
    painter.scale(narrowing, 1);
    for (const QGlyphRun& run : line.glyphs)
        painter.drawGlyphRun({}, run);
    painter.restore();
}

void drawFrame(QPainter& painter, const QRect& area, const QColor& color)
{
    painter.setPen(QPen(color, kFramePen));
    painter.drawRect(area.adjusted(1, 1, -kFramePen, -kFramePen));
}

void drawCurrentFrame(QPainter& painter, const QRect& section, const QPalette& palette)
{
    drawFrame(painter, section, palette.color(QPalette::Highlight));
}

bool hasRemark(const QModelIndex& cell) { return !cell.data(Qt::ToolTipRole).toString().isEmpty(); }

} // namespace

void FittingDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& cell) const
{
    QStyledItemDelegate::initStyleOption(option, cell);
    option->font = fittingFont(option->font, option->text, option->rect.width() - 2 * kTextMargin);
    option->fontMetrics = QFontMetrics(option->font);
    if (hasRemark(cell))
        option->backgroundBrush = remarkGround(option->palette.color(QPalette::Base));
}

// Most cells of a sheet are empty, and an empty cell without a mark needs no drawing. Styles hardly mark the current
// cell, and the main window has two grids.
void FittingDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& cell) const
{
    const bool marked = option.state & (QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
    const bool tinted = hasRemark(cell) || cell.data(Qt::BackgroundRole).isValid();
    if (!marked && !tinted && cell.data().toString().isEmpty())
        return;
    QStyledItemDelegate::paint(painter, option, cell);
    if (hasRemark(cell))
        paintRemarkCorner(*painter, option.rect, option.palette.color(QPalette::Text));
    if (option.state & QStyle::State_HasFocus)
        drawFrame(*painter, option.rect, option.palette.color(QPalette::Text));
}

// The size of the whole text, because the user may widen the column for it.
QSize FittingDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& cell) const
{
    QStyleOptionViewItem wide(option);
    wide.rect.setWidth(QWIDGETSIZE_MAX);
    return QStyledItemDelegate::sizeHint(wide, cell);
}

TitleHeader::TitleHeader(Qt::Orientation orientation, QWidget* parent) : QHeaderView(orientation, parent)
{
    setSectionsClickable(true);
    setHighlightSections(false);
}

/// Always the height of one line: by default a header measures all titles in every step of a layout. The grid sets the
/// width of row titles.
QSize TitleHeader::sizeHint() const
{
    return {0, fontMetrics().height() + 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this)};
}

void TitleHeader::paintSection(QPainter* painter, const QRect& section, int logicalIndex) const
{
    painter->save(); // the style leaves an empty clip
    QHeaderView::paintSection(painter, section, logicalIndex);
    painter->restore();
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = section;
    option.textAlignment = defaultAlignment();
    drawTitle(*painter, *this, option, model()->headerData(logicalIndex, orientation()).toString());
    const QModelIndex cell =
        orientation() == Qt::Horizontal ? model()->index(0, logicalIndex) : model()->index(logicalIndex, 0);
    if (cell.isValid() && cell == currentIndex())
        drawCurrentFrame(*painter, section, palette());
}

void TitleHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int logicalIndex) const
{
    QHeaderView::initStyleOptionForIndex(option, logicalIndex);
    option->text.clear(); // drawn separately
}

/// Measures titles in the font in which they are drawn. By default a header measures them in bold, and this font would
/// be loaded for nothing else.
QSize TitleHeader::sectionSizeFromContents(int logicalIndex) const
{
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.section = logicalIndex;
    option.text = model()->headerData(logicalIndex, orientation()).toString();
    return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this);
}

void paintCornerTitle(QWidget& corner, const QString& title, bool current)
{
    QPainter painter(&corner);
    QStyleOptionHeader option;
    option.initFrom(&corner);
    option.orientation = Qt::Horizontal;
    option.position = QStyleOptionHeader::Beginning;
    option.textAlignment = Qt::AlignCenter;
    painter.save();
    corner.style()->drawControl(QStyle::CE_Header, &option, &painter, &corner);
    painter.restore();
    drawTitle(painter, corner, option, title);
    if (current)
        drawCurrentFrame(painter, corner.rect(), corner.palette());
}

} // namespace ui
