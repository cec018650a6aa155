#include "app/parameterpanel.h"

#include "app/editsteps.h"
#include "app/explained.h"
#include "app/modelframe.h"
#include "app/resultrow.h"
#include "app/sharedstate.h"
#include "fit/numbertext.h"
#include "models/guide.h"
#include "ui/fittingfont.h"
#include "ui/optiongroup.h"
#include "ui/textbox.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace app
{

namespace
{

constexpr int kBoxPadding = 12; // pixels of frame and margins in a text box
constexpr int kAllOption = 0;
constexpr int kThresholdOption = 1;

template <class Control>
Control* named(Control* control, const char* name)
{
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

QLabel* label(const QString& text, const char* name, QWidget* parent) { return named(new QLabel(text, parent), name); }

QString rateCaption(const char* name, std::string_view unit)
{
    return name + QString("/") + QString::fromUtf8(unit.data(), static_cast<qsizetype>(unit.size()));
}

/// In two-site models this box holds the constant of the first site, in s^-1 per M; in all others that of a quencher
/// beside the probe.
QString kq1Caption(int model)
{
    const models::Parameter* kq1 = models::row(model).typedInto(models::Box::kq1);
    return rateCaption("kq1", kq1 ? kq1->unit : models::kPerSecond);
}

/// If a text is too long for its box, its first digits are shown, not its last.
void showText(QLineEdit& box, const QString& text)
{
    box.setText(text);
    box.setCursorPosition(0);
}

} // namespace

ParameterPanel::ParameterPanel(SharedState& shared, QWidget* parent)
    : QWidget(parent), m_shared(shared), m_models(new ModelFrame(this)), m_fitRegions(new QButtonGroup(this)),
      m_steps(new EditSteps(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_models);
    layout->addWidget(label(tr("Initial Parameters"), "lblInitialParameters", this));
    layout->addLayout(makeParameterBoxes());
    m_fixKq2 = named(new QCheckBox(tr("Fix kq2 value (Stern-Volmer Only)"), this), "Check1");
    m_fixF = named(new QCheckBox(tr("Fix F value"), this), "Check2");
    explain(*m_fixKq2, "keep kq2 as typed while the other parameters are fitted");
    explain(*m_fixF, "keep F as typed while the other parameters are fitted");
    layout->addWidget(m_fixKq2);
    layout->addWidget(m_fixF);
    layout->addWidget(makeFitRegionFrame());
    layout->addStretch();
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);

    // Checked, not clicked: assistive technology checks an option without a click.
    connect(m_fitRegions, &QButtonGroup::idToggled, this, &ParameterPanel::fitRegionToggled);
    ui::stopTabAtChosen(*m_fitRegions);
    connect(m_models, &ModelFrame::chosen, this, &ParameterPanel::modelChosen);
    setPanelState({});
    connect(m_fitRegion, &QLineEdit::textChanged, this, [this] { m_shared.DataNormalized = false; });
    for (const QLineEdit* box : findChildren<QLineEdit*>())
        connect(box, &QLineEdit::textChanged, this, &ParameterPanel::changed);
    for (const QAbstractButton* option : findChildren<QAbstractButton*>())
        connect(option, &QAbstractButton::toggled, this, &ParameterPanel::changed);
    connect(m_fixKq2, &QCheckBox::toggled, this, [this] { m_steps->announce(tr("Fix kq2 value")); });
    connect(m_fixF, &QCheckBox::toggled, this, [this] { m_steps->announce(tr("Fix F value")); });
}

QLayout* ParameterPanel::makeParameterBoxes()
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(2);
    m_kq1Label = label(rateCaption("kq1", models::kPerSecond), "lblkq1", this);
    m_kq1 = addBox(*grid, {0, 0}, m_kq1Label, "txtkq1");
    m_kq2 = addBox(*grid, {1, 0}, label(rateCaption("kq2", models::kPerMolarSecond), "lblkq2", this), "txtkq2");
    m_K = addBox(*grid, {2, 0}, label(tr("K"), "lblK", this), "txtK");
    m_F = addBox(*grid, {3, 0}, label(tr("F"), "lblF", this), "txtF");
    m_s = addBox(*grid, {0, 2}, label(tr("s /nm"), "lblS", this), "txtS");
    m_Cp = addBox(*grid, {1, 2}, label(tr("Probe /M"), "lblConcProbe", this), "txtConcProbe");
    m_tolerance = addBox(*grid, {2, 2}, label(tr("Tolerance"), "lblTolerance", this), "txtTolerance");
    m_iteration = addBox(*grid, {3, 2}, label(tr("Iteration"), "lblItalation", this), "txtIteration");
    // The caption of the first label changes with the model, and the boxes must not move with it.
    m_kq1Label->setMinimumWidth(
        m_kq1Label->fontMetrics().horizontalAdvance(rateCaption("kq1", models::kPerMolarSecond)));
    explain(*m_s, kRadiusGuide);
    explain(*m_Cp, kProbeGuide);
    explain(*m_tolerance, kToleranceGuide);
    explain(*m_iteration, kIterationGuide);
    return grid;
}

QLineEdit* ParameterPanel::addBox(QGridLayout& grid, Cell cell, QLabel* label, const char* name)
{
    auto* edit = named(new ui::TextBox(this), name);
    // Wide enough for a restored rate constant.
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance("1.235e+7") + kBoxPadding);
    // Start values from a search can have more digits. All must be visible, or the power of ten is hidden.
    connect(edit, &QLineEdit::textChanged, this, [this, edit](const QString& text) {
        edit->setFont(ui::fittingFont(font(), text, edit->width() - kBoxPadding));
        remarkOn(*edit);
    });
    m_steps->watch(*edit, label->text().section('/', 0, 0).trimmed());
    label->setBuddy(edit);
    grid.addWidget(label, cell.row, cell.column);
    grid.addWidget(edit, cell.row, cell.column + 1);
    return edit;
}

QGroupBox* ParameterPanel::makeFitRegionFrame()
{
    auto* frame = named(new QGroupBox(tr("Fitting Region"), this), "Frame2");
    // In right-to-left text the sign would be mirrored and mean the opposite; marks on both sides prevent this.
    frame->setLayoutDirection(Qt::LeftToRight);
    const QString mark = QGuiApplication::isRightToLeft() ? QString(QChar(0x200e)) : QString();
    auto* row = new QHBoxLayout(frame);
    ui::tighten(*row);
    auto* threshold = named(new QRadioButton(mark + tr("≧") + mark, frame), "opnFitRegion1");
    auto* region = named(new ui::TextBox(frame), "txtFitRegion");
    m_fitRegion = region;
    m_fitRegion->setAccessibleName(tr("Fraction of the initial intensity"));
    explain(*m_fitRegion, kFitRegionGuide);
    m_steps->watch(*m_fitRegion, frame->title());
    connect(m_fitRegion, &QLineEdit::textChanged, this, [region] { remarkOn(*region); });
    auto* all = named(new QRadioButton(tr("All"), frame), "opnFitRegion0");
    explain(*threshold, "follow the decays down to the fraction in the box");
    explain(*all, "follow the decays down to 0.0001 of their initial intensity");
    m_fitRegions->addButton(threshold, kThresholdOption);
    m_fitRegions->addButton(all, kAllOption);
    row->addWidget(threshold);
    row->addWidget(m_fitRegion);
    row->addWidget(all);
    return frame;
}

QLineEdit* ParameterPanel::box(models::Box box) const
{
    switch (box) {
    case models::Box::K:
        return m_K;
    case models::Box::F:
        return m_F;
    case models::Box::kq1:
        return m_kq1;
    case models::Box::kq2:
        break;
    }
    return m_kq2;
}

PanelState ParameterPanel::panelState() const
{
    return {.kq1 = m_kq1->text().toStdString(),
            .kq2 = m_kq2->text().toStdString(),
            .K = m_K->text().toStdString(),
            .F = m_F->text().toStdString(),
            .s = m_s->text().toStdString(),
            .Cp = m_Cp->text().toStdString(),
            .tolerance = m_tolerance->text().toStdString(),
            .iteration = m_iteration->text().toStdString(),
            .fitRegion = m_fitRegion->text().toStdString(),
            .Model = m_models->model(),
            .FixKq2 = m_fixKq2->isChecked() ? 1 : 0,
            .FixF = m_fixF->isChecked() ? 1 : 0,
            .allChosen = m_fitRegions->checkedId() == kAllOption};
}

void ParameterPanel::setPanelState(const PanelState& panel)
{
    m_steps->fill(tr("Initial Parameters"), [&] { showPanel(panel); });
}

void ParameterPanel::showPanel(const PanelState& panel)
{
    showText(*m_kq1, QString::fromStdString(panel.kq1));
    showText(*m_kq2, QString::fromStdString(panel.kq2));
    showText(*m_K, QString::fromStdString(panel.K));
    showText(*m_F, QString::fromStdString(panel.F));
    showText(*m_s, QString::fromStdString(panel.s));
    showText(*m_Cp, QString::fromStdString(panel.Cp));
    showText(*m_tolerance, QString::fromStdString(panel.tolerance));
    showText(*m_iteration, QString::fromStdString(panel.iteration));
    showText(*m_fitRegion, QString::fromStdString(panel.fitRegion));
    chooseModel(panel.Model);
    m_fixKq2->setChecked(panel.FixKq2 != 0);
    m_fixF->setChecked(panel.FixF != 0);
    m_fitRegions->button(panel.allChosen ? kAllOption : kThresholdOption)->setChecked(true);
}

void ParameterPanel::chooseModel(int model) { m_models->choose(model); }

void ParameterPanel::modelChosen(int model)
{
    m_kq1Label->setText(kq1Caption(model));
    for (const models::Box used : {models::Box::kq1, models::Box::kq2, models::Box::K, models::Box::F}) {
        const models::Parameter* parameter = models::row(model).typedInto(used);
        box(used)->setEnabled(parameter);
        explain(*box(used), parameter ? models::guideText(parameter->meaning, parameter->unit)
                                      : "not a parameter of Model " + std::to_string(model));
    }
    m_steps->announce(tr("Model"));
}

// "All" does not change the mode: after a threshold was chosen, only a restart or an opened session resets it.
void ParameterPanel::fitRegionToggled(int option, bool chosen)
{
    if (chosen && option == kThresholdOption)
        m_shared.FitRegionMode = decay::kFitRegionThreshold;
    if (chosen)
        m_steps->announce(tr("Fitting Region"));
}

void ParameterPanel::restore(const QStringList& resultRow)
{
    const QString modelText = resultRow.value(kResultModelColumn);
    if (modelText.isEmpty())
        return;
    m_steps->fill(tr("Restore"), [&] {
        const int model = fit::roundedInt16(fit::numberFrom(modelText.toStdString())).value_or(0);
        chooseModel(model);
        for (const models::Parameter& parameter : models::row(model).fitted())
            if (parameter.restored)
                showText(*box(parameter.box), resultRow.value(resultColumn(parameter.reported)));
    });
}

} // namespace app
