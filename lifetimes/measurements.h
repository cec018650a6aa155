#pragma once

#include "decay/sampletable.h"

#include <cstddef>
#include <vector>

/// Intensities and lifetimes of the same samples, analysed together: collisions shorten the lifetime and lower the
/// intensity, a dark complex or a dark sphere only lowers the intensity.
namespace lifetimes
{

/// What an observation is.
enum class Kind { Intensity, Lifetime };

/// One sample of the sheet; 0: not measured.
struct Sample {
    double Q = 0;                   // total quencher, M; NaN if its text is not a number
    double intensity = 0;           // Φ
    double lifetime = 0;            // mean weighted by the amplitudes, sum A tau / sum A, s
    double lifetimeByIntensity = 0; // sum A tau^2 / sum A tau, s: only to compare with other work, never fitted

    double observed(Kind kind) const { return kind == Kind::Intensity ? intensity : lifetime; }
    bool operator==(const Sample&) const = default;
};

/// A component of the reference's decay.
struct Component {
    double amplitude = 0;
    double lifetime = 0; // s
    bool operator==(const Component&) const = default;
};

struct Measurements {
    std::vector<Sample> samples;       // the reference first
    std::vector<Component> components; // of the reference
    double Cp = 0;                     // total probe, M

    /// Mean lifetime of the reference, s; 0: none.
    double tau0() const { return samples.empty() ? 0 : samples.front().lifetime; }
    /// Places in samples of the observations of a kind, the reference first. None if the reference lacks it or no other
    /// sample has it: one value compares with nothing.
    std::vector<std::size_t> observed(Kind kind) const;
    bool has(Kind kind) const { return !observed(kind).empty(); }
    /// Φ0/Φ or τ0/τ of a sample; 0: not known.
    double ratio(Kind kind, std::size_t sample) const;
    bool operator==(const Measurements&) const = default;
};

/// Reads the sample columns of the sheet up to the first column without a concentration. A text that is not wholly a
/// positive number counts as not measured, and so does a lifetime without all its amplitudes. Cp: total probe, M.
Measurements readMeasurements(const decay::CellText& cell, double Cp);

} // namespace lifetimes
