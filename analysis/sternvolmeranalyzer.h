#pragma once

#include "analysis/analyzerwindow.h"

namespace analysis
{

/// Shows fits of Stern-Volmer ratios against the quencher concentration.
class frmSternVolmerAnalyzer final : public AnalyzerWindow
{
    Q_OBJECT

public:
    explicit frmSternVolmerAnalyzer(ui::Prompter& prompter);

    void setDatanumber(double n);                    // at most 100
    void setDX(double x, int i);                     // total quencher of point i, M; nothing before setDatanumber
    void setDY(double y, int i);                     // ratio of point i; nothing before setDatanumber
    void setTauZero(double t) { points().tau0 = t; } // s

    /// The model's ratios at points 1..N for the current parameters.
    sternvolmer::RatioSlots getFity() const;
    /// The model's ratio at any concentration in M for the current parameters.
    double getfvalue(double x) const;

private:
    sternvolmer::RatioPoints& points() { return std::get<sternvolmer::RatioPoints>(requestToSet().data); }

    bool m_dataReady = false;
};

} // namespace analysis
