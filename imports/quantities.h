#pragma once

#include "decay/samplecolumn.h"
#include "imports/units.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace imports
{

enum class Quantity { Concentration, Intensity, A1, Tau1, A2, Tau2, A3, Tau3, Added };
inline constexpr std::size_t kQuantities = 9;

/// What a column of a table can be.
struct QuantityRow {
    std::string_view name;
    int sheetRow = 0; // 0: not in the sheet
    UnitKind kind = UnitKind::None;
};

/// By Quantity.
inline constexpr std::array<QuantityRow, kQuantities> kQuantityRows{{
    {"Concentration", decay::kConcRow, UnitKind::Concentration},
    {"Intensity", decay::kPhiRow},
    {"A1", decay::amplitudeRow(1)},
    {"τ1", decay::lifetimeRow(1), UnitKind::Time},
    {"A2", decay::amplitudeRow(2)},
    {"τ2", decay::lifetimeRow(2), UnitKind::Time},
    {"A3", decay::amplitudeRow(3)},
    {"τ3", decay::lifetimeRow(3), UnitKind::Time},
    {"Added volume"},
}};

constexpr std::size_t indexOf(Quantity quantity) { return static_cast<std::size_t>(quantity); }
constexpr const QuantityRow& row(Quantity quantity) { return kQuantityRows[indexOf(quantity)]; }

struct Guess {
    std::optional<Quantity> quantity;
    bool excluded = false; // the title says that the column is something else: a ratio, a wavelength, an error
};

/// What the words and the unit of a title say.
Guess guessFromTitle(std::string_view title);

} // namespace imports
