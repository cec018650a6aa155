#include "plot/viewmap.h"

#include <cmath>

namespace plot
{
namespace
{

constexpr double kLimit = 32767; // keeps points far outside drawable on 16-bit coordinates

float wholeTwips(double v)
{
    if (std::isnan(v))
        return static_cast<float>(kLimit);
    if (std::abs(v) > kLimit)
        v = std::copysign(kLimit, v);
    return static_cast<float>(std::floor(v));
}

} // namespace

ViewMap::ViewMap(const WorldRect& world, const SurfaceSize& surface) noexcept
    : m_world(world), m_scaleX(surface.width / (world.x2 - world.x1)), m_scaleY(surface.height / (world.y2 - world.y1)),
      m_offsetX(-world.x1 * m_scaleX), m_offsetY(-world.y1 * m_scaleY)
{
}

float ViewMap::VtoWX(double x) const noexcept { return wholeTwips(m_scaleX * x + m_offsetX); }

float ViewMap::VtoWY(double y) const noexcept { return wholeTwips(m_scaleY * y + m_offsetY); }

} // namespace plot
