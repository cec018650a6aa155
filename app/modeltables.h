#pragma once

#include <array>
#include <span>
#include <string_view>

/// Everything that differs from model to model outside the laws themselves, once.
namespace app
{

inline constexpr int kModelCount = 13;

enum class Analysis { SternVolmer, Decay };

/// Quantities that a result carries; a mask is a sum of these bits.
enum Reported : int { KorF = 1, Kq1 = 2, Kq2 = 4, Kq22 = 8, Radius = 16 };

/// The box into which the start value of a parameter is typed.
enum class PanelBox { K, F, kq1, kq2 };

/// One fitted parameter.
struct ModelParameter {
    PanelBox box;
    std::string_view label;     // report label
    Reported reported;          // under which name the result carries it
    bool fixableInDecay = true; // its "Fix" check box also holds for decay curves
    bool restored = true;       // "Restore" copies it back into the box
};

struct ModelRow {
    int parameterCount = 0;                     // fitted parameters; 0: no such model
    std::array<ModelParameter, 3> parameters{}; // in fitting order
    bool hasRadius = false;                     // the law implies an interaction radius
    bool hasDecayLaw = true;                    // decay curves can be analysed

    constexpr std::span<const ModelParameter> fitted() const
    {
        return {parameters.data(), static_cast<std::size_t>(parameterCount)};
    }
    constexpr bool uses(PanelBox box) const
    {
        for (const ModelParameter& parameter : fitted())
            if (parameter.box == box)
                return true;
        return false;
    }
    /// The law holds the total probe concentration: a complex or a sphere binds quencher. Decay laws of spheres count
    /// the total quencher instead.
    constexpr bool usesProbe(Analysis analysis) const
    {
        return uses(PanelBox::K) && (analysis == Analysis::SternVolmer || !hasRadius);
    }
};

namespace rows
{
inline constexpr ModelParameter kK{PanelBox::K, "K :", KorF};
inline constexpr ModelParameter kKq1{PanelBox::kq1, "kq1 :", Kq1};
inline constexpr ModelParameter kKq2{PanelBox::kq2, "kq2 :", Kq2};
inline constexpr ModelParameter kKq2NeverRestored{PanelBox::kq2, "kq2 :", Kq2, true, false};
inline constexpr ModelParameter kKq2FreeInDecay{PanelBox::kq2, "kq2 :", Kq2, false};
inline constexpr ModelParameter kF{PanelBox::F, "F :", KorF};
// Two-site models type and print the constants of the sites as kq1 and kq2, results carry them as kq2 and kq22.
inline constexpr ModelParameter kFirstSite{PanelBox::kq1, "kq1 :", Kq2};
inline constexpr ModelParameter kSecondSite{PanelBox::kq2, "kq2 :", Kq22};
} // namespace rows

/// Row number = model number.
inline constexpr std::array<ModelRow, kModelCount + 1> kModels{{
    {},                                                       // 0: not a model
    {1, {rows::kKq2}},                                        // 1: dynamic
    {3, {rows::kK, rows::kKq1, rows::kKq2FreeInDecay}},       // 2..5: one-step
    {2, {rows::kK, rows::kKq2NeverRestored}},                 // 3
    {2, {rows::kK, rows::kKq1}},                              // 4
    {1, {rows::kK}, false, false},                            // 5
    {3, {rows::kK, rows::kKq1, rows::kKq2FreeInDecay}, true}, // 6..11: multi-step
    {2, {rows::kK, rows::kKq2}, true},                        // 7
    {2, {rows::kK, rows::kKq1}, true},                        // 8
    {1, {rows::kK}, true, false},                             // 9
    {3, {rows::kK, rows::kKq1, rows::kKq2FreeInDecay}, true}, // 10
    {2, {rows::kK, rows::kKq1}, true},                        // 11
    {3, {rows::kF, rows::kFirstSite, rows::kSecondSite}},     // 12..13: two sites
    {2, {rows::kF, rows::kFirstSite}},                        // 13
}};

/// The row of a model; a number outside 1..13 gives row 0.
constexpr const ModelRow& modelRow(int model)
{
    return kModels[model >= 1 && model <= kModelCount ? static_cast<std::size_t>(model) : 0];
}

/// Sum of Reported bits of a result. Models without a decay law carry nothing in a decay result.
constexpr int reportedMask(int model, Analysis analysis)
{
    const ModelRow& row = modelRow(model);
    if (analysis == Analysis::Decay && !row.hasDecayLaw)
        return 0;
    int mask = row.hasRadius ? Radius : 0;
    for (const ModelParameter& parameter : row.fitted())
        mask |= parameter.reported;
    return mask;
}

constexpr std::array<int, kModelCount + 1> reportedMasks(Analysis analysis)
{
    std::array<int, kModelCount + 1> masks{};
    for (int model = 1; model <= kModelCount; ++model)
        masks[static_cast<std::size_t>(model)] = reportedMask(model, analysis);
    return masks;
}

inline constexpr auto SVParamMask = reportedMasks(Analysis::SternVolmer);
inline constexpr auto DecayParamMask = reportedMasks(Analysis::Decay);
static_assert(SVParamMask == std::array{0, 4, 7, 5, 3, 1, 23, 21, 19, 17, 23, 19, 13, 5});
static_assert(DecayParamMask == std::array{0, 4, 7, 5, 3, 0, 23, 21, 19, 0, 23, 19, 13, 5});

} // namespace app
