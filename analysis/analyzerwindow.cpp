#include "analysis/analyzerwindow.h"

#include "analysis/arithmeticfault.h"
#include "fit/numbertext.h"
#include "fit/report.h"
#include "ui/prompter.h"
#include "ui/twips.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace analysis
{
namespace
{

constexpr qint64 kYieldMilliseconds = 10;   // short enough for STOP to feel immediate
constexpr unsigned kEvaluationsPerLook = 8; // at the clock: a look may take a tenth of the time of an evaluation
constexpr qint64 kShowMilliseconds = 40;    // a painted progress bar costs as much as several iterations
constexpr auto kSolverFailure = "Gauss-Newton法でエラーが起こりました\r\n初期値を変えて実行してみてください";

/// The progress bar counts in int and shows a busy indicator for an empty range; iteration limits may exceed int or be
/// 0.
int progressSteps(double steps, double least)
{
    return static_cast<int>(std::clamp(steps, least, double{std::numeric_limits<int>::max()}));
}

} // namespace

AnalyzerWindow::AnalyzerWindow(const QString& title, ui::Prompter& prompter)
    : m_prompter(prompter), m_model(new QLabel(this)), m_progress(new QProgressBar(this)),
      m_results(new QPlainTextEdit(this)), m_stop(new QPushButton("&STOP", this)), m_ok(new QPushButton("&OK", this))
{
    setWindowTitle(title);
    m_model->setObjectName("lblModel");
    m_progress->setObjectName("ProgressBar1");
    m_progress->setAccessibleName("Progress of the fit");
    m_progress->setTextVisible(false); // a share of the iteration limit is no share of the work
    m_results->setObjectName("txtResults");
    m_results->setAccessibleName("Report of the fit");
    m_results->setReadOnly(true);
    m_results->setTabChangesFocus(true);
    m_results->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_stop->setObjectName("cmdSTOP");
    m_stop->setEnabled(false);
    m_ok->setObjectName("cmdOK");
    layOut();
    connect(m_stop, &QPushButton::clicked, this, [this] { m_stopped = true; });
    connect(m_ok, &QPushButton::clicked, this, [this] {
        hide();
        emit dismissed();
    });
}

void AnalyzerWindow::layOut()
{
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_stop);
    buttons->addWidget(m_ok);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_model);
    layout->addWidget(m_progress);
    layout->addWidget(m_results);
    layout->addLayout(buttons);
}

void AnalyzerWindow::setLogMode(int mode)
{
    const fit::Parameters held = startParameters(m_request);
    m_request.options.logMode = mode;
    m_request = startingAt(m_request, held);
}

void AnalyzerWindow::setInitialParameter(int np, double p1, double p2, double p3)
{
    m_request.options.parameterCount = np;
    m_request.values = {0, p1, p2, p3};
    m_request.leftover = startParameters(m_request);
}

void AnalyzerWindow::setAboveZero(int z1, int z2, int z3)
{
    m_request.options.aboveZero = m_request.options.logMode == 1 ? fit::Flags{} : fit::Flags{0, z1, z2, z3};
}

std::string AnalyzerWindow::getError() const { return fit::errorText(m_status); }

std::string AnalyzerWindow::getResults()
{
    const Result result = current();
    m_constants = constantsOf(m_request.model, result.values, m_constants);
    return result.report;
}

bool AnalyzerWindow::GAUSSNEWTON() { return fit(Request(m_request)).has_value(); }

bool AnalyzerWindow::ShowResult() { return showReport(m_request.model, current()); }

std::optional<Result> AnalyzerWindow::fit(const Request& request)
{
    const QScopedValueRollback outerStop(m_stopped, false);
    const QScopedValueRollback outerModel(m_runningModel, request.model);
    const QScopedValueRollback outerLimit(m_runningLimit, request.options.iterationLimit);
    const QScopedValueRollback outerIterations(m_runningIterations, 0.0);
    m_results->clear();
    showRun();
    m_sinceEvents.start();
    m_stop->setEnabled(++m_runs > 0);
    const Result result = run(request, *this);
    m_stop->setEnabled(--m_runs > 0);
    keep(request, result);
    if (fit::StopRequested)
        return std::nullopt;
    showRun();
    if (result.ending == fit::Ending::SolverFailed) {
        m_prompter.message(kSolverFailure);
        keep(request, result); // another command may have run while the message was open
    }
    return showReport(request.model, result) ? std::optional(result) : std::nullopt;
}

bool AnalyzerWindow::showReport(int model, const Result& result)
{
    if (result.fault) {
        reportArithmeticFault();
        return false;
    }
    m_constants = constantsOf(model, result.values, m_constants);
    showModel(model);
    m_results->setPlainText(QString::fromStdString(result.report));
    return true;
}

void AnalyzerWindow::keep(const Request& request, const Result& result)
{
    m_request = startingAt(request, result.parameters);
    m_status = result.status;
    m_iterations = result.iterations;
}

void AnalyzerWindow::set(const Request& request) { keep(request, {.parameters = startParameters(request)}); }

void AnalyzerWindow::reportArithmeticFault()
{
    emit faulted();
    m_prompter.message(kArithmeticFault);
}

void AnalyzerWindow::SetSize(int top, int left, int height, int width)
{
    ui::placeAndShow(*this, {top, left, height, width});
}

void AnalyzerWindow::letEventsRun()
{
    QCoreApplication::processEvents();
    m_sinceEvents.start();
}

void AnalyzerWindow::letEventsRunWithinIteration()
{
    if (++m_evaluations % kEvaluationsPerLook == 0 && m_sinceEvents.hasExpired(kYieldMilliseconds))
        letEventsRun();
}

bool AnalyzerWindow::keepGoing(double iterations)
{
    m_runningIterations = iterations;
    if (m_sinceShown.hasExpired(kShowMilliseconds))
        showRun();
    return !m_stopped;
}

void AnalyzerWindow::showModel(int model)
{
    m_model->setText(QString::fromStdString("Model" + fit::signedText(model)));
}

/// Also writes the label, because a second run may have changed the model and the range shown for this run.
void AnalyzerWindow::showRun()
{
    showModel(m_runningModel);
    m_progress->setRange(0, progressSteps(m_runningLimit + 1, 1));
    m_progress->setValue(progressSteps(m_runningIterations, 0));
    m_sinceShown.start();
}

} // namespace analysis
