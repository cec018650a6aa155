#pragma once

#include "analysis/analyzerwindow.h"

namespace analysis
{

/// Shows fits of the decay curves of all samples at once.
class frmDecayCurveAnalyzer final : public AnalyzerWindow
{
    Q_OBJECT

public:
    explicit frmDecayCurveAnalyzer(ui::Prompter& prompter);

    void setSampleData(const decay::SampleTable& samples) { requestToSet().data = samples; }
    const decay::SampleTable& sampleData() const { return std::get<decay::SampleTable>(request().data); }

    /// Recomputes the fitted curves of all samples for a model with the current parameters.
    void CalcFity(int model);
    /// The model's linear intensity at a time in s for a quencher concentration in M, current parameters.
    double getfvalue(double t, double Q) const;
};

} // namespace analysis
