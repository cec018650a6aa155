#include "app/resultstable.h"

#include "app/clipboardcommands.h"
#include "app/resultrow.h"
#include "app/sharedstate.h"
#include "app/textlines.h"
#include "ui/clipboard.h"
#include "ui/grid.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QToolTip>

#include <algorithm>

namespace app
{
namespace
{

constexpr int kButtonPadding = 12;     // pixels of frame and margins beside a caption
constexpr int kRows = kMaxResults + 1; // with the titles
constexpr std::array<int, kResultColumns> kColumnTwips{700, 500, 900, 900, 900, 900, 900, 900, 900};

QString fromUtf8(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

bool isEditKey(const QKeyEvent& key)
{
    return key.matches(QKeySequence::Copy) || key.matches(QKeySequence::Cut) || key.matches(QKeySequence::Paste);
}

} // namespace

ResultsTable::ResultsTable(SharedState& shared, QWidget* parent)
    : QWidget(parent), m_shared(shared), m_grid(new ui::Grid(this))
{
    auto* label = new QLabel(tr("Resul&ts"), this);
    label->setBuddy(m_grid);
    auto* head = new QHBoxLayout;
    head->setSpacing(2);
    head->addWidget(addButton(tr("Cop&y"), "cmdCopy", &ResultsTable::cmdCopy_Click));
    // Buttons that delete results have no underlined letter, so that no slip presses them.
    head->addWidget(addButton(tr("Clear All"), "cmdClearAll", &ResultsTable::cmdClearAll_Click));
    head->addWidget(addButton(tr("Del Row"), "cmdDelRow", &ResultsTable::cmdDelRow_Click));
    head->addWidget(addButton(tr("&Restore"), "cmdRestore", &ResultsTable::cmdRestore_Click));
    auto* lastButton = addButton(tr("Set C&ursor"), "cmdSetCursor", &ResultsTable::cmdSetCursor_Click);
    head->addWidget(lastButton);
    setTabOrder(lastButton, m_grid);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(label);
    layout->addLayout(head);
    layout->addWidget(m_grid);

    setUpGrid();
    cmdClearAll_Click();
    SelectResultCell(1, 1);
}

QPushButton* ResultsTable::addButton(const QString& caption, const char* name, void (ResultsTable::*clicked)())
{
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    button->setMinimumWidth(button->fontMetrics().size(Qt::TextShowMnemonic, caption).width() + kButtonPadding);
    connect(button, &QPushButton::clicked, this, clicked);
    return button;
}

void ResultsTable::setUpGrid()
{
    m_grid->setObjectName("MSHFlexGrid2");
    m_grid->setAccessibleName(tr("Results"));
    m_grid->setCounts(kRows, kResultColumns);
    m_grid->viewport()->installEventFilter(this);
    m_grid->verticalHeader()->viewport()->installEventFilter(this);
    for (int column = 0; column < kResultColumns; ++column) {
        const auto slot = static_cast<std::size_t>(column);
        m_grid->setColumnTwips(column, kColumnTwips[slot]);
        SetResultText(0, column, fromUtf8(kResultTitles[slot]));
    }
    SetResultText(0, kAssessmentColumn, fromUtf8(assessmentTitle(m_shared.settings.AssessmentMode)));
}

void ResultsTable::storeResult(const ResultRecord& result, int mask)
{
    emit aboutToChange();
    const int row = m_shared.results.ResultCursor;
    m_shared.results.store(result, mask);
    markCursor(true);
    RedrawResult();
    m_grid->scrollTo(m_grid->model()->index(row, m_grid->columnAt(0))); // keeps the horizontal position
    emit stepMade(tr("New Result"));
}

void ResultsTable::RedrawResult()
{
    clearRows();
    SetResultText(0, kAssessmentColumn, fromUtf8(assessmentTitle(m_shared.settings.AssessmentMode)));
    m_grid->setRedraw(false);
    int mask = 0;
    for (int row = 1; row < std::min(m_shared.results.ResultRowEnd, kRows); ++row) {
        const ResultRecord& record = m_shared.results.ResultData[static_cast<std::size_t>(row)];
        mask = shownMask(record, mask);
        int column = 0;
        for (const std::string& text : resultRow(record, mask, m_shared.settings.AssessmentMode))
            SetResultText(row, column++, QString::fromStdString(text));
    }
    m_grid->setRedraw(true);
}

// The tooltip of a row and its title shows the error text, because its column is mostly out of view, and the verdict.
bool ResultsTable::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::eventFilter(watched, event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int row = m_grid->rowAt(help->pos().y());
    QStringList lines{GetResultText(row, kErrorColumn)};
    if (row >= 1 && row < kRows)
        lines << QString::fromStdString(m_shared.results.verdicts[static_cast<std::size_t>(row)].text);
    lines.removeAll(QString());
    QToolTip::showText(help->globalPos(), lines.join('\n'), m_grid);
    return true;
}

void ResultsTable::SelectResultCell(int row, int column) { m_grid->selectCell(row, column); }

void ResultsTable::SetResultText(int row, int column, const QString& text) { m_grid->setText(row, column, text); }

QString ResultsTable::GetResultText(int row, int column) const { return m_grid->text(row, column); }

void ResultsTable::ClearResultRow(int row)
{
    m_grid->setRedraw(false);
    for (int column = 0; column < kResultColumns; ++column)
        SetResultText(row, column, QString());
    m_grid->setRedraw(true);
}

void ResultsTable::clearRows()
{
    for (int row = 1; row < kRows; ++row)
        ClearResultRow(row);
}

void ResultsTable::markCursor(bool marked)
{
    SetResultText(m_shared.results.ResultCursor, 0, marked ? QStringLiteral(">") : QString());
}

QStringList ResultsTable::rowTexts(int row) const
{
    QStringList texts;
    for (int column = 0; column < kResultColumns; ++column)
        texts << GetResultText(row, column);
    return texts;
}

// Copies the title row and the rows above the cursor, even if there are results below it: the cursor marks the end of
// the current work.
void ResultsTable::cmdCopy_Click()
{
    QString text;
    for (int row = 0; row < m_shared.results.ResultCursor; ++row)
        text += rowTexts(row).join('\t') + fromUtf8(kLineEnd);
    ui::copyText(text);
}

// Without this, the edit menu's keys would act on the data sheet.
bool ResultsTable::event(QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride || !isEditKey(*static_cast<QKeyEvent*>(event)))
        return QWidget::event(event);
    event->accept();
    return true;
}

void ResultsTable::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copyBlock(*m_grid);
    else if (!isEditKey(*event))
        QWidget::keyPressEvent(event);
}

void ResultsTable::cmdClearAll_Click()
{
    emit aboutToChange();
    clearRows();
    m_shared.results.clearAll();
    emit stepMade(tr("Clear All"));
}

void ResultsTable::cmdDelRow_Click()
{
    const int deleted = m_grid->currentRow();
    if (deleted < 1)
        return;
    emit aboutToChange();
    m_grid->setRedraw(false);
    shiftRowsUp(deleted);
    if (m_shared.results.ResultCursor > 1)
        moveCursorUp();
    m_grid->setRedraw(true);
    emit stepMade(tr("Del Row"));
}

// The last row is not emptied: it stays as a duplicate.
void ResultsTable::shiftRowsUp(int deleted)
{
    for (int row = deleted + 1; row < kRows; ++row) {
        for (int column = 0; column < kResultColumns; ++column)
            SetResultText(row - 1, column, GetResultText(row, column));
        m_shared.results.MoveData(row, row - 1);
    }
}

void ResultsTable::moveCursorUp()
{
    ResultStore& results = m_shared.results;
    markCursor(false);
    --results.ResultCursor;
    results.ResultRowEnd = std::max(results.ResultRowEnd - 1, 1);
    markCursor(true);
}

void ResultsTable::cmdRestore_Click()
{
    const QStringList row = rowTexts(m_grid->currentRow());
    if (!row[kResultModelColumn].isEmpty())
        emit restoreChosen(row);
}

void ResultsTable::cmdSetCursor_Click()
{
    if (m_grid->currentRow() < 1)
        return;
    emit aboutToChange();
    markCursor(false);
    m_shared.results.ResultCursor = m_grid->currentRow();
    markCursor(true);
    emit stepMade(tr("Set Cursor"));
}

} // namespace app
