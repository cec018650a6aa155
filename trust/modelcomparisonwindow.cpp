#include "trust/modelcomparisonwindow.h"

#include "trust/comparisontext.h"
#include "trust/errorschoice.h"
#include "trust/tableview.h"
#include "ui/clipboard.h"
#include "ui/closing.h"
#include "ui/oldernote.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace trust
{
namespace
{

constexpr int kSortRole = Qt::UserRole;
constexpr int kPlaceColumn = 0;
constexpr int kVerdictWidth = 24, kRemarksWidth = 38; // average characters; longer texts take several lines

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

/// A long title takes two lines, which leaves room for the remarks.
QString inTwoLines(QString title)
{
    constexpr int kLong = 16; // characters
    const auto blank = title.indexOf(' ', title.size() / 2);
    return title.size() > kLong && blank >= 0 ? title.replace(blank, 1, '\n') : title;
}

} // namespace

ModelComparisonWindow::ModelComparisonWindow()
    : m_heading(new QLabel(this)),
      m_hint(new QLabel(tr("A double click or Enter puts a &model and its start values into the panel."), this)),
      m_errors(new ErrorsChoice(this)), m_progress(new QProgressBar(this)), m_table(new QTableView(this)),
      m_cells(new QStandardItemModel(this)), m_notes(new QPlainTextEdit(this)),
      m_cancel(new QPushButton(tr("C&ancel"), this)), m_copy(new QPushButton(tr("&Copy"), this))
{
    setWindowTitle(tr("Compare Models"));
    m_heading->setObjectName("lblComparison");
    m_hint->setBuddy(m_table);
    m_progress->setObjectName("barComparison");
    m_progress->setAccessibleName(tr("Progress of the comparison"));
    m_progress->setTextVisible(false);
    m_table->setObjectName("grdModels");
    m_table->setAccessibleName(tr("Models"));
    m_table->setLayoutDirection(Qt::LeftToRight); // else a right-to-left desktop shows "-4.1" as "4.1-"
    m_table->setModel(m_cells);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->hide();
    m_table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // its room does not change when rows appear
    m_notes->setObjectName("txtNotes");
    m_notes->setAccessibleName(tr("Notes on the comparison"));
    m_notes->setReadOnly(true);
    m_notes->setTabChangesFocus(true);
    m_cancel->setObjectName("cmdCancelComparison");
    m_copy->setObjectName("cmdCopyModels");
    layOut();
    ui::closeOnEscape(*this);
    connect(m_errors, &ErrorsChoice::errorsChanged, this, &ModelComparisonWindow::errorsChanged);
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
    layout->addWidget(m_heading);
    layout->addWidget(ui::makeOlderNote(this));
    layout->addWidget(m_errors);
    layout->addWidget(m_hint);
    layout->addWidget(m_progress);
    layout->addWidget(m_table, 1);
    constexpr int kLines = 6;
    m_notes->setMaximumHeight(kLines * m_notes->fontMetrics().lineSpacing());
    layout->addWidget(m_notes);
    layout->addLayout(buttons);
}

ProgressBarProgress ModelComparisonWindow::begin(const QString& heading)
{
    m_cancelled = false;
    m_heading->setText(heading);
    m_comparison = {};
    m_cells->clear();
    m_notes->clear();
    m_cancel->setEnabled(true);
    m_copy->setEnabled(false);
    m_cancel->setFocus();
    return {*m_progress, m_cancelled};
}

void ModelComparisonWindow::showModels(const Comparison& comparison)
{
    m_comparison = comparison;
    m_cancel->setEnabled(false);
    m_copy->setEnabled(!comparison.places.empty());
    if (!comparison.places.empty())
        m_progress->setValue(m_progress->maximum());
    m_errors->setVisible(comparison.analysis == models::Analysis::SternVolmer);
    fillRows();
    m_notes->setPlainText(qtText(comparisonNotes(comparison)));
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(kPlaceColumn, Qt::AscendingOrder);
    fitColumns();
    m_table->setFocus();
}

/// The remarks take the room that the other columns leave.
void ModelComparisonWindow::fitColumns()
{
    m_table->resizeColumnsToContents();
    const int character = m_table->fontMetrics().averageCharWidth();
    const int remarks = m_cells->columnCount() - 1, verdict = remarks - 1;
    m_table->setColumnWidth(verdict, std::min(m_table->columnWidth(verdict), kVerdictWidth * character));
    int room = m_table->viewport()->width();
    for (int column = 0; column < remarks; ++column)
        room -= m_table->columnWidth(column);
    m_table->setColumnWidth(remarks, std::max(room, kRemarksWidth * character));
    m_table->resizeRowsToContents();
}

void ModelComparisonWindow::fillRows()
{
    m_cells->clear();
    QStringList titles;
    for (const std::string& title : comparisonTitles(m_comparison.analysis))
        titles << inTwoLines(titleText(title));
    m_cells->setHorizontalHeaderLabels(titles);
    for (std::size_t place = 0; place < m_comparison.places.size(); ++place) {
        QList<QStandardItem*> row;
        for (const ComparisonCell& cell : comparisonRow(m_comparison, place))
            row << new Cell(cell);
        m_cells->appendRow(row);
    }
}

void ModelComparisonWindow::showErrors(const noise::Errors& errors) { m_errors->setErrors(errors); }

void ModelComparisonWindow::closeEvent(QCloseEvent* event)
{
    m_cancelled = true;
    QWidget::closeEvent(event);
}

void ModelComparisonWindow::announceRow(const QModelIndex& index)
{
    const int place = m_cells->index(index.row(), kPlaceColumn).data(kSortRole).toInt();
    const ComparedModel& compared = m_comparison.places[static_cast<std::size_t>(place - 1)];
    if (compared.fitted)
        emit modelChosen(m_comparison.analysis, compared.model, compared.start);
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
    TitledRows rows{comparisonTitles(m_comparison.analysis)};
    for (int row = 0; row < m_cells->rowCount(); ++row) {
        rows.emplace_back();
        for (int column = 0; column < m_cells->columnCount(); ++column)
            rows.back().push_back(m_cells->index(row, column).data().toString().toStdString());
    }
    ui::copyText(m_heading->text() + "\r\n" + qtText(tabbedText(rows)) + m_notes->toPlainText());
}

} // namespace trust
