#include "ui/titledcells.h"

namespace ui
{

QVariant TitledCells::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QStandardItemModel::headerData(section, orientation, role);
    const QVariant title = data(orientation == Qt::Horizontal ? index(0, section) : index(section, 0), Qt::DisplayRole);
    const bool numbered = m_numbered && orientation == Qt::Horizontal && section > 0;
    return numbered && title.toString().isEmpty() ? QVariant(QString::number(section)) : title;
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

} // namespace ui
