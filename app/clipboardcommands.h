#pragma once

namespace ui
{
class Grid;
class Prompter;
} // namespace ui

/// The edit menu: the selected block of the data sheet to and from the system clipboard.
namespace app
{

class SheetText;
struct SharedState;

void mnuCopy_Click(const SheetText& sheet, const ui::Grid& grid);
/// Copies and empties the block, titles in it included. What was normalized stays valid.
void mnuCut_Click(SheetText& sheet, ui::Grid& grid);
/// Writes the clipboard's text from the current cell on. Changes nothing when the clipboard does not answer.
void mnuPaste_Click(SheetText& sheet, ui::Grid& grid, SharedState& shared, ui::Prompter& prompter);

} // namespace app
