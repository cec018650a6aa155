#include "app/importwindow.h"

#include "app/windowplaces.h"
#include "ui/grid.h"
#include "ui/optiongroup.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace app
{
namespace
{

bool haveSameForm(const imports::FoundTable& a, const imports::FoundTable& b)
{
    return a.titles == b.titles && a.layout.separator == b.layout.separator &&
           a.layout.samplesInColumns == b.layout.samplesInColumns && a.layout.firstRow == b.layout.firstRow;
}

void writeTitles(ui::Grid& grid)
{
    grid.setCounts(kSheetRows, kSheetColumns);
    for (int row = 0; row < kSheetRows; ++row)
        grid.setText(row, 0, QString::fromStdString(std::string(kSheetRowTitles[static_cast<std::size_t>(row)])));
}

} // namespace

ImportWindow::ImportWindow(const SheetText& sheet, QWidget* parent)
    : QDialog(parent), m_sheet(sheet), m_tableBox(new ImportTableBox(m_choices, this)),
      m_columnsBox(new ImportColumnsBox(m_choices, this)), m_samples(new QLineEdit(this)),
      m_replace(new QRadioButton(tr("R&eplace the sheet"), this)),
      m_add(new QRadioButton(tr("&Add to the sheet"), this)), m_preview(new ui::Grid(this)),
      m_remarks(new QPlainTextEdit(this)), m_state(new ui::ElidedLabel(this)), m_ok(new QPushButton(tr("OK"), this)),
      m_cancel(new QPushButton(tr("Cancel"), this))
{
    setWindowTitle(tr("Import Table"));
    nameControls();
    layOut();
    connectControls();
    readTable();
}

void ImportWindow::nameControls()
{
    m_samples->setObjectName("txtImportSamples");
    m_samples->setToolTip(tr("Samples of the table by their numbers, such as 1-3, 7"));
    m_replace->setObjectName("opnReplace");
    m_replace->setChecked(true);
    m_add->setObjectName("opnAdd");
    auto* placing = new QButtonGroup(this);
    placing->setObjectName("opnPlacing");
    placing->addButton(m_replace);
    placing->addButton(m_add);
    ui::stopTabAtChosen(*placing);
    m_preview->setObjectName("grdImport");
    m_preview->setAccessibleName(tr("The sheet after the import"));
    m_preview->numberColumns();
    writeTitles(*m_preview);
    m_remarks->setObjectName("txtImportRemarks");
    m_remarks->setReadOnly(true);
    m_remarks->setTabChangesFocus(true);
    m_state->setObjectName("lblImport");
    m_ok->setObjectName("cmdImportOK");
    m_ok->setDefault(true);
    m_cancel->setObjectName("cmdImportCancel");
}

void ImportWindow::layOut()
{
    auto* samplesCaption = new QLabel(tr("Sam&ples"), this);
    samplesCaption->setBuddy(m_samples);
    auto* samples = new QHBoxLayout;
    samples->addWidget(samplesCaption);
    samples->addWidget(m_samples, 1);
    samples->addWidget(m_replace);
    samples->addWidget(m_add);
    auto* remarksCaption = new QLabel(tr("&Notes"), this);
    remarksCaption->setBuddy(m_remarks);
    m_remarks->setMinimumHeight(2 * m_remarks->fontMetrics().lineSpacing() + 12);
    auto* end = new QHBoxLayout;
    end->addWidget(m_state, 1);
    end->addWidget(m_ok);
    end->addWidget(m_cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tableBox);
    layout->addWidget(m_columnsBox);
    layout->addLayout(samples);
    layout->addWidget(m_preview, 4);
    layout->addWidget(remarksCaption);
    layout->addWidget(m_remarks, 1);
    layout->addLayout(end);
}

void ImportWindow::connectControls()
{
    connect(m_tableBox, &ImportTableBox::changed, this, &ImportWindow::readTable);
    connect(m_columnsBox, &ImportColumnsBox::changed, this, &ImportWindow::readTable);
    connect(m_samples, &QLineEdit::textChanged, this, [this] {
        m_samplesTyped = true;
        showPreview();
    });
    connect(m_replace, &QRadioButton::toggled, this, &ImportWindow::refresh);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void ImportWindow::showTable(const std::string& text, const QString& origin)
{
    m_text = text;
    m_origin = origin;
    m_samplesTyped = false;
    imports::FoundTable found = imports::findTable(m_text, {.comment = m_choices.comment});
    if (!haveSameForm(found, m_found))
        m_choices = {.comment = m_choices.comment};
    m_choices.decimalSign.reset();
    m_found = std::move(found);
    readTable();
    showInFront(*this, kImportPlace);
    m_tableBox->takeFocus();
}

void ImportWindow::readTable()
{
    m_table = imports::findTable(m_text, m_choices);
    m_list = readSamples(m_table);
    m_tableBox->show(m_table);
    m_columnsBox->show(m_table);
    QStringList remarks;
    if (m_table.cells.columnCount() > ImportColumnsBox::kMostColumns)
        remarks << tr("The table has %1 columns; only the first %2 can be chosen.")
                       .arg(m_table.cells.columnCount())
                       .arg(ImportColumnsBox::kMostColumns);
    for (const std::vector<std::string>* texts : {&m_list.notes, &m_list.remarks})
        for (const std::string& text : *texts)
            remarks << QString::fromStdString(text);
    m_remarks->setPlainText(remarks.join('\n'));
    refresh();
}

void ImportWindow::refresh()
{
    if (!m_samplesTyped) {
        const QSignalBlocker filling(m_samples);
        const int count = static_cast<int>(m_list.samples.size());
        m_samples->setText(QString::fromStdString(firstSamples(std::min(count, room()))));
    }
    showPreview();
}

Placing ImportWindow::placing() const { return m_add->isChecked() ? Placing::Add : Placing::Replace; }

int ImportWindow::room() const { return roomFor(m_sheet, placing()); }

int ImportWindow::firstColumn() const { return decay::kMaxSamples - room() + 1; }

std::vector<imports::SampleColumn> ImportWindow::columns() const
{
    std::vector<imports::SampleColumn> columns;
    if (placing() == Placing::Add)
        columns = columnsOf(m_sheet);
    const auto chosen = chosenSamples(m_samples->text().toStdString(), static_cast<int>(m_list.samples.size()));
    for (const std::size_t sample : chosen.value_or(std::vector<std::size_t>()))
        columns.push_back(m_list.samples[sample]);
    return columns;
}

bool ImportWindow::hasVolumes() const { return m_table.layout.columns[indexOf(imports::Quantity::Added)] > 0; }

std::vector<std::string> ImportWindow::addedVolumes() const
{
    std::vector<std::string> volumes;
    if (hasVolumes())
        for (const imports::SampleColumn& column : columns())
            volumes.push_back(column.front().text);
    return volumes;
}

void ImportWindow::showPreview()
{
    const std::vector<imports::SampleColumn> columns = this->columns();
    m_preview->setRedraw(false);
    for (int column = 1; column < kSheetColumns; ++column)
        for (int row = 1; row < kSheetRows; ++row) {
            const auto index = static_cast<std::size_t>(column - 1);
            const imports::SampleCell cell =
                index < columns.size() ? columns[index][static_cast<std::size_t>(row)] : imports::SampleCell{};
            // What waits for a choice is shown as the table has it.
            const bool waits = cell.reading == imports::Reading::BothSigns;
            m_preview->setText(row, column, QString::fromStdString(waits ? cell.source : cell.text));
            m_preview->setRemark(row, column, QString::fromStdString(remarkOn(cell)));
        }
    m_preview->setRedraw(true);
    showState();
}

/// Why the samples cannot be imported yet; empty if they can.
QString ImportWindow::complaint() const
{
    const int count = static_cast<int>(m_list.samples.size());
    const bool hasConcentrations = m_table.layout.columns[indexOf(imports::Quantity::Concentration)] > 0;
    if (!hasConcentrations && !hasVolumes())
        return tr("Choose the column of the concentrations, or of the added volumes.");
    if (hasConcentrations && hasVolumes())
        return tr("Choose concentrations or added volumes, not both.");
    if (count == 0)
        return tr("No sample has a concentration that can be read.");
    if (m_list.waitsForSign)
        return tr("Choose the decimal sign: the marked numbers fit both.");
    const auto chosen = chosenSamples(m_samples->text().toStdString(), count);
    if (!chosen && room() > 0)
        return tr("Type which of the %1 samples you want, such as 1-%1.").arg(count);
    if (!chosen || static_cast<int>(chosen->size()) > room())
        return tr("The sheet has room for %1 more samples. Choose fewer.").arg(room());
    return {};
}

void ImportWindow::showState()
{
    const QString wrong = complaint();
    const auto columns = this->columns();
    const auto imported = static_cast<int>(columns.size()) - firstColumn() + 1;
    m_state->showText(
        !wrong.isEmpty() ? wrong : tr("%1: %2 of %3 samples").arg(m_origin).arg(imported).arg(m_list.samples.size()));
    m_ok->setEnabled(wrong.isEmpty());
    m_ok->setToolTip(wrong);
}

} // namespace app
