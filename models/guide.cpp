#include "models/guide.h"

#include "models/catalogue.h"

namespace models
{

std::string guideText(std::string_view meaning, std::string_view unit)
{
    return std::string(meaning) + " [" + std::string(unit.empty() ? "no unit" : unit) + "]";
}

std::string modelText(int model)
{
    const Model& described = row(model);
    std::string text = "Model " + std::to_string(model) + ": " + std::string(described.name) + "\n";
    text += std::string(described.ratio.formula) + "\n";
    text += described.hasDecayLaw() ? std::string(described.decay.formula) : "no decay law: Stern-Volmer only";
    for (const std::string_view symbol : kLawSymbols)
        text += "\n" + std::string(symbol);
    return text;
}

} // namespace models
