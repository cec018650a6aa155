#pragma once

#include "trust/modelcomparison.h"

namespace trust
{

/// Sets sameCurveAs of every model: the simpler model that it tends to, or else the first model in a better place, of
/// those whose curve, fitted under the assumption about errors, deviates at no sample and nowhere between by more than
/// a tenth of the smallest error that all fits tell, or a millionth. requests: of the places, in the same order.
void findSameCurves(std::span<ComparedModel> places, std::span<const analysis::Request> requests);

/// Tests, under the assumption about errors, of the pairs for which the catalogue allows them, if the simpler model
/// lacks nothing but the constant: F tests if the larger one leaves a degree of freedom and the fit is not exact, tests
/// of the difference of chi-square if the errors are known.
std::vector<NestedTest> nestedTests(std::span<const ComparedModel> places);

} // namespace trust
