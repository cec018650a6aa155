#pragma once

#include "analysis/analyzerwindow.h"
#include "decay/decayproblem.h"

namespace decay
{

/// Fits the decay curves of all samples at once.
class frmDecayCurveAnalyzer final : public analysis::AnalyzerWindow
{
    Q_OBJECT

public:
    explicit frmDecayCurveAnalyzer(ui::Prompter& prompter);

    void setSampleData(const SampleTable& samples) { m_problem->setSampleData(samples); }

    /// Recomputes the fitted curves of all samples for a model with the current parameters.
    void CalcFity(int model);
    /// The model's linear intensity at a time in s for a quencher concentration in M, current parameters.
    double getfvalue(double t, double Q);
    const SampleTable& sampleData() const { return m_problem->samples(); }

private:
    fit::Outcome solve(fit::Problem& problem, const fit::Options& options, const fit::Parameters& start,
                       fit::Observer& observer) const override;
    std::shared_ptr<fit::Problem> problem() override;
    fit::Statistics statistics() override;
    void detach() override;
    void adopt(std::shared_ptr<fit::Problem> problem) override;
    DecayProblem& configured();

    std::shared_ptr<DecayProblem> m_problem = std::make_shared<DecayProblem>();
};

} // namespace decay
