#pragma once

#include "imports/cells.h"
#include "imports/quantities.h"
#include "imports/spellednumber.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace imports
{

/// What the user decided; the rest is found in the text.
struct Choices {
    std::optional<Separator> separator{};
    std::optional<bool> samplesInColumns{};
    std::optional<int> firstRow{};
    std::optional<DecimalSign> decimalSign{};
    std::string comment = "#"; // with which a comment line starts; empty: there are none
    std::array<std::optional<int>, kQuantities> columns{};
    std::array<std::optional<Unit>, kQuantities> units{};
    bool operator==(const Choices&) const = default;
};

/// How a table is read.
struct Layout {
    Separator separator = Separator::Tab;
    bool samplesInColumns = false;
    int firstRow = 1; // of the data; the first column if samples stand in columns
    DecimalSign decimalSign = DecimalSign::Point;
    bool signIsCertain = true;                   // otherwise a number that fits both signs needs a choice
    std::array<int, kQuantities> columns{};      // 0: none
    std::array<Unit, kQuantities> units{};       // of numbers without a unit of their own
    std::array<bool, kQuantities> unitIsKnown{}; // chosen or found; otherwise it is the unit of the sheet
};

struct FoundTable {
    Cells cells; // each row a sample; turned if samples stand in columns
    std::vector<std::string> titles;
    Layout layout;
};

/// Whether a column of the cells has a number in the data.
bool hasNumbers(const FoundTable& table, int column);

/// Reads a text of UTF-8 with LF as its line end, as it is chosen and found.
FoundTable findTable(std::string_view text, const Choices& choices);

} // namespace imports
