#pragma once

#include "preparation/typedseries.h"

#include <variant>

namespace preparation
{

struct Sample {
    std::vector<double> readings; // at least one
    std::size_t blank = 0;        // its place among the blanks
    double Aex = 0, Aem = 0;      // 1 cm
    double added = 0;             // volume since the sample before
};

/// A series as numbers. What a step that is not made needs has its default.
struct Series {
    Steps steps;
    double V0 = 1;
    double stock = 0;                        // M
    std::vector<std::vector<double>> blanks; // the readings of each; a single 0 if no blank is subtracted
    std::vector<Sample> samples;             // the reference first
};

struct Cell {
    int sample = 0; // 1, 2, ...
    Entry entry{};
};
enum class Box { V0, Stock };
using Place = std::variant<Cell, Box>;

/// Why typed data cannot be used.
struct Refusal {
    Place place;
    std::string text; // names the place, too
};
Refusal refused(const Place& place, const std::string& reason);

/// Reads the samples up to the last one for which a used entry is typed.
std::variant<Series, Refusal> readSeries(const TypedSeries& typed);

} // namespace preparation
