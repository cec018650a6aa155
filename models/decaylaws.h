#pragma once

#include "fit/gaussnewton.h"

#include <vector>

/// Decay laws of a quenched probe. Every law divides the excited probes into populations that quenching speeds up by
/// different amounts, so a quenched decay is again a sum of exponentials, whatever the model.
namespace models
{

/// Some of the excited probes: their weight, and what quenching adds to each of their decay rates, s^-1.
struct Population {
    double weight = 0;
    double addedRate = 0;
};

/// All of them. The share of a population is its weight over the total, which is 1 where the weights are shares.
struct Populations {
    std::vector<Population> members;
    double total = 1;
};

/// How a law is worked out.
enum class Evaluation {
    AsWritten, // to the last bit as its formula is written
    Fast,      // several times faster; the last digits differ
};

// In all laws: Q total quencher, M. K association constant, M^-1. Cp total probe, M. kq1 rate constant through the
// complex, s^-1. kq2 collisional rate constant, M^-1 s^-1. Without quencher every law leaves the decay as it is.

/// Collisions only. Law: O. Stern, M. Volmer, Phys. Z. 20 (1919) 183.
Populations dynamicDecay(double Q, double kq2);

/// A 1:1 complex that decays faster by kq1, and collisions of the free probe with the free quencher.
/// kq1 = 0 and kq2 = 0: no quenching at all; kq1 -> infinity: the complex is dark.
Populations complexAndDynamicDecay(double Q, double Cp, double K, double kq1, double kq2);

/// A dark 1:1 complex takes part of the quencher away from the collisions. The amplitude of the free probe is not
/// reduced, because a normalised decay does not show what never emitted.
Populations darkComplexDecay(double Q, double Cp, double K, double kq2);

/// The complex alone: complexAndDynamicDecay without collisions.
Populations complexDecay(double Q, double Cp, double K, double kq1);

/// Sphere of action: a share exp(-K Q) has no quencher near it and only collides, the rest decays faster by kq1.
/// Law: F. Perrin, C. R. Acad. Sci. 178 (1924) 1978.
Populations sphereAndDynamicDecay(double Q, double K, double kq1, double kq2);

/// Probes outside the sphere of action alone, which collide with the quencher that is left.
Populations darkSphereDecay(double Q, double K, double kq2);

/// The sphere of action without collisions.
Populations sphereDecay(double Q, double K, double kq1);

/// Quenchers in Poisson numbers beside the probe, mean K Q; each adds kq1, and probes without one collide.
/// The series stops at a cumulative probability of 0.99. kq1 -> infinity: only the probes without a quencher emit.
/// Law: P. P. Infelta, M. Graetzel, J. K. Thomas, J. Phys. Chem. 78 (1974) 190.
Populations poissonAndDynamicDecay(double Q, double K, double kq1, double kq2,
                                   Evaluation evaluation = Evaluation::AsWritten);

/// The Poisson law without collisions; its series stops at 0.95.
Populations poissonDecay(double Q, double K, double kq1, Evaluation evaluation = Evaluation::AsWritten);

/// Two sites, populated 1 : F, that collide with kq2 and kq22. F = 0: all probes are in the first.
/// Law: S. S. Lehrer, Biochemistry 10 (1971) 3254.
Populations twoSiteDecay(double Q, double F, double kq2, double kq22);

/// Two sites of which the second is out of reach of the quencher.
Populations oneOfTwoSitesDecay(double Q, double F, double kq2);

/// 1 * 2 * ... * x, and 1 for x <= 1.
double Factorial(double x);

/// How the populations of a model make up a decay.
enum class Composition {
    None,          // the model has no decay law
    Shared,        // every population has all components of the reference
    PoissonSeries, // likewise; from the second population on added rates are 1, 2, 3, ... times that of the second
    Sites,         // population i has component i, or the only one, and its weight stands for the amplitude
};

/// What a decay law depends on.
struct DecayArguments {
    double Q = 0;        // total quencher, M
    double Cp = 0;       // total probe, M
    fit::Parameters p{}; // real values in fitting order, slots 1..3
    Evaluation evaluation = Evaluation::AsWritten;
};
using DecayLaw = Populations (*)(const DecayArguments& arguments);

} // namespace models
