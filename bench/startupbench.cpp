#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>

namespace
{

constexpr int kStarts = 12; // the fastest counts: what else the machine does can only make a start longer

struct Start {
    double seconds = 0;    // from before the process exists to its first painted frame
    double ownMemory = 0;  // kB, without the pages of libraries and other files
    double usedMemory = 0; // kB, resident
};

std::optional<Start> started(const QString& path)
{
    const auto before = std::chrono::steady_clock::now().time_since_epoch();
    QProcess process;
    process.start(path, QStringList());
    process.waitForFinished();
    const QList<QByteArray> words = process.readAllStandardOutput().split(' ');
    if (words.size() != 3)
        return std::nullopt;
    const double frame = 1e-9 * static_cast<double>(words[0].toLongLong());
    return Start{frame - std::chrono::duration<double>(before).count(), words[1].toDouble(), words[2].toDouble()};
}

void start(benchmark::State& state, const char* program)
{
    const QString path = QCoreApplication::applicationDirPath() + "/" + program;
    for (auto _ : state) {
        double fastest = std::numeric_limits<double>::infinity();
        for (int i = 0; i < kStarts; ++i) {
            const std::optional<Start> one = started(path);
            if (!one) {
                state.SkipWithError("no frame");
                return;
            }
            fastest = std::min(fastest, one->seconds);
            state.counters["ownkB"] = one->ownMemory;
            state.counters["kB"] = one->usedMemory;
        }
        state.SetIterationTime(fastest);
    }
}

const bool registered = [] {
    for (const char* name : {"vorlo", "toolkit"})
        benchmark::RegisterBenchmark(
            (std::string("start/") + name).c_str(),
            [program = std::string("first_frame_") + name](benchmark::State& state) { start(state, program.c_str()); })
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
