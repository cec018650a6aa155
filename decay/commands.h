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

    /// The owner receives every finished run.
    std::function<void(const SampleTable& samples, const analysis::FinishedRun& run)> finished =
        [](const SampleTable&, const analysis::FinishedRun&) {};
    /// The owner disables the menu item of the fit during a run.
    std::function<void(bool enabled)> setAnalysisEnabled = [](bool) {};

    /// Reads the sheet, scales each sample's amplitudes to sum 1, writes them back and shows the observed decays.
    void Normalization();
    /// Fits the selected model to all decay curves and stores the result.
    void DecayCurveAnalysis();
    /// Shows the selected model with the typed parameters; no fit, no stored result.
    void CalcDecayCurve();

private:
    /// The copies that a command uses until its end, whatever the user does in the meantime.
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
