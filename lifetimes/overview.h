#pragma once

#include "lifetimes/finding.h"
#include "lifetimes/remarks.h"

#include <optional>
#include <string>
#include <vector>

namespace lifetimes
{

/// A model in the order of AICc.
struct Place {
    int model = 0;
    std::optional<CombinedFit> fit{};          // none: the model is not fitted
    std::optional<double> differenceToFirst{}; // of AICc
    std::string whyNotFitted{};                // in a few words; empty if it is fitted

    /// With as many constants as observations, or constants that the data do not determine, a model may not lead.
    bool mayLead() const { return fit && fit->AICc && fit->isDetermined(); }
};

/// All that intensities and lifetimes tell together.
struct Overview {
    Measurements measurements;
    ErrorRatio ratio{};
    std::vector<Place> places; // of all models, best first; those that are not fitted come last
    StaticFactor factor{};
    Finding finding{};
    std::vector<std::string> remarks{}; // sentences about missing and odd data
};

/// Fits all models. Neither measurements nor ratio may have a complaint. About 50 ms for 20 samples.
Overview overviewOf(const Measurements& measurements, const ErrorRatio& ratio);

} // namespace lifetimes
