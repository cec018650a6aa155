#include "leastsquares/uncertainty.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <Eigen/SVD>

namespace leastsquares
{
namespace
{

constexpr double kInfinity = std::numeric_limits<double>::infinity();

Eigen::MatrixXd derivativeMatrix(fit::Problem& problem, const fit::Parameters& values, const FreeSlots& free)
{
    const auto columns = relativeDerivatives(problem, values, free);
    Eigen::MatrixXd J(problem.pointCount(), static_cast<Eigen::Index>(free.size()));
    for (std::size_t j = 0; j < free.size(); ++j)
        J.col(static_cast<Eigen::Index>(j)) = Eigen::Map<const Eigen::VectorXd>(columns[j].data(), J.rows());
    return J;
}

/// Covariance of relative changes.
struct Covariance {
    Eigen::MatrixXd matrix;
    std::vector<bool> flat; // by column: takes part in a direction that changes no point
};

/// Inverse of the normal matrix J'J of relative changes. Directions that change no point are excluded and reported.
struct InverseNormal : Covariance {
    InverseNormal(const Eigen::MatrixXd& J)
        : Covariance{Eigen::MatrixXd::Zero(J.cols(), J.cols()), std::vector<bool>(static_cast<std::size_t>(J.cols()))}
    {
        if (J.cols() == 0) // nothing is fitted; a singular value decomposition needs a column
            return;
        constexpr double kFlat = 1e-7; // of the steepest direction: central differences cannot distinguish this from 0
        constexpr double kTakesPart = 0.1; // of a direction of length 1
        const Eigen::JacobiSVD<Eigen::MatrixXd> svd(J, Eigen::ComputeThinU | Eigen::ComputeFullV);
        for (Eigen::Index d = 0; d < J.cols(); ++d) {
            const Eigen::VectorXd direction = svd.matrixV().col(d);
            const double slope = d < svd.singularValues().size() ? svd.singularValues()[d] : 0;
            if (slope > kFlat * svd.singularValues()[0] && slope > 0)
                matrix += direction * direction.transpose() / (slope * slope);
            else
                for (Eigen::Index j = 0; j < J.cols(); ++j)
                    if (std::abs(direction[j]) > kTakesPart)
                        flat[static_cast<std::size_t>(j)] = true;
        }
    }
};

/// Correlations of the parameters; 0 for a parameter without effect. The signs of the values turn relative changes into
/// absolute changes.
Matrix4 correlations(const Covariance& covariance, const fit::Parameters& values, const FreeSlots& free)
{
    const Eigen::MatrixXd& matrix = covariance.matrix;
    Matrix4 correlation{};
    for (std::size_t j = 0; j < free.size(); ++j)
        for (std::size_t k = 0; k < free.size(); ++k) {
            const auto row = static_cast<Eigen::Index>(j), column = static_cast<Eigen::Index>(k);
            const double scale = std::sqrt(matrix(row, row)) * std::sqrt(matrix(column, column));
            const double sign = std::copysign(1.0, values[free[j]]) * std::copysign(1.0, values[free[k]]);
            const bool none = covariance.flat[j] || covariance.flat[k] || scale == 0;
            correlation[free[j]][free[k]] = j == k ? 1 : none ? 0 : sign * matrix(row, column) / scale;
        }
    return correlation;
}

} // namespace

Uncertainty uncertaintyOf(fit::Problem& problem, const fit::Parameters& values, const FreeSlots& free,
                          const Scatter& scatter)
{
    Uncertainty result;
    result.degreesOfFreedom = scatter.degreesOfFreedom;
    if (free.empty() || problem.pointCount() == 0 || !std::isfinite(sumOfSquares(problem, values)))
        return result;
    const InverseNormal inverse(derivativeMatrix(problem, values, free));
    const double deviation = std::sqrt(scatter.variance);
    for (std::size_t j = 0; j < free.size(); ++j) {
        const auto row = static_cast<Eigen::Index>(j);
        const double relative = inverse.flat[j] ? kInfinity : deviation * std::sqrt(inverse.matrix(row, row));
        const std::size_t slot = free[j];
        result.standardError[slot] = inverse.flat[j] ? kInfinity : relative * std::abs(values[slot]);
        result.halfWidth[slot] = scatter.quantile * result.standardError[slot];
        if (relative > 1)
            result.undetermined.push_back(slot);
    }
    result.correlation = correlations(inverse, values, free);
    return result;
}

Uncertainty uncertaintyOf(fit::Problem& problem, const fit::Parameters& values, const FreeSlots& free, int pointCount)
{
    const int degreesOfFreedom = pointCount - static_cast<int>(free.size());
    return uncertaintyOf(problem, values, free, estimatedScatter(sumOfSquares(problem, values), degreesOfFreedom));
}

fit::Parameters responseTo(std::span<const double> shift, fit::Problem& problem, const fit::Parameters& values,
                           const FreeSlots& free)
{
    fit::Parameters moved{};
    if (free.empty() || shift.empty() || !std::isfinite(sumOfSquares(problem, values)))
        return moved;
    const Eigen::MatrixXd J = derivativeMatrix(problem, values, free);
    const Eigen::Map<const Eigen::VectorXd> change(shift.data(), J.rows());
    const Eigen::VectorXd relative = -(InverseNormal(J).matrix * (J.transpose() * change));
    for (std::size_t j = 0; j < free.size(); ++j)
        moved[free[j]] = relative[static_cast<Eigen::Index>(j)] * values[free[j]];
    return moved;
}

Responses responsesOf(fit::Problem& problem, const fit::Parameters& values, const FreeSlots& free)
{
    const Eigen::MatrixXd J = derivativeMatrix(problem, values, free);
    const Eigen::MatrixXd toValues = InverseNormal(J).matrix * J.transpose(), hat = J * toValues;
    Responses responses;
    for (std::size_t j = 0; j < free.size(); ++j) {
        const auto row = toValues.row(static_cast<Eigen::Index>(j));
        responses.ofValues[free[j]].assign(row.begin(), row.end());
    }
    for (const auto row : hat.rowwise())
        responses.ofPoints.emplace_back(row.begin(), row.end());
    return responses;
}

PropagatedErrors propagatedErrors(fit::Problem& problem, const fit::Parameters& values, const FreeSlots& free,
                                  std::span<const double> own, std::span<const double> common)
{
    const auto points = static_cast<Eigen::Index>(own.size());
    PropagatedErrors errors{{}, {own.begin(), own.end()}};
    if (points == 0 || !std::isfinite(sumOfSquares(problem, values)))
        return errors;
    const Eigen::Map<const Eigen::VectorXd> ownErrors(own.data(), points), commonErrors(common.data(), points);
    const Eigen::MatrixXd J = derivativeMatrix(problem, values, free);
    const InverseNormal inverse(J);
    const Eigen::MatrixXd toValues = inverse.matrix * J.transpose();
    const Eigen::MatrixXd toResiduals = Eigen::MatrixXd::Identity(points, points) - J * toValues;
    const auto errorThrough = [&](const Eigen::MatrixXd& response, Eigen::Index row) {
        return std::hypot(response.row(row).cwiseProduct(ownErrors.transpose()).norm(),
                          response.row(row).dot(commonErrors));
    };
    for (Eigen::Index i = 0; i < points; ++i)
        errors.ofResiduals[static_cast<std::size_t>(i)] = errorThrough(toResiduals, i);
    for (std::size_t j = 0; j < free.size(); ++j)
        errors.ofParameters[free[j]] =
            inverse.flat[j] ? kInfinity
                            : errorThrough(toValues, static_cast<Eigen::Index>(j)) * std::abs(values[free[j]]);
    const Eigen::MatrixXd ownMoves = toValues * ownErrors.asDiagonal();
    const Eigen::VectorXd commonMoves = toValues * commonErrors;
    const Covariance covariance{ownMoves * ownMoves.transpose() + commonMoves * commonMoves.transpose(), inverse.flat};
    errors.correlation = correlations(covariance, values, free);
    return errors;
}

} // namespace leastsquares
