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

/// The two Poisson laws differ in the decay of probes without a quencher and in the end of the series.
double poissonTerms(double K, double kq1, double addedWithoutQuencher, double untilShare, double t, double Q,
                    const decay::SampleRecord& reference)
{
    const double m = K * Q;
    double sum = 0;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.NComp); ++k) {
        const double A = reference.A[k];
        const double Rate = reference.Rate[k];
        const double p0 = std::exp(-m);
        sum += p0 * A * std::exp(-(Rate + addedWithoutQuencher) * t);
        double S = p0;
        double j = 1;
        do {
            const double pj = std::pow(m, j) * std::exp(-K * Q) / Factorial(j);
            sum += pj * A * std::exp(-(Rate + j * kq1) * t);
            S += pj;
            j += 1;
        } while (std::pow(m, j) < 1e200 && S < untilShare);
    }
    return sum;
}

/// One component of the decay, for models that quench all components equally.
double component(int model, double t, double Q, double A, double Rate, double Cp, const fit::Parameters& p)
{
    const auto e = [Rate, t](double r) { return std::exp(-(Rate + r) * t); };
    switch (model) {
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

double twoSites(double t, double Q, const decay::SampleRecord& reference, double F, double k1, double k2)
{
    if (reference.NComp != 1 && reference.NComp != 2)
        return 0;
    const double secondRate = reference.NComp == 1 ? reference.Rate[1] : reference.Rate[2];
    const double f1 = 1 / (1 + F);
    const double f2 = 1 - f1;
    return f1 * std::exp(-(reference.Rate[1] + k1 * Q) * t) + f2 * std::exp(-(secondRate + k2 * Q) * t);
}

} // namespace

double decayIntensity(int model, double t, double Q, const decay::SampleRecord& reference, double Cp,
                      const fit::Parameters& p)
{
    if (model == 12)
        return twoSites(t, Q, reference, p[1], p[2], p[3]);
    if (model == 13)
        return twoSites(t, Q, reference, p[1], p[2], 0);
    if (model == 10)
        return poissonTerms(p[1], p[2], p[3] * (std::exp(-p[1] * Q) * Q), 0.99, t, Q, reference);
    if (model == 11)
        return poissonTerms(p[1], p[2], 0, 0.95, t, Q, reference);
    double sum = 0;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.NComp); ++k)
        sum += component(model, t, Q, reference.A[k], reference.Rate[k], Cp, p);
    return sum;
}

double ratio(int model, double x, double tau0, double Cp, const fit::Parameters& p)
{
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
    const auto intensity = [&](const fit::Parameters& p) { return decayIntensity(m_model, t, Q, reference, m_Cp, p); };
    // Not copied in normal mode, because reading all values right after writing one would stall.
    return m_logMode == 1 ? intensity(fit::realParameters(m_logMode, a)) : intensity(a);
}

double DecayProblem::residual(int point, const fit::Parameters& a)
{
    const auto [s, i] = m_points[static_cast<std::size_t>(point)];
    return value(point, a) - m_samples.SampleData[s].IExp[i];
}

} // namespace literal
