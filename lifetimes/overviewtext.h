#pragma once

#include "lifetimes/overview.h"
#include "trust/titledrows.h"

namespace lifetimes
{

/// What does not depend on a chosen model, in words and tables.
struct OverviewText {
    std::string finding;            // one or two sentences
    std::string remarks;            // sentences, may be empty
    std::string errors;             // what is assumed about errors
    trust::TitledRows samples;      // Q, Φ0/Φ, lifetimes and τ0/τ of every sample
    trust::TitledRows staticFactor; // s and its two signs with standard errors; empty without pairs
    trust::TitledRows ranking;      // all models, best first
};
OverviewText overviewText(const Overview& overview);

/// Decay-curve analyses and this fit count the quencher for collisions differently in some models.
extern const std::string_view kDecayWarning;

/// The whole text for the clipboard.
std::string plainText(const OverviewText& text);

} // namespace lifetimes
