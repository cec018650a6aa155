#include "exports/trusttables.h"

#include "trust/comparisontext.h"

#include <sstream>

namespace exports
{
namespace
{

void addText(Rows& rows, const std::string& text)
{
    if (!text.empty())
        rows.push_back({text});
}

} // namespace

Rows detailsRows(const trust::DetailsText& details)
{
    Rows rows;
    for (const std::string& text : {details.heading, details.verdict, details.remarks, details.errors.assumption})
        addText(rows, text);
    for (const trust::TitledRows* table : trust::tablesOf(details)) {
        rows.emplace_back();
        rows.insert(rows.end(), table->begin(), table->end());
    }
    if (!details.errors.sentence.empty())
        rows.insert(rows.end(), {{}, {details.errors.sentence}});
    return rows;
}

Rows comparisonRows(const trust::Comparison& comparison)
{
    if (comparison.places.empty())
        return {};
    Rows rows{trust::comparisonTitles(comparison.analysis)};
    for (std::size_t place = 0; place < comparison.places.size(); ++place) {
        rows.emplace_back();
        for (const trust::ComparisonCell& cell : trust::comparisonRow(comparison, place, trust::exactFigure))
            rows.back().push_back(cell.text);
    }
    rows.emplace_back();
    std::istringstream notes(trust::comparisonNotes(comparison));
    for (std::string paragraph; std::getline(notes, paragraph);)
        addText(rows, paragraph);
    return rows;
}

} // namespace exports
