#include "app/clipboardcommands.h"

#include "app/datasheet.h"
#include "app/selectedblock.h"
#include "ui/clipboard.h"

namespace app
{

void copyBlock(const ui::Grid& grid)
{
    const auto cell = [&grid](int row, int column) { return grid.text(row, column).toStdString(); };
    ui::copyText(QString::fromStdString(blockText(cell, selectedBlock(grid))));
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
