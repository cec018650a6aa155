#pragma once

#include "app/sheettext.h"
#include "imports/sampletable.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// How samples of a table come into the data sheet.
namespace app
{

enum class Placing { Replace, Add };

/// Columns 1, 2, ... of the sheet up to its last text.
std::vector<imports::SampleColumn> columnsOf(const SheetText& sheet);

/// How many samples the sheet can take.
int roomFor(const SheetText& sheet, Placing placing);

/// Writes columns 1, 2, ... and empties the others.
void writeColumns(SheetText& sheet, const std::vector<imports::SampleColumn>& columns);

/// The samples that a text like "1-3, 7" chooses from `count`, as indices from 0 on, in this order. nullopt: it is not
/// such a text, or chooses a sample that does not exist or one twice.
std::optional<std::vector<std::size_t>> chosenSamples(std::string_view text, int count);

/// The text that chooses the first samples; empty for none.
std::string firstSamples(int count);

} // namespace app
