#pragma once

#include "analysis/commandcontext.h"
#include "analysis/fitter.h"
#include "sternvolmer/ratiodata.h"
#include "trust/fitdetailswindow.h"
#include "trust/modelcomparisonwindow.h"
#include "trust/ratiotask.h"
#include "trust/startvalueswindow.h"

#include <functional>
#include <optional>
#include <vector>

namespace trust
{

/// The commands that find start values and judge fits. They do not change analyzers, results or the sample table.
class Commands
{
public:
    struct Windows {
        StartValuesWindow& startValues;
        FitDetailsWindow& fitDetails;
        ModelComparisonWindow& comparison;
    };
    Commands(const analysis::CommandContext& context, app::PanelEditor& panel, const Windows& windows);

    void findSternVolmerStart();
    void findDecayStart();
    void showFitDetails();
    void compareAllModels();

    // Called after every finished analysis and calculation.
    void ratiosAnalysed(const sternvolmer::RatioData& data, const analysis::FinishedRun& run);
    void decaysAnalysed(const decay::SampleTable& samples, const analysis::FinishedRun& run);

private:
    std::optional<RatioInput> checkedRatios(bool (*boxesFinite)(app::PanelState));
    void search(const Task& task, const app::PanelState& panel, models::Analysis analysis);
    FoundStarts startsFor(const Task& task, const app::PanelState& panel, models::Analysis analysis,
                          const SearchResult& found, const KeepGoing& keepGoing) const;
    void typeFound(const fit::Parameters& values);
    void typeBack();
    void chooseModel(int model, const fit::Parameters& values);
    void refreshDetails();

    analysis::CommandContext m_context;
    app::PanelEditor& m_panel;
    Windows m_windows;
    QWidget* m_searching = nullptr;     // the window of the running search; only one runs at a time
    app::PanelState m_typed;            // the panel at the start of the last search
    leastsquares::FreeSlots m_searched; // the parameters of the last search
    std::function<void()> m_details;    // updates the window of fit details; empty before the first analysis
};

} // namespace trust
