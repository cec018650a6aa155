#pragma once

#include <optional>
#include <string_view>

namespace imports
{

enum class UnitKind { None, Concentration, Time };

/// A unit as a power of ten of M or of s.
struct Unit {
    UnitKind kind = UnitKind::None;
    int power = 0;
    bool operator==(const Unit&) const = default;
};

inline constexpr Unit kSheetConcentration{UnitKind::Concentration, 0}; // M
inline constexpr Unit kSheetTime{UnitKind::Time, -9};                  // ns

/// The unit in which the sheet holds quantities of a kind.
constexpr Unit sheetUnit(UnitKind kind)
{
    return kind == UnitKind::Concentration ? kSheetConcentration : kind == UnitKind::Time ? kSheetTime : Unit{};
}

/// A text that is nothing but a unit, in the spelling of asciiText(): "mM", "mmol/L", "mol L^-1", "ns".
std::optional<Unit> unitOf(std::string_view text);

/// The unit at the end of a title: "[Q] / mM", "c(KI) in mol/L", "tau (ns)".
std::optional<Unit> unitOfTitle(std::string_view title);

} // namespace imports
