#pragma once

#include <QStandardItemModel>

namespace ui
{

/// The texts of the cells. The headers show the texts of row 0 and column 0.
class TitledCells final : public QStandardItemModel
{
public:
    using QStandardItemModel::QStandardItemModel;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& cell, const QVariant& value, int role) override;
    /// From now on, the header shows the number of a column that has no title.
    void numberColumns() { m_numbered = true; }
    Qt::ItemFlags flags(const QModelIndex&) const override { return Qt::ItemIsEnabled | Qt::ItemIsSelectable; }

private:
    bool m_numbered = false;
};

} // namespace ui
