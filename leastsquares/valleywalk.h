#pragma once

#include "leastsquares/minimum.h"

#include <optional>

namespace leastsquares
{

/// Walks along a valley of the sum of squares in equal strides of the logarithm of one parameter, to both sides of a
/// place, and fits the other free parameters after each stride. Where the sum jumps along this parameter, descents
/// end at the jumps; a walk passes them.
class ValleyWalk
{
public:
    struct Strides {
        double length;    // of each stride, as a logarithm
        int each;         // most strides to each side
        int descentSteps; // most steps of a fit after a stride
    };

    /// The problem must outlive it.
    ValleyWalk(fit::Problem& problem, const fit::Parameters& from, std::size_t along, const FreeSlots& free,
               const Ranges& ranges, const Strides& strides);

    /// A piece of work: at most one step of a fit. False: the walk is complete.
    bool step();
    double done() const; // 0..1
    /// The lowest places more than a stride apart, the lowest one first. The place where the walk began is one of the
    /// places.
    std::vector<Minimum> lowest(std::size_t most) const;

private:
    double nextValue() const;
    bool canGoOn() const;
    void stride();
    void arrive();
    void turn();

    fit::Problem& m_problem;
    const std::size_t m_along;
    FreeSlots m_others;
    const Ranges m_ranges;
    const Strides m_strides;
    std::vector<Minimum> m_places;
    Minimum m_here;
    double m_lowestSum;
    bool m_upwards = true;
    int m_strode = 0; // to this side
    int m_descentSteps = 0;
    std::optional<Descent> m_descent;
};

} // namespace leastsquares
