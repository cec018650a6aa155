#pragma once

#include "app/panelvalues.h"
#include "app/resultstore.h"
#include "app/sharedstate.h"
#include "app/sheettext.h"
#include "plot/graphwindow.h"
#include "plot/spreadsheetwindow.h"
#include "ui/prompter.h"

namespace analysis
{

inline constexpr int kAnalyzerTop = 5000, kAnalyzerLeft = 7000, kAnalyzerHeight = 4250, kAnalyzerWidth = 3200; // twips
inline constexpr int kSurfaceSize = 5000; // initial size of a plot window, twips

/// The objects on which the commands of both analyses work; all must outlive the commands.
struct CommandContext {
    app::SheetText& sheet;
    const app::Panel& panel;
    app::SharedState& shared;
    app::ResultSink& results;
    ui::Prompter& prompter;
    plot::Graph& GraphWindow1;
    plot::Graph& GraphWindow2;
    plot::SpreadSheet& OutputTable1;
    plot::SpreadSheet& OutputTable2;
};

} // namespace analysis
