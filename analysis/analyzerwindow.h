#pragma once

#include "analysis/fitter.h"

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace ui
{
class Prompter;
}

namespace analysis
{

/// The window of a configured fitter: runs the fit, shows its progress and its report, and can stop it.
class AnalyzerWindow : public QWidget, public Fitter, private fit::Observer
{
    Q_OBJECT

public:
    /// Fits with the present settings and writes the report. False if there is no result: after an arithmetic fault,
    /// which a message has reported, or at the end of the program.
    bool GAUSSNEWTON();
    /// Puts the report of the current state into the results box. False after an arithmetic fault, as above.
    bool ShowResult();
    void SetSize(int top, int left, int height, int width);
    /// Tells the user that the command ends because a number is infinite or undefined.
    void reportArithmeticFault();

signals:
    void dismissed(); // "OK" has hidden the window

protected:
    AnalyzerWindow(const QString& title, bool unitStepForZero, ui::Prompter& prompter);
    /// Called during long evaluations: lets events run, unless they ran a moment ago.
    void letEventsRunNowAndThen();

private:
    void letEventsRun() override;
    bool keepGoing(double iterations) override;
    void showModel(int model);
    void showRun();
    void layOut();

    ui::Prompter& m_prompter;
    QLabel* m_model;
    QProgressBar* m_progress;
    QPlainTextEdit* m_results;
    QPushButton* m_stop;
    QPushButton* m_ok;
    bool m_stopped = false;
    int m_runningModel = 0;
    double m_runningLimit = 0;
    double m_iterations = 0; // of the run in progress
    unsigned m_evaluations = 0;
    QElapsedTimer m_sinceEvents;
    QElapsedTimer m_sinceShown;
};

} // namespace analysis
