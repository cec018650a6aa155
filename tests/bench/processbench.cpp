#include "tests/bench/jobs.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <string>

namespace
{

constexpr int kPairs = 10; // of processes, one of each program

QList<QByteArray> timesFrom(const char* program)
{
    QProcess process;
    process.start(QCoreApplication::applicationDirPath() + "/" + program, QStringList());
    process.waitForFinished();
    return process.exitCode() == 0 ? process.readAllStandardOutput().simplified().split(' ') : QList<QByteArray>();
}

/// Compares the shortest times of the fits in a process that keeps painting a window and in a process without a
/// toolkit.
void fitsInProcesses(benchmark::State& state)
{
    constexpr int kJobs = bench::kDecayJobs + bench::kRatioJobs;
    for (auto _ : state)
        for (int pair = 0; pair < kPairs; ++pair)
            for (const char* program : {"fit_times_painted", "fit_times_plain"}) {
                const QList<QByteArray> times = timesFrom(program);
                if (times.size() != kJobs)
                    return state.SkipWithError("a process did not time its fits in the clean state");
                for (int job = 0; job < kJobs; ++job) {
                    benchmark::Counter& least = state.counters["J" + std::to_string(job + 1) + " " + program];
                    const double seconds = times[job].toDouble();
                    least = least == 0 ? seconds : std::min<double>(least, seconds);
                }
            }
}

BENCHMARK(fitsInProcesses)->Name("processes")->Repetitions(1)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
