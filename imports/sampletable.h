#pragma once

#include "imports/layout.h"

namespace imports
{

enum class Reading {
    Fine,
    NotANumber,
    BothSigns,   // with a point another number than with a comma
    ForeignUnit, // of another quantity
};

/// A cell of the sheet and where it comes from.
struct SampleCell {
    std::string text;        // for the sheet
    std::string source{};    // as the table has it
    int row = 0, column = 0; // in the table, from 1 on; 0: the cell follows from others
    Reading reading = Reading::Fine;
};

/// By row of the sheet; slot 0 holds the added volume.
using SampleColumn = std::array<SampleCell, decay::kPhiRow + 1>;

struct SampleList {
    std::vector<SampleColumn> samples;
    std::vector<std::string> notes;   // on columns: units that nobody named, and what is not used
    std::vector<std::string> remarks; // on cells: what is not read, by row and column
    bool waitsForSign = false;        // a cell fits both decimal signs
};

/// The samples of a table: numbers in the units of the sheet, and the count of components that they have. A row without
/// a concentration is left out and named, unless the table has added volumes instead.
SampleList readSamples(const FoundTable& table);

/// Why a cell is not read as it stands; empty if it is.
std::string remarkOn(const SampleCell& cell);

} // namespace imports
