#pragma once

#include "analysis/analyzerwindow.h"
#include "sternvolmer/ratioproblem.h"

namespace sternvolmer
{

/// Fits Stern-Volmer ratios against the quencher concentration.
class frmSternVolmerAnalyzer final : public analysis::AnalyzerWindow
{
    Q_OBJECT

public:
    explicit frmSternVolmerAnalyzer(ui::Prompter& prompter);

    void setDatanumber(double n) { m_problem->setDatanumber(n); }
    void setDX(double x, int i) { m_problem->setDX(x, i); } // total quencher of point i, M
    void setDY(double y, int i) { m_problem->setDY(y, i); } // ratio of point i
    void setTauZero(double t) { m_problem->setTauZero(t); } // s

    /// The model's ratios at points 1..N for the current parameters.
    RatioSlots getFity();
    /// The model's ratio at any concentration in M for the current parameters.
    double getfvalue(double x);

private:
    std::shared_ptr<fit::Problem> problem() override;
    fit::Statistics statistics() override;
    void detach() override;
    void adopt(std::shared_ptr<fit::Problem> problem) override;
    RatioProblem& configured();

    std::shared_ptr<RatioProblem> m_problem = std::make_shared<RatioProblem>();
};

} // namespace sternvolmer
