#pragma once

#include "analysis/sternvolmeranalyzer.h"
#include "app/commandinput.h"
#include "app/resultstore.h"
#include "plot/graphwindow.h"
#include "plot/spreadsheetwindow.h"
#include "plot/sternvolmercharts.h"
#include "sternvolmer/ratiodata.h"

#include <functional>
#include <optional>
#include <vector>

namespace app
{

/// The Stern-Volmer commands of the main window, from the typed sheet to plot, table and stored result.
class SternVolmerCommands
{
public:
    struct Windows {
        analysis::frmSternVolmerAnalyzer& analyzer;
        plot::Graph& graph;
        plot::SpreadSheet& table;
    };
    SternVolmerCommands(const CommandInput& input, ResultSink& results, const Windows& windows)
        : m_input(input), m_results(results), m_windows(windows)
    {
    }

    /// The owner receives every finished run; s: radius of the probe when it began, nm.
    std::function<void(const analysis::Request& request, const analysis::Result& result, double s)> finished =
        [](const analysis::Request&, const analysis::Result&, double) {};

    /// Fits the selected model to the ratios of the sheet and stores the result.
    void SternVolmerAnalysis();
    /// Shows the selected model with the typed parameters; no fit, no stored result.
    void CalcSternVolmer();

private:
    /// A command's own copies, so that nothing the user does during the command changes them.
    struct Run {
        sternvolmer::RatioData data{};
        analysis::Request request{};
        double s = 0; // radius of the probe, nm
    };
    struct Curves {
        std::vector<plot::CurvePoint> plotted;
        std::vector<plot::CurvePoint> listed;
    };

    std::optional<Run> prepare();
    std::optional<Curves> evaluate(const Run& run, const analysis::Result& result);
    void show(const Run& run, const Curves& curves);

    CommandInput m_input;
    ResultSink& m_results;
    Windows m_windows;
};

} // namespace app
