#pragma once

#include "decay/quencheddecay.h"
#include "fit/realparameters.h"

#include <array>
#include <cstdint>

namespace decay
{

/// Largest difference between an intensity of the fast evaluation and of the formula, relative to the intensity or, if
/// that is smaller, to exp(-50). It comes from some hundreds of roundings in products of exponentials.
inline constexpr double kFastRounding = 1e-13;

/// The law of a fit, and what it needs besides parameters and quencher.
struct FittedLaw {
    int model = 0;
    int logMode = 0; // 1: the engine holds parameters as natural logarithms
    double Cp = 0;   // total probe, M
};

/// Quenched decays of one model on the reference's time grid, kept for the last few parameter vectors. A fit evaluates
/// the points of a sample with the same few vectors in turn. Therefore a whole curve is calculated at a time, and
/// exponentials are kept by their rate for later samples and vectors with the same rate.
///
/// As written, every exponential of the formula is a call of exp. The fast evaluation factors exp(-(slowest +
/// addedRate) t) out of the components' sum, which leaves one exponential for each population; Poisson terms are powers
/// of one exponential, and on an even grid most exponentials are products of two others.
class CurveEvaluator
{
public:
    CurveEvaluator() = default;
    /// reference: the sample without quencher, with its components and its time grid.
    CurveEvaluator(const FittedLaw& law, const SampleRecord& reference, models::Evaluation evaluation);

    /// The kept decay of a sample for parameters as the engine holds them; nullptr if there is none. The key is the
    /// exact vector, because the engine restores a parameter by subtraction, which may change it by a rounding.
    const Grid* kept(std::size_t sample, const fit::Parameters& a) const;

    /// Calculates the first count points of the decay of a sample at quencher concentration Q, M. Valid until the next
    /// calculation.
    const Grid& calculated(std::size_t sample, const fit::Parameters& a, double Q, std::size_t count);

private:
    struct Curve {
        fit::Parameters a{};
        Grid intensity{};
    };
    struct Kept {
        double rate = 0;       // s^-1
        std::size_t count = 0; // of points at which its exponential is known
        std::uint64_t lastUse = 0;
    };

    const Grid& exponentials(double rate, std::size_t count);
    std::vector<Kept>::iterator placeFor(double rate);
    void extend(Grid& values, Kept& kept, std::size_t count) const;
    void addBrackets(Grid& sum, std::size_t count, const Brackets& brackets);
    void addFactored(Grid& sum, std::size_t count, const models::Populations& populations);
    void addPopulation(Grid& sum, std::size_t count, const models::Population& population, double total);
    void addPoissonTerms(Grid& sum, std::size_t count, const std::vector<models::Population>& populations);

    FittedLaw m_law;
    models::Evaluation m_evaluation = models::Evaluation::AsWritten;
    Reference m_reference;
    Grid m_t{};
    std::size_t m_evenPoints = 0; // leading points of the grid in even steps; 0: products are not used
    double m_slowest = 0;         // smallest rate of the reference, s^-1
    Grid m_components{};          // the reference's decay, with the slowest exponential taken out
    std::size_t m_sample = 0;     // whose curves are kept; 0: none yet
    std::size_t m_curveCount = 0;
    std::array<Curve, 8> m_curves{}; // a base vector, three shifted vectors, and the same four with another rounding
    std::vector<Kept> m_kept;
    std::vector<Grid> m_exponentials; // exp(-rate t) of the rates kept, separate because the rates are searched
    std::uint64_t m_uses = 0;
    std::vector<double> m_weights; // of the Poisson terms
};

inline const Grid* CurveEvaluator::kept(std::size_t sample, const fit::Parameters& a) const
{
    if (sample == m_sample)
        for (std::size_t c = 0; c < m_curveCount; ++c)
            if (fit::sameBits(m_curves[c].a, a))
                return &m_curves[c].intensity;
    return nullptr;
}

} // namespace decay
