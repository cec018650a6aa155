#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>

namespace bench
{

/// Resident memory in kB, without and with the pages of libraries and other files.
struct Memory {
    long own = 0;
    long resident = 0;
};

inline Memory memory()
{
    Memory result;
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("RssAnon:"))
            result.own = std::stol(line.substr(8));
        if (line.starts_with("VmRSS:"))
            result.resident = std::stol(line.substr(6));
    }
    return result;
}

/// Waits for a window's first paint and prints the steady clock in ns, then the memory in kB once the program is idle,
/// and ends the program.
class FirstFrame final : public QObject
{
public:
    explicit FirstFrame(QWidget& window) { window.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_painted) {
            m_painted = true;
            QMetaObject::invokeMethod(this, &FirstFrame::reportTime,
                                      Qt::QueuedConnection); // the frame has reached the screen
            QTimer::singleShot(kMillisecondsToRest, this, &FirstFrame::reportMemory);
        }
        return false;
    }

private:
    static constexpr int kMillisecondsToRest = 200;

    void reportTime()
    {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        std::printf("%lld ", static_cast<long long>(std::chrono::nanoseconds(now).count()));
    }

    void reportMemory()
    {
        const Memory used = memory();
        std::printf("%ld %ld\n", used.own, used.resident);
        std::fflush(stdout);
        std::_Exit(0); // the end of a program is not measured
    }

    bool m_painted = false;
};

} // namespace bench
