#include "app/clipboardcommands.h"

#include "app/blocktext.h"
#include "app/sharedstate.h"
#include "ui/clipboard.h"
#include "ui/grid.h"

namespace app
{
namespace
{

Block selectedBlock(const ui::Grid& grid)
{
    return {grid.currentRow(), grid.currentColumn(), grid.farRow(), grid.farColumn()};
}

} // namespace

void mnuCopy_Click(const SheetText& sheet, const ui::Grid& grid)
{
    ui::copyText(QString::fromStdString(blockText(sheet, selectedBlock(grid))));
}

void mnuCut_Click(SheetText& sheet, ui::Grid& grid)
{
    mnuCopy_Click(sheet, grid);
    grid.setRedraw(false);
    emptyBlock(sheet, selectedBlock(grid));
    grid.setRedraw(true);
}

void mnuPaste_Click(SheetText& sheet, ui::Grid& grid, SharedState& shared, ui::Prompter& prompter)
{
    const auto text = ui::pastedText(prompter);
    if (!text)
        return;
    grid.setRedraw(false);
    pasteBlock(sheet, grid.currentRow(), grid.currentColumn(), text->toStdString());
    grid.setRedraw(true);
    shared.DataNormalized = false;
}

} // namespace app
