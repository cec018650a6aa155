#include "decay/analyzerwindow.h"

#include "decay/curvefit.h"

namespace decay
{

frmDecayCurveAnalyzer::frmDecayCurveAnalyzer(ui::Prompter& prompter)
    : AnalyzerWindow("DecayCurveAnalyzer", true, prompter)
{
}

DecayProblem& frmDecayCurveAnalyzer::configured()
{
    m_problem->setLaw(model(), logMode(), probe());
    return *m_problem;
}

void frmDecayCurveAnalyzer::CalcFity(int model)
{
    setModel(model);
    configured().CalcFity(parameters());
}

double frmDecayCurveAnalyzer::getfvalue(double t, double Q) { return configured().value(t, Q, parameters()); }

fit::Statistics frmDecayCurveAnalyzer::statistics() { return configured().statistics(parameters()); }

fit::Outcome frmDecayCurveAnalyzer::solve(fit::Problem& problem, const fit::Options& options,
                                          const fit::Parameters& start, fit::Observer& observer) const
{
    return fitCurves(static_cast<DecayProblem&>(problem), options, start, observer);
}

std::shared_ptr<fit::Problem> frmDecayCurveAnalyzer::problem()
{
    configured().modelEvaluated = [this] { letEventsRunNowAndThen(); };
    return m_problem;
}

void frmDecayCurveAnalyzer::detach()
{
    m_problem = std::make_shared<DecayProblem>(*m_problem);
    m_problem->modelEvaluated = nullptr;
}

void frmDecayCurveAnalyzer::adopt(std::shared_ptr<fit::Problem> problem)
{
    m_problem = std::static_pointer_cast<DecayProblem>(std::move(problem));
    m_problem->modelEvaluated = nullptr;
}

} // namespace decay
