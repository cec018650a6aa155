#include "decay/commands.h"

#include "analysis/messages.h"
#include "decay/normalization.h"
#include "decay/samplecolumn.h"
#include "fit/numbertext.h"
#include "ui/twips.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <string>

namespace decay
{
namespace
{

constexpr double kAllLevel = 0.0001; // fit-region level of "All"

double fitRegionLevel(const app::PanelState& panel)
{
    return panel.allChosen ? kAllLevel : fit::numberFrom(panel.fitRegion);
}

template <typename Range>
bool allFinite(const Range& values)
{
    return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

bool usable(const SampleTable& samples)
{
    const auto first = samples.SampleData.begin() + 1;
    return std::isfinite(samples.FitRegionLevel) && std::isfinite(samples.TimeMax) &&
           std::all_of(first, first + samples.SampleCount, [](const SampleRecord& sample) {
               return std::isfinite(sample.Conc) && allFinite(sample.Tau) && allFinite(sample.IExp);
           });
}

} // namespace

void Commands::Normalization()
{
    const app::PanelState panel = m_context.panel.panelState();
    DecayData data = readDecayData(app::cellsOf(m_context.sheet), fitRegionLevel(panel), panel.Model);
    if (data.siteModelRefused)
        m_context.prompter.message("We cannot analyze 3 component data with 2-site model.");
    if (!data.usable()) {
        m_context.prompter.message("Please input value(s) in blank cell(s).");
        return;
    }
    normaliseAmplitudes(data.samples);
    BuildDecayCurves(data.samples, m_context.shared.FitRegionMode);
    if (!usable(data.samples)) {
        m_analyzer.reportArithmeticFault();
        return;
    }
    m_context.shared.samples = data.samples;
    m_context.shared.DataNormalized = true;
    writeAmplitudes(data.samples);
    m_context.OutputTable1.SetTitle("Experimental values");
    plot::ShowExperimentalDecayTable(m_context.OutputTable1, data.samples, m_context.shared.settings);
    m_context.OutputTable1.showFilled();
    plot::PlotDecayCurves(m_context.GraphWindow1, data.samples);
    m_context.GraphWindow1.showFilled();
}

void Commands::writeAmplitudes(const SampleTable& samples)
{
    for (int column = 1; column <= samples.SampleCount; ++column) {
        const SampleRecord& sample = samples.SampleData[static_cast<std::size_t>(column)];
        for (int k = 1; k <= sample.NComp; ++k)
            m_context.sheet.setCell(amplitudeRow(k), column,
                                    fit::formatNumber(sample.A[static_cast<std::size_t>(k)], "#.###"));
    }
}

void Commands::DecayCurveAnalysis()
{
    std::optional<Run> run = prepare();
    if (!run || !fitWithMenuItemOff())
        return;
    const std::optional<plot::FittedCurves> curves = evaluate(*run);
    if (!curves)
        return;
    const int model = run->panel.Model;
    const auto result = analysis::resultOf(m_analyzer, models::Analysis::Decay, model, run->values.s);
    if (!result)
        return m_analyzer.reportArithmeticFault();
    show(*run, *curves, "Decay Curve (Fitting)");
    m_context.results.storeResult(*result, models::reportedMask(model, models::Analysis::Decay));
    finished(run->samples, analysis::finishedRun(m_analyzer, run->panel, analysis::Kind::Fit));
    ui::bringToFront(m_analyzer);
}

void Commands::CalcDecayCurve()
{
    std::optional<Run> run = prepare();
    if (!run)
        return;
    const std::optional<plot::FittedCurves> curves = evaluate(*run);
    if (!curves || !m_analyzer.ShowResult())
        return;
    show(*run, *curves, "Decay Curve (Calculation)");
    finished(run->samples, analysis::finishedRun(m_analyzer, run->panel, analysis::Kind::Calculation));
    ui::bringToFront(m_analyzer);
}

std::optional<Commands::Run> Commands::prepare()
{
    const app::PanelState panel = m_context.panel.panelState();
    if (const auto complaint = analysis::decayComplaint(m_context.shared.DataNormalized, panel.Model)) {
        m_context.prompter.message(QString::fromStdString(*complaint));
        return std::nullopt;
    }
    if (!app::boxesFinite(panel, models::Analysis::Decay)) {
        m_analyzer.reportArithmeticFault();
        return std::nullopt;
    }
    assert(m_context.shared.samples); // normalised data exist
    Run run{.panel = panel,
            .values = app::panelValues(panel),
            .settings = m_context.shared.settings,
            .samples = *m_context.shared.samples};
    handOver(run);
    return run;
}

void Commands::handOver(const Run& run)
{
    m_analyzer.setLogMode(run.settings.LogMode);
    analysis::configure(m_analyzer, app::startParameters(run.panel, models::Analysis::Decay));
    m_analyzer.SetSize(analysis::kAnalyzerTop, analysis::kAnalyzerLeft, analysis::kAnalyzerHeight,
                       analysis::kAnalyzerWidth);
    ui::bringToFront(m_analyzer);
    m_analyzer.setStatus(1);
    m_analyzer.setExenum(0);
    m_analyzer.setModel(run.panel.Model);
    m_analyzer.setIteration(run.values.iterationLimit);
    m_analyzer.setTolerance(run.values.tolerance);
    m_analyzer.setConcentrationofProbe(run.values.Cp);
    m_analyzer.setSampleData(run.samples);
}

bool Commands::fitWithMenuItemOff()
{
    setAnalysisEnabled(false);
    const bool fitted = m_analyzer.GAUSSNEWTON();
    setAnalysisEnabled(true);
    return fitted;
}

std::optional<plot::FittedCurves> Commands::evaluate(const Run& run)
{
    m_analyzer.CalcFity(run.panel.Model);
    auto curves =
        plot::evaluateFitted(run.samples, [this](double t, double Conc) { return m_analyzer.getfvalue(t, Conc); });
    if (!curves)
        m_analyzer.reportArithmeticFault();
    return curves;
}

void Commands::show(Run& run, const plot::FittedCurves& curves, std::string_view tableTitle)
{
    plot::PlotDecayCurves(m_context.GraphWindow1, run.samples);
    plot::PlotFittedDecayCurves(m_context.GraphWindow1, run.samples, curves);
    m_context.GraphWindow1.showFilled();
    plot::PlotDecayDeviation(m_context.GraphWindow2, run.samples, curves);
    m_context.GraphWindow2.showFilled();
    m_context.OutputTable2.SetTitle(tableTitle);
    plot::ShowDecayFittingTable(m_context.OutputTable2, run.samples, run.settings);
    m_context.OutputTable2.showFilled();
}

} // namespace decay
