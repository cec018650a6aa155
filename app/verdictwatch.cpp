#include "app/verdictwatch.h"

#include <QScopedValueRollback>

#include <chrono>

namespace app
{
namespace
{

constexpr std::chrono::milliseconds kSlice{10}; // short enough for typing to feel immediate

constexpr Opening kDetails{"mnuFitDetails", "opens Fit Details"};
constexpr Opening kIteration{"txtIteration", "goes to Iteration"};
constexpr Opening kTolerance{"txtTolerance", "goes to Tolerance"};
constexpr Opening kSettings{"mnuSetParameters", "opens the output settings"};
constexpr Opening kFindRatioStart{"mnuFindSternVolmerStart", "finds start values"};
constexpr Opening kFindDecayStart{"mnuFindDecayStart", "finds start values"};

Opening startSearchOf(models::Analysis analysis)
{
    return analysis == models::Analysis::Decay ? kFindDecayStart : kFindRatioStart;
}

Opening namedBy(const trust::Judgement& judgement, models::Analysis analysis)
{
    switch (judgement.advice) {
    case trust::Advice::GoOn:
        return judgement.raiseLimit ? kIteration : kTolerance;
    case trust::Advice::OtherMode:
        return kSettings;
    case trust::Advice::FindStartValues:
    case trust::Advice::Calculate:
        return startSearchOf(analysis);
    case trust::Advice::None:
        break;
    }
    return kDetails;
}

StatedVerdict verdictOf(const trust::Judgement& judgement, const analysis::Request& request)
{
    using trust::Verdict;
    return {.text = trust::sentence(judgement, request.model),
            .opens = namedBy(judgement, analysis::methodOf(request)),
            .warns = judgement.verdict != Verdict::Judging && judgement.verdict != Verdict::AtMinimum &&
                     judgement.verdict != Verdict::NothingFree};
}

/// "not a minimum" of "not a minimum: the sum is 1770 times the least. Find Start Values": sums and advice were about
/// the earlier texts.
std::string withoutAdvice(const std::string& text) { return text.substr(0, text.find_first_of(":.")); }

} // namespace

VerdictWatch::VerdictWatch(const CommandInput& input) : m_input(input)
{
    connect(&m_slices, &QTimer::timeout, this, &VerdictWatch::workOneSlice);
}

void VerdictWatch::run(const std::function<void()>& command)
{
    drop();
    {
        const QScopedValueRollback begun(m_begun, typed());
        const QScopedValueRollback deeper(m_commands, m_commands + 1);
        command();
    }
    if (m_commands == 0 && m_last && !fit::StopRequested)
        judgeIfNeeded();
}

void VerdictWatch::analysed(const analysis::Request& request, const analysis::Result& result)
{
    ResultStore& results = m_input.shared.results;
    if (m_last && !m_last->leastSum)
        results.setVerdict(m_last->run, "not judged");
    m_last = {.request = request, .result = result, .run = result.fitted ? results.runs : 0, .leastSum = {}};
    m_judged = m_begun;
    state(verdictOf({}, request));
}

void VerdictWatch::faulted(models::Analysis analysis)
{
    if (m_last)
        m_last->isStated = false;
    m_judged = m_begun;
    state({.text = "no result: a number became infinite or undefined. Find Start Values",
           .opens = startSearchOf(analysis),
           .warns = true});
}

void VerdictWatch::judgeIfNeeded()
{
    trust::LeastSums& known = m_input.shared.leastSums;
    if (m_last->leastSum && known.leastSum(m_last->request) >= *m_last->leastSum)
        return;
    m_judging.emplace(m_last->request, m_last->result, known);
    m_slices.start(0);
}

void VerdictWatch::drop()
{
    m_slices.stop();
    m_judging.reset();
}

void VerdictWatch::workOneSlice()
{
    if (!m_judging->advance(kSlice))
        return;
    const trust::Judgement judgement = m_judging->judgement();
    const StatedVerdict verdict = verdictOf(judgement, m_judging->request());
    m_last->leastSum = judgement.leastSum;
    drop();
    m_input.shared.results.setVerdict(m_last->run, verdict.text);
    if (m_last->isStated)
        state(verdict);
    emit judged(judgement);
}

VerdictWatch::Typed VerdictWatch::typed() const
{
    Typed typed{.cells = {}, .panel = m_input.panel.panelState(), .logMode = m_input.shared.settings.LogMode};
    for (int row = 1; row < m_input.sheet.rowCount(); ++row)
        for (int column = 1; column < m_input.sheet.columnCount(); ++column)
            typed.cells.push_back(m_input.sheet.cell(row, column));
    return typed;
}

void VerdictWatch::state(const StatedVerdict& verdict)
{
    m_verdict = verdict;
    look();
}

void VerdictWatch::look()
{
    StatedVerdict stated = m_verdict;
    if (!stated.text.empty() && typed() != m_judged)
        stated = {.text = "of data changed since: " + withoutAdvice(stated.text), .opens = stated.opens};
    if (stated == m_stated)
        return;
    m_stated = stated;
    emit changed();
}

} // namespace app
