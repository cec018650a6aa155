#pragma once

#include "decay/sampletable.h"

namespace decay
{

/// The data of the sheet for decay-curve commands.
struct DecayData {
    SampleTable samples;
    bool complete = false;         // no component count, amplitude or lifetime is missing
    int incompleteColumn = 0;      // the first one in which something is missing; 0: none
    bool siteModelRefused = false; // three components cannot be analysed with a two-site model
    bool usable() const { return complete && !siteModelRefused; }
};

/// Reads the sample columns of the sheet up to the first column without a concentration. FitRegionLevel is the fraction
/// of the initial intensity down to which decays are followed.
DecayData readDecayData(const CellText& cell, double FitRegionLevel, int model);

/// Divides each sample's amplitudes by their sum.
void normaliseAmplitudes(SampleTable& table);

/// Sum of A(k) exp(-t / Tau(k)), t in s; 0 without components.
double DecayIntensity(double t, const SampleRecord& record);

/// The same minus level.
double DecayLevelDifference(double t, double level, const SampleRecord& record);

/// Time between lo and hi, s, at which the decay reaches level, by bisection: the last midpoint. found: whether the
/// half width or the difference reached the tolerance within maxSteps.
double FindDecayTime(double lo, double hi, double level, double tolerance, const SampleRecord& record, int maxSteps,
                     bool& found);

inline constexpr int kFitRegionThreshold = 1; // every sample is fitted up to point 49
inline constexpr int kFitRegionOwn = 2;       // a sample is fitted up to the first grid point beyond its own TEnd

/// Fills TEnd, TimeMax, the common time grid, IExp with its logarithm, and LastFitIndex of every sample.
void BuildDecayCurves(SampleTable& table, int FitRegionMode);

} // namespace decay
