#include "plot/axis.h"

#include "fit/numbertext.h"
#include "fit/safelog10.h"
#include "plot/evensteps.h"

#include <cmath>
#include <string>

namespace plot
{
namespace
{

constexpr int kLabelPoints = 10;
constexpr double kTwipsPerCharacter = 4;    // half of 8; bare twips on purpose: x labels start at their grid line
constexpr double kLabelGap = 2;             // twips between the horizontal axis and the labels below it
constexpr double kPixelsPerCharacter = 6;   // linear y labels
constexpr double kPixelsBeforeTen = 4;      // per character of the width estimate, to the start of "10"
constexpr double kPixelsBeforeExponent = 2; // the same to the start of the exponent
constexpr double kExponentRaise = 8;        // pixels
constexpr std::string_view kTickFormat = "#.#e+#";

struct AxisDrawing {
    Surface& surface;
    const ViewMap& map;
    YLabels yLabels;

    /// Text that begins so many pixels left of the vertical axis and so many above the place of y.
    void labelLeft(double y, double left, double raise, std::string_view text) const
    {
        const double perPixel = surface.twipsPerPixel();
        surface.text(map.VtoWX(0) - left * perPixel, map.VtoWY(y) - raise * perPixel, text);
    }

    void xTick(double x) const
    {
        surface.line({map.VtoWX(x), 0, map.VtoWX(x), surface.height()}, kLightGrey);
        const auto characters = static_cast<double>(fit::signedText(x).size());
        surface.text(map.VtoWX(x) - characters * kTwipsPerCharacter, map.VtoWY(0) + kLabelGap,
                     fit::formatNumber(x, kTickFormat));
    }

    void powerLabel(double y) const
    {
        const auto characters = static_cast<double>(fit::formatNumber(y, kTickFormat).size()); // an estimate
        labelLeft(y, characters * kPixelsBeforeTen, 0, y == 0 ? "1" : "10");
        if (y != 0)
            labelLeft(y, characters * kPixelsBeforeExponent, kExponentRaise, fit::formatNumber(y, "#"));
    }

    void yTick(double y) const
    {
        surface.line({0, map.VtoWY(y), surface.width(), map.VtoWY(y)}, kLightGrey);
        if (yLabels.islog == kLinearLabels) {
            const std::string label = fit::formatNumber(y, yLabels.format);
            labelLeft(y, static_cast<double>(label.size()) * kPixelsPerCharacter, 0, label);
        } else if (yLabels.islog == kPowerLabels) {
            powerLabel(y);
        }
    }

    void axes() const
    {
        surface.line({0, map.VtoWY(0), surface.width(), map.VtoWY(0)}, kBlack);
        surface.line({map.VtoWX(0), 0, map.VtoWX(0), surface.height()}, kBlack);
    }
};

double firstTick(double edge, double spacing) { return std::floor(edge / spacing) * spacing; }

double turnedTowards(double far, double first, double spacing)
{
    return spacing > 0 && first > far ? -spacing : spacing;
}

} // namespace

double AxisStep(double a, double b)
{
    const double span = std::abs(b - a);
    const double step = std::pow(10.0, std::floor(fit::SafeLog10(span).value_or(0)));
    return span / step > 5 ? 2 * step : step;
}

TickSpacing drawAxis(Surface& surface, const ViewMap& map, YLabels yLabels, TickSpacing spacing)
{
    const WorldRect& world = map.world();
    const AxisDrawing drawing{surface, map, yLabels};
    surface.clear();
    surface.setFontSize(kLabelPoints);
    const double xs = firstTick(world.x1, spacing.x);
    const double ys = firstTick(world.y1, spacing.y);
    const TickSpacing turned{turnedTowards(world.x2, xs, spacing.x), turnedTowards(world.y2, ys, spacing.y)};
    for (const double x : evenSteps(xs, world.x2, turned.x))
        drawing.xTick(x);
    for (const double y : evenSteps(ys, world.y2, turned.y))
        drawing.yTick(y);
    drawing.axes();
    return turned;
}

} // namespace plot
