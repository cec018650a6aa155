#include "app/exportwindow.h"

#include "ui/closing.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace app
{

ExportWindow::ExportWindow()
    : m_table(new QComboBox(this)), m_separator(new QComboBox(this)),
      m_head(new QCheckBox(tr("&Head lines with version, assumption, τ0 and Cp"), this)), m_outcome(new QLabel(this)),
      m_save(new QPushButton(tr("&Save as..."), this)), m_saveAll(new QPushButton(tr("All into a &Folder..."), this)),
      m_close(new QPushButton(tr("C&lose"), this))
{
    setWindowTitle(tr("Export"));
    m_table->setObjectName("cboExportTable");
    for (const ExportedTableRow& row : kExportedTables)
        m_table->addItem(tr(row.name));
    m_separator->setObjectName("cboExportSeparator");
    m_separator->addItem(tr("comma"), ',');
    m_separator->addItem(tr("semicolon"), ';');
    m_head->setObjectName("chkHead");
    m_head->setChecked(ExportForm().withHead);
    m_outcome->setObjectName("lblExported");
    m_outcome->setTextFormat(Qt::PlainText); // a file name may look like markup
    m_outcome->setWordWrap(true);
    m_save->setObjectName("cmdSaveTable");
    m_saveAll->setObjectName("cmdSaveAll");
    m_close->setObjectName("cmdCloseExport");
    layOut();
    ui::closeOnEscape(*this);
    connect(m_save, &QPushButton::clicked, this, [this] {
        emit tableWanted(kExportedTables[static_cast<std::size_t>(m_table->currentIndex())].table, form());
    });
    connect(m_saveAll, &QPushButton::clicked, this, [this] { emit allWanted(form()); });
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
}

void ExportWindow::layOut()
{
    auto* choices = new QFormLayout;
    choices->addRow(tr("&Table:"), m_table);
    choices->addRow(tr("Se&parator:"), m_separator);
    choices->addRow(m_head);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* button : {m_save, m_saveAll, m_close})
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(choices);
    layout->addWidget(m_outcome, 1);
    layout->addLayout(buttons);
    m_table->setFocus();
}

ExportForm ExportWindow::form() const
{
    return {.separator = m_separator->currentData().toChar().toLatin1(), .withHead = m_head->isChecked()};
}

void ExportWindow::showOutcome(const QString& text) { m_outcome->setText(text); }

} // namespace app
