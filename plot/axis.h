#pragma once

#include "plot/canvas.h"
#include "plot/viewmap.h"

#include <string_view>

namespace plot
{

inline constexpr int kLinearLabels = 0; // y labels in the chart's own number format
inline constexpr int kPowerLabels = 1;  // y is a base-10 logarithm and is labelled as a power of ten

/// Tick spacing between two world values: 1 or 2 times a power of ten, 1 to 5 intervals for ordinary spans.
/// A span of exactly 10 or more powers of ten gets the smaller spacing, since SafeLog10 stays just below them.
double AxisStep(double a, double b);

struct YLabels {
    std::string_view format; // of linear labels
    int islog = kLinearLabels;
};

/// In world units.
struct TickSpacing {
    double x = 0, y = 0;
};

/// Clears the surface and draws grid, labels and the axes through the world's origin. A positive spacing whose
/// first tick lies beyond the far edge comes back negated. Any other islog than the two above: no y labels.
TickSpacing drawAxis(Surface& surface, const ViewMap& map, YLabels yLabels, TickSpacing spacing);

} // namespace plot
