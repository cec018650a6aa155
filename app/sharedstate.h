#pragma once

#include "app/resultstore.h"
#include "app/settings.h"
#include "decay/normalization.h"

#include <optional>

namespace app
{

/// What commands and windows share, one copy per program.
struct SharedState {
    Settings settings;
    std::optional<decay::SampleTable> samples; // as Normalization left them; none before it has run for the first time
    ResultStore results;
    int FitRegionMode = decay::kFitRegionOwn;
    bool DataNormalized = false; // Normalization has run on the sheet as it stands
};

} // namespace app
