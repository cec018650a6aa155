#pragma once

#include "fit/realparameters.h"

#include <array>
#include <span>
#include <vector>

namespace noise
{

/// A least-squares problem whose residuals depend on each other and are calculated together. Parameters are in their
/// real units.
class JointProblem : public fit::Problem
{
public:
    double residual(int point, const fit::Parameters& a) final;

private:
    struct Kept {
        fit::Parameters a{};
        std::vector<double> residuals; // of points 1, 2, ...; empty: not calculated yet
    };
    virtual std::vector<double> calculated(const fit::Parameters& a) = 0;

    std::array<Kept, 2> m_kept; // central differences ask for two parameter vectors in turn
    std::size_t m_oldest = 0;
};

/// Appends the residuals (d_i - m) / e_i of observations that share an unknown constant: for each d_i with its relative
/// error e_i, the constant's best value is the mean m with the weights 1 / e^2, so that it needs no slot.
void appendCentred(std::vector<double>& residuals, std::span<const double> deviations, std::span<const double> errors);

} // namespace noise
