#pragma once

#include "fit/vectorregisters.h"
#include "tests/support/vectorstate.h"

#include <benchmark/benchmark.h>

namespace bench
{

/// Times of calculations are comparable only if the upper halves of the vector registers are clear. Clears them, and
/// fails the benchmark if they are in use at its end.
class CleanState
{
public:
    explicit CleanState(benchmark::State& state) : m_state(state) { fit::clearUpperHalves(); }
    ~CleanState()
    {
        if (support::upperHalvesInUse() == true)
            m_state.SkipWithError("the upper halves of the vector registers are in use");
    }
    CleanState(const CleanState&) = delete;
    CleanState& operator=(const CleanState&) = delete;

private:
    benchmark::State& m_state;
};

} // namespace bench
