#include "trust/modelcomparisonwindow.h"

#include "trust/comparisontext.h"
#include "trust/tableview.h"
#include "ui/clipboard.h"
#include "ui/closing.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace trust
{
namespace
{

constexpr int kSortRole = Qt::UserRole;
constexpr int kModelColumn = 0, kDifferenceColumn = 7;
constexpr int kWidestColumn = 240; // pixels; longer texts take several lines

/// Columns of words sort by their text, columns of numbers by the number.
class Cell final : public QStandardItem
{
public:
    explicit Cell(const ComparisonCell& cell) : QStandardItem(qtText(cell.text))
    {
        setData(cell.key, kSortRole);
        setEditable(false);
    }
    bool operator<(const QStandardItem& other) const override
    {
        const double mine = data(kSortRole).toDouble(), theirs = other.data(kSortRole).toDouble();
        return mine == theirs ? text() < other.text() : mine < theirs;
    }
};

} // namespace

ModelComparisonWindow::ModelComparisonWindow()
    : m_hint(new QLabel(tr("A double click or Enter puts a &model and its start values into the panel."), this)),
      m_progress(new QProgressBar(this)), m_table(new QTableView(this)), m_cells(new QStandardItemModel(this)),
      m_cancel(new QPushButton(tr("C&ancel"), this)), m_copy(new QPushButton(tr("&Copy"), this))
{
    setWindowTitle(tr("Compare Models"));
    m_hint->setBuddy(m_table);
    m_progress->setObjectName("barComparison");
    m_progress->setAccessibleName(tr("Progress of the comparison"));
    m_table->setObjectName("grdModels");
    m_table->setAccessibleName(tr("Models"));
    m_table->setLayoutDirection(Qt::LeftToRight); // else a right-to-left desktop shows "-4.1" as "4.1-"
    m_table->setModel(m_cells);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setMaximumSectionSize(kWidestColumn);
    m_cancel->setObjectName("cmdCancelComparison");
    m_copy->setObjectName("cmdCopyModels");
    layOut();
    ui::closeOnEscape(*this);
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_cancelled = true; });
    connect(m_copy, &QPushButton::clicked, this, &ModelComparisonWindow::copy);
    connect(m_table, &QTableView::activated, this, &ModelComparisonWindow::announceRow);
    connect(m_table, &QTableView::doubleClicked, this, &ModelComparisonWindow::announceRow);
    auto* sort = new QShortcut(Qt::Key_Space, m_table);
    sort->setContext(Qt::WidgetShortcut);
    connect(sort, &QShortcut::activated, this, &ModelComparisonWindow::sortByCurrentColumn);
}

void ModelComparisonWindow::layOut()
{
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_copy);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_hint);
    layout->addWidget(m_progress);
    layout->addWidget(m_table);
    layout->addLayout(buttons);
}

ProgressBarProgress ModelComparisonWindow::begin()
{
    m_cancelled = false;
    m_cells->clear();
    m_cancel->setEnabled(true);
    m_copy->setEnabled(false);
    m_cancel->setFocus();
    return {*m_progress, m_cancelled};
}

void ModelComparisonWindow::showModels(const std::vector<ComparedModel>& models)
{
    m_models = models;
    m_cancel->setEnabled(false);
    m_copy->setEnabled(!models.empty());
    if (!models.empty())
        m_progress->setValue(m_progress->maximum());
    m_cells->clear();
    QStringList titles;
    for (const std::string& title : comparisonTitles())
        titles << qtText(title);
    m_cells->setHorizontalHeaderLabels(titles);
    for (const ComparedModel& compared : models) {
        QList<QStandardItem*> row;
        for (const ComparisonCell& cell : comparisonRow(compared))
            row << new Cell(cell);
        m_cells->appendRow(row);
    }
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(kDifferenceColumn, Qt::AscendingOrder);
    m_table->resizeColumnsToContents();
    m_table->resizeRowsToContents();
    m_table->setFocus();
}

void ModelComparisonWindow::closeEvent(QCloseEvent* event)
{
    m_cancelled = true;
    QWidget::closeEvent(event);
}

void ModelComparisonWindow::announceRow(const QModelIndex& index)
{
    const int model = m_cells->index(index.row(), kModelColumn).data(kSortRole).toInt();
    for (const ComparedModel& compared : m_models)
        if (compared.model == model)
            emit modelChosen(model, compared.start);
}

/// Sorts like a click on the column's title.
void ModelComparisonWindow::sortByCurrentColumn()
{
    const int column = m_table->currentIndex().column();
    const QHeaderView& titles = *m_table->horizontalHeader();
    const bool again = titles.sortIndicatorSection() == column && titles.sortIndicatorOrder() == Qt::AscendingOrder;
    if (column >= 0)
        m_table->sortByColumn(column, again ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void ModelComparisonWindow::copy()
{
    TitledRows rows{comparisonTitles()};
    for (int row = 0; row < m_cells->rowCount(); ++row) {
        rows.emplace_back();
        for (int column = 0; column < m_cells->columnCount(); ++column)
            rows.back().push_back(m_cells->index(row, column).data().toString().toStdString());
    }
    ui::copyText(qtText(tabbedText(rows)));
}

} // namespace trust
