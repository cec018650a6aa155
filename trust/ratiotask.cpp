#include "trust/ratiotask.h"

namespace trust
{

sternvolmer::RatioProblem RatioInput::problem() const
{
    sternvolmer::RatioProblem problem;
    problem.setModel(panel.Model);
    problem.setTauZero(data.tau0);
    problem.setConcentrationofProbe(app::panelValues(panel).Cp);
    problem.setDatanumber(data.samples.SampleCount);
    for (int i = 1; i <= data.samples.SampleCount; ++i) {
        const decay::SampleRecord& sample = data.samples.SampleData[static_cast<std::size_t>(i)];
        problem.setDX(sample.Conc, i);
        problem.setDY(sample.SVRatio, i);
    }
    return problem;
}

std::vector<double> RatioInput::observed() const
{
    std::vector<double> ratios;
    for (int i = 1; i <= data.samples.SampleCount; ++i)
        ratios.push_back(data.samples.SampleData[static_cast<std::size_t>(i)].SVRatio);
    return ratios;
}

Task RatioInput::task(fit::Problem& problem) const
{
    return {problem, panel.Model, app::startParameters(panel, models::Analysis::SternVolmer), kUncountedRatios};
}

fit::Options engineOptions(const app::PanelState& panel, models::Analysis analysis, int logMode)
{
    const app::StartParameters typed = app::startParameters(panel, analysis);
    const app::PanelValues values = app::panelValues(panel);
    fit::Options options;
    options.logMode = logMode;
    options.parameterCount = typed.count;
    options.fix = typed.fix;
    if (logMode != 1)
        options.aboveZero = typed.aboveZero;
    options.iterationLimit = values.iterationLimit;
    options.tolerance = values.tolerance;
    options.unitStepForZero = analysis == models::Analysis::Decay;
    return options;
}

} // namespace trust
