#include "sternvolmer/analyzerwindow.h"

namespace sternvolmer
{

frmSternVolmerAnalyzer::frmSternVolmerAnalyzer(ui::Prompter& prompter)
    : AnalyzerWindow("SternVolmerAnalyzer", false, prompter)
{
}

RatioProblem& frmSternVolmerAnalyzer::configured()
{
    m_problem->setLogMode(logMode());
    m_problem->setModel(model());
    m_problem->setConcentrationofProbe(probe());
    return *m_problem;
}

RatioSlots frmSternVolmerAnalyzer::getFity() { return configured().fittedValues(parameters()); }

double frmSternVolmerAnalyzer::getfvalue(double x) { return configured().value(x, parameters()); }

fit::Statistics frmSternVolmerAnalyzer::statistics() { return configured().statistics(parameters()); }

std::shared_ptr<fit::Problem> frmSternVolmerAnalyzer::problem()
{
    configured();
    return m_problem;
}

void frmSternVolmerAnalyzer::detach() { m_problem = std::make_shared<RatioProblem>(*m_problem); }

void frmSternVolmerAnalyzer::adopt(std::shared_ptr<fit::Problem> problem)
{
    m_problem = std::static_pointer_cast<RatioProblem>(std::move(problem));
}

} // namespace sternvolmer
