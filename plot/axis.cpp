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
    std::string_view yFormat;
    int islog;

    /// Text that ends about `pixels` per character of `estimate` left of the vertical axis.
    void labelLeft(double y, std::string_view estimate, double pixels, double raise, std::string_view text) const
    {
        const double perPixel = surface.twipsPerPixel();
        surface.text(map.VtoWX(0) - static_cast<double>(estimate.size()) * pixels * perPixel,
                     map.VtoWY(y) - raise * perPixel, text);
    }

    void xTick(double x) const
    {
        surface.line(map.VtoWX(x), 0, map.VtoWX(x), surface.height(), kLightGrey);
        const auto characters = static_cast<double>(fit::signedText(x).size());
        surface.text(map.VtoWX(x) - characters * kTwipsPerCharacter, map.VtoWY(0) + kLabelGap,
                     fit::formatNumber(x, kTickFormat));
    }

    void powerLabel(double y) const
    {
        const std::string estimate = fit::formatNumber(y, kTickFormat);
        labelLeft(y, estimate, kPixelsBeforeTen, 0, y == 0 ? "1" : "10");
        if (y != 0)
            labelLeft(y, estimate, kPixelsBeforeExponent, kExponentRaise, fit::formatNumber(y, "#"));
    }

    void yTick(double y) const
    {
        surface.line(0, map.VtoWY(y), surface.width(), map.VtoWY(y), kLightGrey);
        if (islog == kLinearLabels) {
            const std::string label = fit::formatNumber(y, yFormat);
            labelLeft(y, label, kPixelsPerCharacter, 0, label);
        } else if (islog == kPowerLabels) {
            powerLabel(y);
        }
    }

    void axes() const
    {
        surface.line(0, map.VtoWY(0), surface.width(), map.VtoWY(0), kBlack);
        surface.line(map.VtoWX(0), 0, map.VtoWX(0), surface.height(), kBlack);
    }
};

double firstTick(double edge, double spacing) { return std::floor(edge / spacing) * spacing; }

void turnTowards(double far, double first, double& spacing)
{
    if (spacing > 0 && first > far)
        spacing = -spacing;
}

} // namespace

double AxisStep(double a, double b)
{
    const double span = std::abs(b - a);
    const double step = std::pow(10.0, std::floor(fit::SafeLog10(span).value_or(0)));
    return span / step > 5 ? 2 * step : step;
}

void drawAxis(Surface& surface, const ViewMap& map, std::string_view yFormat, double& xt, double& yt, int islog)
{
    const WorldRect& world = map.world();
    const AxisDrawing drawing{surface, map, yFormat, islog};
    surface.clear();
    surface.setFontSize(kLabelPoints);
    const double xs = firstTick(world.x1, xt);
    const double ys = firstTick(world.y1, yt);
    turnTowards(world.x2, xs, xt);
    for (const double x : evenSteps(xs, world.x2, xt))
        drawing.xTick(x);
    turnTowards(world.y2, ys, yt);
    for (const double y : evenSteps(ys, world.y2, yt))
        drawing.yTick(y);
    drawing.axes();
}

} // namespace plot
