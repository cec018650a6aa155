#pragma once

namespace plot
{

/// The part of the world that a surface shows. y1 is the value at the top edge, usually the greater one.
struct WorldRect {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
};

/// Twips.
struct SurfaceSize {
    double width = 0, height = 0;
};

/// World coordinates to surface twips. Default-made, it sends every point to (0, 0).
class ViewMap
{
public:
    ViewMap() = default;
    ViewMap(const WorldRect& world, const SurfaceSize& surface) noexcept;

    const WorldRect& world() const noexcept { return m_world; }
    float VtoWX(double x) const noexcept; // whole twips, rounded down, held within +-32767; 32767 for a NaN
    float VtoWY(double y) const noexcept;

private:
    WorldRect m_world;
    double m_scaleX = 0, m_scaleY = 0; // twips per world unit
    double m_offsetX = 0, m_offsetY = 0;
};

} // namespace plot
