#include "app/trustcommands.h"

#include "analysis/arithmeticfault.h"
#include "app/panelrequest.h"
#include "app/panelstarts.h"
#include "app/windowplaces.h"
#include "decay/complaints.h"
#include "sternvolmer/complaints.h"
#include "ui/twips.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <cassert>

namespace app
{
TrustCommands::TrustCommands(const CommandInput& input, PanelEditor& panel, const Windows& windows,
                             const Analyzers& analyzers)
    : m_input(input), m_panel(panel), m_windows(windows), m_analyzers(analyzers)
{
    trust::StartValuesWindow& starts = m_windows.startValues;
    QObject::connect(&starts, &trust::StartValuesWindow::startChosen, &starts,
                     [this](const fit::Parameters& values) { typeFound(values); });
    QObject::connect(&starts, &trust::StartValuesWindow::backChosen, &starts, [this] { typeBack(); });
    QObject::connect(&starts, &trust::StartValuesWindow::fitChosen, &starts, [this] { fitFromBoxes(); });
    trust::FitDetailsWindow& details = m_windows.fitDetails;
    QObject::connect(&details, &trust::FitDetailsWindow::errorsChanged, &details,
                     [this](const noise::Errors& errors) { setErrors(errors); });
    QObject::connect(&details, &trust::FitDetailsWindow::typedErrorsChanged, &details,
                     [this](const noise::TypedErrors& typed) {
                         m_errors.typed = typed;
                         refreshDetails();
                     });
    trust::ModelComparisonWindow& comparison = m_windows.comparison;
    QObject::connect(&comparison, &trust::ModelComparisonWindow::errorsChanged, &comparison,
                     [this](const noise::Errors& errors) {
                         if (const auto complaint = trust::complaint(errors, m_compared.front()))
                             m_input.prompter.message(QString::fromStdString(*complaint));
                         setErrors(errors);
                     });
    QObject::connect(&comparison, &trust::ModelComparisonWindow::modelChosen, &comparison,
                     [this](models::Analysis analysis, int model, const fit::Parameters& values) {
                         chooseModel(analysis, model, values);
                     });
}

void TrustCommands::findStart(models::Analysis analysis) { search(analysis); }

void TrustCommands::findAndFit(models::Analysis analysis)
{
    if (search(analysis))
        analyse(analysis);
}

/// The model may have been changed since the search.
void TrustCommands::fitFromBoxes()
{
    PanelState panel = m_panel.panelState();
    panel.Model = m_typed.Model;
    m_panel.setPanelState(panel);
    analyse(m_searchedFor);
}

/// True when the boxes hold start values that were found.
bool TrustCommands::search(models::Analysis analysis)
{
    const PanelState panel = m_panel.panelState();
    const std::optional<analysis::Request> request =
        analysis == models::Analysis::Decay ? decayRequest(panelValues(panel)) : ratioRequest(panelValues(panel));
    if (!request)
        return false;
    return search(*request, panel);
}

/// The request for the normalised decays. None without such data; a message says so.
std::optional<analysis::Request> TrustCommands::decayRequest(const PanelValues& panel)
{
    const SharedState& shared = m_input.shared;
    if (const auto complaint = decay::analysisComplaint(shared.DataNormalized, panel.model)) {
        m_input.prompter.message(QString::fromStdString(*complaint));
        return std::nullopt;
    }
    assert(shared.samples); // normalised data exist
    analysis::Request request = m_analyzers.decays.request();
    request.data = *shared.samples;
    return requestOf(panel, shared.settings.LogMode, request);
}

/// The request for the ratios in the sheet. None if they cannot be used; messages say why.
std::optional<analysis::Request> TrustCommands::ratioRequest(const PanelValues& panel)
{
    sternvolmer::RatioData data = sternvolmer::readSternVolmerData(cellsOf(m_input.sheet));
    const auto found = sternvolmer::complaints(data, panel.Cp);
    for (const std::string& complaint : found)
        m_input.prompter.message(QString::fromStdString(complaint));
    if (!found.empty())
        return std::nullopt;
    sternvolmer::computeRatios(data);
    if (!sternvolmer::allFinite(data)) {
        m_input.prompter.message(analysis::kArithmeticFault);
        return std::nullopt;
    }
    analysis::Request request = m_analyzers.ratios.request();
    request.data = sternvolmer::pointsOf(data);
    return requestOf(panel, m_input.shared.settings.LogMode, request);
}

bool TrustCommands::search(const analysis::Request& request, const PanelState& panel)
{
    const std::unique_ptr<fit::Problem> problem = trust::realProblem(request);
    const trust::RequestedFit requested{*problem, request};
    if (problem->pointCount() == 0 || !analysis::startsFinite(request)) // nothing but the reference's decay
        m_input.prompter.message(analysis::kArithmeticFault);
    else if (m_searching)
        ui::bringToFront(*m_searching);
    else {
        const QScopedValueRollback<QWidget*> searching(m_searching, &m_windows.startValues);
        m_searchedFor = analysis::methodOf(request);
        m_typed = panel;
        m_searched = requested.free();
        return showSearch(requested);
    }
    return false;
}

bool TrustCommands::showSearch(const trust::RequestedFit& requested)
{
    trust::StartValuesWindow& window = m_windows.startValues;
    const QString of = m_searchedFor == models::Analysis::Decay ? "Decay Curve Analysis" : "Stern-Volmer Analysis";
    trust::ProgressBarProgress progress = window.begin(QString("%1, Model %2").arg(of).arg(requested.request.model));
    fills(window, requested.request);
    showInFront(window, kStartsPlace);
    if (m_searched.empty()) {
        window.showNothingFound("All constants of this model are fixed.");
        return false;
    }
    double done = 0;
    const trust::SearchResult found =
        trust::searchStart(requested, m_input.shared.leastSums, [&](double share) { return progress(done = share); });
    const trust::FoundStarts starts = startsFor(requested, found, [&] { return progress(done); });
    if (fit::StopRequested)
        return false;
    const bool cancelled = found.cancelled || !progress(done);
    if (cancelled)
        window.showNothingFound("The search was cancelled. The boxes keep the typed values.");
    else if (starts.starts.empty())
        window.showNothingFound("The model cannot be evaluated at any start tried. The boxes keep the typed values.");
    else
        window.showFound(starts);
    return !cancelled && !starts.starts.empty();
}

trust::FoundStarts TrustCommands::startsFor(const trust::RequestedFit& requested, const trust::SearchResult& found,
                                            const trust::KeepGoing& keepGoing) const
{
    trust::FoundStarts starts{.model = requested.request.model,
                              .logMode = requested.request.options.logMode,
                              .typedSum = found.typedSum,
                              .starts = {}};
    for (const leastsquares::Solution& solution : found.solutions)
        starts.starts.push_back({solution, trust::engineStart(requested, solution, keepGoing)});
    return starts;
}

void TrustCommands::typeFound(const fit::Parameters& values)
{
    PanelState panel = m_panel.panelState();
    typeStart(panel, m_typed.Model, m_searched, values);
    m_panel.setPanelState(panel);
}

void TrustCommands::typeBack()
{
    PanelState panel = m_panel.panelState();
    restoreStart(panel, m_typed.Model, m_typed);
    m_panel.setPanelState(panel);
}

void TrustCommands::chooseModel(models::Analysis analysis, int model, const fit::Parameters& values)
{
    PanelState panel = m_panel.panelState();
    panel.Model = model;
    analysis::Request of; // the analysis decides what a check mark fixes
    if (analysis == models::Analysis::Decay)
        of.data = decay::SampleTable{};
    const fit::Options options = requestOf(panelValues(panel), 0, of).options;
    typeStart(panel, model, leastsquares::freeSlots(options.parameterCount, options.fix), values);
    m_panel.setPanelState(panel);
}

void TrustCommands::compareAllModels(models::Analysis analysis)
{
    constexpr int kAnyModel = 1; // every model gets a place, so the chosen one need not have a law for decays
    const bool isDecay = analysis == models::Analysis::Decay;
    PanelValues panel = panelValues(m_panel.panelState());
    panel.model = kAnyModel;
    const std::optional<analysis::Request> any = isDecay ? decayRequest(panel) : ratioRequest(panel);
    if (!any)
        return;
    std::vector<analysis::Request> requests = requestsOfAllModels(panel, any->options.logMode, *any);
    if (trust::realProblem(*any)->pointCount() == 0 || // nothing but the reference's decay
        !std::all_of(requests.begin(), requests.end(), analysis::startsFinite))
        return m_input.prompter.message(analysis::kArithmeticFault);
    if (m_searching)
        return ui::bringToFront(*m_searching);
    if (const auto complaint = trust::complaint(m_errors.errors, *any))
        return m_input.prompter.message(QString::fromStdString(*complaint));
    m_compared = std::move(requests);
    fills(m_windows.comparison, m_compared.front());
    showInFront(m_windows.comparison, kComparisonPlace);
    compare();
}

/// Compares the models of the last command, and begins again when the assumption about errors changes.
void TrustCommands::compare()
{
    trust::ModelComparisonWindow& window = m_windows.comparison;
    const QScopedValueRollback<QWidget*> searching(m_searching, &window);
    const bool isDecay = analysis::methodOf(m_compared.front()) == models::Analysis::Decay;
    noise::Errors errors;
    const auto isOutdated = [&] {
        return errors != m_errors.errors && !trust::complaint(m_errors.errors, m_compared.front());
    };
    bool cancelled = false;
    do {
        errors = m_errors.errors;
        trust::ProgressBarProgress progress =
            window.begin(isDecay ? "Decay Curve Analysis, all models" : "Stern-Volmer Analysis, all models");
        window.showErrors(errors);
        const trust::Comparison comparison =
            trust::compareModels(m_compared, errors, m_input.shared.leastSums, [&](double share) {
                cancelled = !progress(share);
                return !cancelled && !isOutdated();
            });
        if (!fit::StopRequested && !isOutdated())
            window.showModels(comparison);
    } while (!fit::StopRequested && !cancelled && isOutdated());
}

void TrustCommands::showFitDetails()
{
    showInFront(m_windows.fitDetails, kDetailsPlace);
    refreshDetails();
}

void TrustCommands::analysed(const analysis::Request& request, const analysis::Result& result, double s)
{
    m_last = {.request = request, .result = result, .s = s};
    refreshDetails();
}

void TrustCommands::judged(const trust::Judgement& judgement)
{
    m_last->judgement = judgement;
    refreshDetails();
}

void TrustCommands::refreshDetails()
{
    if (!m_last || !m_windows.fitDetails.isVisible())
        return;
    if (analysis::methodOf(m_last->request) == models::Analysis::SternVolmer)
        m_windows.fitDetails.showSettings(
            m_errors, QString::fromStdString(trust::complaint(m_errors.errors, m_last->request).value_or("")));
    m_windows.fitDetails.showDetails(detailsOf(*m_last, m_errors, m_input.shared.leastSums),
                                     trust::labelsOf(m_last->request));
}

trust::DetailsText TrustCommands::exactDetails() const
{
    return trust::detailsText(detailsOf(*m_last, m_errors, m_input.shared.leastSums), trust::labelsOf(m_last->request),
                              trust::exactFigure);
}

void TrustCommands::setErrors(const noise::Errors& errors)
{
    m_errors.errors = errors;
    refreshDetails();
    if (!m_windows.comparison.isVisible() || m_searching) // a comparison that runs begins again by itself
        return;
    const bool areRatios = analysis::methodOf(m_compared.front()) == models::Analysis::SternVolmer;
    if (areRatios && !trust::complaint(errors, m_compared.front()))
        compare();
}

void TrustCommands::typeErrors(const std::vector<double>& errors)
{
    m_errors.errors.assumption = noise::Assumption::AsTyped;
    m_errors.errors.typed = errors;
    refreshDetails();
}

} // namespace app
