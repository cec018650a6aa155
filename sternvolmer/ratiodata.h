#pragma once

#include "decay/sampletable.h"
#include "sternvolmer/ratiopoints.h"

namespace sternvolmer
{

/// The data of the sheet for Stern-Volmer commands.
struct RatioData {
    decay::SampleTable samples;
    bool complete = false;      // every sample read has its intensity, and the reference its components
    bool referenceFirst = true; // the first column is at 0 M
    int incompleteColumn = 0;   // the first one in which something is missing; 0: none
    double Xmax = 0;            // largest concentration, M
    double Ymax = 0;            // largest ratio, at least 1
    double tau0 = 0;            // mean lifetime of the reference, s
};

/// Reads the sample columns of the sheet up to the first column without a concentration. A column with an intensity
/// that is not positive also ends the data and makes them incomplete.
RatioData readSternVolmerData(const decay::CellText& cell);

/// Fills SVRatio of every sample, Xmax, Ymax and tau0 of complete data.
void computeRatios(RatioData& data);

/// True if every number that the fit uses is finite.
bool allFinite(const RatioData& data);

/// The points of complete data whose ratios are computed; slots beyond them keep what earlier points left there.
RatioPoints pointsOf(const RatioData& data, const RatioPoints& earlier = {});

/// Mean of the lifetimes, weighted by the amplitudes, s.
double meanLifetime(const decay::SampleRecord& record);

} // namespace sternvolmer
