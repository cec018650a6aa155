#pragma once

#include "app/sheettext.h"

#include <string>
#include <string_view>

/// Blocks of the data sheet in the form that spreadsheet programs exchange: tabs between cells, CR LF after each row.
namespace app
{

/// A block of cells, given by two opposite corners in any order. Both corner cells belong to the block.
struct Block {
    int row = 0, column = 0;
    int farRow = 0, farColumn = 0;
};

std::string blockText(const decay::CellText& cell, const Block& block);

void emptyBlock(SheetText& sheet, const Block& block);

/// Whether a pasted text is for more than one cell: it has a tab, or a line end with text after it.
bool isBlock(std::string_view text);

/// Writes a text into the cells from (row, column) on. Cells outside the sheet are dropped, title cells keep their
/// texts. Returns how many cells with a text were dropped.
int pasteBlock(SheetText& sheet, int row, int column, std::string_view text);

} // namespace app
