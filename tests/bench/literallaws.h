#pragma once

#include "decay/sampletable.h"
#include "fit/gaussnewton.h"

#include <array>

/// A second version of the laws: each is one expression, as its formula is printed, and is evaluated completely in
/// every call. Tests and benchmarks compare the program's own evaluation with it, in value and in time; it is not part
/// of the program.
namespace literal
{

/// Quenched decay at time t, s, and total quencher Q, M. reference: the sample without quencher. Cp: total probe, M.
/// p: real values in fitting order, slots 1..3.
double decayIntensity(int model, double t, double Q, const decay::SampleRecord& reference, double Cp,
                      const fit::Parameters& p);

/// Ratio F0/F at total quencher x, M. tau0: lifetime without quencher, s.
double ratio(int model, double x, double tau0, double Cp, const fit::Parameters& p);

/// The decay curves of all samples but the reference, as decay::DecayProblem has them.
class DecayProblem final : public fit::Problem
{
public:
    DecayProblem(const decay::SampleTable& samples, int model, int logMode, double Cp);
    int pointCount() const override { return m_pointCount; }
    double residual(int point, const fit::Parameters& a) override;
    /// The fitted intensity at a point.
    double value(int point, const fit::Parameters& a) const;

private:
    struct Point {
        std::size_t sample = 0;
        std::size_t index = 0;
    };
    const decay::SampleTable& m_samples;
    int m_model;
    int m_logMode;
    double m_Cp;
    int m_pointCount = 0;
    std::array<Point, decay::kMaxSamples * decay::kGridSize + 1> m_points{}; // slot 0 is not a point
};

/// Ratios of samples 1..20 against total quencher, as sternvolmer::RatioProblem has them.
class RatioProblem final : public fit::Problem
{
public:
    using Slots = std::array<double, 21>;
    RatioProblem(const Slots& x, const Slots& y, int model, double tau0, double Cp)
        : m_x(x), m_y(y), m_model(model), m_tau0(tau0), m_Cp(Cp)
    {
    }
    int pointCount() const override { return 20; }
    double residual(int point, const fit::Parameters& a) override
    {
        const auto i = static_cast<std::size_t>(point);
        return ratio(m_model, m_x[i], m_tau0, m_Cp, a) - m_y[i];
    }

private:
    const Slots m_x, m_y;
    int m_model;
    double m_tau0;
    double m_Cp;
};

} // namespace literal
