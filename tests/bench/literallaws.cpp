#include "tests/bench/literallaws.h"

#include "fit/realparameters.h"

#include <cmath>

namespace literal
{
namespace
{

double Factorial(double x)
{
    double product = 1;
    double counter = 1;
    while (counter < x) {
        counter += 1;
        product *= counter;
    }
    return product;
}

double freeQuencher(double Q, double K, double Cp)
{
    const double b = 1 - K * Q + K * Cp;
    return (-b + std::sqrt(b * b + 4 * K * Q)) / (2 * K);
}

struct PoissonEnds {
    double addedWithoutQuencher; // s^-1
    double untilShare;
};

/// The two Poisson laws differ in the decay of probes without a quencher and in the end of the series.
double poissonTerms(const decay::SampleRecord& reference, Place place, const fit::Parameters& p, PoissonEnds ends)
{
    const auto [t, Q] = place;
    const double K = p[1], kq1 = p[2];
    const double m = K * Q;
    double sum = 0;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.NComp); ++k) {
        const double A = reference.A[k];
        const double Rate = reference.Rate[k];
        const double p0 = std::exp(-m);
        sum += p0 * A * std::exp(-(Rate + ends.addedWithoutQuencher) * t);
        double S = p0;
        double j = 1;
        do {
            const double pj = std::pow(m, j) * std::exp(-K * Q) / Factorial(j);
            sum += pj * A * std::exp(-(Rate + j * kq1) * t);
            S += pj;
            j += 1;
        } while (std::pow(m, j) < 1e200 && S < ends.untilShare);
    }
    return sum;
}

/// One component of the decay, for models that quench all components equally.
double component(const Law& law, std::size_t k, Place place, const fit::Parameters& p)
{
    const auto [t, Q] = place;
    const double A = law.reference.A[k], Rate = law.reference.Rate[k], Cp = law.Cp;
    const auto e = [Rate, t = t](double r) { return std::exp(-(Rate + r) * t); };
    switch (law.model) {
    case 1:
        return A * e(p[1] * Q);
    case 2: {
        const double Qf = freeQuencher(Q, p[1], Cp);
        return A / (1 + p[1] * Qf) * (e(p[3] * Qf) + p[1] * Qf * e(p[2]));
    }
    case 3:
        return A * e(p[2] * freeQuencher(Q, p[1], Cp));
    case 4: {
        const double Qf = freeQuencher(Q, p[1], Cp);
        return A / (1 + p[1] * Qf) * (e(0) + p[1] * Qf * e(p[2]));
    }
    case 6: {
        const double p0 = std::exp(-p[1] * Q);
        return A * (p0 * e(p[3] * (p0 * Q)) + (1 - p0) * e(p[2]));
    }
    case 7:
        return A * e(p[2] * (std::exp(-p[1] * Q) * Q));
    case 8: {
        const double p0 = std::exp(-p[1] * Q);
        return A * (p0 * e(0) + (1 - p0) * e(p[2]));
    }
    case 14: {
        const double f1 = 1 / (1 + p[1]);
        return A * (f1 * e(p[2] * Q) + (1 - f1) * e(p[3] * Q));
    }
    case 15: {
        const double f1 = 1 / (1 + p[1]);
        return A * (f1 * e(p[2] * Q) + (1 - f1) * e(0));
    }
    default:
        return 0;
    }
}

double twoSites(const decay::SampleRecord& reference, Place place, const fit::Parameters& p, double k2)
{
    const auto [t, Q] = place;
    const double F = p[1], k1 = p[2];
    if (reference.NComp != 1 && reference.NComp != 2)
        return 0;
    const double secondRate = reference.NComp == 1 ? reference.Rate[1] : reference.Rate[2];
    const double f1 = 1 / (1 + F);
    const double f2 = 1 - f1;
    return f1 * std::exp(-(reference.Rate[1] + k1 * Q) * t) + f2 * std::exp(-(secondRate + k2 * Q) * t);
}

} // namespace

double decayIntensity(const Law& law, Place place, const fit::Parameters& p)
{
    const decay::SampleRecord& reference = law.reference;
    if (law.model == 12)
        return twoSites(reference, place, p, p[3]);
    if (law.model == 13)
        return twoSites(reference, place, p, 0);
    if (law.model == 10)
        return poissonTerms(reference, place, p, {p[3] * (std::exp(-p[1] * place.Q) * place.Q), 0.99});
    if (law.model == 11)
        return poissonTerms(reference, place, p, {0, 0.95});
    double sum = 0;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.NComp); ++k)
        sum += component(law, k, place, p);
    return sum;
}

double ratio(int model, const models::Mixture& mix, const fit::Parameters& p)
{
    const auto [x, Cp, tau0] = mix;
    const double D = Cp * p[1] + 1;
    switch (model) {
    case 1:
        return p[1] * tau0 * x + 1;
    case 6:
        return (x * p[3] * tau0 + D) * (tau0 * p[2] + 1) /
               ((D * p[2] - x * p[3]) * tau0 * std::exp(-p[1] * x / D) + x * p[3] * tau0 + D);
    default:
        return 0;
    }
}

DecayProblem::DecayProblem(const decay::SampleTable& samples, int model, int logMode, double Cp)
    : m_samples(samples), m_model(model), m_logMode(logMode), m_Cp(Cp)
{
    for (std::size_t s = 2; s <= static_cast<std::size_t>(samples.SampleCount); ++s)
        for (std::size_t i = 0; i <= static_cast<std::size_t>(samples.SampleData[s].LastFitIndex); ++i)
            m_points[static_cast<std::size_t>(++m_pointCount)] = {s, i};
}

double DecayProblem::value(int point, const fit::Parameters& a) const
{
    const Point& data = m_points[static_cast<std::size_t>(point)];
    const decay::SampleRecord& reference = m_samples.SampleData[1];
    const double t = reference.T[data.index];
    const double Q = m_samples.SampleData[data.sample].Conc;
    const auto intensity = [&](const fit::Parameters& p) {
        return decayIntensity({m_model, reference, m_Cp}, {t, Q}, p);
    };
    // Not copied in normal mode, because reading all values right after writing one would stall.
    return m_logMode == 1 ? intensity(fit::realParameters(m_logMode, a)) : intensity(a);
}

double DecayProblem::residual(int point, const fit::Parameters& a)
{
    const auto [s, i] = m_points[static_cast<std::size_t>(point)];
    return value(point, a) - m_samples.SampleData[s].IExp[i];
}

} // namespace literal
