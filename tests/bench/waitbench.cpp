#include "app/datasheet.h"
#include "app/parameterpanel.h"
#include "app/startup.h"
#include "ui/prompter.h"

#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QAction>
#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <ctime>

namespace
{

/// Processor time of the program's only thread, s.
double processorTime()
{
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// The longest time that a click or a repaint waits for the event loop, measured by a timer without interval.
class LongestWait final : public QTimer
{
public:
    LongestWait()
    {
        callOnTimeout(this, &LongestWait::end);
        start(0);
    }
    void end()
    {
        const double now = processorTime();
        m_longest = std::max(m_longest, now - m_since);
        m_since = now;
    }
    double seconds() const { return m_longest; }

private:
    double m_since = processorTime();
    double m_longest = 0;
};

/// The largest session: 20 samples of three components, with a hundred quenchers beside a probe.
void fillSheet(app::DataSheet& sheet)
{
    const QStringList components{"3", "5", "400", "3", "150", "2", "40"};
    for (int sample = 1; sample <= 20; ++sample) {
        sheet.SetSheetText(1, sample, QString::number((sample - 1) * 0.01));
        for (int row = 0; row < components.size(); ++row)
            sheet.SetSheetText(row + 2, sample, components[row]);
    }
}

/// A fit with everything that follows it, including windows that open for the first time.
void wait(benchmark::State& state, int model, int logMode)
{
    ui::DialogPrompter prompter;
    app::VorloMain program(prompter);
    fillSheet(program.MainWindow.sheet());
    program.shared.settings.LogMode = logMode;
    app::PanelState panel;
    panel.Model = model;
    panel.K = "500";
    panel.iteration = "5";
    panel.tolerance = "0";
    program.MainWindow.panel().setPanelState(panel);
    const auto choose = [&](const char* item) { program.MainWindow.findChild<QAction*>(item)->trigger(); };
    choose("mnuNormalization");
    QCoreApplication::processEvents();
    for (auto _ : state) {
        LongestWait wait;
        choose("mnuDecayCurveAnalysis");
        wait.end();
        QCoreApplication::processEvents(); // paints
        wait.end();
        state.SetIterationTime(wait.seconds());
    }
}

/// Twenty samples of three components with both kinds of data, from the choice of the item to the painted window.
void openLifetimes(benchmark::State& state, bool eachEstimated)
{
    ui::DialogPrompter prompter;
    app::VorloMain program(prompter);
    app::DataSheet& sheet = program.MainWindow.sheet();
    for (int sample = 0; sample < 20; ++sample) {
        const double quenching = 1 + 0.5 * sample, error = 1 + 0.02 * ((sample * 7) % 5 - 2);
        const QStringList column{QString::number(sample * 0.01),
                                 "3",
                                 "5",
                                 QString::number(400 / quenching * error),
                                 "3",
                                 QString::number(150 / quenching),
                                 "2",
                                 QString::number(40 / quenching),
                                 QString::number(1000 / quenching / (1 + 0.02 * sample) * error)};
        for (int row = 0; row < column.size(); ++row)
            sheet.SetSheetText(row + 1, sample + 1, column[row]);
    }
    const auto open = [&] {
        program.MainWindow.findChild<QAction*>("mnuLifetimes")->trigger();
        QCoreApplication::processEvents(); // paints
    };
    if (eachEstimated) {
        open();
        program.lifetimesWindow.findChild<QAbstractButton*>("chkEachEstimated")->click();
    }
    for (auto _ : state) {
        program.lifetimesWindow.close();
        const double begin = processorTime();
        open();
        state.SetIterationTime(processorTime() - begin);
    }
}

const bool registered = [] {
    for (bool eachEstimated : {false, true})
        benchmark::RegisterBenchmark(eachEstimated ? "open/lifetimes, each estimated" : "open/lifetimes", openLifetimes,
                                     eachEstimated)
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    for (int model : {10, 11})
        for (int logMode : {0, 1})
            benchmark::RegisterBenchmark(("wait/Model " + std::to_string(model) + (logMode == 1 ? " log" : "")).c_str(),
                                         wait, model, logMode)
                ->UseManualTime()
                ->Iterations(1)
                ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
