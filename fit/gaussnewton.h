#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <span>

namespace fit
{

inline constexpr int kMaxParameters = 3;
using Parameters = std::array<double, kMaxParameters + 1>; // slots 1..3 are used, slot 0 is not
using Flags = std::array<int, kMaxParameters + 1>;         // same rule, 1 = set

/// Set to true to end every run after its current iteration. The program sets it when its main window closes.
inline bool StopRequested = false;

inline constexpr int kMostPointsAtOnce = 256; // in one call of residuals()

/// A least-squares problem: residuals of numbered data points.
class Problem
{
public:
    virtual ~Problem() = default;

    /// Number of data points N; points are numbered 1..N.
    virtual int pointCount() const = 0;

    /// Model minus observation at a point, for parameters as the engine holds them (natural logarithms in log mode).
    virtual double residual(int point, const Parameters& a) = 0;

    /// The number of points, from the first on, that one call of residuals() can evaluate without repeating work.
    virtual int pointsAtOnce(int /*first*/) const { return kMostPointsAtOnce; }

    /// residual() of consecutive points from the first on, as many as there is room for.
    virtual void residuals(int first, const Parameters& a, std::span<double> room)
    {
        std::generate(room.begin(), room.end(), [&, point = first]() mutable { return residual(point++, a); });
    }
};

/// The interface through which the engine reports progress. The engine knows no progress bar and no event loop.
class Observer
{
public:
    virtual ~Observer() = default;

    /// Called once per iteration, after the update.
    virtual void letEventsRun() = 0;

    /// Called within an iteration by problems whose law takes long.
    virtual void letEventsRunWithinIteration() {}

    /// Called at the very end of an iteration with the number of completed updates; false ends the run.
    virtual bool keepGoing(double iterations) = 0;
};

enum class Status {
    Fine = 1,          // running, stopped by the user, or |1 - S/S_old| < tolerance
    LimitExceeded = 2, // iterations > iterationLimit
    ZeroPivot = 3,     // the linear solver met a zero pivot
};

enum class Ending {
    Converged,     // |1 - S/S_old| < tolerance
    LimitExceeded, // iterations > iterationLimit
    /// The retry with the smaller system met a zero pivot as well. This is a safeguard that no input reaches:
    /// elimination leaves the normal matrix as it is, because it is triangular and finite, and the first attempt has
    /// already found that no diagonal entry before its zero pivot is zero.
    SolverFailed,
    Stopped,         // StopRequested or Observer::keepGoing
    ArithmeticFault, // overflow, invalid operation or division by zero: parameters are not usable
    RoundingMatters, // options.residualRounding could show in the result, which is not usable
};

struct Options {
    int logMode = 0;        // 1: parameters are held as natural logarithms
    int parameterCount = 0; // 1..3
    Flags fix{};            // 1: never changed by the fit
    Flags aboveZero{};      // 1: halved instead of crossing zero (for parameters that are not logarithms)
    double iterationLimit = 100;
    double tolerance = 0.0001;    // on the relative change of the sum of squares
    bool unitStepForZero = false; // a parameter that is 0 gets the derivative step of 1; otherwise that is a fault
    /// Largest error of a residual, relative to 1 + |residual|. The run ends when this error could change the result.
    /// 0: residuals count as exact.
    double residualRounding = 0;
};

struct Outcome {
    Parameters parameters{}; // as fitted: natural logarithms in log mode
    double iterations = 0;   // completed updates
    Status status = Status::Fine;
    Ending ending = Ending::Converged;
};

/// Minimises the sum of squared residuals from `start`. Each step deliberately solves only the upper triangle of the
/// normal equations.
Outcome gaussNewton(Problem& problem, const Options& options, const Parameters& start, Observer& observer);

/// The same in single iterations, for a caller that does other things between them. The problem must outlive it.
class GaussNewton
{
public:
    GaussNewton(Problem& problem, const Options& options, const Parameters& start);
    ~GaussNewton();

    /// False: the run has ended.
    bool iterate(Observer& observer);
    const Outcome& outcome() const; // so far

private:
    class Run;
    std::unique_ptr<Run> m_run;
};

} // namespace fit
