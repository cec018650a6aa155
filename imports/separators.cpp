#include "imports/separators.h"

#include "imports/asciitext.h"
#include "imports/spellednumber.h"

#include <array>

namespace imports
{

bool isNumber(std::string_view cell)
{
    return spelledNumber(cell, DecimalSign::Point) || spelledNumber(cell, DecimalSign::Comma);
}

RowCount countCells(const std::vector<std::string>& row)
{
    RowCount count;
    for (const std::string& cell : row) {
        count.texts += trimmed(cell).empty() ? 0 : 1;
        count.numbers += isNumber(cell) ? 1 : 0;
    }
    return count;
}

// Of several that leave as many, the first: a comma may be a decimal sign, and "10,5 200,7" is three numbers, too.
Separator foundSeparator(std::string_view text, std::string_view comment)
{
    Separator best = Separator::Tab;
    double most = 0;
    for (const Separator separator : {Separator::Tab, Separator::Semicolon, Separator::Blanks, Separator::Comma}) {
        double rows = 0; // of numbers; a row of which half is text counts half
        for (const auto& row : cellsOf(text, separator, comment).rows)
            if (const RowCount count = countCells(row); count.texts > 1)
                rows += static_cast<double>(count.numbers) / count.texts;
        if (rows > most) {
            most = rows;
            best = separator;
        }
    }
    return best;
}

} // namespace imports
