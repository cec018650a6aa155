#pragma once

#include "decay/quencheddecay.h"
#include "fit/numbertext.h"
#include "tests/support/typedsheet.h"

#include <string>
#include <vector>

namespace support
{

/// Reduces a series to the three components of the sheet: the fast components are merged into the third, which keeps
/// the sum of the amplitudes and the initial slope.
inline decay::MultiExponential asTyped(decay::MultiExponential decay)
{
    std::erase_if(decay, [](const decay::Exponential& term) { return term.amplitude == 0; });
    while (decay.size() > decay::kMaxComponents) {
        const decay::Exponential fast = decay.back();
        decay.pop_back();
        decay::Exponential& last = decay.back();
        const double sum = last.amplitude + fast.amplitude;
        last = {sum, (last.amplitude * last.rate + fast.amplitude * fast.rate) / sum};
    }
    return decay;
}

/// The sheet that a chemist would type for samples that follow a decay law: five digits, lifetimes in ns.
inline TypedSheet simulatedSession(int model, const decay::Reference& reference, models::DecayArguments arguments,
                                   const std::vector<double>& concentrations)
{
    const auto typed = [](double value) { return fit::formatNumber(value, "0.0000e+00"); };
    TypedSheet sheet;
    for (double Q : concentrations) {
        arguments.Q = Q;
        const decay::MultiExponential decay = asTyped(decay::quenchedDecay(model, arguments, reference));
        std::vector<std::string> column{typed(Q), std::to_string(decay.size())};
        for (const decay::Exponential& term : decay) {
            column.push_back(typed(term.amplitude));
            column.push_back(typed(1e9 / term.rate));
        }
        sheet.push_back(column);
    }
    return sheet;
}

} // namespace support
