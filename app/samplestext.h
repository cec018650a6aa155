#pragma once

#include "app/sheettext.h"

namespace app
{

/// Which samples of the sheet the analyses read: "7 of 7 samples", or what is left out and why. droppedCells: pasted
/// ones that did not fit into the sheet.
std::string samplesText(const SheetText& sheet, int droppedCells = 0);

} // namespace app
