#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>

namespace bench
{

/// Prints each run when it ends and keeps the best time and the counters of every benchmark for the table of ratios.
class RatioReporter final : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    /// Prints the ratios and their limits. False if a ratio exceeds its limit or a benchmark failed.
    bool printRatios() const;

private:
    std::optional<double> best(const char* name) const;

    std::map<std::string, double> m_best;
    bool m_allRan = true;
};

} // namespace bench
