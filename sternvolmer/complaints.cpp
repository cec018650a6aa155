#include "sternvolmer/complaints.h"

namespace sternvolmer
{

std::vector<std::string> complaints(const RatioData& data, double Cp)
{
    std::vector<std::string> texts;
    if (!data.referenceFirst)
        texts.emplace_back("Please input the 0moldm-3 data in the left of column.");
    if (!data.complete)
        texts.emplace_back("You must input intensity data.");
    else if (!(Cp > 0))
        texts.emplace_back("Please Input Cp value above zero.");
    return texts;
}

} // namespace sternvolmer
