#include "decay/samplecolumn.h"

#include "fit/numbertext.h"

namespace decay
{

bool hasSample(const CellText& cell, int column) { return column <= kMaxSamples && !cell(kConcRow, column).empty(); }

int endOfSamples(const CellText& cell)
{
    int column = 1;
    while (hasSample(cell, column))
        ++column;
    return column;
}

bool readComponents(const CellText& cell, int column, SampleRecord& record)
{
    const int count = fit::roundedInt32(fit::numberFrom(cell(kComponentRow, column))).value_or(0);
    record.NComp = count >= 1 && count <= kMaxComponents ? count : 0;
    bool complete = record.NComp != 0;
    for (int k = 1; k <= record.NComp; ++k) {
        const auto slot = static_cast<std::size_t>(k);
        record.A[slot] = fit::numberFrom(cell(amplitudeRow(k), column));
        record.Tau[slot] = fit::numberFrom(cell(lifetimeRow(k), column)) / 1e9; // the sheet holds ns
        if (record.A[slot] == 0 || record.Tau[slot] == 0)
            complete = false;
        else
            record.Rate[slot] = 1 / record.Tau[slot];
    }
    return complete;
}

} // namespace decay
