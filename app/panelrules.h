#pragma once

#include "app/modeltables.h"

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

} // namespace app
