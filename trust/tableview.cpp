#include "trust/tableview.h"

#include <QHeaderView>
#include <QTableWidget>

namespace trust
{

namespace
{
// Without it on both sides, a right-to-left desktop shows the titles "95 % from" and "ln Φ − fitted /%" as "from % 95"
// and "%/ ln Φ − fitted".
constexpr QChar kLeftToRightMark(0x200e);
} // namespace

QString qtText(const std::string& text) { return QString::fromStdString(text); }

QString titleText(const std::string& title) { return kLeftToRightMark + qtText(title) + kLeftToRightMark; }

QTableWidget* makeTable(const char* name, const QString& accessibleName, QWidget* parent)
{
    auto* table = new QTableWidget(parent);
    table->setObjectName(name);
    table->setAccessibleName(accessibleName);
    table->setLayoutDirection(Qt::LeftToRight); // else a right-to-left desktop shows "-4.1" as "4.1-"
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    return table;
}

void keepAsHighAsRows(QTableWidget& table)
{
    constexpr int kLeastLines = 3; // title and one row with their margins; the toolkit would leave room for scroll bars
    table.setMinimumHeight(kLeastLines * table.fontMetrics().lineSpacing());
    table.setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    table.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
}

void fillTable(QTableWidget& table, const TitledRows& rows)
{
    table.clear();
    table.setRowCount(rows.empty() ? 0 : static_cast<int>(rows.size()) - 1);
    table.setColumnCount(rows.empty() ? 0 : static_cast<int>(rows[0].size()));
    for (int row = 0; row < static_cast<int>(rows.size()); ++row)
        for (int column = 0; column < table.columnCount(); ++column) {
            const auto& cells = rows[static_cast<std::size_t>(row)];
            const auto index = static_cast<std::size_t>(column);
            const std::string text = index < cells.size() ? cells[index] : std::string();
            if (row == 0)
                table.setHorizontalHeaderItem(column, new QTableWidgetItem(titleText(text)));
            else
                table.setItem(row - 1, column, new QTableWidgetItem(qtText(text)));
        }
    table.horizontalHeader()->setStretchLastSection(false); // only a change stretches new columns
    table.resizeColumnsToContents();
    table.horizontalHeader()->setStretchLastSection(true);
    table.resizeRowsToContents();
}

} // namespace trust
