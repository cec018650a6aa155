#pragma once

#include "app/modeltables.h"

#include <array>
#include <bit>
#include <string_view>

namespace app
{

inline constexpr std::string_view kKq1PerSecond = "kq1/s-1";
inline constexpr std::string_view kKq1PerMolarSecond = "kq1/M-1s-1";

/// Caption of the kq1 box: two-site models type a bimolecular constant there.
constexpr std::string_view kq1Caption(int model)
{
    return modelRow(model).uses(PanelBox::F) ? kKq1PerMolarSecond : kKq1PerSecond;
}

/// Models that share a label on the panel, from one model number to another.
struct ModelGroup {
    std::string_view label;
    int first;
    int last;
};
inline constexpr std::array<ModelGroup, 4> kModelGroups{{
    {"Dynamic Quenching", 1, 1},
    {"1-step Quenching", 2, 5},
    {"Multi-step Quenching", 6, 11},
    {"Dynamic Quenching(2 site)", 12, 13},
}};
static_assert(kModelGroups.back().last == kModelCount);

inline constexpr int kResultModelColumn = 1;

/// Column of the results table that shows K or F or a rate constant; they stand in the order of their bits.
constexpr int resultColumn(Reported quantity) { return 2 + std::countr_zero(static_cast<unsigned>(quantity)); }
static_assert(resultColumn(KorF) == 2 && resultColumn(Kq22) == 5);

} // namespace app
