#pragma once

#include "app/sheettext.h"

#include <string>
#include <string_view>

/// What the program reads where a text may mislead. A remark is empty where everything is read as it stands.
namespace app
{

/// On a text that is not wholly a number: "50 mM" is read as 50.
std::string remarkOnNumber(std::string_view text);

/// On a cell of the data sheet: a text that is not wholly a number, a column that is not read, or an empty cell that an
/// analysis with the model needs.
std::string remarkOnCell(const SheetText& sheet, int row, int column, int model);

} // namespace app
