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

/// factor * (sum of exponentials), one pair of brackets in the formula of a law.
struct Bracket {
    double factor = 1;
    MultiExponential sum;
};
using Brackets = std::vector<Bracket>;

/// The decay of a model's populations in the form of its formula; multiplied out it would differ in the last digits.
/// Empty (0 at all times) without a decay law and for separate sites with three components, which two sites cannot
/// describe.
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
