#pragma once

#include "trust/requestedfit.h"

#include <deque>
#include <vector>

namespace trust
{

/// What decides the least sum of squares of a fit: data, model, probe and fixed constants, but neither start nor mode.
class LeastQuestion
{
public:
    explicit LeastQuestion(const analysis::Request& request);
    bool operator==(const LeastQuestion&) const = default;

private:
    std::vector<double> m_numbers;
};

/// The lowest sums of squares that were found for the last few questions. Every search and every judging offers what
/// it has found, so that a lower sum found anywhere becomes the least everywhere.
class LeastSums
{
public:
    /// True after a complete search.
    bool searched(const analysis::Request& request) const;
    /// The minima of the search, and every lower minimum that was offered.
    std::vector<leastsquares::Minimum> minima(const analysis::Request& request) const;
    /// Infinity if nothing is known.
    double leastSum(const analysis::Request& request) const;

    /// Keeps the minima of a complete search.
    void keep(const analysis::Request& request, const std::vector<leastsquares::Minimum>& minima);
    /// Keeps a minimum if it is lower than all known ones and its free constants have sizes that count. Negative
    /// constants have no meaning.
    void offer(const analysis::Request& request, const leastsquares::Minimum& minimum);

private:
    struct Answer {
        LeastQuestion question;
        bool searched = false;
        std::vector<leastsquares::Minimum> minima;
    };
    const Answer* answer(const analysis::Request& request) const;
    Answer& newestAnswer(const analysis::Request& request);

    std::deque<Answer> m_answers; // the newest first
};

} // namespace trust
