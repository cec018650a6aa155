#include "app/clipboardcommands.h"

#include "app/blocktext.h"
#include "app/datasheet.h"
#include "ui/clipboard.h"
#include "ui/grid.h"

namespace app
{

void copyBlock(const ui::Grid& grid)
{
    const auto cell = [&grid](int row, int column) { return grid.text(row, column).toStdString(); };
    const Block selected{grid.currentRow(), grid.currentColumn(), grid.farRow(), grid.farColumn()};
    ui::copyText(QString::fromStdString(blockText(cell, selected)));
}

void mnuCopy_Click(const DataSheet& sheet) { copyBlock(sheet.grid()); }

void mnuCut_Click(DataSheet& sheet)
{
    mnuCopy_Click(sheet);
    sheet.clearBlock();
}

void mnuPaste_Click(DataSheet& sheet, ui::Prompter& prompter)
{
    if (const auto text = ui::pastedText(prompter))
        sheet.pasteText(*text);
}

} // namespace app
