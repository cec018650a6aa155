#include "noise/readyconstants.h"

#include "models/catalogue.h"
#include "models/sphere.h"
#include "noise/constanttext.h"
#include "sternvolmer/ratioproblem.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace noise
{
namespace
{

/// Changes of the constants for a relative change of 1 of a typed value.
struct Responses {
    fit::Parameters tau0{}, Cp{};
};

std::vector<double> residualsOf(const RatioFit& ratioFit, const fit::Parameters& values)
{
    sternvolmer::RatioProblem problem(ratioFit.points, ratioFit.model, 0, ratioFit.Cp);
    std::vector<double> residuals;
    for (int point = 1; point <= problem.pointCount(); ++point)
        residuals.push_back(problem.residual(point, values));
    return residuals;
}

/// scaled: multiplies the typed value in question by a factor.
fit::Parameters responseTo(const std::function<void(RatioFit&, double factor)>& scaled, const RatioFit& ratioFit,
                           const fit::Parameters& values)
{
    constexpr double kStep = 1e-5; // relative
    RatioFit above = ratioFit, below = ratioFit;
    scaled(above, 1 + kStep);
    scaled(below, 1 - kStep);
    std::vector<double> shift = residualsOf(above, values);
    const std::vector<double> lower = residualsOf(below, values);
    std::transform(shift.begin(), shift.end(), lower.begin(), shift.begin(),
                   [](double a, double b) { return (a - b) / (2 * kStep); });
    sternvolmer::RatioProblem problem(ratioFit.points, ratioFit.model, 0, ratioFit.Cp);
    fit::Parameters response = leastsquares::responseTo(shift, problem, values, ratioFit.free);
    constexpr double kRounding = 1e-5; // of the constant, for a change of 1
    for (std::size_t slot = 0; slot < response.size(); ++slot)
        if (std::abs(response[slot]) < kRounding * std::abs(values[slot]))
            response[slot] = 0;
    return response;
}

class ReadyList
{
public:
    ReadyList(const AnalysedConstants& analysed, const RatioFit& ratioFit, double s, const TypedErrors& typed)
        : m_analysed(analysed), m_ratioFit(ratioFit), m_s(s),
          m_typed(typed), m_responses{responseTo([](RatioFit& fit, double factor) { fit.points.tau0 *= factor; },
                                                 ratioFit, analysed.values),
                                      responseTo([](RatioFit& fit, double factor) { fit.Cp *= factor; }, ratioFit,
                                                 analysed.values)}
    {
    }

    std::vector<ReadyConstant> all();

private:
    void addFollowing(std::size_t slot, const models::Parameter& parameter);
    ReadyConstant& add(std::string name, std::string_view unit, double value, std::size_t slot, double slope);

    const AnalysedConstants& m_analysed;
    const RatioFit& m_ratioFit;
    const double m_s; // nm
    const TypedErrors& m_typed;
    const Responses m_responses;
    std::vector<ReadyConstant> m_list;
};

std::vector<ReadyConstant> ReadyList::all()
{
    const auto fitted = models::row(m_ratioFit.model).fitted();
    for (std::size_t slot = 1; slot <= fitted.size(); ++slot)
        add(fitted[slot - 1].name(), fitted[slot - 1].unit, m_analysed.values[slot], slot, 1);
    for (std::size_t slot = 1; slot <= fitted.size(); ++slot)
        addFollowing(slot, fitted[slot - 1]);
    return m_list;
}

/// Adds what follows from one constant.
void ReadyList::addFollowing(std::size_t slot, const models::Parameter& parameter)
{
    const double value = m_analysed.values[slot], tau0 = m_ratioFit.points.tau0;
    const bool bothSites = models::row(m_ratioFit.model).uses(models::Box::kq2);
    if (parameter.isCollisional()) {
        constexpr double kRounding = 1e-5; // of the product, in which the lifetime mostly cancels
        const double KSV = value * tau0, moved = m_responses.tau0[slot] * tau0 + KSV;
        ReadyConstant& constant = add("KSV = " + parameter.name() + "·τ0", models::kPerMolar, KSV, slot, tau0);
        constant.error.tau0 = std::abs(moved) < kRounding * std::abs(KSV) ? 0 : std::abs(moved) * m_typed.tau0;
    }
    if (parameter.box == models::Box::F)
        add(std::string(bothSites ? "share of the first site" : "accessible share") + " 1/(1 + F)", "", 1 / (1 + value),
            slot, 1 / ((1 + value) * (1 + value)));
    if (parameter.box == models::Box::K && models::row(m_ratioFit.model).hasRadius) {
        const double r = models::interactionRadius(value, m_s);
        ReadyConstant& radius = add("r", "nm", r, slot, 1 / (models::kMolarSphere * r * r));
        radius.error.s = std::abs(std::pow(m_s, 3) / (r * r)) * m_typed.s;
        add("V", "nm³", models::interactionVolume(value), slot, models::interactionVolume(1));
    }
}

/// slope: derivative of the new constant with respect to the fitted constant of the slot.
ReadyConstant& ReadyList::add(std::string name, std::string_view unit, double value, std::size_t slot, double slope)
{
    const auto& free = m_ratioFit.free;
    ReadyConstant constant{.name = std::move(name), .unit = printedUnit(unit), .value = value};
    constant.fixed = std::find(free.begin(), free.end(), slot) == free.end();
    if (!constant.fixed)
        constant.error = {.scatter = std::abs(slope) * m_analysed.standardError[slot],
                          .tau0 = std::abs(slope * m_responses.tau0[slot]) * m_typed.tau0,
                          .Cp = std::abs(slope * m_responses.Cp[slot]) * m_typed.Cp};
    return m_list.emplace_back(std::move(constant));
}

} // namespace

double ErrorParts::total() const { return std::hypot(std::hypot(scatter, tau0), std::hypot(s, Cp)); }

std::vector<ReadyConstant> readyConstants(const AnalysedConstants& analysed, const RatioFit& ratioFit, double s,
                                          const TypedErrors& typed)
{
    return ReadyList(analysed, ratioFit, s, typed).all();
}

} // namespace noise
