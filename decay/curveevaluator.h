#pragma once

#include "decay/models.h"

#include <array>

namespace decay
{

/// Quenched decays of one model, kept for the last few parameter vectors. A fit asks for the points of a sample with
/// the same few vectors in turn, so what depends on the sample and the vector alone is worked out once; the values
/// are those of quenchedDecay to the last bit.
class CurveEvaluator
{
public:
    CurveEvaluator() = default;
    CurveEvaluator(int model, int logMode, double Cp, const Reference& reference);

    /// Decay at quencher concentration Q, M, for parameters as the engine holds them. Valid until the next call.
    const MultiExponential& curve(double Q, const fit::Parameters& a);

private:
    struct Entry {
        bool used = false;
        double Q = 0;
        fit::Parameters a{};
        MultiExponential decay;
    };

    int m_model = 0;
    int m_logMode = 0;
    double m_Cp = 0;
    Reference m_reference;
    std::array<Entry, 8> m_entries{}; // a base vector, three shifted ones, and as many that differ by a rounding
    std::size_t m_oldest = 0;
};

} // namespace decay
