#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <optional>
#include <vector>

namespace
{

constexpr int kPairs = 100; // of starts, one of each program

struct Start {
    double seconds = 0;    // from before the process exists to its first painted frame
    double ownMemory = 0;  // kB, without the pages of libraries and other files
    double usedMemory = 0; // kB, resident
};

std::optional<Start> started(const char* program)
{
    const auto before = std::chrono::steady_clock::now().time_since_epoch();
    QProcess process;
    process.start(QCoreApplication::applicationDirPath() + "/" + program, QStringList());
    process.waitForFinished();
    const QList<QByteArray> words = process.readAllStandardOutput().split(' ');
    if (words.size() != 3)
        return std::nullopt;
    const double frame = 1e-9 * static_cast<double>(words[0].toLongLong());
    return Start{frame - std::chrono::duration<double>(before).count(), words[1].toDouble(), words[2].toDouble()};
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Starts the program and a window of the toolkit in turn and compares each start with the next one: other work of the
/// machine delays both equally, and the median ignores delays of only one.
void start(benchmark::State& state)
{
    std::vector<double> own, toolkit, ratios;
    for (auto _ : state) {
        const std::optional<Start> window = started("first_frame_toolkit");
        const std::optional<Start> program = started("first_frame_vorlo");
        if (!window || !program) {
            state.SkipWithError("no frame");
            return;
        }
        state.SetIterationTime(program->seconds);
        own.push_back(program->seconds);
        toolkit.push_back(window->seconds);
        ratios.push_back(program->seconds / window->seconds);
        state.counters["own kB"] = program->ownMemory;
        state.counters["kB"] = program->usedMemory;
        state.counters["toolkit kB"] = window->usedMemory;
    }
    state.counters["median ms"] = 1e3 * median(own);
    state.counters["toolkit ms"] = 1e3 * median(toolkit);
    state.counters["ratio"] = median(ratios);
}

BENCHMARK(start)->UseManualTime()->Repetitions(1)->Iterations(kPairs)->Unit(benchmark::kMillisecond);

} // namespace
