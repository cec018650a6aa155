#pragma once

#include <span>

/// Ratios F0/F of the intensity without quencher to the intensity with it. All are dimensionless and 1 at x = 0.
/// x: total quencher, M. tau0: lifetime without quencher, s. Cp: total probe, M. K: association constant, M^-1 (not 0
/// in the laws of the 1:1 complex). kq1: rate constant through the complex, s^-1. kq2: collisional rate constant,
/// M^-1 s^-1. F: population of the second site relative to the first.
namespace sternvolmer
{

/// Collisions only; linear in x.
/// Law: O. Stern, M. Volmer, Phys. Z. 20 (1919) 183.
double dynamicRatio(double x, double tau0, double kq2);

/// A 1:1 complex that decays faster by kq1, and collisions of the free probe.
/// kq1 -> infinity: darkComplexRatio. Law: steady state of both species, free quencher from the mass balance.
double complexAndDynamicRatio(double x, double tau0, double Cp, double K, double kq1, double kq2);

/// A dark 1:1 complex and collisions: the product of both ratios.
/// K -> 0: dynamicRatio. Law: J. R. Lakowicz, Principles of Fluorescence Spectroscopy, combined quenching.
double darkComplexAndDynamicRatio(double x, double tau0, double Cp, double K, double kq2);

/// A 1:1 complex that decays faster by kq1, without collisions. kq1 = 0: 1; kq1 -> infinity: darkComplexRatio.
double complexRatio(double x, double tau0, double Cp, double K, double kq1);

/// A dark 1:1 complex without collisions. Cp = 0: the straight line K x + 1.
double darkComplexRatio(double x, double Cp, double K);

/// Sphere of action inside which the probe decays faster by kq1; outside it collides.
/// K -> 0: dynamicRatio. Law: F. Perrin, C. R. Acad. Sci. 178 (1924) 1978, with the quencher shared among probes.
double sphereAndDynamicRatio(double x, double tau0, double Cp, double K, double kq1, double kq2);

/// A dark sphere of action and collisions. kq2 = 0: darkSphereRatio.
double darkSphereAndDynamicRatio(double x, double tau0, double Cp, double K, double kq2);

/// Sphere of action inside which the probe decays faster by kq1. kq1 = 0: 1.
double sphereRatio(double x, double tau0, double Cp, double K, double kq1);

/// A dark sphere of action. Cp = 0: exp(K x).
double darkSphereRatio(double x, double Cp, double K);

/// Quenchers in Poisson numbers beside the probe and collisions, to first order in kq1. K = 0: dynamicRatio.
double poissonAndDynamicRatio(double x, double tau0, double Cp, double K, double kq1, double kq2);

/// Quenchers in Poisson numbers beside the probe, to first order in kq1. kq1 = 0: 1.
double poissonRatio(double x, double tau0, double Cp, double K, double kq1);

/// Two sites with collisional constants kq2 and kq22. F = 0: dynamicRatio of the first; kq2 = kq22: dynamicRatio.
/// Law: S. S. Lehrer, Biochemistry 10 (1971) 3254.
double twoSiteRatio(double x, double tau0, double F, double kq2, double kq22);

/// Two sites of which the second is out of reach. F = 0: dynamicRatio; F -> infinity: 1.
double oneOfTwoSitesRatio(double x, double tau0, double F, double kq2);

/// The ratio of a model 1..13, in the order above, with its parameters in fitting order: K (F for two sites) first,
/// then kq1, kq2, kq22 as far as the model has them. Any other number gives 0.
double ratio(int model, double x, double tau0, double Cp, double p1, double p2, double p3);

/// The same at many x; one place in ratio for each.
void ratios(int model, std::span<const double> x, double tau0, double Cp, double p1, double p2, double p3,
            std::span<double> ratio);

} // namespace sternvolmer
