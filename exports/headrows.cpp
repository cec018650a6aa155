#include "exports/headrows.h"

#include "fit/numbertext.h"

namespace exports
{

Rows headRows(const Head& head)
{
    Rows rows{{"Program", "Vorlo " VORLO_VERSION}};
    const auto add = [&rows](const char* title, const std::string& text) {
        if (!text.empty())
            rows.push_back({title, text});
    };
    add("Analysis", head.analysis);
    add("Assumption about errors", head.assumption);
    add("tau0 /s", head.tau0 ? fit::exactText(*head.tau0) : "");
    add("Cp /M", head.Cp ? fit::exactText(*head.Cp) : "");
    add("Remark", head.older ? "The data in the sheet were changed since. All this is of the older data." : "");
    rows.emplace_back();
    return rows;
}

} // namespace exports
