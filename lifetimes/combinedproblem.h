#pragma once

#include "lifetimes/measurements.h"
#include "noise/jointproblem.h"

namespace lifetimes
{

/// Relative errors of an intensity and of a lifetime, or numbers in proportion to them.
struct RelativeErrors {
    double intensity = 1, lifetime = 1;
    double of(Kind kind) const { return kind == Kind::Intensity ? intensity : lifetime; }
};

/// Ratios Φ0/Φ or τ0/τ of a model at concentrations Q, M. The model must have a law for lifetimes. If the reference
/// has several components and the model says so, every component collides with its own lifetime: the factor 1 + X of
/// collisions becomes sum A tau / sum A tau / (1 + X tau / tau0).
std::vector<double> modelRatios(const Measurements& measurements, int model, Kind kind, const std::vector<double>& Q,
                                const fit::Parameters& values);

/// The fit of ln intensity and ln lifetime at once. The reference's own intensity and lifetime are two further
/// constants, which noise::appendCentred() determines. Points 1, 2, ... are the intensities in the order of the
/// samples, then the lifetimes; a kind that is not observed has none.
class CombinedProblem final : public noise::JointProblem
{
public:
    CombinedProblem(const Measurements& measurements, int model, const RelativeErrors& errors);

    int pointCount() const override { return pointCount(Kind::Intensity) + pointCount(Kind::Lifetime); }
    int pointCount(Kind kind) const { return static_cast<int>(seriesOf(kind).Q.size()); }
    /// Intensities and lifetimes of the reference that are fitted.
    int referenceCount() const;

private:
    struct Series {
        Kind kind;
        std::vector<double> Q, observed, errors;
    };
    const Series& seriesOf(Kind kind) const { return m_series[kind == Kind::Intensity ? 0 : 1]; }
    std::vector<double> calculated(const fit::Parameters& values) override;

    const Measurements m_measurements;
    const int m_model;
    std::array<Series, 2> m_series;
};

} // namespace lifetimes
