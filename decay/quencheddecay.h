#pragma once

#include "decay/sampletable.h"
#include "models/catalogue.h"

#include <vector>

/// The decay of a quenched probe: a sum of exponentials, as all laws only add to the rates of the reference's
/// components.
namespace decay
{

/// The decay without quencher: components as in SampleRecord.
struct Reference {
    int components = 0;
    Components A{};
    Components Rate{}; // s^-1
};
Reference referenceOf(const SampleRecord& record);

struct Exponential {
    double amplitude = 0;
    double rate = 0; // s^-1
};
using MultiExponential = std::vector<Exponential>;

/// Intensity at time t, s.
double intensityAt(const MultiExponential& decay, double t);

/// factor * (sum of exponentials): what a law's formula has in one pair of brackets.
struct Bracket {
    double factor = 1;
    MultiExponential sum;
};
using Brackets = std::vector<Bracket>;

/// The decay of a model's populations as its formula has it. Multiplied out it would be the same but for the last
/// digits. Empty (0 at all times) without a decay law and for separate sites with three components, which two sites
/// cannot tell apart.
Brackets bracketsOf(models::Composition composition, const models::Populations& populations,
                    const Reference& reference);
/// The same of a model's law.
Brackets bracketsOf(int model, const models::DecayArguments& arguments, const Reference& reference);

/// Intensity at time t, s: the sum of all brackets from the first to the last.
double intensityAt(const Brackets& decay, double t);

/// The reference decay as a model's law changes it, multiplied out.
MultiExponential quenchedDecay(int model, const models::DecayArguments& arguments, const Reference& reference);

/// The law of a model at one time t, s, calculated as its formula is written.
double intensity(int model, double t, const models::DecayArguments& arguments, const Reference& reference);

} // namespace decay
