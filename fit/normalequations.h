#pragma once

#include "fit/gausselimination.h"
#include "fit/gaussnewton.h"

namespace fit
{

/// What a step of the method is solved from, with r the residuals of all points and J their derivatives.
struct NormalEquations {
    Matrix7 matrix{};       // J'J, upper triangle
    Vector7 rightSide{};    // -J'r
    double residualSum = 0; // r'r
};

/// J from forward differences, with the steps h[1..parameterCount]. Every point shifts each parameter in turn and
/// subtracts the step again; the rounding of that stays in a, on purpose.
NormalEquations normalEquations(Problem& problem, Parameters& a, const Vector7& h, int parameterCount);

} // namespace fit
