#pragma once

#include "app/sheettext.h"
#include "preparation/preparationtext.h"

namespace app
{

/// Concentrations and intensities up to the last column that has one.
preparation::SheetSamples sheetSamples(const SheetText& sheet);

/// Writes them into the columns from the first one on.
void writeSamples(SheetText& sheet, const preparation::SheetSamples& samples);

} // namespace app
