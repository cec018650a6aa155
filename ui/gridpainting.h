#pragma once

#include <QHeaderView>
#include <QStyledItemDelegate>

/// Draws the cells and the titles of a grid. Texts that are too long for their column are condensed, so that numbers
/// stay complete.
namespace ui
{

/// Draws the cells, with a frame around the current cell.
class FittingDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& cell) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& cell) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& cell) const override;
};

/// A header that marks a title that is the current cell.
class TitleHeader final : public QHeaderView
{
public:
    TitleHeader(Qt::Orientation orientation, QWidget* parent);
    QSize sizeHint() const override;

protected:
    void paintSection(QPainter* painter, const QRect& section, int logicalIndex) const override;
    void initStyleOptionForIndex(QStyleOptionHeader* option, int logicalIndex) const override;
    QSize sectionSizeFromContents(int logicalIndex) const override;
};

/// The title in the corner between both headers.
void paintCornerTitle(QWidget& corner, const QString& title, bool current);

} // namespace ui
