#include "app/settingwindow.h"

#include "app/sharedstate.h"
#include "ui/optiongroup.h"
#include "ui/twips.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

#include <array>
#include <utility>

namespace app
{

/// One frame of the dialog; the index of an option is the value that it stores.
struct SettingChoice {
    const char* frame;
    const char* name; // of the button group; buttons append their index
    std::array<const char*, 2> options;
    int Settings::*setting;
    QBoxLayout::Direction direction;
};

namespace
{

constexpr std::array<SettingChoice, 4> kChoices{{
    {"Time scale", "opnTime", {"sec", "ns"}, &Settings::TimeScale, QBoxLayout::TopToBottom},
    {"Intensity Scale", "opnIscale", {"Normal", "log10(I(t))"}, &Settings::IntensityScale, QBoxLayout::TopToBottom},
    {"Gauss-Newton", "opnMethod", {"normal", "log mode"}, &Settings::LogMode, QBoxLayout::LeftToRight},
    {"Assessment",
     "opnAssessment",
     {"coefficient of determination(R2)", "residual sum of squares(Se)"},
     &Settings::AssessmentMode,
     QBoxLayout::TopToBottom},
}};

} // namespace

frmSettingWindow::frmSettingWindow(SharedState& shared, QWidget* parent) : QDialog(parent), m_shared(shared)
{
    setWindowTitle(tr("Output Settings"));
    auto* ok = new QPushButton(tr("OK"), this);
    ok->setObjectName("cmdOK");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmSettingWindow::cmdOK_Click);

    // The two short frames share a row, because the dialog's square place has no room for four rows.
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->setSpacing(4);
    layout->addWidget(makeFrame(kChoices[0]), 0, 0);
    layout->addWidget(makeFrame(kChoices[1]), 0, 1);
    layout->addWidget(makeFrame(kChoices[2]), 1, 0, 1, 2);
    layout->addWidget(makeFrame(kChoices[3]), 2, 0, 1, 2);
    layout->addWidget(ok, 3, 0, 1, 2, Qt::AlignRight);
    setTabOrder(findChild<QRadioButton*>("opnAssessment1"), ok);
    showSettings();
}

QGroupBox* frmSettingWindow::makeFrame(const SettingChoice& choice)
{
    auto* frame = new QGroupBox(tr(choice.frame), this);
    auto* group = new QButtonGroup(frame);
    group->setObjectName(choice.name);
    auto* layout = new QBoxLayout(choice.direction, frame);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->setSpacing(0);
    for (int index = 0; index < 2; ++index) {
        auto* option = new QRadioButton(tr(choice.options[static_cast<std::size_t>(index)]), frame);
        option->setObjectName(QString(choice.name) + QString::number(index));
        group->addButton(option, index);
        layout->addWidget(option);
    }
    ui::stopTabAtChosen(*group);
    // Assistive technology checks an option without a click. A click on a checked option also stores and announces it.
    connect(group, &QButtonGroup::idToggled, this, [this, &choice](int index, bool checked) {
        if (checked && m_shared.settings.*choice.setting != index)
            choose(choice, index);
    });
    connect(group, &QButtonGroup::idClicked, this, [this, &choice](int index) { choose(choice, index); });
    return frame;
}

void frmSettingWindow::choose(const SettingChoice& choice, int index)
{
    emit aboutToChange();
    m_shared.settings.*choice.setting = index;
    emit changed();
    if (choice.setting == &Settings::AssessmentMode)
        emit assessmentChanged();
    emit stepMade(tr(choice.frame));
}

void frmSettingWindow::showSettings()
{
    for (const SettingChoice& choice : kChoices)
        if (QAbstractButton* option = findChild<QButtonGroup*>(choice.name)->button(m_shared.settings.*choice.setting))
            option->setChecked(true);
}

void frmSettingWindow::SetSize(int top, int left, int height, int width)
{
    ui::placeAndShow(*this, {top, left, height, width});
}

void frmSettingWindow::showEvent(QShowEvent* event)
{
    showSettings();
    if (!std::exchange(m_loaded, true))
        emit assessmentChanged(); // the table is redrawn once when the dialog is first used
    QDialog::showEvent(event);
}

void frmSettingWindow::cmdOK_Click() { hide(); }

} // namespace app
