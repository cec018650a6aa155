#include "trust/searchprogress.h"

#include "fit/gaussnewton.h"

#include <QCoreApplication>
#include <QProgressBar>

namespace trust
{

ProgressBarProgress::ProgressBarProgress(QProgressBar& bar, const bool& cancelled) : m_bar(bar), m_cancelled(cancelled)
{
    m_bar.setRange(0, 1000);
    m_bar.setValue(0);
}

bool ProgressBarProgress::operator()(double done)
{
    constexpr qint64 kYieldMilliseconds = 10;    // short enough for "Cancel" to feel immediate
    const bool first = !m_sinceEvents.isValid(); // the windows show the search at once
    if (first || m_sinceEvents.hasExpired(kYieldMilliseconds)) {
        m_bar.setValue(static_cast<int>(done * m_bar.maximum()));
        QCoreApplication::processEvents();
        m_sinceEvents.start();
    }
    return !m_cancelled && !fit::StopRequested;
}

} // namespace trust
