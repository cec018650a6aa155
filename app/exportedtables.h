#pragma once

#include "app/resultstore.h"
#include "app/sheettext.h"
#include "exports/csvtext.h"

#include <array>

namespace app
{

enum class ExportedTable { Sheet, Results, Curves, Residuals, Details, Comparison };

struct ExportedTableRow {
    ExportedTable table;
    const char *name, *fileName;
    const char* missing; // what is said when there is nothing to export
};
inline constexpr std::array<ExportedTableRow, 6> kExportedTables{{
    {ExportedTable::Sheet, "Data sheet", "sheet", "The data sheet is empty."},
    {ExportedTable::Results, "Results", "results", "There are no results yet."},
    {ExportedTable::Curves, "Fitted curves", "curves", "No analysis has been run yet."},
    {ExportedTable::Residuals, "Residuals", "residuals", "No analysis has been run yet."},
    {ExportedTable::Details, "Fit Details", "details", "No analysis has been run yet."},
    {ExportedTable::Comparison, "Comparison of models", "comparison", "No models have been compared yet."},
}};

/// The cells as typed, with their titles and the numbers of the samples; empty without any text.
exports::Rows sheetRows(const SheetText& sheet);

/// The stored results with all digits, with both assessments and their verdicts; empty without results.
exports::Rows resultRows(const ResultStore& results);

} // namespace app
