#pragma once

#include "analysis/commandcontext.h"
#include "plot/sternvolmercharts.h"
#include "sternvolmer/analyzerwindow.h"
#include "sternvolmer/ratiodata.h"

#include <functional>
#include <optional>
#include <vector>

namespace sternvolmer
{

/// The Stern-Volmer commands of the main window, from the typed sheet to plot, table and stored result.
class Commands
{
public:
    Commands(const analysis::CommandContext& context, frmSternVolmerAnalyzer& analyzer)
        : m_context(context), m_analyzer(analyzer)
    {
    }

    /// The owner receives every finished run.
    std::function<void(const RatioData& data, const analysis::FinishedRun& run)> finished =
        [](const RatioData&, const analysis::FinishedRun&) {};

    /// Fits the selected model to the ratios of the sheet and stores the result.
    void SternVolmerAnalysis();
    /// Shows the selected model with the typed parameters; no fit, no stored result.
    void CalcSternVolmer();

private:
    /// The copies that a command uses until its end, whatever the user does in the meantime.
    struct Run {
        app::PanelState panel;
        app::PanelValues values;
        RatioData data;
    };
    struct Curves {
        std::vector<plot::CurvePoint> plotted;
        std::vector<plot::CurvePoint> listed;
    };

    std::optional<Run> prepare();
    void handOver(const Run& run);
    std::optional<Curves> evaluate(const Run& run);
    void show(const Run& run, const Curves& curves);

    analysis::CommandContext m_context;
    frmSternVolmerAnalyzer& m_analyzer;
};

} // namespace sternvolmer
