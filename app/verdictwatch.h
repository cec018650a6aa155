#pragma once

#include "app/commandinput.h"
#include "trust/judging.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace app
{

/// What a press on the status line does.
struct Opening {
    const char* name = ""; // objectName of a menu item or a box
    const char* text = ""; // for the tooltip and for screen readers
    bool operator==(const Opening&) const = default;
};

/// What the status line says of the last analysis or calculation.
struct StatedVerdict {
    std::string text;
    Opening opens;      // what the text names
    bool warns = false; // the user should do something about the fit
    bool operator==(const StatedVerdict&) const = default;
};

/// Judges every analysis and calculation after its command, in short slices of the event loop, and notices when what
/// was typed has changed since. The verdict goes to the status line and, for an analysis, to its stored result.
class VerdictWatch : public QObject
{
    Q_OBJECT

public:
    explicit VerdictWatch(const CommandInput& input);

    /// Runs a command. A judging is dropped when it begins, and begins again if the command leaves the fit the last
    /// one. A verdict is given anew if the command has found a lower least sum.
    void run(const std::function<void()>& command);

    /// Called within the command by every analysis, after its result was stored, and by every calculation.
    void analysed(const analysis::Request& request, const analysis::Result& result);
    /// Called within a command that ends without a result because of an arithmetic fault.
    void faulted(models::Analysis analysis);

    /// Called after anything was typed or chosen.
    void look();

    const StatedVerdict& stated() const { return m_stated; }

signals:
    void changed();                                 // what is stated
    void judged(const trust::Judgement& judgement); // the last analysis or calculation with a result

private:
    /// All that a command reads; a verdict holds as long as this stays the same.
    struct Typed {
        std::vector<std::string> cells;
        PanelState panel;
        int logMode = 0;
        bool operator==(const Typed&) const = default;
    };
    struct Fit {
        analysis::Request request;
        analysis::Result result;
        int run = 0;                    // number of the stored result; 0: none
        std::optional<double> leastSum; // of its verdict; none before
        bool isStated = true;           // false: a later command had no result, and that is stated
    };
    Typed typed() const;
    void state(const StatedVerdict& verdict);
    void judgeIfNeeded();
    void workOneSlice();
    void drop();

    CommandInput m_input;
    int m_commands = 0; // that are running, one inside the other
    Typed m_begun;      // at the start of the innermost command
    std::optional<Fit> m_last;
    std::optional<trust::Judging> m_judging;
    QTimer m_slices;
    Typed m_judged;          // what the verdict is about
    StatedVerdict m_verdict; // without a look at later changes
    StatedVerdict m_stated;
};

} // namespace app
