#include "app/preparedsheet.h"

#include <algorithm>

namespace app
{

preparation::SheetSamples sheetSamples(const SheetText& sheet)
{
    preparation::SheetSamples samples;
    int last = std::min(sheet.columnCount() - 1, decay::kMaxSamples);
    while (last > 0 && sheet.cell(decay::kConcRow, last).empty() && sheet.cell(decay::kPhiRow, last).empty())
        --last;
    for (int column = 1; column <= last; ++column) {
        samples.Q.push_back(sheet.cell(decay::kConcRow, column));
        samples.Phi.push_back(sheet.cell(decay::kPhiRow, column));
    }
    return samples;
}

void writeSamples(SheetText& sheet, const preparation::SheetSamples& samples)
{
    for (std::size_t i = 0; i < samples.Phi.size(); ++i) {
        const int column = static_cast<int>(i) + 1;
        sheet.setCell(decay::kConcRow, column, samples.Q[i]);
        sheet.setCell(decay::kPhiRow, column, samples.Phi[i]);
    }
}

} // namespace app
