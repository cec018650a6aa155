#include "decay/curveevaluator.h"

#include "fit/realparameters.h"

namespace decay
{

CurveEvaluator::CurveEvaluator(int model, int logMode, double Cp, const Reference& reference)
    : m_model(model), m_logMode(logMode), m_Cp(Cp), m_reference(reference)
{
}

const MultiExponential& CurveEvaluator::curve(double Q, const fit::Parameters& a)
{
    for (const Entry& entry : m_entries)
        if (entry.used && entry.Q == Q && entry.a == a)
            return entry.decay;

    Entry& entry = m_entries[m_oldest];
    m_oldest = (m_oldest + 1) % m_entries.size();
    entry = {true, Q, a, quenchedDecay(m_model, Q, m_reference, m_Cp, fit::realParameters(m_logMode, a))};
    return entry.decay;
}

} // namespace decay
