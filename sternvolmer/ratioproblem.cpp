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
    assert(i >= 0 && i <= 100);
    return static_cast<std::size_t>(i);
}

} // namespace

void RatioProblem::setDatanumber(double n)
{
    assert(n >= 0 && n <= 100);
    m_N = n;
    m_dataReady = true;
}

void RatioProblem::setDX(double x, int i)
{
    if (m_dataReady)
        m_X[slot(i)] = x;
}

void RatioProblem::setDY(double y, int i)
{
    if (m_dataReady)
        m_Y[slot(i)] = y;
}

int RatioProblem::pointCount() const { return static_cast<int>(m_N); }

double RatioProblem::residual(int point, const fit::Parameters& a)
{
    return law(m_X[slot(point)], a) - m_Y[slot(point)];
}

void RatioProblem::residuals(int first, const fit::Parameters& a, std::span<double> room)
{
    const std::span x(m_X.data() + slot(first), room.size());
    models::ratios(m_model, x, {m_tau0, m_Cp, m_real.of(m_logMode, a)}, room);
    std::transform(room.begin(), room.end(), m_Y.begin() + first, room.begin(), std::minus<>());
}

double RatioProblem::value(double x, const fit::Parameters& a)
{
    fit::clearUpperHalves();
    return law(x, a);
}

double RatioProblem::law(double x, const fit::Parameters& a)
{
    return models::ratio(m_model, x, {m_tau0, m_Cp, m_real.of(m_logMode, a)});
}

RatioSlots RatioProblem::fittedValues(const fit::Parameters& a)
{
    fit::clearUpperHalves();
    RatioSlots fitted{};
    for (int i = 1; i <= pointCount(); ++i)
        fitted[slot(i)] = law(m_X[slot(i)], a);
    return fitted;
}

fit::Statistics RatioProblem::statistics(const fit::Parameters& a)
{
    return fit::slotStatistics(m_Y, fittedValues(a), pointCount());
}

} // namespace sternvolmer
