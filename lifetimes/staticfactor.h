#pragma once

#include "lifetimes/combinedfit.h"

#include <vector>

namespace lifetimes
{

/// The static factor s = (Φ0/Φ) / (τ0/τ) of a sample: what quenching lowers the intensity beyond the lifetime.
struct StaticRow {
    std::size_t sample = 0; // place in Measurements::samples
    double Q = 0;           // M
    double s = 1;
    double relativeError = 0; // standard error of s / s, the errors of the reference included

    double perQ() const { return (s - 1) / Q; } // M^-1; level for a complex, as s = 1 + K Q
    double perQError() const { return s * relativeError / Q; }
    double logPerQ() const; // M^-1; level for a sphere, as s = exp(K Q)
    double logPerQError() const { return relativeError / Q; }
    /// True if s differs from 1 by more than two standard errors.
    bool differsFromOne() const;
};

/// A straight line against Q through samples and reference, whose intercept is free.
struct Slope {
    double value = 0;     // M^-1
    double halfWidth = 0; // of its 95 percent interval
    double largest() const { return value + halfWidth; }
};

struct StaticFactor {
    std::vector<StaticRow> rows; // of samples with quencher, intensity and lifetime
    bool hasErrors = false;      // a model leaves degrees of freedom to estimate them
    Slope slope{};               // of ln s
    Slope lifetimeSlope{};       // of ln τ0/τ

    /// The lifetimes fall more than the intensities, by more than the 95 percent error.
    bool isBelowOne() const { return hasErrors && slope.largest() < 0; }
    /// The largest concentration with both ratios, M.
    double highestQ() const;
};

/// fits: of the same measurements. The relative errors are those of the fit with the lowest AICc. Fits in which K may
/// be negative take part, so that factors below 1 do not count as scatter.
StaticFactor staticFactorOf(const Measurements& measurements, const std::vector<CombinedFit>& fits,
                            const ErrorRatio& ratio);

} // namespace lifetimes
