#pragma once

#include "analysis/request.h"

#include <QElapsedTimer>
#include <QWidget>

#include <optional>

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

/// Shows analyses: the progress and the report of a run, and the button that stops it. Between runs it keeps the last
/// request, which the setters change, and the last result, which the getters return.
class AnalyzerWindow : public QWidget, private fit::Observer
{
    Q_OBJECT

public:
    /// First, because setInitialParameter and setAboveZero depend on it. The slots keep the numbers that they hold.
    void setLogMode(int mode);
    void setModel(int model) { m_request.model = model; }
    void setConcentrationofProbe(double cp) { m_request.Cp = cp; } // M
    void setIteration(int n) { m_request.options.iterationLimit = n; }
    void setTolerance(double t) { m_request.options.tolerance = t; }
    void setStatus(int s) { m_status = s; }
    void setExenum(int n) { m_iterations = n; }
    /// Starting values in their real units. In log mode a value that is not positive leaves its slot as it was.
    void setInitialParameter(int np, double p1, double p2, double p3);
    void setFixation(int f1, int f2, int f3) { m_request.options.fix = {0, f1, f2, f3}; }
    void setAboveZero(int z1, int z2, int z3); // all 0 in log mode, where a logarithm may be negative

    // Parameter values of the last report; one that the model lacks keeps its previous value.
    double getF() const { return m_constants.F; }
    double getK() const { return m_constants.K; }
    double getkq1() const { return m_constants.kq1; }
    double getkq2() const { return m_constants.kq2; }
    double getkq22() const { return m_constants.kq22; }
    double getR2() const { return current().statistics.R2; }
    double getXaisqr() const { return current().statistics.sumOfSquares; }
    std::string getError() const;
    /// Builds the report of the current state and stores its parameter values for the getters.
    std::string getResults();

    /// Fits with the present settings and writes the report. False if there is no result: after an arithmetic fault,
    /// which a message has reported, or at the end of the program.
    bool GAUSSNEWTON();
    /// Puts the report of the current state into the results box. False after an arithmetic fault, as above.
    bool ShowResult();
    void SetSize(int top, int left, int height, int width);

    /// Stores a request without running it.
    void set(const Request& request);
    /// Runs a request and writes its report; nullopt where GAUSSNEWTON returns false. A second run that starts before
    /// the end does not disturb the first.
    std::optional<Result> fit(const Request& request);
    /// Writes a model's report. False after an arithmetic fault, which a message reports.
    bool showReport(int model, const Result& result);
    /// Tells the user that the command ends because a number is infinite or undefined.
    void reportArithmeticFault();

    /// The request as the last run or the setters have left it.
    const Request& request() const { return m_request; }

signals:
    void dismissed(); // "OK" has hidden the window
    void faulted();   // an arithmetic fault was reported

protected:
    AnalyzerWindow(const QString& title, ui::Prompter& prompter);
    Request& requestToSet() { return m_request; }

private:
    void letEventsRun() override;
    void letEventsRunWithinIteration() override;
    bool keepGoing(double iterations) override;
    Result current() const { return calculate(m_request, m_status, m_iterations); }
    void keep(const Request& request, const Result& result);
    void showModel(int model);
    void showRun();
    void layOut();

    ui::Prompter& m_prompter;
    QLabel* m_model;
    QProgressBar* m_progress;
    QPlainTextEdit* m_results;
    QPushButton* m_stop;
    QPushButton* m_ok;
    Request m_request; // starts at the current parameters
    int m_status = 0;
    double m_iterations = 0;
    Constants m_constants;
    int m_runs = 0; // that have begun and not ended
    bool m_stopped = false;
    int m_runningModel = 0;
    double m_runningLimit = 0;
    double m_runningIterations = 0;
    unsigned m_evaluations = 0;
    QElapsedTimer m_sinceEvents;
    QElapsedTimer m_sinceShown;
};

} // namespace analysis
