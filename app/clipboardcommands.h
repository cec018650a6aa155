#pragma once

namespace ui
{
class Grid;
class Prompter;
} // namespace ui

/// Blocks of cells to and from the system clipboard; the edit menu works on the data sheet.
namespace app
{

class DataSheet;

/// Copies the selected block of a grid.
void copyBlock(const ui::Grid& grid);

void mnuCopy_Click(const DataSheet& sheet);
/// Copies and empties the block, titles in it included. What was normalized stays valid.
void mnuCut_Click(DataSheet& sheet);
/// Writes the clipboard's text from the current cell on. Changes nothing when the clipboard does not answer.
void mnuPaste_Click(DataSheet& sheet, ui::Prompter& prompter);

} // namespace app
