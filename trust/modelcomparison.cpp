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
    const double value = compared.details.fit.values[slot];
    if (std::find(undetermined.begin(), undetermined.end(), slot) != undetermined.end())
        return Doubt::Undetermined;
    if (value < 0)
        return Doubt::Negative;
    const bool isCollisional = models::parameter(compared.model, slot).isCollisional();
    return isCollisional && value > kDiffusionLimit ? Doubt::AboveDiffusionLimit : Doubt::None;
}

std::optional<ComparedModel> compared(const RatioInput& input, const SearchProgress& progress)
{
    sternvolmer::RatioProblem problem = input.problem();
    const Task task = input.task(problem);
    const SearchResult found = searchStart(task, progress);
    if (found.solutions.empty())
        return std::nullopt;
    const fit::Options options = engineOptions(input.panel, models::Analysis::SternVolmer, input.logMode);
    const leastsquares::Solution& best = found.solutions.front();
    const EngineStart start = engineStart(problem, options, task.free(), {best.values, best.sumOfSquares});
    FinishedFit finished{.options = options, .start = start.values, .values = best.values, .calculated = true};
    if (start.leadsToMinimum) {
        const EngineRun run = runEngine(problem, options, start.values);
        finished.values = run.values;
        finished.iterations = run.outcome.iterations;
        finished.calculated = false;
    }

    ComparedModel result;
    result.model = input.panel.Model;
    result.start = start.values;
    result.engineStays = start.leadsToMinimum;
    result.details = fitDetails(task, finished, input.observed());
    for (std::size_t slot = 1; slot <= static_cast<std::size_t>(options.parameterCount); ++slot)
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

std::vector<ComparedModel> compareModels(const RatioInput& input, const SearchProgress& progress)
{
    std::vector<ComparedModel> models;
    bool cancelled = false;
    for (int model = 1; model <= models::kModelCount && !cancelled; ++model) {
        RatioInput ofModel = input;
        ofModel.panel.Model = model;
        const auto overall = [&](double done) {
            cancelled = progress && !progress((model - 1 + done) / models::kModelCount);
            return !cancelled;
        };
        if (auto result = compared(ofModel, overall))
            models.push_back(*std::move(result));
    }
    if (cancelled)
        return {};
    setDifferences(models);
    return models;
}

} // namespace trust
