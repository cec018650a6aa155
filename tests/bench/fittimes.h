#pragma once

#include "decay/curvefit.h"
#include "tests/bench/jobs.h"
#include "tests/support/vectorstate.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace bench
{

inline double processorSeconds()
{
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Least processor time of a fit, s, in batches of a millisecond. prepare() runs before each batch, untimed.
template <class Prepare, class Fit>
double leastSeconds(Prepare prepare, Fit fit)
{
    constexpr double kBatchSeconds = 1e-3;
    constexpr int kBatches = 30;
    const auto batch = [&](int fits) {
        prepare();
        const double begin = processorSeconds();
        for (int i = 0; i < fits; ++i)
            fit();
        return (processorSeconds() - begin) / fits;
    };
    batch(1);
    const int fits = std::max(1, static_cast<int>(kBatchSeconds / batch(1)));
    double least = batch(fits);
    for (int i = 1; i < kBatches; ++i)
        least = std::min(least, batch(fits));
    return least;
}

/// Prints the least time of a fit of each job, s, on one line. False if one left the upper halves of the vector
/// registers in use.
template <class Prepare>
bool printFitTimes(Prepare prepare)
{
    NoObserver observer;
    bool clean = true;
    for (int number = 1; number <= kDecayJobs + kRatioJobs; ++number) {
        const auto print = [&](auto problem, const Job& job, auto fit) {
            std::printf("%.6g ", leastSeconds(prepare, [&] { fit(problem, job.options, job.start, observer); }));
            clean = clean && support::upperHalvesInUse() != true;
        };
        if (number <= kDecayJobs) {
            const DecayJob& job = decayJob(number);
            print(decay::DecayProblem(job.samples, job.model, 0, kProbe), job, decay::fitCurves);
        } else {
            print(problemOf(ratioJob(number)), ratioJob(number), fit::gaussNewton);
        }
    }
    return clean;
}

} // namespace bench
