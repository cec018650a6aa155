#pragma once

#include "fit/gaussnewton.h"

#include <functional>
#include <utility>

namespace support
{

/// A fitting problem whose residual is any callable.
class CallableProblem final : public fit::Problem
{
public:
    using Residual = std::function<double(int point, const fit::Parameters& a)>;

    CallableProblem(int points, Residual residual) : m_points(points), m_residual(std::move(residual)) {}

    int pointCount() const override { return m_points; }
    double residual(int point, const fit::Parameters& a) override { return m_residual(point, a); }

private:
    int m_points;
    Residual m_residual;
};

/// An observer that lets every run continue.
struct PatientObserver : fit::Observer {
    void letEventsRun() override {}
    bool keepGoing(double) override { return true; }
};

} // namespace support
