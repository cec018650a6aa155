#include "trust/modelcomparison.h"

#include <algorithm>
#include <cmath>

namespace trust
{
namespace
{

Doubt doubtOf(const ComparedModel& compared, std::size_t slot)
{
    const leastsquares::FreeSlots& undetermined = compared.details.uncertainty.undetermined;
    const double value = compared.details.values[slot];
    if (std::find(undetermined.begin(), undetermined.end(), slot) != undetermined.end())
        return Doubt::Undetermined;
    if (value < 0)
        return Doubt::Negative;
    const bool isCollisional = models::parameter(compared.model, slot).isCollisional();
    return isCollisional && value > kDiffusionLimit ? Doubt::AboveDiffusionLimit : Doubt::None;
}

std::optional<ComparedModel> compared(const analysis::Request& request, LeastSums& known,
                                      const SearchProgress& progress)
{
    const std::unique_ptr<fit::Problem> problem = realProblem(request);
    const RequestedFit requested{*problem, request};
    const SearchResult found = searchStart(requested, known, progress);
    if (found.solutions.empty())
        return std::nullopt;
    const leastsquares::Solution& best = found.solutions.front();
    const EngineStart start = engineStart(requested, {best.values, best.sumOfSquares});
    analysis::Request fromThere = request;
    fromThere.values = start.values;
    const analysis::Result atMinimum{.values = best.values};

    ComparedModel result;
    result.model = request.model;
    result.start = start.values;
    result.engineStays = start.leadsToMinimum;
    result.details = fitDetails(fromThere, start.leadsToMinimum ? runEngine(fromThere) : atMinimum, known);
    for (std::size_t slot = 1; slot <= static_cast<std::size_t>(request.options.parameterCount); ++slot)
        result.doubts[slot] = doubtOf(result, slot);
    return result;
}

void setDifferences(std::vector<ComparedModel>& models)
{
    std::optional<double> best;
    for (const ComparedModel& model : models)
        if (model.details.AICc && (!best || *model.details.AICc < *best))
            best = model.details.AICc;
    for (ComparedModel& model : models)
        if (model.details.AICc)
            model.differenceToBest = *model.details.AICc - *best;
}

} // namespace

std::vector<ComparedModel> compareModels(std::span<const analysis::Request> requests, LeastSums& known,
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
        if (auto result = compared(request, known, overall))
            models.push_back(*std::move(result));
        if (cancelled)
            return {};
        ++before;
    }
    setDifferences(models);
    return models;
}

} // namespace trust
