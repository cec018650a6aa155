#include "app/importtablebox.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>

namespace app
{

ImportTableBox::ImportTableBox(imports::Choices& choices, QWidget* parent)
    : QGroupBox(tr("Table"), parent), m_choices(choices), m_separator(new QComboBox(this)),
      m_decimalSign(new QComboBox(this)), m_comment(new QLineEdit(this)), m_direction(new QComboBox(this)),
      m_firstRowCaption(new QLabel(this)), m_firstRow(new QSpinBox(this))
{
    nameControls();
    layOut();
    connectControls();
}

// The entries of the lists are in the order of their enumerations.
void ImportTableBox::nameControls()
{
    m_separator->setObjectName("cboSeparator");
    m_separator->addItems({tr("tab"), tr("semicolon"), tr("comma"), tr("blanks")});
    m_separator->setToolTip(tr("What stands between two cells of a line"));
    m_decimalSign->setObjectName("cboDecimalSign");
    m_decimalSign->addItems({tr("point"), tr("comma")});
    m_decimalSign->setPlaceholderText(tr("choose"));
    m_decimalSign->setToolTip(tr("1,000 is a thousand with a decimal point, and one with a decimal comma"));
    m_direction->setObjectName("cboDirection");
    m_direction->addItems({tr("rows"), tr("columns")});
    m_direction->setToolTip(tr("Whether a sample is a row or a column of the table"));
    m_firstRow->setObjectName("spnFirstRow");
    m_firstRow->setMinimum(1);
    m_firstRow->setToolTip(tr("What stands before is a head of text lines and titles"));
    m_comment->setObjectName("txtComment");
    m_comment->setText(QString::fromStdString(m_choices.comment));
    m_comment->setToolTip(tr("Lines that begin with this text are skipped; without a text, none is"));
}

void ImportTableBox::layOut()
{
    struct Caption {
        QString text;
        QWidget* control;
        int row, column;
    };
    auto* layout = new QGridLayout(this);
    for (const Caption& caption : {Caption{tr("&Separator"), m_separator, 0, 0},
                                   {tr("&Decimal sign"), m_decimalSign, 0, 2},
                                   {tr("Comment lines begin &with"), m_comment, 0, 4},
                                   {tr("Samples stand &in"), m_direction, 1, 0}}) {
        auto* label = new QLabel(caption.text, this);
        label->setBuddy(caption.control);
        layout->addWidget(label, caption.row, caption.column);
        layout->addWidget(caption.control, caption.row, caption.column + 1);
    }
    m_firstRowCaption->setText(tr("Data begin in &row"));
    m_firstRowCaption->setBuddy(m_firstRow);
    layout->addWidget(m_firstRowCaption, 1, 2);
    layout->addWidget(m_firstRow, 1, 3);
    for (const int column : {1, 3, 5})
        layout->setColumnStretch(column, 1);
}

void ImportTableBox::connectControls()
{
    connect(m_separator, &QComboBox::currentIndexChanged, this, [this](int separator) {
        m_choices.separator = static_cast<imports::Separator>(separator);
        m_choices.firstRow.reset();
        forgetColumns();
    });
    connect(m_decimalSign, &QComboBox::currentIndexChanged, this, [this](int sign) {
        m_choices.decimalSign = static_cast<imports::DecimalSign>(sign);
        emit changed();
    });
    connect(m_direction, &QComboBox::currentIndexChanged, this, [this](int direction) {
        m_choices.samplesInColumns = direction == 1;
        m_choices.firstRow.reset();
        forgetColumns();
    });
    connect(m_firstRow, &QSpinBox::valueChanged, this, [this](int row) {
        m_choices.firstRow = row;
        forgetColumns();
    });
    connect(m_comment, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_choices.comment = text.trimmed().toStdString();
        emit changed();
    });
}

/// Other cells or titles: the columns are found anew.
void ImportTableBox::forgetColumns()
{
    m_choices.columns = {};
    m_choices.units = {};
    emit changed();
}

void ImportTableBox::show(const imports::FoundTable& table)
{
    const QSignalBlocker separator(m_separator), sign(m_decimalSign), direction(m_direction), row(m_firstRow);
    const imports::Layout& layout = table.layout;
    m_separator->setCurrentIndex(static_cast<int>(layout.separator));
    m_decimalSign->setCurrentIndex(layout.signIsCertain ? static_cast<int>(layout.decimalSign) : -1);
    m_direction->setCurrentIndex(layout.samplesInColumns ? 1 : 0);
    m_firstRowCaption->setText(layout.samplesInColumns ? tr("Data begin in &column") : tr("Data begin in &row"));
    m_firstRow->setMaximum(std::max(1, table.cells.rowCount()));
    m_firstRow->setValue(layout.firstRow);
}

void ImportTableBox::takeFocus() { (m_decimalSign->currentIndex() < 0 ? m_decimalSign : m_separator)->setFocus(); }

} // namespace app
