#include "sternvolmer/models.h"

#include "decay/freequencher.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace sternvolmer
{
namespace
{

/// Total over free binding sites when each probe takes up quencher with constant K.
double dilution(double Cp, double K) { return Cp * K + 1.0; }

/// exp(y) for a denominator, where an overflow would vanish in the quotient: not a number instead of infinity.
double expBelow(double y)
{
    const double e = std::exp(y);
    return std::isinf(e) ? std::numeric_limits<double>::quiet_NaN() : e;
}

} // namespace

double dynamicRatio(double x, double tau0, double kq2) { return kq2 * tau0 * x + 1.0; }

double complexAndDynamicRatio(double x, double tau0, double Cp, double K, double kq1, double kq2)
{
    const double Qf = decay::FreeQuencher(x, K, Cp);
    const double collisions = tau0 * kq2 * Qf + 1.0;
    return collisions * (K * Qf + 1.0) / (K / (kq1 * tau0 + 1.0) * Qf * collisions + 1.0);
}

double darkComplexAndDynamicRatio(double x, double tau0, double Cp, double K, double kq2)
{
    const double Qf = decay::FreeQuencher(x, K, Cp);
    return (kq2 * tau0 * Qf + 1.0) * (K * Qf + 1.0);
}

double complexRatio(double x, double tau0, double Cp, double K, double kq1)
{
    const double Qf = decay::FreeQuencher(x, K, Cp);
    return (K * Qf + 1.0) / (K / (kq1 * tau0 + 1.0) * Qf + 1.0);
}

double darkComplexRatio(double x, double Cp, double K) { return K * decay::FreeQuencher(x, K, Cp) + 1.0; }

double sphereAndDynamicRatio(double x, double tau0, double Cp, double K, double kq1, double kq2)
{
    const double D = dilution(Cp, K);
    const double E = expBelow(-K * x / D);
    const double T = kq2 * tau0;
    return (x * T + D) * (tau0 * kq1 + 1.0) / ((D * kq1 - x * kq2) * tau0 * E + x * T + D);
}

double darkSphereAndDynamicRatio(double x, double tau0, double Cp, double K, double kq2)
{
    const double D = dilution(Cp, K);
    return (kq2 * tau0 * x / D + 1.0) * std::exp(K * x / D);
}

double sphereRatio(double x, double tau0, double Cp, double K, double kq1)
{
    const double E = expBelow(-K * x / dilution(Cp, K));
    return (tau0 * kq1 + 1.0) / (tau0 * kq1 * E + 1.0);
}

double darkSphereRatio(double x, double Cp, double K) { return std::exp(K * x / dilution(Cp, K)); }

double poissonAndDynamicRatio(double x, double tau0, double Cp, double K, double kq1, double kq2)
{
    const double D = dilution(Cp, K);
    const double E = expBelow(-K * x / D);
    const double collisions = tau0 * kq2 * x / D;
    return (collisions + 1.0) / (tau0 * kq2 * x * (1.0 - E) / D + 1.0 - kq1 * tau0 * K * x / D);
}

double poissonRatio(double x, double tau0, double Cp, double K, double kq1)
{
    return 1.0 / (1.0 - kq1 * tau0 * K * x / dilution(Cp, K));
}

double twoSiteRatio(double x, double tau0, double F, double kq2, double kq22)
{
    const double w = 1.0 / (F + 1.0); // share of the first site
    const double u = 1.0 - w;
    return (tau0 * kq22 * x + 1.0) * (tau0 * kq2 * x + 1.0) / ((u * kq2 + w * kq22) * tau0 * x + 1.0);
}

double oneOfTwoSitesRatio(double x, double tau0, double F, double kq2)
{
    const double u = 1.0 - 1.0 / (F + 1.0); // share of the second site
    return (tau0 * kq2 * x + 1.0) / (u * kq2 * tau0 * x + 1.0);
}

namespace
{

struct Arguments {
    double tau0, Cp;
    double p1, p2, p3;
};
using Points = std::span<const double>;
using Law = void (*)(Points, const Arguments&, double*);

/// A law as a function of arrays, so that what does not depend on x is worked out once.
template <double (*ratioAt)(double x, const Arguments&)>
void everywhere(Points x, const Arguments& arguments, double* ratio)
{
    const Arguments v = arguments;
    for (std::size_t i = 0; i < x.size(); ++i)
        ratio[i] = ratioAt(x[i], v);
}

// Row number = model number.
constexpr std::array<Law, 14> kLaws{
    nullptr,
    everywhere<[](double x, const Arguments& v) { return dynamicRatio(x, v.tau0, v.p1); }>,
    everywhere<[](double x, const Arguments& v) { return complexAndDynamicRatio(x, v.tau0, v.Cp, v.p1, v.p2, v.p3); }>,
    everywhere<[](double x, const Arguments& v) { return darkComplexAndDynamicRatio(x, v.tau0, v.Cp, v.p1, v.p2); }>,
    everywhere<[](double x, const Arguments& v) { return complexRatio(x, v.tau0, v.Cp, v.p1, v.p2); }>,
    everywhere<[](double x, const Arguments& v) { return darkComplexRatio(x, v.Cp, v.p1); }>,
    everywhere<[](double x, const Arguments& v) { return sphereAndDynamicRatio(x, v.tau0, v.Cp, v.p1, v.p2, v.p3); }>,
    everywhere<[](double x, const Arguments& v) { return darkSphereAndDynamicRatio(x, v.tau0, v.Cp, v.p1, v.p2); }>,
    everywhere<[](double x, const Arguments& v) { return sphereRatio(x, v.tau0, v.Cp, v.p1, v.p2); }>,
    everywhere<[](double x, const Arguments& v) { return darkSphereRatio(x, v.Cp, v.p1); }>,
    everywhere<[](double x, const Arguments& v) { return poissonAndDynamicRatio(x, v.tau0, v.Cp, v.p1, v.p2, v.p3); }>,
    everywhere<[](double x, const Arguments& v) { return poissonRatio(x, v.tau0, v.Cp, v.p1, v.p2); }>,
    everywhere<[](double x, const Arguments& v) { return twoSiteRatio(x, v.tau0, v.p1, v.p2, v.p3); }>,
    everywhere<[](double x, const Arguments& v) { return oneOfTwoSitesRatio(x, v.tau0, v.p1, v.p2); }>,
};

} // namespace

void ratios(int model, std::span<const double> x, double tau0, double Cp, double p1, double p2, double p3,
            std::span<double> ratio)
{
    if (model < 1 || model >= static_cast<int>(kLaws.size()))
        std::fill(ratio.begin(), ratio.end(), 0.0);
    else
        kLaws[static_cast<std::size_t>(model)](x, {tau0, Cp, p1, p2, p3}, ratio.data());
}

double ratio(int model, double x, double tau0, double Cp, double p1, double p2, double p3)
{
    double result = 0;
    ratios(model, {&x, 1}, tau0, Cp, p1, p2, p3, {&result, 1});
    return result;
}

} // namespace sternvolmer
