#pragma once

#include "decay/sampletable.h"

#include <string>
#include <vector>

namespace sternvolmer
{

/// What the sheet holds for Stern-Volmer work.
struct RatioData {
    decay::SampleTable samples;
    bool complete = false;      // every sample read has its intensity, and the reference its components
    bool referenceFirst = true; // the first column is at 0 M
    double Xmax = 0;            // largest concentration, M
    double Ymax = 0;            // largest ratio, at least 1
    double tau0 = 0;            // mean lifetime of the reference, s
};

/// Reads the sample columns of the sheet up to the first one without a concentration, or with an intensity that is
/// not above 0, which makes the data incomplete.
RatioData readSternVolmerData(const decay::CellText& cell);

/// Fills SVRatio of every sample, Xmax, Ymax and tau0 of complete data.
void computeRatios(RatioData& data);

/// What the user is told about data or a probe concentration (M) that cannot be used, in the order of showing.
/// None: go on.
std::vector<std::string> complaints(const RatioData& data, double Cp);

/// True when everything that was read or computed from it for the fit is a number.
bool allFinite(const RatioData& data);

/// Mean of the lifetimes, weighted by the amplitudes, s.
double meanLifetime(const decay::SampleRecord& record);

} // namespace sternvolmer
