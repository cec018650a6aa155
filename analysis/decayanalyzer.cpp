#include "analysis/decayanalyzer.h"

#include "decay/decayproblem.h"

namespace analysis
{

frmDecayCurveAnalyzer::frmDecayCurveAnalyzer(ui::Prompter& prompter) : AnalyzerWindow("DecayCurveAnalyzer", prompter)
{
    setSampleData({});
}

void frmDecayCurveAnalyzer::CalcFity(int model)
{
    setModel(model);
    decay::DecayProblem problem(sampleData(), model, request().options.logMode, request().Cp);
    problem.CalcFity(startParameters(request()));
    setSampleData(problem.samples());
}

double frmDecayCurveAnalyzer::getfvalue(double t, double Q) const
{
    return fittedDecay(request(), startParameters(request()))(t, Q);
}

} // namespace analysis
