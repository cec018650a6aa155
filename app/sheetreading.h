#pragma once

#include "app/sheettext.h"

#include <string>
#include <string_view>
#include <vector>

/// What the program reads where a text may mislead. A remark is empty where everything is read as it stands.
namespace app
{

/// On a text that is not wholly a number: "50 mM" is read as 50.
std::string remarkOnNumber(std::string_view text);

/// Why no samples are read from a column on, which is the first without a sample.
std::string reasonToEnd(int column);

/// The remarks on the cells of the data sheet, which is read once for all.
class SheetReading
{
public:
    SheetReading(const SheetText& sheet, int model);

    /// On a text that is not wholly a number, a column that is not read, or an empty cell that an analysis with the
    /// model needs.
    std::string remarkOn(int row, int column) const;

private:
    const std::string& text(int row, int column) const;
    std::string remarkOnUnread(int row, int column) const;
    bool isNeeded(int row, int column) const;

    std::vector<std::vector<std::string>> m_texts; // [row][column]
    int m_end = 0;                                 // the first column without a sample
    bool m_anyBeyond = false;                      // a cell is typed from there on
    bool m_anyIntensity = false;
    bool m_allComponents = false; // every sample needs its components, not only the reference
};

} // namespace app
