#pragma once

#include "app/sheettext.h"

#include <map>
#include <utility>

namespace support
{

/// A data sheet without a window.
struct MemorySheet : app::SheetText {
    int rows = app::kSheetRows;
    int columns = app::kSheetColumns;
    std::map<std::pair<int, int>, std::string> texts;

    int rowCount() const override { return rows; }
    int columnCount() const override { return columns; }
    void setCounts(int rowsWanted, int columnsWanted) override
    {
        rows = rowsWanted;
        columns = columnsWanted;
    }
    std::string cell(int row, int column) const override
    {
        const auto found = texts.find({row, column});
        return found == texts.end() ? std::string() : found->second;
    }
    void setCell(int row, int column, const std::string& text) override
    {
        if (row >= 0 && row < rows && column >= 0 && column < columns)
            texts[{row, column}] = text;
    }
};

} // namespace support
