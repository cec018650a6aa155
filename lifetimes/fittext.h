#pragma once

#include "lifetimes/overview.h"
#include "trust/titledrows.h"

namespace lifetimes
{

/// The fit of one model in words and tables.
struct FitText {
    std::string heading;            // "Model 3: a dark complex, and collisions"
    std::string verdict;            // "at a minimum"
    trust::TitledRows constants;    // value, standard error for an exact and for a measured tau0, 95 % intervals
    trust::TitledRows figures;      // name, value
    trust::TitledRows correlations; // names along both sides; empty with fewer than two constants
    trust::TitledRows residuals;    // Q and relative residuals of both kinds, %
    std::string sentence;           // for a paper
};
/// "at a minimum", what the data do not determine, or how many other solutions fit as well.
std::string verdict(const CombinedFit& fit);

FitText fitText(const Overview& overview, const CombinedFit& fit);

/// The whole text for the clipboard.
std::string plainText(const FitText& text);

} // namespace lifetimes
