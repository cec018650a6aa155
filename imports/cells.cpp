#include "imports/cells.h"

#include "imports/asciitext.h"

#include <algorithm>
#include <csv.h>

namespace imports
{
namespace
{

unsigned char byteOf(Separator separator)
{
    switch (separator) {
    case Separator::Tab:
        return CSV_TAB;
    case Separator::Semicolon:
        return ';';
    case Separator::Comma:
        return CSV_COMMA;
    case Separator::Blanks:
        break;
    }
    return CSV_SPACE;
}

/// Rows filled by the callbacks of the library.
struct Filling {
    std::vector<std::vector<std::string>> rows{1};
    bool mergesBlanks = false; // several blanks separate as one

    static void cell(void* text, std::size_t size, void* self)
    {
        auto& filling = *static_cast<Filling*>(self);
        if (text)
            filling.rows.back().emplace_back(static_cast<const char*>(text), size);
        else if (!filling.mergesBlanks)
            filling.rows.back().emplace_back();
    }
    static void row(int, void* self) { static_cast<Filling*>(self)->rows.emplace_back(); }
};

/// Comments keep their lines, so that rows have the numbers of lines.
std::string withoutComments(std::string_view text, std::string_view comment)
{
    std::string kept;
    kept.reserve(text.size() + 1);
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        if (comment.empty() || !trimmed(line).starts_with(comment))
            kept += line;
        kept += '\n';
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return kept;
}

} // namespace

int Cells::columnCount() const
{
    std::size_t most = 0;
    for (const auto& row : rows)
        most = std::max(most, row.size());
    return static_cast<int>(most);
}

const std::string& Cells::at(int row, int column) const
{
    static const std::string kNone;
    const auto r = static_cast<std::size_t>(row - 1), c = static_cast<std::size_t>(column - 1);
    return row >= 1 && column >= 1 && r < rows.size() && c < rows[r].size() ? rows[r][c] : kNone;
}

Cells Cells::turned() const
{
    Cells table;
    table.rows.resize(static_cast<std::size_t>(columnCount()));
    for (std::size_t column = 0; column < table.rows.size(); ++column)
        for (const auto& row : rows)
            table.rows[column].push_back(column < row.size() ? row[column] : std::string());
    return table;
}

Cells cellsOf(std::string_view text, Separator separator, std::string_view comment)
{
    Filling filling{.mergesBlanks = separator == Separator::Blanks};
    csv_parser parser;
    // Every line end is reported, because each line is a row.
    if (csv_init(&parser, CSV_REPALL_NL | CSV_EMPTY_IS_NULL) != 0)
        return {};
    csv_set_delim(&parser, byteOf(separator));
    const std::string lines = withoutComments(text, comment);
    csv_parse(&parser, lines.data(), lines.size(), Filling::cell, Filling::row, &filling);
    csv_fini(&parser, Filling::cell, Filling::row, &filling);
    csv_free(&parser);
    if (filling.rows.back().empty())
        filling.rows.pop_back();
    return {std::move(filling.rows)};
}

} // namespace imports
