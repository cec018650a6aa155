#pragma once

#include "exports/csvtext.h"

#include <optional>

namespace exports
{

/// Where the numbers of a table come from.
struct Head {
    std::string analysis{};             // "Stern-Volmer Analysis, Model 3"; empty: no analysis
    std::string assumption{};           // a sentence about the errors; empty: none is made
    std::optional<double> tau0{}, Cp{}; // lifetime without quencher, s; total probe, M
    bool older = false;                 // the sheet has other data by now
};

/// The first rows of a file, with the program's version; an empty row ends them.
Rows headRows(const Head& head);

} // namespace exports
