#pragma once

#include "app/resultstore.h"

#include <array>
#include <bit>
#include <string>
#include <string_view>

/// A stored result as the results table shows it.
namespace app
{

inline constexpr int kResultColumns = 9;
inline constexpr int kResultModelColumn = 1;
inline constexpr int kAssessmentColumn = 6;
inline constexpr int kErrorColumn = 7;

inline constexpr std::array<std::string_view, kResultColumns> kResultTitles{
    "Method", "Model", "K or F", "kq1/s", "kq2/M-1s-1", "kq22/M-1s-1", "Se", "Error", "r /nm"};

/// Column that shows K or F or a rate constant; they stand in the order of their bits.
constexpr int resultColumn(models::Reported quantity) { return 2 + std::countr_zero(static_cast<unsigned>(quantity)); }
static_assert(resultColumn(models::KorF) == 2 && resultColumn(models::Kq22) == 5);

/// Title of the assessment column for AssessmentMode 0 (R2) or any other (Se).
constexpr std::string_view assessmentTitle(int assessmentMode)
{
    return assessmentMode == 0 ? "R2" : kResultTitles[kAssessmentColumn];
}

/// Sum of the Reported bits that the row of a record shows. A record without a method shows the columns of the row
/// above, `maskAbove`: an unused record between results fills their columns with its zeros.
int shownMask(const ResultRecord& record, int maskAbove);

/// The texts of a row. Columns of quantities that are not in `mask` are empty.
std::array<std::string, kResultColumns> resultRow(const ResultRecord& record, int mask, int assessmentMode);

} // namespace app
