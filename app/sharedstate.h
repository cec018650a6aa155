#pragma once

#include "app/resultstore.h"
#include "app/settings.h"
#include "decay/sampletable.h"

namespace app
{

inline constexpr int kFitRegionOwn = 2;       // every sample is fitted up to its own end time
inline constexpr int kFitRegionThreshold = 1; // every sample is fitted over the whole grid

/// What commands and windows share, one copy per program.
struct SharedState {
    Settings settings;
    decay::SampleTable samples;
    ResultStore results;
    int FitRegionMode = kFitRegionOwn;
    bool DataNormalized = false; // Normalization has run on the sheet as it stands
};

} // namespace app
