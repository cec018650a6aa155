#pragma once

#include "fit/realparameters.h"
#include "fit/statistics.h"

#include <array>

namespace sternvolmer
{

/// Slot arrays: point i has index i, 1..100; slot 0 is not a point.
using RatioSlots = std::array<double, 101>;

/// The least-squares problem of fitting ratios F0/F against total quencher. Parameters are as the engine holds them:
/// natural logarithms in log mode.
class RatioProblem final : public fit::Problem
{
public:
    void setLogMode(int mode) { m_logMode = mode; }
    void setModel(int model) { m_model = model; }
    void setDatanumber(double n); // at most 100
    void setDX(double x, int i);  // M; nothing before setDatanumber
    void setDY(double y, int i);  // ratio; nothing before setDatanumber
    void setTauZero(double tau0) { m_tau0 = tau0; }
    void setConcentrationofProbe(double Cp) { m_Cp = Cp; }

    int pointCount() const override;
    double residual(int point, const fit::Parameters& a) override;
    void residuals(int first, const fit::Parameters& a, std::span<double> room) override;

    /// Model ratio at total quencher x, M.
    double value(double x, const fit::Parameters& a);

    /// Model ratios of points 1..N, 0 in the other slots.
    RatioSlots fittedValues(const fit::Parameters& a);

    fit::Statistics statistics(const fit::Parameters& a);

private:
    double law(double x, const fit::Parameters& a);

    int m_logMode = 0;
    int m_model = 0;
    double m_N = 0;
    bool m_dataReady = false;
    RatioSlots m_X{};
    RatioSlots m_Y{};
    double m_tau0 = 0; // s
    double m_Cp = 0;   // M
    fit::RealParameters m_real;
};

} // namespace sternvolmer
