#include "lifetimes/combinedfit.h"

#include "leastsquares/akaike.h"
#include "leastsquares/spread.h"
#include "lifetimes/estimatederrors.h"
#include "models/catalogue.h"
#include "trust/requestedfit.h"

#include <algorithm>
#include <cmath>

namespace lifetimes
{
namespace
{

leastsquares::FreeSlots slotsOf(int model) { return leastsquares::freeSlots(models::row(model).parameterCount(), {}); }

/// The best minima from starts spread over the usual sizes of the constants.
std::vector<leastsquares::Minimum> minimaOf(CombinedProblem& problem, int model)
{
    constexpr std::array kLookedAt{1, 20, 100, 200}, kDescents{1, 2, 4, 6}; // by number of constants
    const leastsquares::FreeSlots free = slotsOf(model);
    const auto lower = [](const auto& a, const auto& b) { return a.sumOfSquares < b.sumOfSquares; };
    std::vector<leastsquares::Minimum> minima;
    for (int n = 1; n <= kLookedAt[free.size()]; ++n) {
        fit::Parameters values{};
        leastsquares::spread(values, free, trust::sensibleRanges(model), n);
        minima.push_back({values, leastsquares::sumOfSquares(problem, values)});
    }
    std::sort(minima.begin(), minima.end(), lower);
    minima.resize(static_cast<std::size_t>(kDescents[free.size()]));
    for (leastsquares::Minimum& minimum : minima)
        minimum = leastsquares::descend(problem, minimum.values, free, trust::countedRanges(model));
    return minima;
}

std::vector<leastsquares::Solution> solutionsOf(CombinedProblem& problem, int model)
{
    fit::Parameters middle{};
    const leastsquares::Ranges usual = trust::sensibleRanges(model);
    for (const std::size_t slot : slotsOf(model))
        middle[slot] = leastsquares::between(usual[slot], 0.5);
    return leastsquares::equallyGoodSolutions({.problem = problem,
                                               .free = slotsOf(model),
                                               .countedPoints = problem.pointCount() - problem.referenceCount(),
                                               .usual = usual,
                                               .nearest = middle,
                                               .exchanged = models::row(model).exchanged},
                                              minimaOf(problem, model));
}

/// Fills what follows from minimum and weights.
class Completed
{
public:
    Completed(const Measurements& measurements, CombinedFit& fit)
        : m_measurements(measurements), m_fit(fit), m_problem(measurements, fit.model, fit.weights),
          m_free(slotsOf(fit.model))
    {
    }

    void complete(const ErrorRatio& ratio);

private:
    void setErrors(const ErrorRatio& ratio);
    void setErrorsWithTau0();
    void setCriterion(const ErrorRatio& ratio);
    void judge();

    const Measurements& m_measurements;
    CombinedFit& m_fit;
    CombinedProblem m_problem;
    const leastsquares::FreeSlots m_free;
};

void Completed::complete(const ErrorRatio& ratio)
{
    m_fit.observations = m_problem.pointCount();
    m_fit.degreesOfFreedom = m_fit.observations - m_problem.referenceCount() - static_cast<int>(m_free.size());
    setErrors(ratio);
    setErrorsWithTau0();
    setCriterion(ratio);
    judge();
}

void Completed::setErrors(const ErrorRatio& ratio)
{
    if (!ratio.eachEstimated)
        m_fit.scatter.fill(leastsquares::estimatedScatter(m_fit.minimum.sumOfSquares, m_fit.degreesOfFreedom));
    leastsquares::Uncertainty& uncertainty = m_fit.uncertainty;
    uncertainty = leastsquares::uncertaintyOf(m_problem, m_fit.minimum.values, m_free, m_fit.scatter[1]);
    for (const std::size_t slot : m_free) {
        uncertainty.standardError[slot] *= std::sqrt(m_fit.scatter[slot].variance / m_fit.scatter[1].variance);
        uncertainty.halfWidth[slot] = m_fit.scatter[slot].quantile * uncertainty.standardError[slot];
    }
    uncertainty.degreesOfFreedom = m_fit.degreesOfFreedom;
    const double unit = ratio.eachEstimated ? 1 : std::sqrt(m_fit.scatter[1].variance);
    m_fit.errors = {unit * m_fit.weights.intensity, unit * m_fit.weights.lifetime};
}

/// A relative change of tau0 moves a constant through the data and, the other way, through KSV = k tau0.
void Completed::setErrorsWithTau0()
{
    m_fit.errorWithTau0 = m_fit.uncertainty.standardError;
    const int lifetimes = m_problem.pointCount(Kind::Lifetime);
    if (lifetimes == 0)
        return;
    std::vector<double> shift(static_cast<std::size_t>(m_problem.pointCount(Kind::Intensity)), 0.0);
    std::vector<double> change(static_cast<std::size_t>(lifetimes), 0.0), errors(change.size(), m_fit.weights.lifetime);
    change[0] = 1; // the reference's
    noise::appendCentred(shift, change, errors);
    const fit::Parameters moved = leastsquares::responseTo(shift, m_problem, m_fit.minimum.values, m_free);
    for (const std::size_t slot : m_free) {
        const double k = m_fit.minimum.values[slot], error = m_fit.uncertainty.standardError[slot];
        if (models::parameter(m_fit.model, slot).isCollisional())
            m_fit.errorWithTau0[slot] = std::sqrt(error * error + m_fit.errors.lifetime * m_fit.errors.lifetime *
                                                                      (k * k - 2 * k * moved[slot]));
    }
}

void Completed::setCriterion(const ErrorRatio& ratio)
{
    const int n = m_fit.observations, constants = static_cast<int>(m_free.size()) + m_problem.referenceCount();
    const double sum = std::max(m_fit.minimum.sumOfSquares, leastsquares::sumOfExactFit(n));
    if (!ratio.eachEstimated) {
        m_fit.AICc = leastsquares::correctedAkaike(sum, n, constants + 1);
        return;
    }
    // The sum whose criterion has the deviance as its first term.
    const double deviance = leastDeviance(m_measurements, m_fit.model, m_free, m_fit.minimum.values);
    m_fit.AICc = leastsquares::correctedAkaike(n * std::exp(deviance / n), n, constants + 2);
}

void Completed::judge()
{
    trust::Judgement& judgement = m_fit.judgement;
    judgement.sumOfSquares = judgement.leastSum = m_fit.minimum.sumOfSquares;
    judgement.undetermined = m_fit.uncertainty.undetermined;
    judgement.verdict = !std::isfinite(m_fit.minimum.sumOfSquares) ? trust::Verdict::NotDefined
                        : m_fit.degreesOfFreedom < 1               ? trust::Verdict::Untested
                        : !judgement.undetermined.empty()          ? trust::Verdict::Undetermined
                                                                   : trust::Verdict::AtMinimum;
}

RelativeErrors weightsOf(const ErrorRatio& ratio) { return {1, ratio.eachEstimated ? 1 : ratio.typed}; }

/// Of two sites that can change places, the faster is the first.
leastsquares::Minimum inOrder(int model, leastsquares::Minimum minimum)
{
    if (const auto exchanged = models::row(model).exchanged; exchanged && minimum.values[2] < minimum.values[3])
        minimum.values = exchanged(minimum.values);
    return minimum;
}

CombinedFit fitAt(const Measurements& measurements, int model, const ErrorRatio& ratio,
                  const leastsquares::Minimum& minimum)
{
    CombinedFit fit{.model = model, .weights = weightsOf(ratio), .minimum = inOrder(model, minimum)};
    if (ratio.eachEstimated) {
        const EstimatedErrors estimated = estimateErrors(measurements, model, slotsOf(model), fit.minimum.values);
        fit.weights = estimated.errors;
        fit.minimum = estimated.minimum;
        fit.scatter = estimated.scatter;
    }
    Completed(measurements, fit).complete(ratio);
    return fit;
}

} // namespace

CombinedFit fitFrom(const Measurements& measurements, int model, const ErrorRatio& ratio, const fit::Parameters& start)
{
    CombinedProblem problem(measurements, model, weightsOf(ratio));
    return fitAt(measurements, model, ratio,
                 leastsquares::descend(problem, start, slotsOf(model), trust::countedRanges(model)));
}

CombinedFit fitTogether(const Measurements& measurements, int model, const ErrorRatio& ratio)
{
    CombinedProblem problem(measurements, model, weightsOf(ratio));
    const std::vector<leastsquares::Solution> solutions = solutionsOf(problem, model);
    if (solutions.empty())
        return {.model = model};
    CombinedFit fit = fitAt(measurements, model, ratio, {solutions.front().values, solutions.front().sumOfSquares});
    fit.solutions = solutions;
    return fit;
}

std::array<leastsquares::Profile, fit::kMaxParameters + 1> profilesOf(const Measurements& measurements,
                                                                      const CombinedFit& fit)
{
    std::array<leastsquares::Profile, fit::kMaxParameters + 1> profiles;
    CombinedProblem problem(measurements, fit.model, fit.weights);
    const leastsquares::Ranges ranges = trust::countedRanges(fit.model);
    for (const std::size_t slot : slotsOf(fit.model))
        profiles[slot] =
            leastsquares::profileOf(problem, fit.minimum, slotsOf(fit.model), slot, fit.scatter[slot], ranges[slot]);
    return profiles;
}

std::vector<double> relativeResiduals(const Measurements& measurements, const CombinedFit& fit, Kind kind)
{
    CombinedProblem problem(measurements, fit.model, {});
    const int first = kind == Kind::Intensity ? 1 : problem.pointCount(Kind::Intensity) + 1;
    std::vector<double> residuals;
    for (int i = 0; i < problem.pointCount(kind); ++i)
        residuals.push_back(problem.residual(first + i, fit.minimum.values));
    return residuals;
}

std::vector<double> fittedRatios(const Measurements& measurements, const CombinedFit& fit, Kind kind,
                                 const std::vector<double>& Q)
{
    std::vector<double> ratios = modelRatios(measurements, fit.model, kind, Q, fit.minimum.values);
    const std::vector<double> residuals = relativeResiduals(measurements, fit, kind);
    for (double& ratio : ratios)
        ratio *= residuals.empty() ? 1 : std::exp(residuals.front());
    return ratios;
}

} // namespace lifetimes
