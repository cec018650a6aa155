#pragma once

#include "plot/canvas.h"

#include <cstdint>

namespace plot
{

/// A colour from hue (192 steps to the circle), lightness and saturation (0..32). Green takes the hue 64 steps back
/// and blue the hue itself, which is not the textbook order and is deliberate.
Color CurveColor(std::int32_t h, std::int32_t L, std::int32_t S);

/// One colour component, 0..32, between m1 and m2.
std::int32_t HueComponent(std::int32_t h, std::int32_t m1, std::int32_t m2);

/// Colours of sample i of N in decay charts; the fitted line is a darker shade of its points.
Color pointColor(int i, int N);
Color lineColor(int i, int N);

} // namespace plot
