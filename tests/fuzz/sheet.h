#pragma once

#include "decay/sampletable.h"
#include "fit/numbertext.h"
#include "tests/fuzz/fuzz.h"

#include <cmath>
#include <string>
#include <vector>

namespace fuzz
{

/// Half of all numbers have sizes that a chemist types, the other half have any bits.
inline double takeNumber(Input& input)
{
    const int kind = input.takeUpTo(3);
    if (kind == 0)
        return input.take<double>();
    const double magnitude = std::pow(10.0, input.take<std::int8_t>() / 8);
    return kind == 1 ? 0 : magnitude * (1 + input.take<std::uint8_t>() / 255.0);
}

/// Any sheet with at most this number of samples.
inline decay::CellText takeSheet(Input& input, int mostSamples)
{
    std::vector<std::string> cells;
    for (int columns = input.takeUpTo(mostSamples), cell = 0; cell < 9 * columns; ++cell)
        cells.push_back(cell % 9 == 1 ? std::to_string(input.takeUpTo(4)) : fit::plainText(takeNumber(input)));
    return [cells](int row, int column) {
        const auto index = static_cast<std::size_t>((column - 1) * 9 + row - 1);
        return index < cells.size() ? cells[index] : std::string();
    };
}

} // namespace fuzz
