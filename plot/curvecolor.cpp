#include "plot/curvecolor.h"

#include "fit/numbertext.h"

#include <algorithm>

namespace plot
{
namespace
{

constexpr std::int32_t kHues = 192;
constexpr double kFull = 32; // lightness and saturation
constexpr int kPointShade = 16;
constexpr int kLineShade = 12;

std::int32_t rounded(double value) { return fit::heldInt32(value); }

int byteOf(std::int32_t component) { return std::clamp(component * 8, 0, 255); } // only 32 * 8 is above

Color sampleColor(int i, int N, int shade)
{
    return CurveColor(rounded(144.0 / N * i + 48), i + shade, i + shade); // hues from 48 to 192
}

} // namespace

std::int32_t HueComponent(std::int32_t h, std::int32_t m1, std::int32_t m2)
{
    const std::int32_t hue = (h % kHues + kHues) % kHues;
    if (hue < 32)
        return rounded(m1 + (m2 - m1) * hue / 32.0);
    if (hue < 96)
        return m2;
    if (hue < 128)
        return rounded(m1 + (m2 - m1) * (128 - hue) / 32.0);
    return m1;
}

Color CurveColor(std::int32_t h, std::int32_t L, std::int32_t S)
{
    if (S == 0)
        return rgb(byteOf(L), byteOf(L), byteOf(L));
    const std::int32_t m2 = L > 16 ? rounded(L + S - L * S / kFull) : rounded((S + kFull) * L / kFull);
    const std::int32_t m1 = 2 * L - m2;
    return rgb(byteOf(HueComponent(h + 64, m1, m2)), byteOf(HueComponent(h - 64, m1, m2)),
               byteOf(HueComponent(h, m1, m2)));
}

Color pointColor(int i, int N) { return sampleColor(i, N, kPointShade); }

Color lineColor(int i, int N) { return sampleColor(i, N, kLineShade); }

} // namespace plot
