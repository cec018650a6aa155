#include "app/exportedtables.h"

#include "app/resultrow.h"
#include "fit/numbertext.h"

namespace app
{
namespace
{

int lastTypedColumn(const SheetText& sheet)
{
    for (int column = sheet.columnCount() - 1; column > 0; --column)
        for (int row = 1; row < sheet.rowCount(); ++row)
            if (!sheet.cell(row, column).empty())
                return column;
    return 0;
}

std::vector<std::string> resultTitles()
{
    std::vector<std::string> titles(kResultTitles.begin(), kResultTitles.end());
    titles.insert(titles.begin() + kAssessmentColumn, std::string(assessmentTitle(0)));
    titles.emplace_back("Verdict");
    return titles;
}

std::vector<std::string> resultCells(const ResultRecord& record, const RecordVerdict& verdict)
{
    const int mask = shownMask(record, 0);
    const auto shown = [mask](models::Reported quantity, double value) {
        return mask & quantity ? fit::exactText(value) : std::string();
    };
    return {record.Method,
            std::to_string(record.Model),
            shown(models::KorF, record.KorF),
            shown(models::Kq1, record.Kq1),
            shown(models::Kq2, record.Kq2),
            shown(models::Kq22, record.Kq22),
            fit::exactText(record.R2),
            fit::exactText(record.Se),
            record.Error,
            shown(models::Radius, record.R),
            verdict.text};
}

} // namespace

exports::Rows sheetRows(const SheetText& sheet)
{
    const int columns = lastTypedColumn(sheet);
    if (columns == 0)
        return {};
    exports::Rows rows{{"Sample"}};
    for (int column = 1; column <= columns; ++column)
        rows[0].push_back(std::to_string(column));
    for (int row = 1; row < sheet.rowCount(); ++row) {
        rows.emplace_back();
        for (int column = 0; column <= columns; ++column)
            rows.back().push_back(sheet.cell(row, column));
    }
    return rows;
}

exports::Rows resultRows(const ResultStore& results)
{
    exports::Rows rows;
    for (std::size_t row = 1; row < static_cast<std::size_t>(results.ResultRowEnd); ++row)
        if (!results.ResultData[row].Method.empty())
            rows.push_back(resultCells(results.ResultData[row], results.verdicts[row]));
    if (!rows.empty())
        rows.insert(rows.begin(), resultTitles());
    return rows;
}

} // namespace app
