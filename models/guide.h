#pragma once

#include <array>
#include <string>
#include <string_view>

/// Explanations of the models for users, in tooltips and in the manual.
namespace models
{

/// The symbols of the laws without a box.
inline constexpr std::array<std::string_view, 4> kLawSymbols{
    "Q total quencher, Cp probe, τ0 mean lifetime of the reference",
    "Qf free quencher: K·Qf² + (1 + K·Cp − K·Q)·Qf − Q = 0",
    "D = 1 + K·Cp, E = exp(−K·Q/D), p0 = exp(−K·Q), pj = (K·Q)^j·p0/j!",
    "S(r) = Σ A·exp(−(1/τ + r)·t) over the components of the reference",
};

/// Approximate rate constant of diffusion-limited collisions of small molecules at 25 degrees C.
/// Source: J. R. Lakowicz, Principles of Fluorescence Spectroscopy, the Smoluchowski equation.
struct DiffusionLimit {
    double rateConstant; // M^-1 s^-1
    std::string_view solvent;
};
inline constexpr DiffusionLimit kDiffusionLimit{1e10, "water"};

/// "meaning [unit]"; without a unit "meaning [no unit]".
std::string guideText(std::string_view meaning, std::string_view unit);

/// Name and laws of a model 1..13 with the symbols explained, one per line.
std::string modelText(int model);

} // namespace models
