#pragma once

#include <QElapsedTimer>

class QProgressBar;

namespace trust
{

/// Keeps the windows alive while something is searched for: shows how far it is and lets events run now and then.
class ProgressBarProgress
{
public:
    ProgressBarProgress(QProgressBar& bar, const bool& cancelled);

    /// False when the user has cancelled or the program ends.
    bool operator()(double done);

private:
    QProgressBar& m_bar;
    const bool& m_cancelled;
    QElapsedTimer m_sinceEvents;
};

} // namespace trust
