#pragma once

#include <QHeaderView>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

/// The model, the cell painter and the headers of a grid. Texts that are too long for their column are condensed, so
/// that numbers stay complete.
namespace ui
{

/// The texts of the cells. The headers show the texts of row 0 and column 0.
class TitledCells final : public QStandardItemModel
{
public:
    using QStandardItemModel::QStandardItemModel;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& cell, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex&) const override { return Qt::ItemIsEnabled | Qt::ItemIsSelectable; }
};

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
