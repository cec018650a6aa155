#pragma once

#include "fit/gaussnewton.h"
#include "models/mixture.h"

#include <vector>

/// Decay laws of a quenched probe. Every law divides the excited probes into populations, and quenching adds a
/// different rate to each. Therefore a quenched decay is again a sum of exponentials in every model.
namespace models
{

/// A population of excited probes: its weight, and the rate in s^-1 that quenching adds to each of its decay rates.
struct Population {
    double weight = 0;
    double addedRate = 0;
};

/// All populations. The fraction of a population is its weight divided by the total; the total is 1 if the weights are
/// fractions.
struct Populations {
    std::vector<Population> members;
    double total = 1;
};

/// How a law is evaluated.
enum class Evaluation {
    AsWritten, // to the last bit the value of the written formula
    Fast,      // several times faster; the last digits differ
};

// In all laws: Q total quencher, M. K association constant, M^-1. kq1 rate constant through the complex, s^-1. kq2
// collisional rate constant, M^-1 s^-1. Without quencher no law changes the decay.

/// Collisions only. Law: O. Stern, M. Volmer, Phys. Z. 20 (1919) 183.
Populations dynamicDecay(double Q, double kq2);

/// A 1:1 complex that decays faster by kq1, and collisions of the free probe with the free quencher.
/// kq1 = 0 and kq2 = 0: no quenching at all; kq1 -> infinity: the complex is dark.
Populations complexAndDynamicDecay(const Mixture& mix, double K, double kq1, double kq2);

/// A dark 1:1 complex binds part of the quencher, which then does not collide. The amplitude of the free probe is not
/// reduced, because a normalised decay does not show probes that never emit.
Populations darkComplexDecay(const Mixture& mix, double K, double kq2);

/// The complex alone: complexAndDynamicDecay without collisions.
Populations complexDecay(const Mixture& mix, double K, double kq1);

/// Sphere of action: a fraction exp(-K Q) has no quencher nearby and is quenched by collisions only; the rest decays
/// faster by kq1.
/// Law: F. Perrin, C. R. Acad. Sci. 178 (1924) 1978.
Populations sphereAndDynamicDecay(double Q, double K, double kq1, double kq2);

/// Only probes without a quencher in their sphere of action emit; they collide with the remaining quencher.
Populations darkSphereDecay(double Q, double K, double kq2);

/// The sphere of action without collisions.
Populations sphereDecay(double Q, double K, double kq1);

/// Poisson-distributed number of quenchers beside the probe with mean K Q. Each adds kq1; probes with none are quenched
/// by collisions. The series stops at a cumulative probability of 0.99. kq1 -> infinity: only the probes without a
/// quencher emit.
/// Law: P. P. Infelta, M. Graetzel, J. K. Thomas, J. Phys. Chem. 78 (1974) 190.
Populations poissonAndDynamicDecay(double Q, double K, double kq1, double kq2,
                                   Evaluation evaluation = Evaluation::AsWritten);

/// The Poisson law without collisions; its series stops at 0.95.
Populations poissonDecay(double Q, double K, double kq1, Evaluation evaluation = Evaluation::AsWritten);

/// Two sites with populations 1 : F and collisional rate constants kq2 and kq22. F = 0: all probes are in the first
/// site.
/// Law: S. S. Lehrer, Biochemistry 10 (1971) 3254.
Populations twoSiteDecay(double Q, double F, double kq2, double kq22);

/// Two sites; the quencher cannot reach the second.
Populations oneOfTwoSitesDecay(double Q, double F, double kq2);

/// 1 * 2 * ... * x, and 1 for x <= 1. Kept as a given name, although the laws multiply term by term.
double Factorial(double x);

/// How the populations of a model combine to a decay.
enum class Composition {
    None,          // the model has no decay law
    Shared,        // every population has all components of the reference
    PoissonSeries, // as Shared; from the second population on, added rates are 1, 2, 3, ... times that of the second
    Sites,         // population i has component i, or the only component, and its weight replaces the amplitude
};

/// The arguments of a decay law.
struct DecayArguments {
    double Q = 0;        // total quencher, M
    double Cp = 0;       // total probe, M
    fit::Parameters p{}; // real values in fitting order, slots 1..3
    Evaluation evaluation = Evaluation::AsWritten;
};
using DecayLaw = Populations (*)(const DecayArguments& arguments);

} // namespace models
