#include "app/parameterpanel.h"

#include "app/boxguides.h"
#include "app/editsteps.h"
#include "app/resultrow.h"
#include "app/sharedstate.h"
#include "app/sheetreading.h"
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
#include <QKeyEvent>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace app
{

namespace
{

constexpr int kOptionsPerRow = 3;
constexpr int kBoxPadding = 12; // pixels of frame and margins in a text box
constexpr int kAllOption = 0;
constexpr auto kGuide = "guide"; // property of a control: its explanation without a remark
constexpr int kThresholdOption = 1;

QString fromUtf8(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

template <class Button>
Button* named(Button* button, const QString& name)
{
    button->setObjectName(name);
    return button;
}

QLabel* label(const QString& text, const char* name, QWidget* parent)
{
    return named(new QLabel(text, parent), QString::fromLatin1(name));
}

/// Adds to the explanation of a box how its text is read, if not as it stands.
void remarkOn(ui::TextBox& box)
{
    const std::string remark = remarkOnNumber(box.text().toStdString());
    const QStringList texts{box.property(kGuide).toString(), QString::fromStdString(remark)};
    const QString text = remark.empty() ? texts.front() : texts.join('\n');
    box.setToolTip(text);
    box.setAccessibleDescription(text);
    box.setRemarked(!remark.empty());
}

/// Sets the explanation that the tooltip of a control shows and a screen reader reads.
void explain(QWidget& control, const std::string& text)
{
    control.setProperty(kGuide, QString::fromStdString(text));
    control.setToolTip(QString::fromStdString(text));
    control.setAccessibleDescription(QString::fromStdString(text));
    if (auto* box = qobject_cast<ui::TextBox*>(&control))
        remarkOn(*box);
}

void explain(QWidget& control, const BoxGuide& guide)
{
    explain(control, models::guideText(guide.meaning, guide.unit));
}

QString rateCaption(const char* name, std::string_view unit) { return name + QString("/") + fromUtf8(unit); }

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

void tighten(QLayout& layout)
{
    layout.setContentsMargins(6, 2, 6, 4);
    layout.setSpacing(2);
}

} // namespace

ParameterPanel::ParameterPanel(SharedState& shared, QWidget* parent)
    : QWidget(parent), m_shared(shared), m_models(new QButtonGroup(this)), m_fitRegions(new QButtonGroup(this)),
      m_steps(new EditSteps(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(makeModelFrame());
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
    connect(m_models, &QButtonGroup::idToggled, this, &ParameterPanel::modelToggled);
    connect(m_fitRegions, &QButtonGroup::idToggled, this, &ParameterPanel::fitRegionToggled);
    for (QButtonGroup* options : {m_models, m_fitRegions})
        ui::stopTabAtChosen(*options);
    setPanelState({});
    connect(m_fitRegion, &QLineEdit::textChanged, this, [this] { m_shared.DataNormalized = false; });
    for (const QLineEdit* box : findChildren<QLineEdit*>())
        connect(box, &QLineEdit::textChanged, this, &ParameterPanel::changed);
    for (const QAbstractButton* option : findChildren<QAbstractButton*>())
        connect(option, &QAbstractButton::toggled, this, &ParameterPanel::changed);
    connect(m_fixKq2, &QCheckBox::toggled, this, [this] { m_steps->announce(tr("Fix kq2 value")); });
    connect(m_fixF, &QCheckBox::toggled, this, [this] { m_steps->announce(tr("Fix F value")); });
}

QGroupBox* ParameterPanel::makeModelFrame()
{
    auto* frame = named(new QGroupBox(tr("Model"), this), "Frame1");
    auto* grid = new QGridLayout(frame);
    tighten(*grid);
    int row = 0;
    int column = 0;
    std::string_view above;
    for (int model = 1; model <= models::kModelCount; ++model) {
        const std::string_view group = models::row(model).group;
        if (group != above)
            grid->addWidget(new QLabel(fromUtf8(group), frame), ++row, 0, 1, kOptionsPerRow);
        if (group != above || column == kOptionsPerRow) {
            ++row;
            column = 0;
        }
        above = group;
        grid->addWidget(makeModelOption(model, frame), row, column++);
    }
    return frame;
}

QRadioButton* ParameterPanel::makeModelOption(int model, QWidget* parent)
{
    auto* option = named(new QRadioButton(tr("Model %1").arg(model), parent), QString("opnModel%1").arg(model));
    explain(*option, std::string(models::row(model).group) + "\n" + models::modelText(model));
    option->installEventFilter(this);
    m_models->addButton(option, model);
    return option;
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
    auto* edit = named(new ui::TextBox(this), QString::fromLatin1(name));
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
    tighten(*row);
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
            .Model = m_models->checkedId(),
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

void ParameterPanel::chooseModel(int model)
{
    if (QAbstractButton* option = m_models->button(model))
        option->setChecked(true);
}

void ParameterPanel::modelToggled(int model, bool chosen)
{
    if (!chosen)
        return;
    m_kq1Label->setText(kq1Caption(model));
    for (const models::Box used : {models::Box::kq1, models::Box::kq2, models::Box::K, models::Box::F}) {
        const models::Parameter* parameter = models::row(model).typedInto(used);
        box(used)->setEnabled(parameter);
        explain(*box(used), parameter ? models::guideText(parameter->meaning, parameter->unit)
                                      : "not a parameter of Model " + std::to_string(model));
    }
    m_steps->announce(tr("Model"));
}

// By default an arrow key goes to the nearest option on the screen and so skips some. Here all four keys follow the
// model numbers.
bool ParameterPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Right:
    case Qt::Key_Down:
        stepModel(1);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Up:
        stepModel(-1);
        return true;
    default:
        return false;
    }
}

void ParameterPanel::stepModel(int step)
{
    if (QAbstractButton* option = m_models->button(m_models->checkedId() + step)) {
        option->setFocus();
        option->click();
    }
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
