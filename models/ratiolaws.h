#pragma once

#include "fit/gaussnewton.h"
#include "models/freequencher.h"

#include <cmath>
#include <limits>
#include <span>

/// Ratios F0/F of the intensity without quencher to the intensity with it. All are dimensionless and 1 at x = 0.
/// x: total quencher, M. tau0: lifetime without quencher, s. Cp: total probe, M. K: association constant, M^-1 (not 0
/// in the laws of the 1:1 complex). kq1: rate constant through the complex, s^-1. kq2: collisional rate constant, M^-1
/// s^-1. F: population of the second site relative to the first. They are inline, so that the compiler calculates
/// factors that do not depend on x once for many x.
namespace models
{

/// Ratio 1 + K Cp of total to free quencher if each probe binds quencher with constant K.
inline double dilution(double Cp, double K) { return Cp * K + 1.0; }

/// exp(y) for a denominator: NaN instead of infinity, because an infinite denominator would vanish in the quotient.
inline double expBelow(double y)
{
    const double e = std::exp(y);
    return std::isinf(e) ? std::numeric_limits<double>::quiet_NaN() : e;
}

/// Collisions only; linear in x.
/// Law: O. Stern, M. Volmer, Phys. Z. 20 (1919) 183.
inline double dynamicRatio(double x, double tau0, double kq2) { return kq2 * tau0 * x + 1.0; }

/// A 1:1 complex that decays faster by kq1, and collisions of the free probe.
/// kq1 -> infinity: darkComplexRatio. Law: steady state of both species, free quencher from the mass balance.
inline double complexAndDynamicRatio(double x, double tau0, double Cp, double K, double kq1, double kq2)
{
    const double Qf = FreeQuencher(x, K, Cp);
    const double collisions = tau0 * kq2 * Qf + 1.0;
    return collisions * (K * Qf + 1.0) / (K / (kq1 * tau0 + 1.0) * Qf * collisions + 1.0);
}

/// A dark 1:1 complex and collisions: the product of both ratios.
/// K -> 0: dynamicRatio. Law: J. R. Lakowicz, Principles of Fluorescence Spectroscopy, combined quenching.
inline double darkComplexAndDynamicRatio(double x, double tau0, double Cp, double K, double kq2)
{
    const double Qf = FreeQuencher(x, K, Cp);
    return (kq2 * tau0 * Qf + 1.0) * (K * Qf + 1.0);
}

/// A 1:1 complex that decays faster by kq1, without collisions. kq1 = 0: 1; kq1 -> infinity: darkComplexRatio.
inline double complexRatio(double x, double tau0, double Cp, double K, double kq1)
{
    const double Qf = FreeQuencher(x, K, Cp);
    return (K * Qf + 1.0) / (K / (kq1 * tau0 + 1.0) * Qf + 1.0);
}

/// A dark 1:1 complex without collisions. Cp = 0: the straight line K x + 1.
inline double darkComplexRatio(double x, double Cp, double K) { return K * FreeQuencher(x, K, Cp) + 1.0; }

/// Sphere of action inside which the probe decays faster by kq1; outside it collides.
/// K -> 0: dynamicRatio. Law: F. Perrin, C. R. Acad. Sci. 178 (1924) 1978, with the quencher shared among probes.
inline double sphereAndDynamicRatio(double x, double tau0, double Cp, double K, double kq1, double kq2)
{
    const double D = dilution(Cp, K);
    const double E = expBelow(-K * x / D);
    const double T = kq2 * tau0;
    return (x * T + D) * (tau0 * kq1 + 1.0) / ((D * kq1 - x * kq2) * tau0 * E + x * T + D);
}

/// A dark sphere of action and collisions. kq2 = 0: darkSphereRatio.
inline double darkSphereAndDynamicRatio(double x, double tau0, double Cp, double K, double kq2)
{
    const double D = dilution(Cp, K);
    return (kq2 * tau0 * x / D + 1.0) * std::exp(K * x / D);
}

/// Sphere of action inside which the probe decays faster by kq1. kq1 = 0: 1.
inline double sphereRatio(double x, double tau0, double Cp, double K, double kq1)
{
    const double E = expBelow(-K * x / dilution(Cp, K));
    return (tau0 * kq1 + 1.0) / (tau0 * kq1 * E + 1.0);
}

/// A dark sphere of action. Cp = 0: exp(K x).
inline double darkSphereRatio(double x, double Cp, double K) { return std::exp(K * x / dilution(Cp, K)); }

/// Poisson-distributed number of quenchers beside the probe, and collisions, to first order in kq1. K = 0:
/// dynamicRatio.
inline double poissonAndDynamicRatio(double x, double tau0, double Cp, double K, double kq1, double kq2)
{
    const double D = dilution(Cp, K);
    const double E = expBelow(-K * x / D);
    const double collisions = tau0 * kq2 * x / D;
    return (collisions + 1.0) / (tau0 * kq2 * x * (1.0 - E) / D + 1.0 - kq1 * tau0 * K * x / D);
}

/// Poisson-distributed number of quenchers beside the probe, to first order in kq1. kq1 = 0: 1.
inline double poissonRatio(double x, double tau0, double Cp, double K, double kq1)
{
    return 1.0 / (1.0 - kq1 * tau0 * K * x / dilution(Cp, K));
}

/// Two sites with collisional constants kq2 and kq22. F = 0: dynamicRatio of the first; kq2 = kq22: dynamicRatio.
/// Law: S. S. Lehrer, Biochemistry 10 (1971) 3254.
inline double twoSiteRatio(double x, double tau0, double F, double kq2, double kq22)
{
    const double w = 1.0 / (F + 1.0); // fraction of the first site
    const double u = 1.0 - w;
    return (tau0 * kq22 * x + 1.0) * (tau0 * kq2 * x + 1.0) / ((u * kq2 + w * kq22) * tau0 * x + 1.0);
}

/// Two sites; the quencher cannot reach the second. F = 0: dynamicRatio; F -> infinity: 1.
inline double oneOfTwoSitesRatio(double x, double tau0, double F, double kq2)
{
    const double u = 1.0 - 1.0 / (F + 1.0); // fraction of the second site
    return (tau0 * kq2 * x + 1.0) / (u * kq2 * tau0 * x + 1.0);
}

/// The arguments of a ratio law besides the quencher.
struct RatioArguments {
    double tau0 = 0;     // s
    double Cp = 0;       // total probe, M
    fit::Parameters p{}; // real values in fitting order, slots 1..3
};

/// A law at many x; ratio must have the size of x.
using RatioLaw = void (*)(std::span<const double> x, const RatioArguments& arguments, double* ratio);

template <double (*ratioAt)(double x, const RatioArguments&)>
void everywhere(std::span<const double> x, const RatioArguments& arguments, double* ratio)
{
    const RatioArguments v = arguments;
    for (std::size_t i = 0; i < x.size(); ++i)
        ratio[i] = ratioAt(x[i], v);
}

} // namespace models
