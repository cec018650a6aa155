#pragma once

#include <QElapsedTimer>

class QProgressBar;

namespace trust
{

/// Keeps the windows responsive during a search: shows the progress and lets events run.
class ProgressBarProgress
{
public:
    ProgressBarProgress(QProgressBar& bar, const bool& cancelled);

    /// False if the user has cancelled or the program ends.
    bool operator()(double done);

private:
    QProgressBar& m_bar;
    const bool& m_cancelled;
    QElapsedTimer m_sinceEvents;
};

} // namespace trust
