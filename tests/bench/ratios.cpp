#include "tests/bench/ratios.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace bench
{
namespace
{

constexpr double kShortWait = 0.02; // s; the user sees no delay

struct Pair {
    const char* title;
    const char* measured;
    const char* reference; // nullptr: `whole`
    double most;           // the largest ratio allowed; 0: no limit
    double whole = kShortWait;
};

constexpr std::array kPairs{
    Pair{"J1 fit / formulas as written", "fit/J1/product", "fit/J1/literal", 0.5},
    Pair{"J2 fit / formulas as written", "fit/J2/product", "fit/J2/literal", 0.12},
    Pair{"J3 fit / formulas as written", "fit/J3/product", "fit/J3/literal", 0.018},
    Pair{"J4 fit / formulas as written", "fit/J4/product", "fit/J4/literal", 1.0},
    Pair{"J5 fit / formulas as written", "fit/J5/product", "fit/J5/literal", 1.1},
    Pair{"J1 fit / fit with Eigen's Levenberg-Marquardt", "fit/J1/product", "fit/J1/library", 1},
    Pair{"J2 fit / fit with Eigen's Levenberg-Marquardt", "fit/J2/product", "fit/J2/library", 1},
    Pair{"J3 fit / fit with Eigen's Levenberg-Marquardt", "fit/J3/product", "fit/J3/library", 0},
    Pair{"J4 fit / fit with Eigen's Levenberg-Marquardt", "fit/J4/product", "fit/J4/library", 0},
    Pair{"J5 fit / fit with Eigen's Levenberg-Marquardt", "fit/J5/product", "fit/J5/library", 1},
    Pair{"J1 fit beside painted windows / without toolkit", "processes:J1 fit_times_painted",
         "processes:J1 fit_times_plain", 1.05},
    Pair{"J2 fit beside painted windows / without toolkit", "processes:J2 fit_times_painted",
         "processes:J2 fit_times_plain", 1.05},
    Pair{"J3 fit beside painted windows / without toolkit", "processes:J3 fit_times_painted",
         "processes:J3 fit_times_plain", 1.05},
    Pair{"J4 fit beside painted windows / without toolkit", "processes:J4 fit_times_painted",
         "processes:J4 fit_times_plain", 1.05},
    Pair{"J5 fit beside painted windows / without toolkit", "processes:J5 fit_times_painted",
         "processes:J5 fit_times_plain", 1.05},
    Pair{"J1 pass / its exp calls", "pass/J1/product", "pass/J1/floor", 0},
    Pair{"J2 pass / its exp and sqrt calls", "pass/J2/product", "pass/J2/floor", 0},
    Pair{"J3 pass / its exp calls", "pass/J3/product", "pass/J3/floor", 0},
    Pair{"J4 pass / its exp calls", "pass/J4/product", "pass/J4/floor", 0},
    Pair{"J1 command in its window / engine + events", "window/J1/analyzer", "window/J1/engine", 0},
    Pair{"J2 command in its window / engine + events", "window/J2/analyzer", "window/J2/engine", 0},
    Pair{"J3 command in its window / engine + events", "window/J3/analyzer", "window/J3/engine", 0},
    Pair{"J4 command in its window / engine + events", "window/J4/analyzer", "window/J4/engine", 0},
    Pair{"J5 command in its window / engine + events", "window/J5/analyzer", "window/J5/engine", 0},
    Pair{"J1, 1001 iterations / engine + events", "window/J1 endless/analyzer", "window/J1 endless/engine", 1.1},
    Pair{"J2, 1001 iterations / engine + events", "window/J2 endless/analyzer", "window/J2 endless/engine", 1.1},
    Pair{"J3, 1001 iterations / engine + events", "window/J3 endless/analyzer", "window/J3 endless/engine", 1.1},
    Pair{"J4, 50001 iterations / engine + events", "window/J4 endless/analyzer", "window/J4 endless/engine", 1.1},
    Pair{"J5, 50001 iterations / engine + events", "window/J5 endless/analyzer", "window/J5 endless/engine", 1.1},
    Pair{"longest wait in a Model 10 fit / 20 ms", "wait/Model 10/manual_time", nullptr, 1},
    Pair{"likewise in log mode", "wait/Model 10 log/manual_time", nullptr, 1},
    Pair{"longest wait in a Model 11 fit / 20 ms", "wait/Model 11/manual_time", nullptr, 1},
    Pair{"likewise in log mode", "wait/Model 11 log/manual_time", nullptr, 1},
    Pair{"opening of Intensities and Lifetimes / 200 ms", "open/lifetimes/manual_time", nullptr, 1, 0.2},
    Pair{"likewise with each error estimated", "open/lifetimes, each estimated/manual_time", nullptr, 1, 0.2},
    Pair{"first frame / toolkit window", "start/manual_time:ratio", nullptr, 1.25, 1}, // a median of ratios
    Pair{"resident memory / toolkit window", "start/manual_time:kB", "start/manual_time:toolkit kB", 1.4},
};

} // namespace

void RatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    ConsoleReporter::ReportRuns(runs);
    const auto keep = [this](const std::string& name, double value) {
        const auto [entry, isNew] = m_best.try_emplace(name, value);
        entry->second = std::min(entry->second, value);
    };
    for (const Run& run : runs) {
        m_allRan = m_allRan && !run.error_occurred;
        if (run.run_type != Run::RT_Iteration || run.error_occurred)
            continue;
        // Processor time, except for other processes, which are timed in wall time.
        const bool manual = run.run_name.time_type == "manual_time";
        const double seconds = manual ? run.real_accumulated_time : run.cpu_accumulated_time;
        const std::string name = run.run_name.function_name + (manual ? "/manual_time" : "");
        keep(name, seconds / static_cast<double>(run.iterations));
        for (const auto& [counter, value] : run.counters)
            keep(std::string(name).append(":").append(counter), value.value);
    }
}

std::optional<double> RatioReporter::best(const char* name) const
{
    const auto entry = m_best.find(name);
    return entry == m_best.end() ? std::nullopt : std::optional(entry->second);
}

bool RatioReporter::printRatios() const
{
    bool allReached = m_allRan;
    std::printf("\n%-52s %10s %10s\n", "best of all repetitions, or median", "ratio", "at most");
    for (const Pair& pair : kPairs) {
        const std::optional<double> measured = best(pair.measured);
        const std::optional<double> reference = pair.reference ? best(pair.reference) : pair.whole;
        if (!measured || !reference)
            continue;
        const double ratio = *measured / *reference;
        const bool missed = pair.most > 0 && ratio > pair.most;
        allReached = allReached && !missed;
        std::printf("%-52s %10.4f ", pair.title, ratio);
        pair.most > 0 ? std::printf("%10.4f%s\n", pair.most, missed ? "  missed" : "") : std::printf("%10s\n", "-");
    }
    return allReached;
}

} // namespace bench
