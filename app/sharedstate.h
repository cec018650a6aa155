#pragma once

#include "app/resultstore.h"
#include "app/settings.h"
#include "decay/normalization.h"
#include "trust/leastsums.h"

#include <optional>

namespace app
{

/// The state that commands and windows share; one copy per program.
struct SharedState {
    Settings settings;
    std::optional<decay::SampleTable> samples; // the result of the last Normalization; none before the first
    ResultStore results;
    trust::LeastSums leastSums; // so that no window contradicts another one
    int FitRegionMode = decay::kFitRegionOwn;
    bool DataNormalized = false; // the sheet was not edited after Normalization
};

} // namespace app
