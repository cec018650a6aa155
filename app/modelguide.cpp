#include "app/modelguide.h"

namespace app
{

std::string guideText(const ParameterGuide& guide)
{
    return std::string(guide.meaning) + " [" + std::string(guide.unit) + "]";
}

std::string modelText(int model)
{
    const ModelGuide& guide = kModelGuides[static_cast<std::size_t>(model)];
    std::string text = "Model " + std::to_string(model) + ": " + std::string(guide.name) + "\n";
    text += std::string(guide.ratioLaw) + "\n";
    text += guide.decayLaw.empty() ? "no decay law: Stern-Volmer only" : std::string(guide.decayLaw);
    for (const std::string_view symbol : kLawSymbols)
        text += "\n" + std::string(symbol);
    return text;
}

} // namespace app
