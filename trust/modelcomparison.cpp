#include "trust/modelcomparison.h"

#include "models/guide.h"
#include "trust/judging.h"
#include "trust/modelrelations.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace trust
{
namespace
{

bool contains(const leastsquares::FreeSlots& slots, std::size_t slot)
{
    return std::find(slots.begin(), slots.end(), slot) != slots.end();
}

Doubt doubtOf(const ComparedModel& compared, std::size_t slot)
{
    const double value = compared.details.values[slot];
    if (contains(compared.details.judgement.undetermined, slot))
        return Doubt::Undetermined;
    if (value < 0)
        return Doubt::Negative;
    const bool isCollisional = models::parameter(compared.model, slot).isCollisional();
    return isCollisional && value > models::kDiffusionLimit.rateConstant ? Doubt::AboveDiffusionLimit : Doubt::None;
}

/// Only where the law contains the probe and the constants have errors.
std::optional<ProbeEffect> probeEffect(const analysis::Request& request, const FitDetails& details)
{
    constexpr double kTimesSmaller = 10;
    if (!models::row(request.model).usesProbe(analysis::methodOf(request)) || !details.AICc)
        return std::nullopt;
    analysis::Request lessProbe = request;
    lessProbe.Cp /= kTimesSmaller;
    const std::unique_ptr<fit::Problem> problem = realProblem(lessProbe);
    const leastsquares::FreeSlots free = RequestedFit{*problem, lessProbe}.free();
    const fit::Parameters moved = leastsquares::descend(*problem, details.values, free).values;
    ProbeEffect effect;
    for (const std::size_t slot : free) {
        const double error = details.uncertainty.standardError[slot];
        const double errors = error > 0 ? std::abs(moved[slot] - details.values[slot]) / error : 0;
        if (errors > effect.standardErrors && !contains(details.judgement.undetermined, slot))
            effect = {slot, errors};
    }
    return effect.standardErrors > 1 ? std::optional(effect) : std::nullopt;
}

noise::NoiseFit assumedFit(const analysis::Request& request, const noise::Errors& errors, const FitDetails& details,
                           std::span<const leastsquares::Solution> solutions)
{
    std::vector<fit::Parameters> starts;
    for (const leastsquares::Solution& solution : solutions)
        starts.push_back(solution.values);
    return noise::fitUnder(errors, ratioFitOf(request), details.values, starts);
}

ComparedModel compared(const analysis::Request& request, const noise::Errors& errors, LeastSums& known,
                       const SearchProgress& progress)
{
    ComparedModel result{.model = request.model};
    if (models::reportedMask(request.model, analysis::methodOf(request)) == 0)
        return result;
    const std::unique_ptr<fit::Problem> problem = realProblem(request);
    const RequestedFit requested{*problem, request};
    const SearchResult found = searchStart(requested, known, progress);
    if (found.solutions.empty())
        return result;
    const leastsquares::Solution& best = found.solutions.front();
    const EngineStart start = engineStart(requested, best);
    analysis::Request fromThere = request;
    fromThere.values = start.values;
    const analysis::Result end = start.leadsToMinimum ? runEngine(fromThere) : analysis::Result{.values = best.values};

    result.fitted = true;
    result.start = start.values;
    result.engineStays = start.leadsToMinimum;
    result.solutionCount = found.solutions.size();
    result.details = fitDetails(fromThere, end, judged(fromThere, end, known));
    for (std::size_t slot = 1; slot <= static_cast<std::size_t>(request.options.parameterCount); ++slot)
        result.doubts[slot] = doubtOf(result, slot);
    if (analysis::methodOf(request) == models::Analysis::SternVolmer)
        result.assumed = assumedFit(request, errors, result.details, found.solutions);
    result.probeEffect = probeEffect(request, result.details);
    return result;
}

bool isBetter(const ComparedModel& a, const ComparedModel& b)
{
    const auto rank = [](const ComparedModel& compared) {
        const double sum =
            std::max(compared.details.sumOfSquares, leastsquares::sumOfExactFit(compared.details.pointCount));
        return std::tuple(!compared.fitted, !compared.isScored(), !compared.mayLead(), compared.AICc().value_or(sum));
    };
    return rank(a) < rank(b);
}

void setDifferences(std::vector<ComparedModel>& places)
{
    if (places.empty() || !places.front().isScored())
        return;
    for (ComparedModel& compared : places)
        if (compared.isScored())
            compared.differenceToFirst = *compared.AICc() - *places.front().AICc();
}

/// Concentrations of data without the reference, M.
std::vector<double> quencherOf(const analysis::Request& request)
{
    std::vector<double> Q;
    if (const auto* points = std::get_if<sternvolmer::RatioPoints>(&request.data))
        Q.assign(points->Q.begin() + 2, points->Q.begin() + 1 + std::max(points->count, 1));
    else if (const auto& table = std::get<decay::SampleTable>(request.data); true)
        for (int s = 2; s <= table.SampleCount; ++s)
            Q.push_back(table.SampleData[static_cast<std::size_t>(s)].Conc);
    return Q;
}

/// All that follows from the fits together. models: in the order of the requests.
Comparison comparisonOf(std::span<const analysis::Request> requests, const std::vector<ComparedModel>& models)
{
    Comparison comparison{.analysis = analysis::methodOf(requests.front()), .Cp = requests.front().Cp};
    std::vector<std::size_t> order(models.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return isBetter(models[a], models[b]); });
    std::vector<analysis::Request> ordered;
    for (const std::size_t i : order) {
        comparison.places.push_back(models[i]);
        ordered.push_back(requests[i]);
    }
    setDifferences(comparison.places);
    findSameCurves(comparison.places, ordered);
    if (comparison.analysis == models::Analysis::SternVolmer)
        comparison.tests = nestedTests(comparison.places);
    const std::vector<double> quencher = quencherOf(requests.front());
    comparison.samples = static_cast<int>(quencher.size());
    comparison.samplesBelowProbe = static_cast<int>(
        std::count_if(quencher.begin(), quencher.end(), [&](double Q) { return Q > 0 && Q < comparison.Cp; }));
    return comparison;
}

} // namespace

Comparison compareModels(std::span<const analysis::Request> requests, const noise::Errors& errors, LeastSums& known,
                         const SearchProgress& progress)
{
    std::vector<ComparedModel> models;
    bool cancelled = false;
    const auto count = static_cast<double>(requests.size());
    double before = 0; // requests
    for (const analysis::Request& request : requests) {
        const auto overall = [&](double done) {
            cancelled = progress && !progress((before + done) / count);
            return !cancelled;
        };
        models.push_back(compared(request, errors, known, overall));
        if (cancelled)
            return {};
        ++before;
    }
    Comparison comparison = comparisonOf(requests, models);
    comparison.errors = errors;
    return comparison;
}

} // namespace trust
