#pragma once

#include "models/catalogue.h"

#include <optional>
#include <string>

/// Messages that several commands share.
namespace analysis
{

inline constexpr const char* kArithmeticFault = "The Gauss-Newton calculation stopped with an arithmetic error.\r\n"
                                                "Please change the initial values and run again.";

/// The reason why decay curves cannot be analysed with a model; empty if they can.
inline std::optional<std::string> decayComplaint(bool normalized, int model)
{
    if (!normalized)
        return "Please Normalize the data.";
    if (!models::row(model).hasDecayLaw())
        return "Model " + std::to_string(model) + " cannot be analyzed with decay curves.";
    return std::nullopt;
}

} // namespace analysis
