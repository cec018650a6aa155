#pragma once

#include "app/panelvalues.h"
#include "app/resultstore.h"
#include "fit/gaussnewton.h"
#include "fit/statistics.h"
#include "models/catalogue.h"

#include <memory>
#include <optional>
#include <string>

/// The code above the engine that both analyses share.
namespace analysis
{

/// A configurable fit and the results of its last run: the setters and getters of both analyzers.
/// Call setLogMode first: setInitialParameter and setAboveZero depend on it.
class Fitter
{
public:
    virtual ~Fitter() = default;

    void setLogMode(int mode) { m_state.options.logMode = mode; } // 1: parameters are held as natural logarithms
    void setModel(int model) { m_state.model = model; }
    void setConcentrationofProbe(double cp) { m_state.probe = cp; } // M
    void setIteration(int n) { m_state.options.iterationLimit = n; }
    void setTolerance(double t) { m_state.options.tolerance = t; }
    void setStatus(int s) { m_state.status = s; }
    void setExenum(int n) { m_state.iterations = n; }
    /// Start values in their real units. In log mode a value that is not positive does not change its slot.
    void setInitialParameter(int np, double p1, double p2, double p3);
    void setFixation(int f1, int f2, int f3) { m_state.options.fix = {0, f1, f2, f3}; }
    void setAboveZero(int z1, int z2, int z3);

    // Parameter values of the last report. A parameter that the model does not have keeps its previous value.
    double getF() const { return m_values.F; }
    double getK() const { return m_values.K; }
    double getkq1() const { return m_values.kq1; }
    double getkq2() const { return m_values.kq2; }
    double getkq22() const { return m_values.kq22; }
    double getR2() { return statistics().R2; }
    double getXaisqr() { return statistics().residualSum; }
    std::string getError() const;
    /// Builds the report of the current state and stores its parameter values for the getters.
    std::string getResults();

    int model() const { return m_state.model; }
    int logMode() const { return m_state.options.logMode; }
    double probe() const { return m_state.probe; }
    const fit::Options& options() const { return m_state.options; }
    const fit::Parameters& parameters() const { return m_state.parameters; }
    /// Whether the model's parameters are finite in their real units. Slots that it does not use are not checked.
    bool realValuesFinite() const;
    double iterations() const { return m_state.iterations; }

protected:
    explicit Fitter(bool unitStepForZero) { m_state.options.unitStepForZero = unitStepForZero; }

    /// Runs the engine on a copy of the present configuration. Changes during the run, also by a second run, neither
    /// disturb this run nor survive it.
    fit::Ending run(fit::Observer& observer);

    /// Fits a copy of problem(), by default with the engine.
    virtual fit::Outcome solve(fit::Problem& problem, const fit::Options& options, const fit::Parameters& start,
                               fit::Observer& observer) const;
    /// The problem as configured.
    virtual std::shared_ptr<fit::Problem> problem() = 0;
    /// Statistics at the current parameters.
    virtual fit::Statistics statistics() = 0;
    /// Replaces the problem with a copy, so that a run owns the present problem; adopt() restores it.
    virtual void detach() = 0;
    virtual void adopt(std::shared_ptr<fit::Problem> problem) = 0;

private:
    struct State {
        fit::Options options;
        fit::Parameters parameters{}; // natural logarithms in log mode
        int model = 0;
        double probe = 0;
        int status = 0;
        double iterations = 0;
    };
    struct Values {
        double K = 0, F = 0, kq1 = 0, kq2 = 0, kq22 = 0;
    };

    double realValue(int slot) const;
    double& valueOf(const models::Parameter& parameter);

    State m_state;
    Values m_values;
};

enum class Kind { Fit, Calculation };

/// A finished run, for later examination.
struct FinishedRun {
    app::PanelState panel; // as it was when the command started
    fit::Options options;
    fit::Parameters values{}; // in their real units
    double iterations = 0;
    Kind kind = Kind::Fit;
};
FinishedRun finishedRun(const Fitter& fitter, const app::PanelState& panel, Kind kind);

/// Passes a model's start values and flags to a fitter.
void configure(Fitter& fitter, const app::StartParameters& start);

/// The result of a finished fit of a model; s: radius of the probe, nm. nullopt if the model has an interaction radius
/// that is too large for a double.
std::optional<app::ResultRecord> resultOf(Fitter& fitter, models::Analysis analysis, int model, double s);

} // namespace analysis
