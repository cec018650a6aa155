#include "decay/complaints.h"

#include "models/catalogue.h"

namespace decay
{

std::vector<std::string> complaints(const DecayData& data)
{
    std::vector<std::string> texts;
    if (data.siteModelRefused)
        texts.emplace_back("We cannot analyze 3 component data with 2-site model.");
    if (!data.usable())
        texts.emplace_back("Please input value(s) in blank cell(s).");
    return texts;
}

std::optional<std::string> analysisComplaint(bool normalized, int model)
{
    if (!normalized)
        return "Please Normalize the data.";
    if (!models::row(model).hasDecayLaw())
        return "Model " + std::to_string(model) + " cannot be analyzed with decay curves.";
    return std::nullopt;
}

} // namespace decay
