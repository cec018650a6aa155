#pragma once

#include "analysis/request.h"
#include "leastsquares/minimum.h"

#include <memory>

namespace trust
{

/// A requested fit together with its least-squares problem.
struct RequestedFit {
    fit::Problem& problem; // takes values in their real units
    const analysis::Request& request;

    leastsquares::FreeSlots free() const
    {
        return leastsquares::freeSlots(request.options.parameterCount, request.options.fix);
    }
    /// The ratio of the reference is 1 by definition, in the data as in every model, and cannot deviate.
    int uncountedPoints() const { return analysis::methodOf(request) == models::Analysis::SternVolmer ? 1 : 0; }
    int countedPoints() const { return problem.pointCount() - uncountedPoints(); }
};

/// The problem of a request, taking values in their real units. Decay curves may differ by roundings.
std::unique_ptr<fit::Problem> realProblem(analysis::Request request);

/// The usual sizes of a model's parameters, by slot.
leastsquares::Ranges sensibleRanges(int model);

/// The sizes within which a minimum counts: a thousand times wider on both sides. Far beyond them the laws lose their
/// digits, and rounding makes minima that mean nothing.
leastsquares::Ranges countedRanges(int model);

/// The typed values; a value that is not positive is replaced by the middle of its sensible range.
fit::Parameters positiveStart(const RequestedFit& requested);

} // namespace trust
