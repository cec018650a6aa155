#pragma once

#include "imports/cells.h"

namespace imports
{

/// The first row of numbers behind the text lines at the head of a table; 1 if there are no numbers.
int foundFirstRow(const Cells& cells);

/// The titles of columns 1, 2, ... in the rows above the data: those of the last row with a text, joined to what the
/// row before says of the same columns, because units may have a row of their own.
/// blanksSeparate: the cells stand apart by blanks, which may have cut titles, too.
std::vector<std::string> titlesAbove(const Cells& cells, int firstRow, bool blanksSeparate);

/// Whether each sample is a column: titles of quantities stand below each other, or, in a table without titles, rows
/// are fewer than columns.
bool foundSamplesInColumns(const Cells& cells);

} // namespace imports
