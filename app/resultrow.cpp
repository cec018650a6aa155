#include "app/resultrow.h"

#include "fit/numbertext.h"

namespace app
{

int shownMask(const ResultRecord& record, int maskAbove)
{
    if (record.Method == "Decay")
        return models::reportedMask(record.Model, models::Analysis::Decay);
    if (record.Method == "SV")
        return models::reportedMask(record.Model, models::Analysis::SternVolmer);
    return maskAbove;
}

std::array<std::string, kResultColumns> resultRow(const ResultRecord& record, int mask, int assessmentMode)
{
    const auto shown = [mask](models::Reported quantity, double value, std::string_view pattern) {
        return mask & quantity ? fit::formatNumber(value, pattern) : std::string();
    };
    constexpr std::string_view kConstant = "#.###e+##";
    return {record.Method,
            fit::signedText(record.Model),
            shown(models::KorF, record.KorF, kConstant),
            shown(models::Kq1, record.Kq1, kConstant),
            shown(models::Kq2, record.Kq2, kConstant),
            shown(models::Kq22, record.Kq22, kConstant),
            assessmentMode == 0 ? fit::formatNumber(record.R2, "#.#####") : fit::formatNumber(record.Se, "####0.###"),
            record.Error,
            shown(models::Radius, record.R, "##.##")};
}

} // namespace app
