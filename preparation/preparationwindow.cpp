#include "preparation/preparationwindow.h"

#include "preparation/sampletable.h"
#include "ui/closing.h"
#include "ui/prompter.h"
#include "ui/textbox.h"
#include "ui/wrappinglabel.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <tuple>

namespace preparation
{
namespace
{

QString meaningOf(Box box)
{
    return box == Box::V0 ? PreparationWindow::tr("Volume of the reference, in any unit")
                          : PreparationWindow::tr("Concentration of the quencher in the added solution, M");
}

} // namespace

PreparationWindow::PreparationWindow(ui::Prompter& prompter)
    : m_prompter(prompter), m_steps{{{new QCheckBox(tr("&Mean of readings"), this), &Steps::replicates},
                                     {new QCheckBox(tr("&Blank"), this), &Steps::blank},
                                     {new QCheckBox(tr("&Inner filter"), this), &Steps::innerFilter},
                                     {new QCheckBox(tr("&Dilution"), this), &Steps::dilution}}},
      m_V0(new ui::TextBox(this)), m_stock(new ui::TextBox(this)), m_table(new SampleTable(prompter, this)),
      m_sheetNote(ui::wrappingLabel("lblSheetChanged", this)), m_notes(ui::wrappingLabel("lblPreparation", this)),
      m_take(new QPushButton(tr("Take from &Sheet"), this)),
      m_handErrors(new QCheckBox(tr("&Errors to Fit Details"), this)), m_apply(new QPushButton(tr("&Apply"), this)),
      m_close(new QPushButton(tr("C&lose"), this)), m_untouched(m_table->typed())
{
    setWindowTitle(tr("Prepare Intensities"));
    nameControls();
    layOut();
    ui::closeOnEscape(*this);
    m_steps.front().box->setChecked(true);
    m_handErrors->setChecked(true);
    look();
    m_table->setFocus();
    for (const StepBox& step : m_steps)
        connect(step.box, &QCheckBox::toggled, this, &PreparationWindow::look);
    for (const ui::TextBox* box : {m_V0, m_stock})
        connect(box, &ui::TextBox::textChanged, this, &PreparationWindow::look);
    connect(m_table, &SampleTable::edited, this, &PreparationWindow::look);
    connect(m_take, &QPushButton::clicked, this, &PreparationWindow::takeFromSheet);
    connect(m_apply, &QPushButton::clicked, this, &PreparationWindow::apply);
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
}

// An open edit of a cell ends when the window is hidden, which needs the window.
PreparationWindow::~PreparationWindow() { hide(); }

void PreparationWindow::nameControls()
{
    const std::tuple<QWidget*, const char*, QString> controls[]{
        {m_steps[0].box, "chkReplicates", tr("Takes the mean of all readings of a sample; otherwise the first one")},
        {m_steps[1].box, "chkBlank", tr("Subtracts a reading without the probe")},
        {m_steps[2].box, "chkInnerFilter", tr("Corrects for light that the sample absorbs")},
        {m_steps[3].box, "chkDilution", tr("Corrects for the added volumes, and calculates the concentrations")},
        {m_V0, "txtV0", meaningOf(Box::V0)},
        {m_stock, "txtStock", meaningOf(Box::Stock)},
        {m_take, "cmdTakeReadings", tr("Takes the intensities of the sheet as readings")},
        {m_handErrors, "chkHandErrors", tr("Apply also types the errors of the intensities into Fit Details")},
        {m_apply, "cmdApplyPreparation", tr("Writes the prepared values into the sheet")},
        {m_close, "cmdClosePreparation", {}}};
    for (const auto& [control, name, tip] : controls) {
        control->setObjectName(name);
        control->setToolTip(tip);
    }
}

void PreparationWindow::layOut()
{
    auto* steps = new QHBoxLayout;
    for (const StepBox& step : m_steps)
        steps->addWidget(step.box);
    for (const auto& [caption, box] : {std::pair{tr("&V0:"), m_V0}, std::pair{tr("Stoc&k /M:"), m_stock}}) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(box);
        steps->addWidget(label);
        steps->addWidget(box);
    }
    steps->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_take);
    buttons->addStretch();
    for (QWidget* widget : std::initializer_list<QWidget*>{m_handErrors, m_apply, m_close})
        buttons->addWidget(widget);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(steps);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_sheetNote);
    layout->addWidget(m_notes);
    layout->addLayout(buttons);
}

TypedSeries PreparationWindow::typed() const
{
    TypedSeries typed{
        .V0 = m_V0->text().toStdString(), .stock = m_stock->text().toStdString(), .samples = m_table->typed()};
    for (const StepBox& step : m_steps)
        typed.steps.*step.step = step.box->isChecked();
    return typed;
}

void PreparationWindow::showSheet(const SheetSamples& sheet)
{
    m_sheet = sheet;
    if (typed().samples == m_untouched && sheet != m_applied)
        return takeFromSheet();
    look();
}

void PreparationWindow::showTitration(const SheetSamples& sheet, const std::vector<std::string>& added)
{
    m_sheet = sheet;
    m_table->setVolumes(added);
    takeFromSheet();
    for (const StepBox& step : m_steps)
        if (step.step == &Steps::dilution)
            step.box->setChecked(true);
    m_V0->setFocus(); // what the table cannot tell
}

void PreparationWindow::takeFromSheet()
{
    m_takenFrom = m_sheet;
    m_table->setReadings(m_sheet.Phi);
    m_untouched = typed().samples;
}

void PreparationWindow::look()
{
    const TypedSeries series = typed();
    const std::variant<Prepared, Refusal> outcome = prepare(series, static_cast<int>(m_sheet.Phi.size()));
    const auto* refusal = std::get_if<Refusal>(&outcome);
    const QString reason = refusal ? QString::fromStdString(refusal->text) : QString();
    const Prepared prepared =
        refusal ? Prepared{.steps = series.steps, .samples = {}, .scatter = {}} : std::get<Prepared>(outcome);
    m_table->showSteps(series.steps);
    m_table->showFigures(prepared, m_sheet);
    m_table->showRefusal(refusal ? std::get_if<Cell>(&refusal->place) : nullptr, reason);
    showRefusalOf(*m_V0, Box::V0, refusal);
    showRefusalOf(*m_stock, Box::Stock, refusal);
    m_notes->setText(refusal ? reason : QString::fromStdString(notes(prepared)));
    for (QWidget* box : {m_V0, m_stock})
        box->setEnabled(series.steps.dilution);
    const bool isPrepared = !m_applied.Phi.empty() && m_sheet == m_applied;
    m_take->setEnabled(!isPrepared); // they would be corrected twice
    m_sheetNote->setVisible(isPrepared || m_sheet != m_takenFrom);
    m_sheetNote->setText(isPrepared ? tr("The sheet holds the prepared intensities.")
                                    : tr("The sheet has changed since the readings were taken from it."));
}

void PreparationWindow::showRefusalOf(ui::TextBox& box, Box place, const Refusal* refusal)
{
    const Box* refused = refusal ? std::get_if<Box>(&refusal->place) : nullptr;
    const bool isRefused = refused && *refused == place;
    box.setRemarked(isRefused);
    box.setToolTip(isRefused ? QString::fromStdString(refusal->text) : meaningOf(place));
}

void PreparationWindow::apply()
{
    m_apply->setFocus(); // ends the edit of a cell
    const std::variant<Prepared, Refusal> outcome = prepare(typed(), static_cast<int>(m_sheet.Phi.size()));
    if (const auto* refusal = std::get_if<Refusal>(&outcome)) {
        m_prompter.message(QString::fromStdString(refusal->text));
        if (const Cell* cell = std::get_if<Cell>(&refusal->place))
            m_table->goTo(*cell);
        else
            (std::get<Box>(refusal->place) == Box::V0 ? m_V0 : m_stock)->setFocus();
        return;
    }
    const auto& prepared = std::get<Prepared>(outcome);
    m_applied = sheetTexts(prepared, m_sheet);
    emit applied(m_applied);
    const std::vector<double> errors = relativeErrors(prepared);
    if (m_handErrors->isChecked() && !errors.empty())
        emit errorsKnown(errors);
}

} // namespace preparation
