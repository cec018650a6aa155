#include "app/blocktext.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/memorysheet.h"

using fuzz::check;

/// Any text is pasted anywhere. The titles must stay, and copying and pasting the whole sheet must not change it.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    support::MemorySheet sheet;
    const int row = input.takeUpTo(sheet.rows - 1), column = input.takeUpTo(sheet.columns - 1);
    app::pasteBlock(sheet, row, column, input.rest());
    for (const auto& [place, text] : sheet.texts)
        check(place.first >= 1 && place.second >= 1 && text.find_first_of("\t\r\n") == std::string::npos);

    const app::Block all{1, 1, sheet.rows - 1, sheet.columns - 1};
    const std::string copied = app::blockText(app::cellsOf(sheet), all);
    support::MemorySheet other;
    app::pasteBlock(other, 1, 1, copied);
    check(app::blockText(app::cellsOf(other), all) == copied);
    app::emptyBlock(other, all);
    check(app::blockText(app::cellsOf(other), all) == app::blockText(app::cellsOf(support::MemorySheet()), all));
    return 0;
}
