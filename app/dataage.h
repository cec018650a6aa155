#pragma once

#include "analysis/request.h"
#include "app/sharedstate.h"
#include "app/sheettext.h"

namespace app
{

/// Whether an analysis would now get other data than those of a request, or none. Ratios come from the sheet as it is,
/// decay curves from the last Normalization, as long as the sheet was not edited since.
bool isOlder(const analysis::Request& shown, const SheetText& sheet, const SharedState& shared);

} // namespace app
