#pragma once

#include "leastsquares/solutions.h"
#include "trust/enginerun.h"
#include "trust/requestedfit.h"

#include <optional>
#include <string>

namespace trust
{

/// Start values, rounded for the boxes, and the end of an analysis that starts from them.
struct EngineStart {
    fit::Parameters values{};
    double sumOfSquares = 0;       // at the start
    double reached = 0;            // at the end
    bool leadsToMinimum = false;   // as good as the lowest sum of the solution at the end
    bool leadsInOtherMode = false; // only with the other choice of "normal" and "log mode"
};

/// The engine takes coarse steps and may leave a minimum at which it starts. Finds start values near the minimum from
/// which the engine ends at the minimum; if there are none, tries the minimum itself in the other mode.
class StartFinder
{
public:
    /// requested must outlive it.
    StartFinder(const RequestedFit& requested, const leastsquares::Solution& solution);

    /// An iteration of the engine; false: nothing is left to be tried.
    bool step();
    /// After the last step.
    const EngineStart& found() const { return m_best; }

private:
    enum class Stage { Briefly, Exactly, Around, OtherMode, Done };

    void tryFrom(const fit::Parameters& values);
    EngineStart ended() const;
    void goOn(const EngineStart& end);
    void moveOn(const EngineStart& end);
    void tryMoved();
    void tryOtherMode();
    fit::Parameters rounded(fit::Parameters values, const char* pattern) const;
    fit::Parameters briefly(const fit::Parameters& exact) const;

    const RequestedFit& m_requested;
    const leastsquares::FreeSlots m_free;
    const leastsquares::Solution m_solution;
    Stage m_stage = Stage::Briefly;
    analysis::Request m_tried; // the request of the present run
    std::optional<EngineRun> m_run;
    double m_evaluationsLeft = kEvaluations;
    EngineStart m_atMinimum;
    EngineStart m_best;   // so far
    EngineStart m_centre; // of the moves
    double m_stride;      // of a move, relative
    std::size_t m_move = 0;
};

/// The same without pauses.
EngineStart engineStart(const RequestedFit& requested, const leastsquares::Solution& solution,
                        const KeepGoing& keepGoing = {});

/// The text of a start value for its box.
std::string startText(double value);

} // namespace trust
