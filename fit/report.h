#pragma once

#include "fit/gaussnewton.h"
#include "fit/statistics.h"

#include <span>
#include <string>
#include <string_view>

namespace fit
{

struct ReportLine {
    std::string_view label; // "kq2 :"
    double value = 0;       // in its real unit, never a logarithm
};

struct ReportContent {
    int model = 0;
    std::span<const ReportLine> parameters{};
    double iterations = 0;
    Statistics statistics{};
    int status = 1; // see Status; any other number prints no warning
};

/// The report of a fit, lines ended by CR LF.
std::string reportText(const ReportContent& content);

/// "OK", "not satisfied", "*" for status 1, 2, 3; empty for any other.
std::string errorText(int status);

} // namespace fit
