#pragma once

#include "fit/gausselimination.h"
#include "fit/gaussnewton.h"

namespace fit
{

/// The equations of a step, where r holds the residuals of all points and J their derivatives.
struct NormalEquations {
    Matrix7 matrix{};        // J'J, upper triangle
    Vector7 rightSide{};     // -J'r
    double sumOfSquares = 0; // r'r
};

/// J from forward differences, with the steps h[1..parameterCount]. Every point shifts each parameter in turn and
/// subtracts the step again; the rounding deliberately stays in a.
NormalEquations normalEquations(Problem& problem, Parameters& a, const Vector7& h, int parameterCount);

} // namespace fit
