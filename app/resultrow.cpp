#include "app/resultrow.h"

#include "fit/numbertext.h"

namespace app
{

int shownMask(const ResultRecord& record, int maskAbove)
{
    if (record.Method == "Decay")
        return reportedMask(record.Model, Analysis::Decay);
    if (record.Method == "SV")
        return reportedMask(record.Model, Analysis::SternVolmer);
    return maskAbove;
}

std::array<std::string, kResultColumns> resultRow(const ResultRecord& record, int mask, int assessmentMode)
{
    const auto shown = [mask](Reported quantity, double value, std::string_view pattern) {
        return mask & quantity ? fit::formatNumber(value, pattern) : std::string();
    };
    constexpr std::string_view kConstant = "#.###e+##";
    return {record.Method,
            fit::signedText(record.Model),
            shown(KorF, record.KorF, kConstant),
            shown(Kq1, record.Kq1, kConstant),
            shown(Kq2, record.Kq2, kConstant),
            shown(Kq22, record.Kq22, kConstant),
            assessmentMode == 0 ? fit::formatNumber(record.R2, "#.#####") : fit::formatNumber(record.Se, "####0.###"),
            record.Error,
            shown(Radius, record.R, "##.##")};
}

} // namespace app
