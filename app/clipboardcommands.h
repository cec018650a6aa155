#pragma once

namespace ui
{
class Grid;
class Prompter;
} // namespace ui

/// Copies blocks of cells to and from the system clipboard. The edit menu works on the data sheet.
namespace app
{

class DataSheet;

/// Copies the selected block of a grid.
void copyBlock(const ui::Grid& grid);

void mnuCopy_Click(const DataSheet& sheet);
/// Copies and empties the block, including its titles. The last normalization stays valid.
void mnuCut_Click(DataSheet& sheet);
/// Writes the clipboard's text from the current cell on. Changes nothing if the clipboard does not answer.
void mnuPaste_Click(DataSheet& sheet, ui::Prompter& prompter);

} // namespace app
