#pragma once

#include "decay/sampletable.h"
#include "fit/gaussnewton.h"
#include "models/mixture.h"

#include <array>

/// A second version of the laws: each is one expression, as its formula is printed, and is evaluated completely in
/// every call. Tests and benchmarks compare the program's own evaluation with it, in value and in time; it is not part
/// of the program.
namespace literal
{

struct Law {
    int model;
    const decay::SampleRecord& reference; // the sample without quencher
    double Cp;                            // total probe, M
};

struct Place {
    double t; // s
    double Q; // total quencher, M
};

/// Quenched decay. p: real values in fitting order, slots 1..3.
double decayIntensity(const Law& law, Place place, const fit::Parameters& p);

/// Ratio F0/F.
double ratio(int model, const models::Mixture& mix, const fit::Parameters& p);

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
    /// The probe's Q is not used.
    RatioProblem(const Slots& Q, const Slots& y, int model, const models::Mixture& probe)
        : m_Q(Q), m_y(y), m_model(model), m_probe(probe)
    {
    }
    int pointCount() const override { return 20; }
    double residual(int point, const fit::Parameters& a) override
    {
        const auto i = static_cast<std::size_t>(point);
        return ratio(m_model, {m_Q[i], m_probe.Cp, m_probe.tau0}, a) - m_y[i];
    }

private:
    const Slots m_Q, m_y;
    int m_model;
    models::Mixture m_probe;
};

} // namespace literal
