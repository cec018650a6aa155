#include "preparation/sampletable.h"

#include "ui/clipboard.h"
#include "ui/gridpainting.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QSignalBlocker>

namespace preparation
{
namespace
{

constexpr int kEntryCount = static_cast<int>(kEntries.size());
constexpr int kFigureCount = static_cast<int>(kFigures.size());
constexpr qsizetype kLongestPaste = 100'000; // characters; far more than the table takes

int columnOf(Entry entry) { return static_cast<int>(entry); }

/// Without the marks, a right-to-left desktop shows "Error /%" as "%/ Error".
QTableWidgetItem* titleItem(const char* title, const char* meaning)
{
    constexpr QChar kLeftToRightMark(0x200e);
    auto* item = new QTableWidgetItem(kLeftToRightMark + QString::fromUtf8(title) + kLeftToRightMark);
    item->setToolTip(QString::fromUtf8(meaning));
    return item;
}

/// The block with points for its decimal commas. "1,000" alone may be a thousand, so it is left as it is, and so is a
/// block with points.
QString withDecimalPoints(const QString& block)
{
    static const QRegularExpression comma("(?<=\\d),(?=\\d)");
    static const QRegularExpression decimal("(?<![\\d,])(0\\d*|\\d{4,}|\\d+(?=,(\\d{1,2}|\\d{4,})(?![\\d,]))),\\d+");
    return block.contains('.') || !block.contains(decimal) ? block : QString(block).replace(comma, ".");
}

} // namespace

SampleTable::SampleTable(ui::Prompter& prompter, QWidget* parent)
    : QTableWidget(kSamples, kEntryCount + kFigureCount, parent), m_prompter(prompter)
{
    setObjectName("grdPreparation");
    setAccessibleName(tr("Readings and prepared intensities"));
    setLayoutDirection(Qt::LeftToRight); // columns of numbers are read from the left in every language
    setTabKeyNavigation(false);
    setSelectionMode(ContiguousSelection);
    setItemDelegate(new ui::FittingDelegate(this));
    for (int column = 0; column < kEntryCount; ++column)
        setHorizontalHeaderItem(column, titleItem(kEntries[static_cast<std::size_t>(column)].title,
                                                  kEntries[static_cast<std::size_t>(column)].meaning));
    for (int column = 0; column < kFigureCount; ++column)
        setHorizontalHeaderItem(kEntryCount + column, titleItem(kFigures[static_cast<std::size_t>(column)].title,
                                                                kFigures[static_cast<std::size_t>(column)].meaning));
    for (int row = 0; row < kSamples; ++row)
        for (int column = 0; column < columnCount(); ++column) {
            auto* cell = new QTableWidgetItem;
            if (column >= kEntryCount) {
                cell->setFlags(cell->flags() & ~Qt::ItemIsEditable);
                cell->setBackground(palette().brush(QPalette::Window));
            }
            setItem(row, column, cell);
        }
    for (int column = 0; column < columnCount(); ++column)
        setColumnWidth(column, std::max(horizontalHeader()->sectionSizeHint(column),
                                        fontMetrics().horizontalAdvance("00000.00") + 8));
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    setCurrentCell(0, columnOf(Entry::Reading));
    connect(this, &QTableWidget::itemChanged, this, &SampleTable::edited);
}

QTableWidgetItem* SampleTable::item(int sample, Entry entry) const
{
    return QTableWidget::item(sample - 1, columnOf(entry));
}

std::vector<TypedSample> SampleTable::typed() const
{
    std::vector<TypedSample> samples(kSamples);
    for (int sample = 1; sample <= kSamples; ++sample)
        for (std::size_t entry = 0; entry < kEntries.size(); ++entry)
            samples[static_cast<std::size_t>(sample - 1)][entry] =
                item(sample, static_cast<Entry>(entry))->text().toStdString();
    return samples;
}

void SampleTable::setColumn(Entry entry, const std::vector<std::string>& texts)
{
    const QSignalBlocker filling(this);
    for (int sample = 1; sample <= kSamples; ++sample) {
        const auto place = static_cast<std::size_t>(sample - 1);
        item(sample, entry)->setText(place < texts.size() ? QString::fromStdString(texts[place]) : QString());
    }
}

void SampleTable::setReadings(const std::vector<std::string>& readings)
{
    setColumn(Entry::Reading, readings);
    setColumn(Entry::SecondReading, {});
    setColumn(Entry::ThirdReading, {});
    emit edited();
}

void SampleTable::setVolumes(const std::vector<std::string>& added)
{
    setColumn(Entry::Added, added);
    emit edited();
}

void SampleTable::showSteps(const Steps& steps)
{
    const auto show = [&](int column, bool Steps::*step) { setColumnHidden(column, step && !(steps.*step)); };
    for (int column = 0; column < kEntryCount; ++column)
        show(column, kEntries[static_cast<std::size_t>(column)].step);
    for (int column = 0; column < kFigureCount; ++column)
        show(kEntryCount + column, kFigures[static_cast<std::size_t>(column)].step);
    if (isColumnHidden(currentColumn()))
        setCurrentCell(currentRow(), columnOf(Entry::Reading));
}

void SampleTable::showFigures(const Prepared& prepared, const SheetSamples& before)
{
    const QSignalBlocker filling(this);
    for (int row = 0; row < kSamples; ++row) {
        const auto figures = figuresOf(prepared, before, static_cast<std::size_t>(row));
        for (int column = 0; column < kFigureCount; ++column) {
            QTableWidget::item(row, kEntryCount + column)
                ->setText(QString::fromStdString(figures[static_cast<std::size_t>(column)]));
        }
    }
}

void SampleTable::showRefusal(const Cell* refusedCell, const QString& reason)
{
    const QSignalBlocker filling(this);
    for (int sample = 1; sample <= kSamples; ++sample)
        for (std::size_t entry = 0; entry < kEntries.size(); ++entry) {
            const auto which = static_cast<Entry>(entry);
            const bool refused = refusedCell && refusedCell->sample == sample && refusedCell->entry == which;
            item(sample, which)->setToolTip(refused ? reason : QString());
            item(sample, which)->setData(Qt::AccessibleDescriptionRole, refused ? reason : QString());
        }
}

void SampleTable::goTo(const Cell& cell)
{
    setFocus();
    setCurrentItem(item(cell.sample, cell.entry));
}

void SampleTable::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::Paste))
        paste();
    else if (event->matches(QKeySequence::Cut)) {
        copy();
        clear(selectedIndexes());
    } else if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
        clear(selectedIndexes());
    else
        QTableWidget::keyPressEvent(event);
}

void SampleTable::copy() const
{
    QString text;
    int row = -1;
    for (const QModelIndex& cell : selectedIndexes()) { // row by row
        if (isColumnHidden(cell.column()))
            continue;
        text += row < 0 ? "" : row == cell.row() ? "\t" : "\r\n";
        row = cell.row();
        text += cell.data().toString();
    }
    ui::copyText(text + "\r\n");
}

void SampleTable::paste()
{
    const std::optional<QString> pasted = ui::pastedText(m_prompter);
    if (!pasted)
        return;
    {
        const QSignalBlocker filling(this);
        fill(withDecimalPoints(pasted->left(kLongestPaste)));
    }
    emit edited();
}

/// From the current cell on, into the typed cells in view. Other cells are dropped.
void SampleTable::fill(const QString& block)
{
    int row = currentRow();
    for (const QString& line : QString(block).remove('\r').split('\n')) {
        int column = currentColumn();
        for (const QString& field : line.isEmpty() ? QStringList() : line.split('\t')) {
            while (column < kEntryCount && isColumnHidden(column))
                ++column;
            if (row < kSamples && column < kEntryCount)
                QTableWidget::item(row, column)->setText(field.trimmed());
            ++column;
        }
        ++row;
    }
}

void SampleTable::clear(const QModelIndexList& cells)
{
    {
        const QSignalBlocker filling(this);
        for (const QModelIndex& cell : cells)
            if (cell.column() < kEntryCount)
                QTableWidget::item(cell.row(), cell.column())->setText({});
    }
    emit edited();
}

} // namespace preparation
