#include "app/dataage.h"

#include "sternvolmer/ratiodata.h"

#include <algorithm>

namespace app
{
namespace
{

bool sameValues(const sternvolmer::RatioSlots& a, const sternvolmer::RatioSlots& b, int count)
{
    return std::equal(a.begin() + 1, a.begin() + 1 + count, b.begin() + 1);
}

/// Without what earlier data left in the slots beyond the count.
bool samePoints(const sternvolmer::RatioPoints& a, const sternvolmer::RatioPoints& b)
{
    return a.count == b.count && a.tau0 == b.tau0 && sameValues(a.Q, b.Q, a.count) &&
           sameValues(a.ratio, b.ratio, a.count);
}

/// The curves follow from these numbers.
bool sameDecays(const decay::SampleTable& a, const decay::SampleTable& b)
{
    const auto same = [](const decay::SampleRecord& one, const decay::SampleRecord& other) {
        return one.Conc == other.Conc && one.NComp == other.NComp && one.A == other.A && one.Tau == other.Tau;
    };
    return a.SampleCount == b.SampleCount && a.FitRegionLevel == b.FitRegionLevel && a.TimeMax == b.TimeMax &&
           std::equal(a.SampleData.begin() + 1, a.SampleData.begin() + 1 + a.SampleCount, b.SampleData.begin() + 1,
                      same);
}

bool givesPoints(const SheetText& sheet, const sternvolmer::RatioPoints& shown)
{
    sternvolmer::RatioData data = sternvolmer::readSternVolmerData(cellsOf(sheet));
    if (!data.complete)
        return false;
    sternvolmer::computeRatios(data);
    return samePoints(shown, sternvolmer::pointsOf(data));
}

} // namespace

bool isOlder(const analysis::Request& shown, const SheetText& sheet, const SharedState& shared)
{
    if (const auto* points = std::get_if<sternvolmer::RatioPoints>(&shown.data))
        return !givesPoints(sheet, *points);
    return !shared.DataNormalized || !sameDecays(std::get<decay::SampleTable>(shown.data), *shared.samples);
}

} // namespace app
