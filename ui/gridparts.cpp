#include "ui/gridparts.h"

#include "ui/fittingfont.h"

#include <QPainter>
#include <QStyleOptionHeader>

namespace ui
{
namespace
{

constexpr int kTextMargin = 4; // pixels left and right of a text
constexpr int kFramePen = 2;   // pixels

QFont fontFor(const QWidget& widget, const QString& text, const QRect& area)
{
    return fittingFont(widget.font(), text, area.width() - 2 * kTextMargin);
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

} // namespace

QVariant TitledCells::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QStandardItemModel::headerData(section, orientation, role);
    return data(orientation == Qt::Horizontal ? index(0, section) : index(section, 0), Qt::DisplayRole);
}

bool TitledCells::setData(const QModelIndex& cell, const QVariant& value, int role)
{
    const bool written = QStandardItemModel::setData(cell, value, role);
    if (cell.row() == 0)
        emit headerDataChanged(Qt::Horizontal, cell.column(), cell.column());
    if (cell.column() == 0)
        emit headerDataChanged(Qt::Vertical, cell.row(), cell.row());
    return written;
}

void FittingDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& cell) const
{
    QStyledItemDelegate::initStyleOption(option, cell);
    option->font = fittingFont(option->font, option->text, option->rect.width() - 2 * kTextMargin);
    option->fontMetrics = QFontMetrics(option->font);
}

// Styles hardly mark it, and two grids stand on one window.
void FittingDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& cell) const
{
    QStyledItemDelegate::paint(painter, option, cell);
    if (option.state & QStyle::State_HasFocus)
        drawFrame(*painter, option.rect, option.palette.color(QPalette::Text));
}

TitleHeader::TitleHeader(Qt::Orientation orientation, QWidget* parent) : QHeaderView(orientation, parent)
{
    setSectionsClickable(true);
    setHighlightSections(false);
}

void TitleHeader::paintSection(QPainter* painter, const QRect& section, int logicalIndex) const
{
    painter->save();
    painter->setLayoutDirection(Qt::LeftToRight); // else a right-to-left desktop shows "0." as ".0"
    painter->setFont(fontFor(*this, model()->headerData(logicalIndex, orientation()).toString(), section));
    QHeaderView::paintSection(painter, section, logicalIndex);
    painter->restore();
    const QModelIndex cell =
        orientation() == Qt::Horizontal ? model()->index(0, logicalIndex) : model()->index(logicalIndex, 0);
    if (cell.isValid() && cell == currentIndex())
        drawCurrentFrame(*painter, section, palette());
}

/// For the font that titles are drawn with. By itself a header measures them in bold, a font that would be loaded for
/// nothing else.
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
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.setFont(fontFor(corner, title, corner.rect()));
    QStyleOptionHeader option;
    option.initFrom(&corner);
    option.orientation = Qt::Horizontal;
    option.position = QStyleOptionHeader::OnlyOneSection;
    option.text = title;
    option.textAlignment = Qt::AlignCenter;
    corner.style()->drawControl(QStyle::CE_Header, &option, &painter, &corner);
    if (current)
        drawCurrentFrame(painter, corner.rect(), corner.palette());
}

} // namespace ui
