#include "app/undohistory.h"

#include "app/sessioncommands.h"

#include <QScopedValueRollback>

#include <utility>

namespace app
{

class UndoHistory::Step final : public QUndoCommand
{
public:
    Step(UndoHistory& history, const QString& text, SessionState before, SessionState after)
        : QUndoCommand(text), m_history(history), m_before(std::move(before)), m_after(std::move(after)),
          m_bytes(bytesBeyond(m_before, m_after))
    {
        m_history.m_bytes += m_bytes;
    }
    ~Step() override { m_history.m_bytes -= m_bytes; }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

    void undo() override
    {
        m_after.values = m_history.m_known.values; // with the verdicts that came later
        m_history.show(m_before, m_after);
    }
    void redo() override
    {
        if (std::exchange(m_shown, true)) // the stack calls this for a new step, too
            m_history.show(m_after, m_before);
    }

private:
    UndoHistory& m_history;
    SessionState m_before, m_after;
    qsizetype m_bytes;
    bool m_shown = false;
};

UndoHistory::UndoHistory(const SessionParts& parts, QObject* parent)
    : QObject(parent), m_parts(parts), m_known(stateOf(parts, {}))
{
    m_stack.setUndoLimit(kMostSteps);
}

UndoHistory::Hold::Hold(UndoHistory& history) : m_history(history)
{
    ++m_history.m_holds;
    emit m_history.changed();
}

UndoHistory::Hold::~Hold()
{
    --m_history.m_holds;
    emit m_history.changed();
}

void UndoHistory::begin()
{
    if (m_depth > 0)
        return;
    emit beginning();
    m_known = stateOf(m_parts, m_known);
}

void UndoHistory::noteView()
{
    if (m_depth == 0)
        m_known.view = viewOf(m_parts, m_known.view);
}

void UndoHistory::noteTyping(bool typed)
{
    if (typed)
        noteView();
    m_typed = typed;
    emit changed();
}

QString UndoHistory::undoText() const
{
    if (m_holds > 0)
        return {};
    return m_typed ? tr("Typing") : m_stack.undoText();
}

QString UndoHistory::redoText() const { return m_holds > 0 || m_typed ? QString() : m_stack.redoText(); }

void UndoHistory::end(const QString& step)
{
    if (m_depth > 0)
        return;
    SessionState before = std::exchange(m_known, stateOf(m_parts, m_known));
    if (m_known.sameSession(before))
        return;
    if (m_bytes + bytesBeyond(before, m_known) > kMostBytes)
        m_stack.clear();
    m_stack.push(new Step(*this, step, std::move(before), m_known));
    emit changed();
}

void UndoHistory::run(const QString& step, const std::function<void()>& command)
{
    begin();
    {
        const QScopedValueRollback running(m_depth, m_depth + 1);
        command();
    }
    end(step);
}

void UndoHistory::move(void (QUndoStack::*direction)())
{
    if (m_holds > 0)
        return;
    begin();
    {
        const QScopedValueRollback running(m_depth, m_depth + 1);
        (m_stack.*direction)();
    }
    m_known = stateOf(m_parts, m_known);
    emit moved();
    emit changed();
}

// A file that was saved under another name after the step keeps this name.
void UndoHistory::show(const SessionState& state, const SessionState& from)
{
    showState(m_parts, state);
    if (state.path != from.path)
        m_parts.commands.setPath(state.path);
}

} // namespace app
