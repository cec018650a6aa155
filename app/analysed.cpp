#include "app/analysed.h"

namespace app
{

trust::FitDetails detailsOf(const Analysed& analysed, const trust::ErrorSettings& errors, const trust::LeastSums& known)
{
    trust::FitDetails details = trust::fitDetails(analysed.request, analysed.result, analysed.judgement);
    if (analysis::methodOf(analysed.request) == models::Analysis::Decay ||
        trust::complaint(errors.errors, analysed.request))
        return details;
    std::vector<fit::Parameters> starts;
    for (const leastsquares::Minimum& minimum : known.minima(analysed.request))
        starts.push_back(minimum.values);
    details.errors = trust::errorDetails(analysed.request, analysed.result.values, errors, analysed.s, starts);
    return details;
}

} // namespace app
