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

/// Own resident memory without pages of libraries and other files, and with them, kB.
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

/// Waits for a window's first paint, prints the steady clock, ns, and the memory, kB, and ends the program.
class FirstFrame final : public QObject
{
public:
    explicit FirstFrame(QWidget& window) { window.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_painted) {
            m_painted = true;
            QTimer::singleShot(0, this, &FirstFrame::report); // when the frame has been handed over
        }
        return false;
    }

private:
    void report()
    {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        const Memory used = memory();
        std::printf("%lld %ld %ld\n", static_cast<long long>(std::chrono::nanoseconds(now).count()), used.own,
                    used.resident);
        std::fflush(stdout);
        std::_Exit(0); // the end of a program is not measured
    }

    bool m_painted = false;
};

} // namespace bench
