#include "trust/errorschoice.h"

#include "trust/tableview.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace trust
{

ErrorsChoice::ErrorsChoice(QWidget* parent)
    : QWidget(parent), m_list(new QComboBox(this)), m_caption(new QLabel(tr("Relati&ve errors in %:"), this)),
      m_typed(new QLineEdit(this)), m_known(new QCheckBox(tr("&known"), this))
{
    m_list->setObjectName("cboErrors");
    m_list->addItem(tr("equal on the ratios"), static_cast<int>(noise::Assumption::EqualOnRatios));
    m_list->addItem(tr("proportional to every intensity"), static_cast<int>(noise::Assumption::Proportional));
    m_list->addItem(tr("as typed"), static_cast<int>(noise::Assumption::AsTyped));
    m_typed->setObjectName("txtErrors");
    m_typed->setText("1");
    m_caption->setBuddy(m_typed);
    m_known->setObjectName("chkKnownErrors");
    layOut();
    setErrors({});
    connect(m_list, &QComboBox::activated, this, [this] {
        showTyped();
        announce();
    });
    connect(m_typed, &QLineEdit::editingFinished, this, &ErrorsChoice::announce);
    connect(m_known, &QCheckBox::toggled, this, &ErrorsChoice::announce);
}

void ErrorsChoice::layOut()
{
    auto* caption = new QLabel(tr("Er&rors:"), this);
    caption->setBuddy(m_list);
    auto* first = new QHBoxLayout;
    first->addWidget(caption);
    first->addWidget(m_list);
    first->addWidget(m_known);
    first->addStretch();
    auto* second = new QHBoxLayout;
    second->addWidget(m_caption);
    second->addWidget(m_typed, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addLayout(first);
    layout->addLayout(second);
}

noise::Errors ErrorsChoice::errors() const
{
    return {static_cast<noise::Assumption>(m_list->currentData().toInt()),
            noise::errorsFromPercent(m_typed->text().toStdString()), m_known->isChecked()};
}

void ErrorsChoice::setErrors(const noise::Errors& errors)
{
    const QSignalBlocker filling(m_known);
    m_list->setCurrentIndex(m_list->findData(static_cast<int>(errors.assumption)));
    if (!errors.typed.empty() && errors.typed != noise::errorsFromPercent(m_typed->text().toStdString()))
        m_typed->setText(qtText(noise::percentText(errors.typed)));
    m_known->setChecked(errors.known);
    m_announced = this->errors();
    showTyped();
}

void ErrorsChoice::showTyped()
{
    const bool typed = errors().assumption == noise::Assumption::AsTyped;
    for (QWidget* widget : std::initializer_list<QWidget*>{m_caption, m_typed, m_known})
        widget->setVisible(typed);
}

/// Once for each change: leaving the box also ends its editing.
void ErrorsChoice::announce()
{
    const noise::Errors chosen = errors();
    if (chosen == m_announced)
        return;
    m_announced = chosen;
    emit errorsChanged(chosen);
}

} // namespace trust
