#include "fit/report.h"

#include "fit/numbertext.h"

#include <iterator>

namespace fit
{
namespace
{

constexpr std::string_view kLineEnd = "\r\n";

struct StatusRow {
    std::string_view error;   // as the results table shows it
    std::string_view warning; // at the end of the report
};

// the spelling of the warnings is deliberate
constexpr StatusRow kStatusRows[] = {
    {},
    {"OK", ""},
    {"not satisfied", "Tolerance has not been satisfied.\r\nPlease increase the iteration.\r\n"},
    {"*", "This fitting result may be doubltful.\r\nPlease try another initial parameters.\r\n"},
};

const StatusRow& rowOf(int status)
{
    constexpr int kRows = std::size(kStatusRows);
    return kStatusRows[status > 0 && status < kRows ? status : 0];
}

std::string line(std::string_view label, double value, std::string_view pattern)
{
    return std::string(label).append("\t").append(formatNumber(value, pattern)).append(kLineEnd);
}

} // namespace

std::string reportText(const ReportContent& content)
{
    std::string text = "Model " + signedText(content.model);
    text += kLineEnd;
    for (const ReportLine& parameter : content.parameters)
        text += line(parameter.label, parameter.value, "#.###e+##");
    text += "Exe num. : " + signedText(content.iterations);
    text += kLineEnd;
    text += line("R2", content.statistics.R2, "0.#####");
    text += line("Se", content.statistics.sumOfSquares, "####0.00#");
    text += rowOf(content.status).warning;
    return text;
}

std::string errorText(int status) { return std::string(rowOf(status).error); }

} // namespace fit
