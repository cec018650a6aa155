#include "sternvolmer/ratioproblem.h"

#include "fit/vectorregisters.h"
#include "models/catalogue.h"

#include <algorithm>
#include <cassert>
#include <functional>

namespace sternvolmer
{
namespace
{

std::size_t slot(int i)
{
    assert(i >= 0 && i <= kMostPoints);
    return static_cast<std::size_t>(i);
}

} // namespace

RatioProblem::RatioProblem(const RatioPoints& points, int model, int logMode, double Cp)
    : m_points(points), m_model(model), m_logMode(logMode), m_Cp(Cp)
{
    assert(points.count >= 0 && points.count <= kMostPoints);
}

double RatioProblem::residual(int point, const fit::Parameters& a)
{
    return law(m_points.Q[slot(point)], a) - m_points.ratio[slot(point)];
}

void RatioProblem::residuals(int first, const fit::Parameters& a, std::span<double> room)
{
    const std::span Q(m_points.Q.data() + slot(first), room.size());
    models::ratios(m_model, Q, {m_points.tau0, m_Cp, m_real.of(m_logMode, a)}, room);
    std::transform(room.begin(), room.end(), m_points.ratio.begin() + first, room.begin(), std::minus<>());
}

double RatioProblem::value(double Q, const fit::Parameters& a)
{
    fit::clearUpperHalves();
    return law(Q, a);
}

double RatioProblem::law(double Q, const fit::Parameters& a)
{
    return models::ratio(m_model, Q, {m_points.tau0, m_Cp, m_real.of(m_logMode, a)});
}

RatioSlots RatioProblem::fittedValues(const fit::Parameters& a)
{
    fit::clearUpperHalves();
    RatioSlots fitted{};
    for (int i = 1; i <= pointCount(); ++i)
        fitted[slot(i)] = law(m_points.Q[slot(i)], a);
    return fitted;
}

fit::Statistics RatioProblem::statistics(const fit::Parameters& a)
{
    return fit::slotStatistics(m_points.ratio, fittedValues(a), pointCount());
}

} // namespace sternvolmer
