#pragma once

#include "app/modeltables.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

/// What users are told about the models and their parameters: tooltips show it, the manual prints it.
namespace app
{

/// A model in words and formulas, with the parameters named as their boxes are.
/// Q: total quencher. Qf: quencher outside the complex. tau0: mean lifetime of the reference. Cp: total probe.
/// S(r): decay of the reference with every rate raised by r, the sum of A exp(-(1/tau + r) t).
struct ModelGuide {
    std::string_view name;
    std::string_view ratioLaw;
    std::string_view decayLaw; // empty: only ratios can be analysed
};

/// Row number = model number.
inline constexpr std::array<ModelGuide, kModelCount + 1> kModelGuides{{
    {},
    {"collisions", "Φ0/Φ = 1 + kq2·τ0·Q", "I(t) = S(kq2·Q)"},
    {"a complex that decays faster, and collisions",
     "Φ0/Φ = (1 + kq2·τ0·Qf)·(1 + K·Qf) / (1 + K·Qf·(1 + kq2·τ0·Qf)/(1 + kq1·τ0))",
     "I(t) = (S(kq2·Qf) + K·Qf·S(kq1)) / (1 + K·Qf)"},
    {"a dark complex, and collisions", "Φ0/Φ = (1 + kq2·τ0·Qf)·(1 + K·Qf)", "I(t) = S(kq2·Qf)"},
    {"a complex that decays faster", "Φ0/Φ = (1 + K·Qf) / (1 + K·Qf/(1 + kq1·τ0))",
     "I(t) = (S(0) + K·Qf·S(kq1)) / (1 + K·Qf)"},
    {"a dark complex", "Φ0/Φ = 1 + K·Qf", ""},
    {"a sphere in which the probe decays faster, and collisions",
     "Φ0/Φ = (D + kq2·τ0·Q)·(1 + kq1·τ0) / (D + kq2·τ0·Q + (D·kq1 − kq2·Q)·τ0·E)",
     "I(t) = p0·S(kq2·p0·Q) + (1 − p0)·S(kq1)"},
    {"a dark sphere, and collisions", "Φ0/Φ = (1 + kq2·τ0·Q/D)·exp(K·Q/D)", "I(t) = S(kq2·p0·Q)"},
    {"a sphere in which the probe decays faster", "Φ0/Φ = (1 + kq1·τ0) / (1 + kq1·τ0·E)",
     "I(t) = p0·S(0) + (1 − p0)·S(kq1)"},
    {"a dark sphere", "Φ0/Φ = exp(K·Q/D)", ""},
    {"quenchers in Poisson numbers beside the probe, and collisions",
     "Φ0/Φ = (1 + kq2·τ0·Q/D) / (1 + kq2·τ0·Q·(1 − E)/D − kq1·τ0·K·Q/D)",
     "I(t) = p0·S(kq2·p0·Q) + p1·S(kq1) + p2·S(2·kq1) + …"},
    {"quenchers in Poisson numbers beside the probe", "Φ0/Φ = 1 / (1 − kq1·τ0·K·Q/D)",
     "I(t) = p0·S(0) + p1·S(kq1) + p2·S(2·kq1) + …"},
    {"two sites, each with collisions", "Φ0/Φ = (1 + kq1·τ0·Q)·(1 + kq2·τ0·Q) / (1 + (F·kq1 + kq2)·τ0·Q/(1 + F))",
     "I(t) = (exp(−(1/τ1 + kq1·Q)·t) + F·exp(−(1/τ2 + kq2·Q)·t)) / (1 + F)"},
    {"two sites, the second out of reach", "Φ0/Φ = (1 + kq1·τ0·Q) / (1 + F·kq1·τ0·Q/(1 + F))",
     "I(t) = (exp(−(1/τ1 + kq1·Q)·t) + F·exp(−t/τ2)) / (1 + F)"},
}};

/// The symbols of the laws that are not boxes.
inline constexpr std::array<std::string_view, 4> kLawSymbols{
    "Q total quencher, Cp probe, τ0 mean lifetime of the reference",
    "Qf free quencher: K·Qf² + (1 + K·Cp − K·Q)·Qf − Q = 0",
    "D = 1 + K·Cp, E = exp(−K·Q/D), p0 = exp(−K·Q), pj = (K·Q)^j·p0/j!",
    "S(r) = Σ A·exp(−(1/τ + r)·t) over the components of the reference",
};

struct ParameterGuide {
    std::string_view meaning;
    std::string_view unit;
};

/// What a parameter is in a run of models.
struct ParameterUse {
    int first;
    int last;
    PanelBox box;
    ParameterGuide guide;

    constexpr bool explains(int model, PanelBox explained) const
    {
        return box == explained && first <= model && model <= last;
    }
};
inline constexpr std::array<ParameterUse, 8> kParameterUses{{
    {2, 5, PanelBox::K, {"association constant of the complex of probe and quencher", "M⁻¹"}},
    {6, 9, PanelBox::K, {"molar volume of the sphere of action around a probe", "M⁻¹"}},
    {10, 11, PanelBox::K, {"mean number of quenchers beside a probe, per molar quencher", "M⁻¹"}},
    {2, 11, PanelBox::kq1, {"rate constant of quenching by a quencher beside the probe", "s⁻¹"}},
    {12, 13, PanelBox::kq1, {"collisional rate constant of the first site", "M⁻¹s⁻¹"}},
    {1, 11, PanelBox::kq2, {"collisional rate constant", "M⁻¹s⁻¹"}},
    {12, 12, PanelBox::kq2, {"collisional rate constant of the second site", "M⁻¹s⁻¹"}},
    {12, 13, PanelBox::F, {"population of the second site relative to the first", "no unit"}},
}};

/// Null where the model has no such parameter.
constexpr const ParameterGuide* parameterGuide(int model, PanelBox box)
{
    if (modelRow(model).uses(box))
        for (const ParameterUse& use : kParameterUses)
            if (use.explains(model, box))
                return &use.guide;
    return nullptr;
}

constexpr bool everyParameterIsExplained()
{
    for (int model = 1; model <= kModelCount; ++model)
        for (const ModelParameter& parameter : modelRow(model).fitted())
            if (std::none_of(kParameterUses.begin(), kParameterUses.end(),
                             [&](const ParameterUse& use) { return use.explains(model, parameter.box); }))
                return false;
    return true;
}
static_assert(everyParameterIsExplained());

// The boxes that every model has.
inline constexpr ParameterGuide kRadiusGuide{"radius of the probe; only the result r depends on it", "nm"};
inline constexpr ParameterGuide kProbeGuide{"total concentration of the probe", "M"};
inline constexpr ParameterGuide kToleranceGuide{
    "the fit ends when the sum of squares changes by a smaller fraction in one iteration", "no unit"};
inline constexpr ParameterGuide kIterationGuide{"the fit gives up after so many iterations", "no unit"};
inline constexpr ParameterGuide kFitRegionGuide{
    "the decays are followed down to this fraction of their initial intensity", "no unit"};

/// "meaning [unit]".
std::string guideText(const ParameterGuide& guide);
/// Name and laws of a model 1..13 with the symbols explained, one per line.
std::string modelText(int model);

} // namespace app
