#include "analysis/fitter.h"

#include "fit/realparameters.h"
#include "fit/report.h"

#include <cmath>
#include <vector>

namespace analysis
{

void Fitter::setInitialParameter(int np, double p1, double p2, double p3)
{
    m_state.options.parameterCount = np;
    const fit::Parameters start{0, p1, p2, p3};
    for (std::size_t slot = 1; slot < start.size(); ++slot) {
        if (logMode() != 1)
            m_state.parameters[slot] = start[slot];
        else if (start[slot] > 0)
            m_state.parameters[slot] = std::log(start[slot]);
    }
}

void Fitter::setAboveZero(int z1, int z2, int z3)
{
    m_state.options.aboveZero = logMode() == 1 ? fit::Flags{} : fit::Flags{0, z1, z2, z3};
}

std::string Fitter::getError() const { return fit::errorText(m_state.status); }

std::string Fitter::getResults()
{
    std::vector<fit::ReportLine> lines;
    int slot = 0;
    for (const models::Parameter& parameter : models::row(model()).fitted()) {
        const double value = realValue(++slot);
        valueOf(parameter) = value;
        lines.push_back({parameter.label, value});
    }
    return fit::reportText({.model = model(),
                            .parameters = lines,
                            .iterations = m_state.iterations,
                            .statistics = statistics(),
                            .status = m_state.status});
}

double Fitter::realValue(int slot) const
{
    const double value = m_state.parameters[static_cast<std::size_t>(slot)];
    return logMode() == 1 ? std::exp(value) : value;
}

bool Fitter::realValuesFinite() const
{
    for (int slot = 1; slot <= models::row(model()).parameterCount(); ++slot)
        if (!std::isfinite(realValue(slot)))
            return false;
    return true;
}

double& Fitter::valueOf(const models::Parameter& parameter)
{
    switch (parameter.reported) {
    case models::Kq1:
        return m_values.kq1;
    case models::Kq2:
        return m_values.kq2;
    case models::Kq22:
        return m_values.kq22;
    default:
        return parameter.box == models::Box::F ? m_values.F : m_values.K;
    }
}

fit::Ending Fitter::run(fit::Observer& observer)
{
    State own = m_state;
    const std::shared_ptr<fit::Problem> ownProblem = problem();
    detach();
    const fit::Outcome outcome = solve(*ownProblem, own.options, own.parameters, observer);
    adopt(ownProblem);
    own.parameters = outcome.parameters;
    own.iterations = outcome.iterations;
    own.status = static_cast<int>(outcome.status);
    m_state = own;
    return outcome.ending;
}

fit::Outcome Fitter::solve(fit::Problem& problem, const fit::Options& options, const fit::Parameters& start,
                           fit::Observer& observer) const
{
    return fit::gaussNewton(problem, options, start, observer);
}

FinishedRun finishedRun(const Fitter& fitter, const app::PanelState& panel, Kind kind)
{
    return {.panel = panel,
            .options = fitter.options(),
            .values = fit::realParameters(fitter.logMode(), fitter.parameters()),
            .iterations = fitter.iterations(),
            .kind = kind};
}

void configure(Fitter& fitter, const app::StartParameters& start)
{
    fitter.setInitialParameter(start.count, start.values[1], start.values[2], start.values[3]);
    fitter.setFixation(start.fix[1], start.fix[2], start.fix[3]);
    fitter.setAboveZero(start.aboveZero[1], start.aboveZero[2], start.aboveZero[3]);
}

std::optional<app::ResultRecord> resultOf(Fitter& fitter, models::Analysis analysis, int model, double s)
{
    const models::Model& row = models::row(model);
    const double radius = row.hasRadius ? app::RadiusFromK(fitter.getK(), s) : 0;
    if (!std::isfinite(radius))
        return std::nullopt;
    return app::ResultRecord{.Method = analysis == models::Analysis::Decay ? "Decay" : "SV",
                             .Model = model,
                             .KorF = row.uses(models::Box::F) ? fitter.getF() : fitter.getK(),
                             .Kq1 = fitter.getkq1(),
                             .Kq2 = fitter.getkq2(),
                             .Kq22 = fitter.getkq22(),
                             .R2 = fitter.getR2(),
                             .Error = fitter.getError(),
                             .R = radius,
                             .Se = fitter.getXaisqr()};
}

} // namespace analysis
