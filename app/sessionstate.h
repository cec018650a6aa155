#pragma once

#include "app/blocktext.h"
#include "app/panelvalues.h"
#include "app/resultstore.h"
#include "app/settings.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace app
{

class DataSheet;
class ParameterPanel;
class ResultsTable;
class SessionCommands;
struct SharedState;

/// The session at one moment: what it holds and what is selected. Equal parts of successive states share their memory.
struct SessionState {
    struct Values {
        PanelState panel;
        Settings settings;
        ResultStore results;
        int FitRegionMode = 0;
        bool operator==(const Values&) const = default;
    };
    struct View {
        QList<QStringList> resultTexts; // as the results table shows them, with the cursor's mark
        Block selectedCells, selectedResults;
    };

    QList<QStringList> cells; // of the sheet, with its titles: [row][column]
    std::shared_ptr<const Values> values;
    QString path; // of the session's file
    View view;

    /// Whether both hold the same session, whatever is selected.
    bool sameSession(const SessionState& other) const;
};

/// The windows and data that make up the session; all must outlive their users.
struct SessionParts {
    DataSheet& sheet;
    ParameterPanel& panel;
    ResultsTable& results;
    SharedState& shared;
    SessionCommands& commands;
};

SessionState::View viewOf(const SessionParts& parts, const SessionState::View& earlier);
/// The present state; what equals the earlier state is shared with it.
SessionState stateOf(const SessionParts& parts, const SessionState& earlier);

/// Shows a state. Normalised data become invalid if cells change.
void showState(const SessionParts& parts, const SessionState& state);

/// The memory that `state` does not share with `earlier`, in bytes.
qsizetype bytesBeyond(const SessionState& earlier, const SessionState& state);

} // namespace app
