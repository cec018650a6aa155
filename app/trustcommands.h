#pragma once

#include "analysis/decayanalyzer.h"
#include "analysis/sternvolmeranalyzer.h"
#include "app/analysed.h"
#include "app/commandinput.h"
#include "trust/fitdetailswindow.h"
#include "trust/modelcomparisonwindow.h"
#include "trust/startvalueswindow.h"

#include <functional>
#include <optional>
#include <vector>

namespace app
{

/// The commands that find start values and judge fits. They do not change analyzers, results or the sample table.
class TrustCommands
{
public:
    struct Windows {
        trust::StartValuesWindow& startValues;
        trust::FitDetailsWindow& fitDetails;
        trust::ModelComparisonWindow& comparison;
    };
    struct Analyzers { // whose last runs tell where an analysis would start
        const analysis::frmSternVolmerAnalyzer& ratios;
        const analysis::frmDecayCurveAnalyzer& decays;
    };
    TrustCommands(const CommandInput& input, PanelEditor& panel, const Windows& windows, const Analyzers& analyzers);

    void findStart(models::Analysis analysis);
    /// Finds start values, types them and runs the analysis.
    void findAndFit(models::Analysis analysis);
    void showFitDetails();
    void compareAllModels(models::Analysis analysis);

    /// The owner runs an analysis as its menu item does.
    std::function<void(models::Analysis)> analyse = [](models::Analysis) {};

    /// Relative errors of the intensities, as if typed into Fit Details; whether they are known stays as chosen there.
    void typeErrors(const std::vector<double>& errors);

    /// The owner learns with which data a window is filled.
    std::function<void(QWidget& window, const analysis::Request& request)> fills = [](QWidget&,
                                                                                      const analysis::Request&) {};

    /// Called after every finished analysis and calculation. s: radius of the probe, nm; of ratios only.
    void analysed(const analysis::Request& request, const analysis::Result& result, double s = 0);
    /// Called when the last one is judged.
    void judged(const trust::Judgement& judgement);

    const std::optional<Analysed>& last() const { return m_last; }
    trust::DetailsText exactDetails() const; // of the last one, with all digits of its numbers
    const noise::Errors& errors() const { return m_errors.errors; }
    const trust::Comparison& comparison() const { return m_windows.comparison.comparison(); }
    const analysis::Request& compared() const { return m_compared.front(); } // with the data of the comparison

private:
    std::optional<analysis::Request> ratioRequest(const PanelValues& panel);
    std::optional<analysis::Request> decayRequest(const PanelValues& panel);
    bool search(models::Analysis analysis);
    bool search(const analysis::Request& request, const PanelState& panel);
    bool showSearch(const trust::RequestedFit& requested);
    void fitFromBoxes();
    trust::FoundStarts startsFor(const trust::RequestedFit& requested, const trust::SearchResult& found,
                                 const trust::KeepGoing& keepGoing) const;
    void typeFound(const fit::Parameters& values);
    void typeBack();
    void chooseModel(models::Analysis analysis, int model, const fit::Parameters& values);
    void compare();
    void setErrors(const noise::Errors& errors);
    void refreshDetails();

    CommandInput m_input;
    PanelEditor& m_panel;
    Windows m_windows;
    Analyzers m_analyzers;
    QWidget* m_searching = nullptr;            // the window of the running search; only one runs at a time
    models::Analysis m_searchedFor{};          // the analysis for which the last search was
    PanelState m_typed;                        // the panel at the start of the last search
    leastsquares::FreeSlots m_searched;        // the parameters of the last search
    std::vector<analysis::Request> m_compared; // of all models, as the last comparison had them
    trust::ErrorSettings m_errors;             // kept while the program runs
    std::optional<Analysed> m_last;            // what Fit Details show
};

} // namespace app
