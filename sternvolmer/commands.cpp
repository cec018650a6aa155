#include "sternvolmer/commands.h"

#include "ui/twips.h"

namespace sternvolmer
{
namespace
{

constexpr int kTableColumnsShown = 10, kTableRowsShown = 100;

} // namespace

void Commands::SternVolmerAnalysis()
{
    const std::optional<Run> run = prepare();
    if (!run || !m_analyzer.GAUSSNEWTON())
        return;
    const std::optional<Curves> curves = evaluate(*run);
    if (!curves)
        return;
    const int model = run->panel.Model;
    const auto result = analysis::resultOf(m_analyzer, models::Analysis::SternVolmer, model, run->values.s);
    if (!result)
        return m_analyzer.reportArithmeticFault();
    show(*run, *curves);
    m_context.results.storeResult(*result, models::reportedMask(model, models::Analysis::SternVolmer));
    finished(run->data, analysis::finishedRun(m_analyzer, run->panel, analysis::Kind::Fit));
    ui::bringToFront(m_analyzer);
}

void Commands::CalcSternVolmer()
{
    const std::optional<Run> run = prepare();
    if (!run)
        return;
    const std::optional<Curves> curves = evaluate(*run);
    if (!curves || !m_analyzer.ShowResult())
        return;
    show(*run, *curves);
    finished(run->data, analysis::finishedRun(m_analyzer, run->panel, analysis::Kind::Calculation));
    ui::bringToFront(m_analyzer);
}

std::optional<Commands::Run> Commands::prepare()
{
    m_analyzer.SetSize(analysis::kAnalyzerTop, analysis::kAnalyzerLeft, analysis::kAnalyzerHeight,
                       analysis::kAnalyzerWidth);
    ui::bringToFront(m_analyzer);
    m_analyzer.setLogMode(m_context.shared.settings.LogMode);
    Run run;
    run.data = readSternVolmerData(app::cellsOf(m_context.sheet));
    run.panel = m_context.panel.panelState();
    run.values = app::panelValues(run.panel);
    const std::vector<std::string> found = complaints(run.data, run.values.Cp);
    for (const std::string& complaint : found)
        m_context.prompter.message(QString::fromStdString(complaint));
    if (!found.empty())
        return std::nullopt;
    computeRatios(run.data);
    if (!allFinite(run.data) || !app::boxesFinite(run.panel, models::Analysis::SternVolmer)) {
        m_analyzer.reportArithmeticFault();
        return std::nullopt;
    }
    handOver(run);
    return run;
}

void Commands::handOver(const Run& run)
{
    const decay::SampleTable& samples = run.data.samples;
    m_analyzer.setStatus(1);
    m_analyzer.setExenum(0);
    analysis::configure(m_analyzer, app::startParameters(run.panel, models::Analysis::SternVolmer));
    m_analyzer.setModel(run.panel.Model);
    m_analyzer.setIteration(run.values.iterationLimit);
    m_analyzer.setTolerance(run.values.tolerance);
    m_analyzer.setTauZero(run.data.tau0);
    m_analyzer.setConcentrationofProbe(run.values.Cp);
    m_analyzer.setDatanumber(samples.SampleCount);
    for (int i = 1; i <= samples.SampleCount; ++i) {
        const decay::SampleRecord& sample = samples.SampleData[static_cast<std::size_t>(i)];
        m_analyzer.setDX(sample.Conc, i);
        m_analyzer.setDY(sample.SVRatio, i);
    }
}

std::optional<Commands::Curves> Commands::evaluate(const Run& run)
{
    const auto fitted = [this](double x) { return m_analyzer.getfvalue(x); };
    Curves curves{plot::ratioCurve(run.data.Xmax, fitted), plot::ratioTable(run.data.Xmax, fitted)};
    if (plot::allFinite(curves.plotted) && plot::allFinite(curves.listed))
        return curves;
    m_analyzer.reportArithmeticFault();
    return std::nullopt;
}

void Commands::show(const Run& run, const Curves& curves)
{
    plot::Graph& graph = m_context.GraphWindow2;
    graph.resizeSurface(analysis::kSurfaceSize, analysis::kSurfaceSize);
    plot::PlotSternVolmer(graph, run.data.samples, run.data.Xmax, run.data.Ymax);
    plot::PlotSternVolmerFit(graph, curves.plotted);
    graph.showFilled();

    plot::SpreadSheet& table = m_context.OutputTable2;
    table.Cols(kTableColumnsShown);
    table.Rows(kTableRowsShown);
    plot::ShowSternVolmerFittingTable(table, curves.listed);
    table.showFilled();
}

} // namespace sternvolmer
