#pragma once

#include <cstdint>
#include <string_view>

namespace plot
{

using Color = std::uint32_t; // 24-bit RGB, red in the lowest byte

constexpr Color rgb(int red, int green, int blue)
{
    return static_cast<Color>(red) | static_cast<Color>(green) << 8 | static_cast<Color>(blue) << 16;
}

// The standard palette's entries that charts use.
inline constexpr Color kBlack = rgb(0, 0, 0);           // 0
inline constexpr Color kLightGrey = rgb(192, 192, 192); // 7
inline constexpr Color kBrightRed = rgb(255, 0, 0);     // 12

enum class Fill { Solid = 0, Transparent = 1 };

/// The interface on which a chart draws, in world coordinates. View sets the visible part of the world.
/// Order: SetTitle, View, Axis, then the primitives.
class Canvas
{
public:
    virtual ~Canvas() = default;
    virtual void SetTitle(std::string_view title) = 0;
    virtual void View(double x1, double y1, double x2, double y2) = 0;
    /// Clears the surface and draws grid, axes and labels; the tick spacings may come back negated.
    virtual void Axis(double& xt, double& yt, int islog) = 0;
    /// The following circles, up to the next sample or chart, are the markers of this sample. Q: quencher, M.
    virtual void beginSample(int number, double Q) = 0;
    virtual void VLine(double x1, double y1, double x2, double y2, Color c) = 0;
    virtual void VPset(double x, double y, Color c) = 0;
    /// R is in surface units (twips), so that markers have the same size in every view.
    virtual void VCircle(double x, double y, double R, Color c, Fill f) = 0;
    virtual void VBox(double x1, double y1, double x2, double y2, Color c) = 0;
    virtual void VFill(double x1, double y1, double x2, double y2, Color c) = 0;
};

struct Segment {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    bool operator==(const Segment&) const = default;
};

/// The interface for the drawing primitives of axes and charts, in twips from the top-left corner.
class Surface
{
public:
    virtual ~Surface() = default;
    virtual double width() const = 0;
    virtual double height() const = 0;
    virtual double twipsPerPixel() const = 0;
    virtual void clear() = 0;
    virtual void setFontSize(int points) = 0;
    virtual void line(const Segment& segment, Color c) = 0;
    /// Black text with its top-left corner at (x, y).
    virtual void text(double x, double y, std::string_view text) = 0;
};

} // namespace plot
