#include "app/datasheet.h"

#include "app/blocktext.h"
#include "ui/grid.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace app
{

namespace
{
constexpr int kTitleColumnTwips = 1000;
} // namespace

DataSheet::DataSheet(QWidget* parent) : QWidget(parent), m_editor(new QLineEdit(this)), m_grid(new ui::Grid(this))
{
    m_editor->setObjectName("txtEdit");
    m_editor->setAccessibleName(tr("Text of the current cell"));
    m_editor->installEventFilter(this);
    m_grid->setObjectName("MSHFlexGrid1");
    m_grid->setAccessibleName(tr("Data sheet"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_editor);
    layout->addWidget(m_grid);

    setCounts(kSheetRows, kSheetColumns);
    m_grid->setColumnTwips(0, kTitleColumnTwips);
    showWholeColumns();

    connect(m_grid, &ui::Grid::cellClicked, this, &DataSheet::mirrorCurrentCell);
    connect(m_grid, &ui::Grid::currentCellMoved, this, &DataSheet::mirrorCurrentCell);
    connect(m_grid, &ui::Grid::textTyped, this, &DataSheet::startEdit);
    connect(m_grid, &ui::Grid::deletePressed, this, &DataSheet::clearBlock);
    SelectSheetCell(1, 1);
}

int DataSheet::rowCount() const { return m_grid->rows(); }

int DataSheet::columnCount() const { return m_grid->columns(); }

void DataSheet::setCounts(int rows, int columns)
{
    m_grid->setCounts(rows, columns);
    writeTitles();
}

void DataSheet::writeTitles()
{
    for (int row = 0; row < kSheetRows; ++row) {
        const std::string_view title = kSheetRowTitles[static_cast<std::size_t>(row)];
        SetSheetText(row, 0, QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
    }
}

// A sample is read down its column: all its rows are to be seen at once.
void DataSheet::showWholeColumns()
{
    const int rows = m_grid->verticalHeader()->length();
    const int around = m_grid->horizontalHeader()->sizeHint().height() +
                       m_grid->horizontalScrollBar()->sizeHint().height() + 2 * m_grid->frameWidth();
    m_grid->setMinimumHeight(rows + around);
}

std::string DataSheet::cell(int row, int column) const { return GetSheetText(row, column).toStdString(); }

void DataSheet::setCell(int row, int column, const std::string& text)
{
    SetSheetText(row, column, QString::fromStdString(text));
}

void DataSheet::SelectSheetCell(int row, int column)
{
    m_grid->selectCell(row, column);
    mirrorCurrentCell();
}

void DataSheet::SetSheetText(int row, int column, const QString& text)
{
    m_grid->setText(row, column, text);
    if (row == m_grid->currentRow() && column == m_grid->currentColumn())
        mirrorCurrentCell();
}

QString DataSheet::GetSheetText(int row, int column) const { return m_grid->text(row, column); }

bool DataSheet::onDataCell() const { return m_grid->currentRow() >= 1 && m_grid->currentColumn() >= 1; }

void DataSheet::mirrorCurrentCell() { m_editor->setText(GetSheetText(m_grid->currentRow(), m_grid->currentColumn())); }

void DataSheet::startEdit(const QString& text)
{
    if (!onDataCell())
        return;
    m_editor->setFocus();
    m_editor->setText(text); // leaves the caret at the end, so that typing goes on
}

void DataSheet::store()
{
    const int row = m_grid->currentRow();
    const int column = m_grid->currentColumn();
    SetSheetText(row, column, m_editor->text());
    SelectSheetCell(std::min(row + 1, rowCount() - 1), column);
}

// Title cells in the block are emptied too. What was normalized stays valid on purpose: only typed, pasted and
// opened data count as edits.
void DataSheet::clearBlock()
{
    m_grid->setRedraw(false);
    emptyBlock(*this, {m_grid->currentRow(), m_grid->currentColumn(), m_grid->farRow(), m_grid->farColumn()});
    m_grid->setRedraw(true);
}

bool DataSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_editor && event->type() == QEvent::KeyPress)
        return editorKey(*static_cast<QKeyEvent*>(event));
    return QWidget::eventFilter(watched, event);
}

bool DataSheet::editorKey(const QKeyEvent& key)
{
    emit edited();
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (onDataCell())
            store();
        m_grid->setFocus();
        return true;
    case Qt::Key_Escape:
        if (!onDataCell())
            return false;
        mirrorCurrentCell();
        m_grid->setFocus();
        return true;
    default:
        return false;
    }
}

} // namespace app
