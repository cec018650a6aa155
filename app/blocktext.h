#pragma once

#include "app/sheettext.h"

#include <string>
#include <string_view>

/// Blocks of the data sheet as spreadsheet programs exchange them: tabs between cells, CR LF after each row.
namespace app
{

/// A block of cells by two opposite corners, in any order; both belong to it.
struct Block {
    int row = 0, column = 0;
    int farRow = 0, farColumn = 0;
};

std::string blockText(const decay::CellText& cell, const Block& block);

void emptyBlock(SheetText& sheet, const Block& block);

/// Whether a pasted text is for more than one cell: it has a tab, or a line end with text after it.
bool isBlock(std::string_view text);

/// Writes a text from (row, column) on. Cells outside the sheet are dropped, title cells keep their texts.
void pasteBlock(SheetText& sheet, int row, int column, std::string_view text);

} // namespace app
