#pragma once

#include "exports/csvtext.h"
#include "trust/detailstext.h"
#include "trust/modelcomparison.h"

/// What the windows of fit details and of the comparison say, with all digits.
namespace exports
{

/// The texts and tables of all pages, with an empty row between tables.
Rows detailsRows(const trust::DetailsText& details);

/// The models by place, and the notes below an empty row; empty without a comparison.
Rows comparisonRows(const trust::Comparison& comparison);

} // namespace exports
