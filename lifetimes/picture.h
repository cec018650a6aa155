#pragma once

#include "lifetimes/combinedfit.h"

#include <vector>

namespace lifetimes
{

struct PicturePoint {
    double Q = 0; // M
    double value = 0;
};

/// What is drawn of one kind. Samples in which it was not measured have no point.
struct PictureSeries {
    std::vector<PicturePoint> ratios;            // Φ0/Φ or τ0/τ
    std::vector<PicturePoint> ratiosByIntensity; // τ0/τ of means weighted by intensity; only of lifetimes
    std::vector<PicturePoint> line;              // of the model, from 0 to the largest Q
    std::vector<PicturePoint> residuals;         // ln observed - ln fitted, %
};

/// What is drawn of a kind. fit: nullptr leaves out line and residuals.
PictureSeries pictureOf(const Measurements& measurements, Kind kind, const CombinedFit* fit);

} // namespace lifetimes
