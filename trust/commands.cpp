#include "trust/commands.h"

#include "analysis/messages.h"
#include "decay/decayproblem.h"
#include "trust/panelstarts.h"
#include "ui/twips.h"

#include <QScopedValueRollback>
#include <QScreen>

#include <algorithm>
#include <cassert>

namespace trust
{
namespace
{

/// The place of a window in twips: beside or below the main window, or over it if the screen is too narrow.
struct Place {
    int top, left;
    int crampedTop, crampedLeft;
    int height, width;
};
constexpr Place kDetailsPlace{0, 16350, 1000, 2000, 9000, 7400};
constexpr Place kStartsPlace{9450, 16350, 2000, 3000, 5400, 7400}; // below the details, beside the boxes
constexpr Place kComparisonPlace{8700, 1500, 1500, 2500, 6600, 17250};

/// Places a window that is not visible yet, and always brings it to the front.
void showInFront(QWidget& window, const Place& place)
{
    constexpr int kTitleBar = 450, kBorders = 150; // twips, about
    const QSize screen = window.screen()->availableSize();
    const int roomWide = ui::toTwips(screen.width()) - kBorders, roomHigh = ui::toTwips(screen.height()) - kTitleBar;
    constexpr double kUsualPoints = 9; // font size for which the places are designed
    const double growth = std::max(1.0, window.font().pointSizeF() / kUsualPoints);
    const int width = std::min(static_cast<int>(growth * place.width), roomWide);
    const int height = std::min(static_cast<int>(growth * place.height), roomHigh);
    const bool wide = place.left + width <= roomWide;
    if (!window.isVisible())
        ui::placeAndShow(window, std::min(wide ? place.top : place.crampedTop, roomHigh - height),
                         std::min(wide ? place.left : place.crampedLeft, roomWide - width), height, width);
    ui::bringToFront(window);
}

FinishedFit finishedFit(const analysis::FinishedRun& run, models::Analysis analysis)
{
    const bool calculated = run.kind == analysis::Kind::Calculation;
    return {.options = run.options,
            .start = calculated ? run.values : app::startParameters(run.panel, analysis).values,
            .values = run.values,
            .iterations = run.iterations,
            .calculated = calculated};
}

bool boxesOfModelFinite(app::PanelState panel) { return app::boxesFinite(panel, models::Analysis::SternVolmer); }

bool boxesOfAllModelsFinite(app::PanelState panel)
{
    for (panel.Model = 1; panel.Model <= models::kModelCount; ++panel.Model)
        if (!boxesOfModelFinite(panel))
            return false;
    return true;
}

} // namespace

Commands::Commands(const analysis::CommandContext& context, app::PanelEditor& panel, const Windows& windows)
    : m_context(context), m_panel(panel), m_windows(windows)
{
    StartValuesWindow& starts = m_windows.startValues;
    QObject::connect(&starts, &StartValuesWindow::startChosen, &starts,
                     [this](const fit::Parameters& values) { typeFound(values); });
    QObject::connect(&starts, &StartValuesWindow::backChosen, &starts, [this] { typeBack(); });
    ModelComparisonWindow& comparison = m_windows.comparison;
    QObject::connect(&comparison, &ModelComparisonWindow::modelChosen, &comparison,
                     [this](int model, const fit::Parameters& values) { chooseModel(model, values); });
}

void Commands::findSternVolmerStart()
{
    const std::optional<RatioInput> input = checkedRatios(boxesOfModelFinite);
    if (!input)
        return;
    sternvolmer::RatioProblem problem = input->problem();
    search(input->task(problem), input->panel, models::Analysis::SternVolmer);
}

void Commands::findDecayStart()
{
    const app::PanelState panel = m_panel.panelState();
    if (const auto complaint = analysis::decayComplaint(m_context.shared.DataNormalized, panel.Model)) {
        m_context.prompter.message(QString::fromStdString(*complaint));
        return;
    }
    assert(m_context.shared.samples); // normalised data exist
    decay::DecayProblem problem(*m_context.shared.samples, panel.Model, 0, app::panelValues(panel).Cp);
    problem.setEvaluation(models::Evaluation::Fast); // a start need not be exact
    if (problem.pointCount() == 0 || !app::boxesFinite(panel, models::Analysis::Decay)) {
        m_context.prompter.message(analysis::kArithmeticFault);
        return;
    }
    search({problem, panel.Model, app::startParameters(panel, models::Analysis::Decay)}, panel,
           models::Analysis::Decay);
}

std::optional<RatioInput> Commands::checkedRatios(bool (*boxesFinite)(app::PanelState))
{
    RatioInput input{.data = sternvolmer::readSternVolmerData(app::cellsOf(m_context.sheet)),
                     .panel = m_panel.panelState(),
                     .logMode = m_context.shared.settings.LogMode};
    const auto found = sternvolmer::complaints(input.data, app::panelValues(input.panel).Cp);
    for (const std::string& complaint : found)
        m_context.prompter.message(QString::fromStdString(complaint));
    if (!found.empty())
        return std::nullopt;
    sternvolmer::computeRatios(input.data);
    if (sternvolmer::allFinite(input.data) && boxesFinite(input.panel))
        return input;
    m_context.prompter.message(analysis::kArithmeticFault);
    return std::nullopt;
}

void Commands::search(const Task& task, const app::PanelState& panel, models::Analysis analysis)
{
    if (m_searching)
        return ui::bringToFront(*m_searching);
    StartValuesWindow& window = m_windows.startValues;
    const QScopedValueRollback<QWidget*> searching(m_searching, &window);
    const QString of = analysis == models::Analysis::Decay ? "Decay Curve Analysis" : "Stern-Volmer Analysis";
    m_typed = panel;
    m_searched = task.free();
    ProgressBarProgress progress = window.begin(QString("%1, Model %2").arg(of).arg(task.model));
    showInFront(window, kStartsPlace);
    if (m_searched.empty())
        return window.showNothingFound("All constants of this model are fixed.");
    double done = 0;
    const SearchResult found = searchStart(task, [&](double share) { return progress(done = share); });
    const FoundStarts starts = startsFor(task, panel, analysis, found, [&] { return progress(done); });
    if (fit::StopRequested)
        return;
    if (found.cancelled || !progress(done))
        window.showNothingFound("The search was cancelled. The boxes keep the typed values.");
    else if (starts.starts.empty())
        window.showNothingFound("The model cannot be evaluated at any start tried. The boxes keep the typed values.");
    else
        window.showFound(starts);
}

FoundStarts Commands::startsFor(const Task& task, const app::PanelState& panel, models::Analysis analysis,
                                const SearchResult& found, const KeepGoing& keepGoing) const
{
    const int logMode = m_context.shared.settings.LogMode;
    const fit::Options options = engineOptions(panel, analysis, logMode);
    const fit::Options otherMode = engineOptions(panel, analysis, logMode == 1 ? 0 : 1);
    FoundStarts starts{.model = task.model, .logMode = logMode, .typedSum = found.typedSum, .starts = {}};
    for (const leastsquares::Solution& solution : found.solutions) {
        const leastsquares::Minimum minimum{solution.values, solution.sumOfSquares};
        const EngineStart start = engineStart(task.problem, options, task.free(), minimum, keepGoing);
        const bool other =
            !start.leadsToMinimum && leadsToMinimum(task.problem, otherMode, start.values, minimum, keepGoing);
        starts.starts.push_back({solution, start, other});
    }
    return starts;
}

void Commands::typeFound(const fit::Parameters& values)
{
    app::PanelState panel = m_panel.panelState();
    typeStart(panel, m_typed.Model, m_searched, values);
    m_panel.setPanelState(panel);
}

void Commands::typeBack()
{
    app::PanelState panel = m_panel.panelState();
    restoreStart(panel, m_typed.Model, m_typed);
    m_panel.setPanelState(panel);
}

void Commands::chooseModel(int model, const fit::Parameters& values)
{
    app::PanelState panel = m_panel.panelState();
    panel.Model = model;
    const app::StartParameters start = app::startParameters(panel, models::Analysis::SternVolmer);
    typeStart(panel, model, leastsquares::freeSlots(start.count, start.fix), values);
    m_panel.setPanelState(panel);
}

void Commands::compareAllModels()
{
    if (m_searching)
        return ui::bringToFront(*m_searching);
    const std::optional<RatioInput> input = checkedRatios(boxesOfAllModelsFinite);
    if (!input)
        return;
    ModelComparisonWindow& window = m_windows.comparison;
    const QScopedValueRollback<QWidget*> searching(m_searching, &window);
    ProgressBarProgress progress = window.begin();
    showInFront(window, kComparisonPlace);
    const std::vector<ComparedModel> models = compareModels(*input, [&](double share) { return progress(share); });
    if (!fit::StopRequested)
        window.showModels(models);
}

void Commands::showFitDetails()
{
    showInFront(m_windows.fitDetails, kDetailsPlace);
    refreshDetails();
}

void Commands::ratiosAnalysed(const sternvolmer::RatioData& data, const analysis::FinishedRun& run)
{
    m_details = [this, run, input = RatioInput{.data = data, .panel = run.panel}] {
        sternvolmer::RatioProblem problem = input.problem();
        const std::vector<double> observed = input.observed();
        FitLabels labels{.analysis = models::Analysis::SternVolmer, .model = run.panel.Model, .conc = {}};
        for (std::size_t i = 1; i <= observed.size(); ++i)
            labels.conc.push_back(input.data.samples.SampleData[i].Conc);
        const FinishedFit finished = finishedFit(run, models::Analysis::SternVolmer);
        m_windows.fitDetails.showDetails(fitDetails(input.task(problem), finished, observed), labels);
    };
    if (m_windows.fitDetails.isVisible())
        refreshDetails();
}

void Commands::decaysAnalysed(const decay::SampleTable& samples, const analysis::FinishedRun& run)
{
    m_details = [this, run, samples] {
        decay::DecayProblem problem(samples, run.panel.Model, 0, app::panelValues(run.panel).Cp);
        problem.setEvaluation(
            models::Evaluation::Fast); // the last digits do not change the verdict, and a search may follow
        const FinishedFit finished = finishedFit(run, models::Analysis::Decay);
        const Task task{problem, run.panel.Model, app::startParameters(run.panel, models::Analysis::Decay)};
        m_windows.fitDetails.showDetails(fitDetails(task, finished, {}),
                                         {.analysis = models::Analysis::Decay, .model = run.panel.Model, .conc = {}});
    };
    if (m_windows.fitDetails.isVisible())
        refreshDetails();
}

void Commands::refreshDetails()
{
    if (m_details)
        m_details();
}

} // namespace trust
