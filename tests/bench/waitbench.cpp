#include "app/datasheet.h"
#include "app/parameterpanel.h"
#include "app/startup.h"
#include "ui/prompter.h"

#include <benchmark/benchmark.h>

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

const bool registered = [] {
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
