#pragma once

#include "decay/sampletable.h"
#include "fit/gaussnewton.h"
#include "sternvolmer/ratioproblem.h"

#include <array>
#include <string_view>

/// The timed fits: 20 samples up to 4.75 mM quencher, 50 uM probe, observations with fixed noise.
namespace bench
{

inline constexpr double kProbe = 50e-6; // M
inline constexpr int kSamples = 20;

struct Job {
    std::string_view name;
    int model = 0;
    fit::Parameters truth{}; // the parameters from which the observations are made
    fit::Options options;
    fit::Parameters start{};
};

inline constexpr int kDecayJobs = 3;
inline constexpr int kRatioJobs = 2;

/// Decay jobs 1..3.
struct DecayJob : Job {
    decay::SampleTable samples;
};
const DecayJob& decayJob(int number);

/// Stern-Volmer jobs 4..5.
struct RatioJob : Job {
    double tau0 = 0;            // s
    std::array<double, 21> x{}; // M, slots 1..20
    std::array<double, 21> y{}; // ratio
};
const RatioJob& ratioJob(int number);
sternvolmer::RatioProblem problemOf(const RatioJob& job);

/// Lets a fit run undisturbed.
struct NoObserver final : fit::Observer {
    void letEventsRun() override {}
    bool keepGoing(double) override { return true; }
};

} // namespace bench
