#pragma once

#include "app/sheettext.h"

namespace app
{

/// Which samples of the sheet the analyses read: "7 of 7 samples", or what is left out and why.
std::string samplesText(const SheetText& sheet);

} // namespace app
