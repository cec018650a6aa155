#pragma once

#include "fit/gaussnewton.h"
#include "models/mixture.h"

#include <cmath>
#include <limits>
#include <span>

/// Ratios F0/F of the intensity without quencher to the intensity with it. All are dimensionless and 1 at Q = 0. K:
/// association constant, M^-1 (not 0 in the laws of the 1:1 complex). kq1: rate constant through the complex, s^-1.
/// kq2: collisional rate constant, M^-1 s^-1. F: population of the second site relative to the first. They are inline,
/// so that the compiler calculates factors that do not depend on Q once for many Q.
namespace models
{

/// Ratio 1 + K Cp of total to free quencher if each probe binds quencher with constant K.
inline double dilution(const Mixture& mix, double K) { return mix.Cp * K + 1.0; }

/// exp(y) for a denominator: NaN instead of infinity, because an infinite denominator would vanish in the quotient.
inline double expBelow(double y)
{
    const double e = std::exp(y);
    return std::isinf(e) ? std::numeric_limits<double>::quiet_NaN() : e;
}

/// Collisions only; linear in Q.
/// Law: O. Stern, M. Volmer, Phys. Z. 20 (1919) 183.
inline double dynamicRatio(const Mixture& mix, double kq2) { return kq2 * mix.tau0 * mix.Q + 1.0; }

/// A 1:1 complex that decays faster by kq1, and collisions of the free probe.
/// kq1 -> infinity: darkComplexRatio. Law: steady state of both species, free quencher from the mass balance.
inline double complexAndDynamicRatio(const Mixture& mix, double K, double kq1, double kq2)
{
    const double Qf = FreeQuencher(mix, K);
    const double collisions = mix.tau0 * kq2 * Qf + 1.0;
    return collisions * (K * Qf + 1.0) / (K / (kq1 * mix.tau0 + 1.0) * Qf * collisions + 1.0);
}

/// A dark 1:1 complex and collisions: the product of both ratios.
/// K -> 0: dynamicRatio. Law: J. R. Lakowicz, Principles of Fluorescence Spectroscopy, combined quenching.
inline double darkComplexAndDynamicRatio(const Mixture& mix, double K, double kq2)
{
    const double Qf = FreeQuencher(mix, K);
    return (kq2 * mix.tau0 * Qf + 1.0) * (K * Qf + 1.0);
}

/// Ratio tau0/tau of lifetimes where a dark 1:1 complex binds part of the quencher: the free probe collides with the
/// rest. K -> 0: dynamicRatio.
inline double darkComplexLifetimeRatio(const Mixture& mix, double K, double kq2)
{
    return kq2 * mix.tau0 * FreeQuencher(mix, K) + 1.0;
}

/// A 1:1 complex that decays faster by kq1, without collisions. kq1 = 0: 1; kq1 -> infinity: darkComplexRatio.
inline double complexRatio(const Mixture& mix, double K, double kq1)
{
    const double Qf = FreeQuencher(mix, K);
    return (K * Qf + 1.0) / (K / (kq1 * mix.tau0 + 1.0) * Qf + 1.0);
}

/// A dark 1:1 complex without collisions. Cp = 0: the straight line K Q + 1.
inline double darkComplexRatio(const Mixture& mix, double K) { return K * FreeQuencher(mix, K) + 1.0; }

/// Sphere of action inside which the probe decays faster by kq1; outside it collides.
/// K -> 0: dynamicRatio. Law: F. Perrin, C. R. Acad. Sci. 178 (1924) 1978, with the quencher shared among probes.
inline double sphereAndDynamicRatio(const Mixture& mix, double K, double kq1, double kq2)
{
    const double D = dilution(mix, K);
    const double E = expBelow(-K * mix.Q / D);
    const double T = kq2 * mix.tau0;
    return (mix.Q * T + D) * (mix.tau0 * kq1 + 1.0) / ((D * kq1 - mix.Q * kq2) * mix.tau0 * E + mix.Q * T + D);
}

/// A dark sphere of action and collisions. kq2 = 0: darkSphereRatio.
inline double darkSphereAndDynamicRatio(const Mixture& mix, double K, double kq2)
{
    const double D = dilution(mix, K);
    return (kq2 * mix.tau0 * mix.Q / D + 1.0) * std::exp(K * mix.Q / D);
}

/// Ratio tau0/tau of lifetimes where dark spheres bind part of the quencher: the probe collides with the rest, Q / D.
/// K = 0: dynamicRatio.
inline double darkSphereLifetimeRatio(const Mixture& mix, double K, double kq2)
{
    return kq2 * mix.tau0 * mix.Q / dilution(mix, K) + 1.0;
}

/// Sphere of action inside which the probe decays faster by kq1. kq1 = 0: 1.
inline double sphereRatio(const Mixture& mix, double K, double kq1)
{
    const double E = expBelow(-K * mix.Q / dilution(mix, K));
    return (mix.tau0 * kq1 + 1.0) / (mix.tau0 * kq1 * E + 1.0);
}

/// A dark sphere of action. Cp = 0: exp(K Q).
inline double darkSphereRatio(const Mixture& mix, double K) { return std::exp(K * mix.Q / dilution(mix, K)); }

/// Poisson-distributed number of quenchers beside the probe, and collisions, to first order in kq1. K = 0:
/// dynamicRatio.
inline double poissonAndDynamicRatio(const Mixture& mix, double K, double kq1, double kq2)
{
    const double D = dilution(mix, K);
    const double E = expBelow(-K * mix.Q / D);
    const double collisions = mix.tau0 * kq2 * mix.Q / D;
    return (collisions + 1.0) / (mix.tau0 * kq2 * mix.Q * (1.0 - E) / D + 1.0 - kq1 * mix.tau0 * K * mix.Q / D);
}

/// Poisson-distributed number of quenchers beside the probe, to first order in kq1. kq1 = 0: 1.
inline double poissonRatio(const Mixture& mix, double K, double kq1)
{
    return 1.0 / (1.0 - kq1 * mix.tau0 * K * mix.Q / dilution(mix, K));
}

/// Two sites with collisional constants kq2 and kq22. F = 0: dynamicRatio of the first; kq2 = kq22: dynamicRatio.
/// Law: S. S. Lehrer, Biochemistry 10 (1971) 3254.
inline double twoSiteRatio(const Mixture& mix, double F, double kq2, double kq22)
{
    const double w = 1.0 / (F + 1.0); // fraction of the first site
    const double u = 1.0 - w;
    return (mix.tau0 * kq22 * mix.Q + 1.0) * (mix.tau0 * kq2 * mix.Q + 1.0) /
           ((u * kq2 + w * kq22) * mix.tau0 * mix.Q + 1.0);
}

/// Two sites; the quencher cannot reach the second. F = 0: dynamicRatio; F -> infinity: 1.
inline double oneOfTwoSitesRatio(const Mixture& mix, double F, double kq2)
{
    const double u = 1.0 - 1.0 / (F + 1.0); // fraction of the second site
    return (mix.tau0 * kq2 * mix.Q + 1.0) / (u * kq2 * mix.tau0 * mix.Q + 1.0);
}

/// Ratio tau0/tau of lifetimes where the probe that emits never meets a quencher: quenched probes are dark.
inline double unchangedLifetime() { return 1.0; }

/// The arguments of a ratio law besides the quencher.
struct RatioArguments {
    double tau0 = 0;     // s
    double Cp = 0;       // total probe, M
    fit::Parameters p{}; // real values in fitting order, slots 1..3
};

/// A law at many Q; ratio must have the size of Q.
using RatioLaw = void (*)(std::span<const double> Q, const RatioArguments& arguments, double* ratio);

template <double (*ratioAt)(const Mixture& mix, const fit::Parameters& p)>
void everywhere(std::span<const double> Q, const RatioArguments& arguments, double* ratio)
{
    const RatioArguments v = arguments;
    for (std::size_t i = 0; i < Q.size(); ++i)
        ratio[i] = ratioAt({Q[i], v.Cp, v.tau0}, v.p);
}

} // namespace models
