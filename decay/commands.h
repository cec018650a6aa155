#pragma once

#include "analysis/commandcontext.h"
#include "decay/analyzerwindow.h"
#include "plot/decaycharts.h"

#include <functional>
#include <optional>

namespace decay
{

/// The decay-curve commands of the main window, from the typed sheet to curves, deviations, table and stored result.
class Commands
{
public:
    Commands(const analysis::CommandContext& context, frmDecayCurveAnalyzer& analyzer)
        : m_context(context), m_analyzer(analyzer)
    {
    }

    /// Lets the owner look at every run that has come to its end.
    std::function<void(const SampleTable& samples, const analysis::FinishedRun& run)> finished =
        [](const SampleTable&, const analysis::FinishedRun&) {};
    /// Lets the owner switch the menu item of the fit off while one runs.
    std::function<void(bool enabled)> setAnalysisEnabled = [](bool) {};

    /// Reads the sheet, scales each sample's amplitudes to sum 1, writes them back and shows the observed decays.
    void Normalization();
    /// Fits the selected model to all decay curves and stores the result.
    void DecayCurveAnalysis();
    /// Shows the selected model with the typed parameters; no fit, no stored result.
    void CalcDecayCurve();

private:
    /// What a command keeps to its end, whatever the user does meanwhile.
    struct Run {
        app::PanelState panel;
        app::PanelValues values;
        app::Settings settings;
        SampleTable samples;
    };

    std::optional<Run> prepare();
    void handOver(const Run& run);
    bool fitWithMenuItemOff();
    void writeAmplitudes(const SampleTable& samples);
    std::optional<plot::FittedCurves> evaluate(const Run& run);
    void show(Run& run, const plot::FittedCurves& curves, std::string_view tableTitle);

    analysis::CommandContext m_context;
    frmDecayCurveAnalyzer& m_analyzer;
};

} // namespace decay
