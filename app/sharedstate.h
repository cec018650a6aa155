#pragma once

#include "app/resultstore.h"
#include "app/settings.h"
#include "decay/normalization.h"

namespace app
{

/// What commands and windows share, one copy per program.
struct SharedState {
    Settings settings;
    decay::SampleTable samples;
    ResultStore results;
    int FitRegionMode = decay::kFitRegionOwn;
    bool DataNormalized = false; // Normalization has run on the sheet as it stands
};

} // namespace app
