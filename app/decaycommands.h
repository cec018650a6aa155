#pragma once

#include "analysis/decayanalyzer.h"
#include "app/commandinput.h"
#include "app/resultstore.h"
#include "plot/decaycharts.h"
#include "plot/graphwindow.h"
#include "plot/spreadsheetwindow.h"

#include <functional>
#include <optional>

namespace app
{

/// The decay-curve commands of the main window, from the typed sheet to curves, deviations, table and stored result.
class DecayCommands
{
public:
    struct Windows {
        analysis::frmDecayCurveAnalyzer& analyzer;
        plot::Graph& curves;
        plot::Graph& deviations;
        plot::SpreadSheet& observedTable;
        plot::SpreadSheet& fittedTable;
    };
    DecayCommands(const CommandInput& input, ResultSink& results, const Windows& windows)
        : m_input(input), m_results(results), m_windows(windows)
    {
    }

    /// The owner receives every finished run.
    std::function<void(const analysis::Request& request, const analysis::Result& result)> finished =
        [](const analysis::Request&, const analysis::Result&) {};
    /// The owner disables the menu item of the fit during a run.
    std::function<void(bool enabled)> setAnalysisEnabled = [](bool) {};

    /// Reads the sheet, scales each sample's amplitudes to sum 1, writes them back and shows the observed decays.
    void Normalization();
    /// Fits the selected model to all decay curves and stores the result.
    void DecayCurveAnalysis();
    /// Shows the selected model with the typed parameters; no fit, no stored result.
    void CalcDecayCurve();

private:
    /// A command's own copies, so that nothing the user does during the command changes them.
    struct Run {
        decay::SampleTable samples{};
        analysis::Request request{};
        Settings settings{};
        double s = 0; // radius of the probe, nm
    };

    std::optional<Run> prepare();
    std::optional<analysis::Result> fitWithMenuItemOff(const analysis::Request& request);
    void writeAmplitudes(const decay::SampleTable& samples);
    std::optional<plot::FittedCurves> evaluate(const Run& run, const analysis::Result& result);
    void show(Run& run, const plot::FittedCurves& curves, std::string_view tableTitle);

    CommandInput m_input;
    ResultSink& m_results;
    Windows m_windows;
};

} // namespace app
