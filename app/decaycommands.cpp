#include "app/decaycommands.h"

#include "analysis/arithmeticfault.h"
#include "app/panelrequest.h"
#include "app/windowplaces.h"
#include "decay/complaints.h"
#include "decay/normalization.h"
#include "decay/samplecolumn.h"
#include "fit/numbertext.h"
#include "ui/twips.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <string>

namespace app
{
namespace
{

constexpr double kAllLevel = 0.0001; // fit-region level of "All"

double fitRegionLevel(const PanelState& panel)
{
    return panel.allChosen ? kAllLevel : fit::numberFrom(panel.fitRegion);
}

template <typename Range>
bool allFinite(const Range& values)
{
    return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

bool usable(const decay::SampleTable& samples)
{
    const auto first = samples.SampleData.begin() + 1;
    return std::isfinite(samples.FitRegionLevel) && std::isfinite(samples.TimeMax) &&
           std::all_of(first, first + samples.SampleCount, [](const decay::SampleRecord& sample) {
               return std::isfinite(sample.Conc) && allFinite(sample.Tau) && allFinite(sample.IExp);
           });
}

plot::DecayTableUnits tableUnits(const Settings& settings)
{
    return {.seconds = settings.TimeScale == 0, .logarithms = settings.IntensityScale != 0};
}

} // namespace

void DecayCommands::Normalization()
{
    const PanelState panel = m_input.panel.panelState();
    decay::DecayData data = decay::readDecayData(cellsOf(m_input.sheet), fitRegionLevel(panel), panel.Model);
    for (const std::string& complaint : decay::complaints(data))
        m_input.prompter.message(QString::fromStdString(complaint));
    if (!data.usable())
        return;
    decay::normaliseAmplitudes(data.samples);
    decay::BuildDecayCurves(data.samples, m_input.shared.FitRegionMode);
    if (!usable(data.samples)) {
        m_input.prompter.message(analysis::kArithmeticFault);
        return;
    }
    m_input.shared.samples = data.samples;
    m_input.shared.DataNormalized = true;
    writeAmplitudes(data.samples);
    m_windows.observedTable.SetTitle("Experimental values");
    plot::ShowExperimentalDecayTable(m_windows.observedTable, data.samples, tableUnits(m_input.shared.settings));
    m_windows.observedTable.showFilled();
    plot::PlotDecayCurves(m_windows.curves, data.samples);
    m_windows.curves.showFilled();
}

void DecayCommands::writeAmplitudes(const decay::SampleTable& samples)
{
    for (int column = 1; column <= samples.SampleCount; ++column) {
        const decay::SampleRecord& sample = samples.SampleData[static_cast<std::size_t>(column)];
        for (int k = 1; k <= sample.NComp; ++k)
            m_input.sheet.setCell(decay::amplitudeRow(k), column,
                                  fit::formatNumber(sample.A[static_cast<std::size_t>(k)], "#.###"));
    }
}

void DecayCommands::DecayCurveAnalysis()
{
    analysis::frmDecayCurveAnalyzer& analyzer = m_windows.analyzer;
    std::optional<Run> run = prepare();
    if (!run)
        return;
    const std::optional<analysis::Result> result = fitWithMenuItemOff(run->request);
    if (!result)
        return;
    const std::optional<plot::FittedCurves> curves = evaluate(*run, *result);
    if (!curves)
        return;
    const auto record = recordOf(run->request, *result, run->s);
    if (!record)
        return analyzer.reportArithmeticFault();
    show(*run, *curves, "Decay Curve (Fitting)");
    m_results.storeResult(*record, models::reportedMask(run->request.model, models::Analysis::Decay));
    finished(run->request, *result);
    ui::bringToFront(analyzer);
}

void DecayCommands::CalcDecayCurve()
{
    std::optional<Run> run = prepare();
    if (!run)
        return;
    const analysis::Result result = analysis::calculate(run->request);
    const std::optional<plot::FittedCurves> curves = evaluate(*run, result);
    if (!curves || !m_windows.analyzer.showReport(run->request.model, result))
        return;
    show(*run, *curves, "Decay Curve (Calculation)");
    finished(run->request, result);
    ui::bringToFront(m_windows.analyzer);
}

std::optional<DecayCommands::Run> DecayCommands::prepare()
{
    analysis::frmDecayCurveAnalyzer& analyzer = m_windows.analyzer;
    const PanelValues panel = panelValues(m_input.panel.panelState());
    const SharedState& shared = m_input.shared;
    if (const auto complaint = decay::analysisComplaint(shared.DataNormalized, panel.model)) {
        m_input.prompter.message(QString::fromStdString(*complaint));
        return std::nullopt;
    }
    assert(shared.samples); // normalised data exist
    Run run{.samples = *shared.samples, .request = analyzer.request(), .settings = shared.settings, .s = panel.s};
    run.request.data = run.samples;
    run.request = requestOf(panel, run.settings.LogMode, run.request);
    if (!analysis::startsFinite(run.request)) {
        analyzer.reportArithmeticFault();
        return std::nullopt;
    }
    analyzer.set(run.request);
    analyzer.SetSize(kAnalyzerPlace.top, kAnalyzerPlace.left, kAnalyzerPlace.height, kAnalyzerPlace.width);
    ui::bringToFront(analyzer);
    return run;
}

std::optional<analysis::Result> DecayCommands::fitWithMenuItemOff(const analysis::Request& request)
{
    setAnalysisEnabled(false);
    std::optional<analysis::Result> result = m_windows.analyzer.fit(request);
    setAnalysisEnabled(true);
    return result;
}

std::optional<plot::FittedCurves> DecayCommands::evaluate(const Run& run, const analysis::Result& result)
{
    m_windows.analyzer.CalcFity(run.request.model);
    auto curves = plot::evaluateFitted(run.samples, analysis::fittedDecay(run.request, result.parameters));
    if (!curves)
        m_windows.analyzer.reportArithmeticFault();
    return curves;
}

void DecayCommands::show(Run& run, const plot::FittedCurves& curves, std::string_view tableTitle)
{
    plot::PlotDecayCurves(m_windows.curves, run.samples);
    plot::PlotFittedDecayCurves(m_windows.curves, run.samples, curves);
    m_windows.curves.showFilled();
    plot::PlotDecayDeviation(m_windows.deviations, run.samples, curves);
    m_windows.deviations.showFilled();
    m_windows.fittedTable.SetTitle(tableTitle);
    plot::ShowDecayFittingTable(m_windows.fittedTable, run.samples, tableUnits(run.settings));
    m_windows.fittedTable.showFilled();
}

} // namespace app
