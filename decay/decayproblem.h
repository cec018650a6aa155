#pragma once

#include "decay/curveevaluator.h"
#include "fit/statistics.h"

#include <functional>
#include <optional>
#include <vector>

namespace decay
{

/// The least-squares problem of fitting all decay curves except that of the reference with one set of parameters. Every
/// point has the same weight. Parameters are as the engine holds them: natural logarithms in log mode.
class DecayProblem final : public fit::Problem
{
public:
    /// Cp: total probe, M.
    DecayProblem(const SampleTable& samples, int model, int logMode, double Cp);

    /// As written from the beginning.
    void setEvaluation(models::Evaluation evaluation);

    /// Called after each curve of the Poisson law with collisions that a fit calculates, because these can take long;
    /// may be empty. Not called for points of a kept curve.
    std::function<void()> modelEvaluated;

    int pointCount() const override { return static_cast<int>(m_points.size()); }
    double residual(int point, const fit::Parameters& a) override;
    /// The points of one sample.
    int pointsAtOnce(int first) const override;
    void residuals(int first, const fit::Parameters& a, std::span<double> room) override;

    /// Model intensity (linear) at time t, s, and quencher concentration Q, M. Fast for many times of the same decay.
    double value(double t, double Q, const fit::Parameters& a);

    /// Fills IFit of every sample, including the reference, up to its LastFitIndex, and the running mean and
    /// sumOfSquares. Does nothing if the last call had the same parameters.
    void CalcFity(const fit::Parameters& a);

    /// Updates the fitted curves; sumOfSquares and R2 then cover the points of all samples.
    fit::Statistics statistics(const fit::Parameters& a);

    const SampleTable& samples() const { return m_samples; }

private:
    struct Point {
        std::size_t sample = 0;
        std::size_t index = 0; // on the time grid
    };

    /// The decay of the last call of value().
    struct Decay {
        double Q = 0; // M
        fit::Parameters a{};
        Brackets brackets;
    };

    CurveEvaluator& evaluator() { return m_evaluators[static_cast<std::size_t>(m_evaluation)]; }
    const Grid& curve(std::size_t sample, const fit::Parameters& a);    // for a fit: lets events run if it takes long
    const Grid& newCurve(std::size_t sample, const fit::Parameters& a); // of curve(), when none is kept
    const Grid& fitted(std::size_t sample, const fit::Parameters& a);   // kept or calculated
    const Grid& calculated(std::size_t sample, const fit::Parameters& a);

    SampleTable m_samples;
    FittedLaw m_law;
    models::Evaluation m_evaluation = models::Evaluation::AsWritten;
    std::array<CurveEvaluator, 2> m_evaluators;  // one for each evaluation
    std::vector<Point> m_points;                 // point i stands at i - 1
    std::optional<fit::Parameters> m_fittedWith; // the parameters of the samples' fitted curves
    std::optional<Decay> m_decay;
};

} // namespace decay
