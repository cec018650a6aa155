#include "tests/bench/jobs.h"

#include "models/catalogue.h"
#include "tests/bench/literallaws.h"

#include <algorithm>
#include <cassert>
#include <random>
#include <vector>

namespace bench
{
namespace
{

constexpr int kGridPoints = 50;
constexpr double kConcentrationStep = 0.25e-3; // M
constexpr double kTimeStep = 0.06e-6;          // s
constexpr double kNoise = 1e-3;                // standard deviation of an intensity or ratio
constexpr unsigned kSeed = 20260;

struct Component {
    double amplitude;
    double lifetime; // s
};

fit::Options optionsFor(int model)
{
    fit::Options options;
    options.parameterCount = models::row(model).parameterCount();
    options.aboveZero = {0, 1, 1, 1};
    options.unitStepForZero = true;
    return options;
}

/// 20 to 30 % away from the truth.
fit::Parameters startFor(const fit::Parameters& truth) { return {0, truth[1] * 1.3, truth[2] * 0.8, truth[3] * 1.2}; }

void setComponents(decay::SampleRecord& record, const std::vector<Component>& components)
{
    for (const auto& [amplitude, lifetime] : components) {
        const auto k = static_cast<std::size_t>(++record.NComp);
        record.A[k] = amplitude;
        record.Tau[k] = lifetime;
        record.Rate[k] = 1 / lifetime;
    }
}

/// Every sample has the reference's components; its intensities come from the law.
decay::SampleTable decaysOf(int model, const std::vector<Component>& components, const fit::Parameters& truth)
{
    std::mt19937 generator(kSeed);
    std::normal_distribution<double> noise(0, kNoise);
    decay::SampleTable table;
    table.SampleCount = kSamples;
    table.TimeMax = kTimeStep * kGridPoints;
    for (int s = 0; s < kSamples; ++s) {
        decay::SampleRecord& record = table.SampleData[static_cast<std::size_t>(s + 1)];
        record.Conc = s * kConcentrationStep;
        setComponents(record, components);
        record.LastFitIndex = kGridPoints - 1;
        for (std::size_t i = 0; i < kGridPoints; ++i) {
            record.T[i] = static_cast<double>(i) * kTimeStep;
            record.IExp[i] =
                literal::decayIntensity({model, record, kProbe}, {record.T[i], record.Conc}, truth) + noise(generator);
        }
    }
    return table;
}

DecayJob makeDecayJob(std::string_view name, int model, const fit::Parameters& truth,
                      const std::vector<Component>& components)
{
    return {{name, model, truth, optionsFor(model), startFor(truth)}, decaysOf(model, components, truth)};
}

RatioJob makeRatioJob(std::string_view name, int model, const fit::Parameters& truth)
{
    std::mt19937 generator(kSeed);
    std::normal_distribution<double> noise(0, kNoise);
    RatioJob job{{name, model, truth, optionsFor(model), startFor(truth)}, 400e-9, {}, {}};
    job.options.unitStepForZero = false;
    for (std::size_t i = 1; i <= kSamples; ++i) {
        job.x[i] = static_cast<double>(i - 1) * kConcentrationStep;
        job.y[i] = literal::ratio(model, {job.x[i], kProbe, job.tau0}, truth) + noise(generator);
    }
    return job;
}

constexpr fit::Parameters kDynamic{0, 2e9};
constexpr fit::Parameters kThree{0, 500, 1e7, 1e9}; // K, kq1, kq2

} // namespace

const DecayJob& decayJob(int number)
{
    static const std::array<DecayJob, kDecayJobs> jobs{
        makeDecayJob("J1 decay, Model 1", 1, kDynamic, {{1.0, 400e-9}}),
        makeDecayJob("J2 decay, Model 2", 2, kThree, {{0.5, 400e-9}, {0.3, 150e-9}, {0.2, 40e-9}}),
        makeDecayJob("J3 decay, Model 10", 10, kThree, {{0.7, 400e-9}, {0.3, 120e-9}}),
    };
    assert(number >= 1 && number <= kDecayJobs);
    return jobs[static_cast<std::size_t>(number - 1)];
}

const RatioJob& ratioJob(int number)
{
    static const std::array<RatioJob, kRatioJobs> jobs{
        makeRatioJob("J4 ratio, Model 6", 6, kThree),
        makeRatioJob("J5 ratio, Model 1", 1, kDynamic),
    };
    assert(number > kDecayJobs && number <= kDecayJobs + kRatioJobs);
    return jobs[static_cast<std::size_t>(number - kDecayJobs - 1)];
}

sternvolmer::RatioProblem problemOf(const RatioJob& job)
{
    sternvolmer::RatioPoints points{.count = kSamples, .tau0 = job.tau0};
    std::copy(job.x.begin(), job.x.end(), points.Q.begin());
    std::copy(job.y.begin(), job.y.end(), points.ratio.begin());
    return {points, job.model, 0, kProbe};
}

} // namespace bench
