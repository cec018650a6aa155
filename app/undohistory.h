#pragma once

#include "app/sessionstate.h"

#include <QObject>
#include <QUndoStack>

#include <functional>

namespace app
{

/// The steps that changed the session. Each keeps the state before and the state after it.
class UndoHistory : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMostSteps = 200;
    /// If all steps together would need more, those before the newest are forgotten. A step in a sheet of 20 samples
    /// needs some kilobytes.
    static constexpr qsizetype kMostBytes = 64'000'000;

    explicit UndoHistory(const SessionParts& parts, QObject* parent = nullptr);

    /// Notes the state before a step.
    void begin();
    /// Notes only what is selected, for a step whose beginning was not noted because it changed nothing yet.
    void noteView();
    /// A text that is not stored yet can be undone, too; it is stored before.
    void noteTyping(bool typed);
    /// Makes a step of what changed since begin(), if the session changed. `step` says what is undone.
    void end(const QString& step);
    /// Makes one step of a command, whatever steps it consists of.
    void run(const QString& step, const std::function<void()>& command);

    /// Nothing can be undone while an object of this class exists.
    class Hold
    {
    public:
        explicit Hold(UndoHistory& history);
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        UndoHistory& m_history;
    };

    /// What can be undone or redone now; empty: nothing.
    QString undoText() const;
    QString redoText() const;
    void undo() { move(&QUndoStack::undo); }
    void redo() { move(&QUndoStack::redo); }

signals:
    void beginning(); // of a step: what was entered before becomes a step of its own first
    void moved();     // by undo or redo: the session is another one
    void changed();   // what can be undone or redone

private:
    class Step;
    void move(void (QUndoStack::*direction)());
    void show(const SessionState& state, const SessionState& from);

    SessionParts m_parts;
    SessionState m_known;  // at the last begin() or end()
    qsizetype m_bytes = 0; // that the steps need
    QUndoStack m_stack;
    int m_depth = 0; // commands that are running as one step, and moves
    int m_holds = 0;
    bool m_typed = false; // a text is not stored yet
};

} // namespace app
