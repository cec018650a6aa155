#include "lifetimes/overview.h"

#include "fit/vectorregisters.h"
#include "models/catalogue.h"

#include <algorithm>
#include <tuple>

namespace lifetimes
{
namespace
{

constexpr const char* kNoLaw = "not fitted: a probe beside a quencher still emits, so that the mean lifetime depends "
                               "on which part of the decay the "
                               "instrument sees";
constexpr const char* kNoComplexInLifetimes = "not fitted: lifetimes alone do not show what is dark";

/// A law with K lowers the intensity; without intensities nothing determines K.
bool isFitted(const Measurements& measurements, int model)
{
    const models::Model& row = models::row(model);
    return row.hasLifetimeLaw() && (measurements.has(Kind::Intensity) || !row.uses(models::Box::K));
}

Place placeOf(const Measurements& measurements, int model, const ErrorRatio& ratio)
{
    Place place{.model = model};
    if (isFitted(measurements, model))
        place.fit = fitTogether(measurements, model, ratio);
    else
        place.whyNotFitted = models::row(model).hasLifetimeLaw() ? kNoComplexInLifetimes : kNoLaw;
    return place;
}

bool isBetter(const Place& a, const Place& b)
{
    const auto rank = [](const Place& place) {
        const bool isScored = place.fit && place.fit->AICc;
        return std::tuple(!place.fit, !isScored, !place.mayLead(), isScored ? *place.fit->AICc : 0);
    };
    return rank(a) < rank(b);
}

std::vector<CombinedFit> fitsOf(const std::vector<Place>& places)
{
    std::vector<CombinedFit> fits;
    for (const Place& place : places)
        if (place.fit)
            fits.push_back(*place.fit);
    return fits;
}

} // namespace

Overview overviewOf(const Measurements& measurements, const ErrorRatio& ratio)
{
    fit::clearUpperHalves();
    Overview overview{.measurements = measurements, .ratio = ratio, .places = {}, .remarks = remarks(measurements)};
    for (int model = 1; model <= models::kModelCount; ++model)
        overview.places.push_back(placeOf(measurements, model, ratio));
    std::stable_sort(overview.places.begin(), overview.places.end(), isBetter);
    const Place& first = overview.places.front();
    for (Place& place : overview.places)
        if (first.mayLead() && place.fit && place.fit->AICc)
            place.differenceToFirst = *place.fit->AICc - *first.fit->AICc;
    const std::vector<CombinedFit> fits = fitsOf(overview.places);
    overview.factor = staticFactorOf(measurements, fits, ratio);
    overview.finding = findingOf(measurements, fits, overview.factor);
    return overview;
}

} // namespace lifetimes
