#include "decay/decayproblem.h"

#include "decay/curvesums.h"
#include "fit/realparameters.h"
#include "fit/vectorregisters.h"

namespace decay
{
namespace
{

std::size_t slot(int number) { return static_cast<std::size_t>(number); }

/// Sum of squared distances of all observed intensities from their mean.
double totalSum(const SampleTable& table)
{
    double sum = 0;
    double count = 0;
    const auto forEachPoint = [&table](auto&& visit) {
        for (std::size_t s = 1; s <= slot(table.SampleCount); ++s)
            for (std::size_t i = 0; i <= slot(table.SampleData[s].LastFitIndex); ++i)
                visit(table.SampleData[s].IExp[i]);
    };
    forEachPoint([&](double intensity) {
        sum += intensity;
        count += 1;
    });
    double squares = 0;
    forEachPoint([&, mean = sum / count](double intensity) { squares += (intensity - mean) * (intensity - mean); });
    return squares;
}

} // namespace

DecayProblem::DecayProblem(const SampleTable& samples, int model, int logMode, double Cp)
    : m_samples(samples), m_law{model, logMode, Cp}
{
    for (std::size_t s = 2; s <= slot(m_samples.SampleCount); ++s)
        for (std::size_t i = 0; i <= slot(m_samples.SampleData[s].LastFitIndex); ++i)
            m_points.push_back({s, i});
    for (const models::Evaluation evaluation : {models::Evaluation::AsWritten, models::Evaluation::Fast})
        m_evaluators[static_cast<std::size_t>(evaluation)] = CurveEvaluator(m_law, m_samples.SampleData[1], evaluation);
}

void DecayProblem::setEvaluation(models::Evaluation evaluation)
{
    m_evaluation = evaluation;
    m_fittedWith.reset();
}

double DecayProblem::residual(int point, const fit::Parameters& a)
{
    const Point& data = m_points[slot(point - 1)];
    return curve(data.sample, a)[data.index] - m_samples.SampleData[data.sample].IExp[data.index];
}

int DecayProblem::pointsAtOnce(int first) const
{
    const Point& data = m_points[slot(first - 1)];
    return m_samples.SampleData[data.sample].LastFitIndex + 1 - static_cast<int>(data.index);
}

void DecayProblem::residuals(int first, const fit::Parameters& a, std::span<double> room)
{
    const Point& data = m_points[slot(first - 1)];
    const double* model = curve(data.sample, a).data() + data.index;
    subtract(room, model, m_samples.SampleData[data.sample].IExp.data() + data.index);
}

const Grid& DecayProblem::curve(std::size_t sample, const fit::Parameters& a)
{
    const Grid* kept = evaluator().kept(sample, a);
    return kept ? *kept : newCurve(sample, a);
}

/// Separate from curve(), so that the many points of a kept curve do not cost the calls made here.
const Grid& DecayProblem::newCurve(std::size_t sample, const fit::Parameters& a)
{
    const Grid& result = calculated(sample, a);
    if (models::row(m_law.model).decay.yields && modelEvaluated) {
        modelEvaluated();
        fit::clearUpperHalves();
    }
    return result;
}

double DecayProblem::value(double t, double Q, const fit::Parameters& a)
{
    if (!m_decay || m_decay->Q != Q || !fit::sameBits(m_decay->a, a)) {
        fit::clearUpperHalves();
        m_decay = {Q, a,
                   bracketsOf(m_law.model, {Q, m_law.Cp, fit::realParameters(m_law.logMode, a)},
                              referenceOf(m_samples.SampleData[1]))};
    }
    return intensityAt(m_decay->brackets, t);
}

void DecayProblem::CalcFity(const fit::Parameters& a)
{
    if (m_fittedWith && fit::sameBits(*m_fittedWith, a))
        return;
    m_fittedWith = a;
    fit::clearUpperHalves();
    // The sums continue from sample to sample, so that the last sample holds the sums of all samples.
    double sumOfIntensities = 0;
    double sumOfSquares = 0;
    for (std::size_t s = 1; s <= slot(m_samples.SampleCount); ++s) {
        SampleRecord& record = m_samples.SampleData[s];
        for (std::size_t i = 0; i <= slot(record.LastFitIndex); ++i) {
            record.IFit[i] = fitted(s, a)[i];
            const double deviation = record.IExp[i] - record.IFit[i];
            sumOfIntensities += record.IExp[i];
            sumOfSquares += deviation * deviation;
        }
        record.mean = sumOfIntensities / 50; // deliberately 50 for any number of points
        record.sumOfSquares = sumOfSquares;
    }
}

fit::Statistics DecayProblem::statistics(const fit::Parameters& a)
{
    CalcFity(a);
    const double sumOfSquares = m_samples.SampleData[slot(m_samples.SampleCount)].sumOfSquares;
    return {.R2 = fit::determination(sumOfSquares, totalSum(m_samples)), .sumOfSquares = sumOfSquares};
}

const Grid& DecayProblem::fitted(std::size_t sample, const fit::Parameters& a)
{
    const Grid* kept = evaluator().kept(sample, a);
    return kept ? *kept : calculated(sample, a);
}

const Grid& DecayProblem::calculated(std::size_t sample, const fit::Parameters& a)
{
    const SampleRecord& record = m_samples.SampleData[sample];
    return evaluator().calculated(sample, a, record.Conc, slot(record.LastFitIndex) + 1);
}

} // namespace decay
