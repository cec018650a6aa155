#include "app/datasheet.h"

#include "app/blocktext.h"
#include "app/selectedblock.h"
#include "app/sheetreading.h"
#include "ui/textbox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace app
{

namespace
{
constexpr int kTitleColumnTwips = 1000;

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_Mode_switch:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
        return true;
    default:
        return false;
    }
}

} // namespace

DataSheet::DataSheet(QWidget* parent) : QWidget(parent), m_editor(new ui::TextBox(this)), m_grid(new ui::Grid(this))
{
    m_editor->setObjectName("txtEdit");
    m_editor->setAccessibleName(tr("Text of the current cell"));
    m_editor->installEventFilter(this);
    m_editor->takenElsewhere = [this](const QString& text) { return takeBlock(text); };
    m_grid->setObjectName("MSHFlexGrid1");
    m_grid->setAccessibleName(tr("Data sheet"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_editor);
    layout->addWidget(m_grid);

    for (const auto signal : {&QAbstractItemModel::rowsRemoved, &QAbstractItemModel::columnsRemoved})
        connect(m_grid->model(), signal, this, &DataSheet::changed);
    connect(m_grid->model(), &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(Qt::DisplayRole)) // not a remark
                    emit changed();
            });
    m_grid->numberColumns();
    m_grid->selectByTitles();
    setCounts(kSheetRows, kSheetColumns);
    m_grid->setColumnTwips(0, kTitleColumnTwips);
    m_grid->showAllRows(); // because a sample is one column

    connect(m_editor, &QLineEdit::textChanged, this, &DataSheet::noteTyping);
    connect(m_grid, &ui::Grid::cellChosen, this, &DataSheet::finishEdit);
    connect(m_grid, &ui::Grid::currentCellMoved, this, &DataSheet::finishEdit);
    connect(m_grid, &ui::Grid::textTyped, this, &DataSheet::startEdit);
    connect(m_grid, &ui::Grid::editWanted, this, &DataSheet::editPresentText);
    connect(m_grid, &ui::Grid::deletePressed, this, &DataSheet::clearBlock);
    // The line's own focus event does not suffice, because a window that is not active moves its focus without an
    // event.
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, const QWidget* now) {
        if (now)
            focusMoved(*now);
    });
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

std::string DataSheet::cell(int row, int column) const { return GetSheetText(row, column).toStdString(); }

void DataSheet::setCell(int row, int column, const std::string& text)
{
    SetSheetText(row, column, QString::fromStdString(text));
}

void DataSheet::SelectSheetCell(int row, int column)
{
    m_grid->selectCell(row, column);
    finishEdit();
}

void DataSheet::SetSheetText(int row, int column, const QString& text)
{
    m_grid->setText(row, column, text);
    if (row == m_grid->currentRow() && column == m_grid->currentColumn())
        mirrorCurrentCell();
}

QString DataSheet::GetSheetText(int row, int column) const { return m_grid->text(row, column); }

bool DataSheet::onDataCell() const { return m_grid->currentRow() >= 1 && m_grid->currentColumn() >= 1; }

void DataSheet::mirrorCurrentCell()
{
    m_shownRow = m_grid->currentRow();
    m_shownColumn = m_grid->currentColumn();
    {
        const QSignalBlocker filled(m_editor); // not typed
        m_editor->setText(GetSheetText(m_shownRow, m_shownColumn));
    }
    m_shown = m_editor->text();
    noteTyping();
}

void DataSheet::noteTyping()
{
    const bool typed = onDataCell() && m_editor->text() != m_shown;
    if (typed != std::exchange(m_typed, typed))
        emit typing(typed);
}

void DataSheet::storeTyped()
{
    if (m_editor->text() == m_shown || m_shownRow < 1 || m_shownColumn < 1)
        return;
    m_shown = m_editor->text();
    m_grid->setText(m_shownRow, m_shownColumn, m_shown);
    emit edited();
    emit stepMade(tr("Typing"));
    noteTyping();
}

void DataSheet::finishEdit()
{
    storeTyped();
    mirrorCurrentCell();
}

// The menu bar takes the focus before the user chooses an item; the chosen command stores the text.
void DataSheet::focusMoved(const QWidget& now)
{
    if (&now != m_editor && now.window() == window() && !qobject_cast<const QMenuBar*>(&now))
        finishEdit();
}

void DataSheet::startEdit(const QString& text)
{
    if (!onDataCell())
        return;
    storeTyped();
    m_editor->setFocus();
    m_editor->setText(ui::oneLine(text)); // leaves the caret at the end, where typing continues
}

void DataSheet::editPresentText()
{
    if (!onDataCell())
        return;
    m_editor->setFocus();
    m_editor->end(false);
}

void DataSheet::showRemarks(int model)
{
    const SheetReading reading(*this, model);
    for (int row = 1; row < rowCount(); ++row)
        for (int column = 1; column < columnCount(); ++column)
            m_grid->setRemark(row, column, QString::fromStdString(reading.remarkOn(row, column)));
}

void DataSheet::store()
{
    const int row = m_grid->currentRow();
    const int column = m_grid->currentColumn();
    SetSheetText(row, column, m_editor->text());
    SelectSheetCell(std::min(row + 1, rowCount() - 1), column);
    emit stepMade(tr("Typing"));
}

// Title cells in the block are emptied, too. The last normalization deliberately stays valid: only typed, pasted and
// opened data count as edits.
void DataSheet::clearBlock()
{
    emit aboutToChange();
    m_grid->setRedraw(false);
    emptyBlock(*this, selectedBlock(*m_grid));
    m_grid->setRedraw(true);
    emit stepMade(tr("Delete"));
}

void DataSheet::pasteText(const QString& text)
{
    storeTyped();
    emit aboutToChange();
    m_grid->setRedraw(false);
    m_dropped = pasteBlock(*this, m_grid->currentRow(), m_grid->currentColumn(), text.toStdString());
    m_grid->setRedraw(true);
    mirrorCurrentCell();
    emit edited();
    emit stepMade(tr("Paste"));
    emit changed(); // even if every cell was dropped
}

bool DataSheet::takeBlock(const QString& text)
{
    if (!isBlock(text.toStdString()))
        return false;
    pasteText(text);
    return true;
}

bool DataSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_editor && event->type() == QEvent::KeyPress)
        return editorKey(*static_cast<QKeyEvent*>(event));
    return QWidget::eventFilter(watched, event);
}

bool DataSheet::editorKey(const QKeyEvent& key)
{
    if (isModifier(key.key()))
        return false;
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
