#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QProcess>

#include <chrono>

namespace
{

/// From before the process exists to its first painted frame. kB: its resident memory then; ownkB: without the pages
/// of libraries and other files.
void start(benchmark::State& state, const char* program)
{
    const QString path = QCoreApplication::applicationDirPath() + "/" + program;
    for (auto _ : state) {
        const auto before = std::chrono::steady_clock::now().time_since_epoch();
        QProcess process;
        process.start(path, QStringList());
        process.waitForFinished();
        const QList<QByteArray> words = process.readAllStandardOutput().split(' ');
        if (words.size() != 3) {
            state.SkipWithError("no frame");
            return;
        }
        state.SetIterationTime(1e-9 * static_cast<double>(words[0].toLongLong()) -
                               std::chrono::duration<double>(before).count());
        state.counters["ownkB"] = words[1].toDouble();
        state.counters["kB"] = words[2].toDouble();
    }
}

const bool registered = [] {
    for (const char* name : {"vorlo", "toolkit"})
        benchmark::RegisterBenchmark(
            (std::string("start/") + name).c_str(),
            [program = std::string("first_frame_") + name](benchmark::State& state) { start(state, program.c_str()); })
            ->UseManualTime()
            ->Iterations(5)
            ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
