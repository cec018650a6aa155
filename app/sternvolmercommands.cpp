#include "app/sternvolmercommands.h"

#include "app/panelrequest.h"
#include "app/windowplaces.h"
#include "sternvolmer/complaints.h"
#include "ui/twips.h"

namespace app
{
namespace
{

constexpr int kTableColumnsShown = 10, kTableRowsShown = 100;

} // namespace

void SternVolmerCommands::SternVolmerAnalysis()
{
    analysis::frmSternVolmerAnalyzer& analyzer = m_windows.analyzer;
    const std::optional<Run> run = prepare();
    if (!run)
        return;
    const std::optional<analysis::Result> result = analyzer.fit(run->request);
    if (!result)
        return;
    const std::optional<Curves> curves = evaluate(*run, *result);
    if (!curves)
        return;
    const auto record = recordOf(run->request, *result, run->s);
    if (!record)
        return analyzer.reportArithmeticFault();
    show(*run, *curves);
    m_results.storeResult(*record, models::reportedMask(run->request.model, models::Analysis::SternVolmer));
    finished(run->request, *result, run->s);
    ui::bringToFront(analyzer);
}

void SternVolmerCommands::CalcSternVolmer()
{
    const std::optional<Run> run = prepare();
    if (!run)
        return;
    const analysis::Result result = analysis::calculate(run->request);
    const std::optional<Curves> curves = evaluate(*run, result);
    if (!curves || !m_windows.analyzer.showReport(run->request.model, result))
        return;
    show(*run, *curves);
    finished(run->request, result, run->s);
    ui::bringToFront(m_windows.analyzer);
}

std::optional<SternVolmerCommands::Run> SternVolmerCommands::prepare()
{
    analysis::frmSternVolmerAnalyzer& analyzer = m_windows.analyzer;
    analyzer.SetSize(kAnalyzerPlace.top, kAnalyzerPlace.left, kAnalyzerPlace.height, kAnalyzerPlace.width);
    ui::bringToFront(analyzer);
    analyzer.setLogMode(m_input.shared.settings.LogMode);
    Run run{.data = sternvolmer::readSternVolmerData(cellsOf(m_input.sheet)), .request = analyzer.request()};
    const PanelValues panel = panelValues(m_input.panel.panelState());
    const std::vector<std::string> found = sternvolmer::complaints(run.data, panel.Cp);
    for (const std::string& complaint : found)
        m_input.prompter.message(QString::fromStdString(complaint));
    if (!found.empty())
        return std::nullopt;
    sternvolmer::computeRatios(run.data);
    run.s = panel.s;
    run.request.data = sternvolmer::pointsOf(run.data, std::get<sternvolmer::RatioPoints>(run.request.data));
    run.request = requestOf(panel, run.request.options.logMode, run.request);
    if (!sternvolmer::allFinite(run.data) || !analysis::startsFinite(run.request)) {
        analyzer.reportArithmeticFault();
        return std::nullopt;
    }
    analyzer.set(run.request);
    return run;
}

std::optional<SternVolmerCommands::Curves> SternVolmerCommands::evaluate(const Run& run, const analysis::Result& result)
{
    const auto fitted = analysis::fittedRatio(run.request, result.parameters);
    Curves curves{plot::ratioCurve(run.data.Xmax, fitted), plot::ratioTable(run.data.Xmax, fitted)};
    if (plot::allFinite(curves.plotted) && plot::allFinite(curves.listed))
        return curves;
    m_windows.analyzer.reportArithmeticFault();
    return std::nullopt;
}

void SternVolmerCommands::show(const Run& run, const Curves& curves)
{
    plot::Graph& graph = m_windows.graph;
    graph.resizeSurface(kRatioPlotSize, kRatioPlotSize);
    plot::PlotSternVolmer(graph, run.data.samples, run.data.Xmax, run.data.Ymax);
    plot::PlotSternVolmerFit(graph, curves.plotted);
    graph.showFilled();

    plot::SpreadSheet& table = m_windows.table;
    table.Cols(kTableColumnsShown);
    table.Rows(kTableRowsShown);
    plot::ShowSternVolmerFittingTable(table, curves.listed);
    table.showFilled();
}

} // namespace app
