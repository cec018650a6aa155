#pragma once

#include "trust/modelcomparison.h"

namespace trust
{

/// Sets sameCurveAs of every model: the simpler model that it tends to, or else the first model in a better place, of
/// those whose fitted curve deviates at no sample and nowhere between by more than a tenth of the smallest scatter of
/// all fits, or a millionth. requests: of the places, in the same order.
void findSameCurves(std::span<ComparedModel> places, std::span<const analysis::Request> requests);

/// F tests, under the assumption about errors, of the pairs for which the catalogue allows them, if the simpler model
/// lacks nothing but the constant, the larger one leaves a degree of freedom, and the fit is not exact.
std::vector<NestedTest> nestedTests(std::span<const ComparedModel> places);

} // namespace trust
