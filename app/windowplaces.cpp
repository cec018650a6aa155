#include "app/windowplaces.h"

#include "ui/twips.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace app
{
namespace
{

constexpr int kTitleBar = 450, kBorders = 120; // of a window's frame, twips, about

} // namespace

TableCorners tableCorners(Extent screen, Extent table)
{
    constexpr TableCorners kBelow{{9600, 6500}, {9600, 11000}};
    constexpr int kBeside = 16350; // beyond the right border of the main window
    const int high = table.height + kTitleBar, wide = table.width + kBorders;
    if (kBelow.decay.top + high <= screen.height && kBelow.analysis.left + wide <= screen.width)
        return kBelow;
    if (kBeside + wide <= screen.width && 2 * high <= screen.height)
        return {{0, kBeside}, {high, kBeside}};
    return {{screen.height - high, 0}, {screen.height - high, screen.width - wide}};
}

void showInFront(QWidget& window, const RoomyPlace& place)
{
    const QSize screen = window.screen()->availableSize();
    const int roomWide = ui::toTwips(screen.width()) - kBorders, roomHigh = ui::toTwips(screen.height()) - kTitleBar;
    constexpr double kUsualPoints = 9; // font size for which the places are designed
    const double growth = std::max(1.0, window.font().pointSizeF() / kUsualPoints);
    const int width = std::min(static_cast<int>(growth * place.width), roomWide);
    const int height = std::min(static_cast<int>(growth * place.height), roomHigh);
    const bool wide = place.left + width <= roomWide;
    if (!window.isVisible())
        ui::placeAndShow(window, {std::min(wide ? place.top : place.crampedTop, roomHigh - height),
                                  std::min(wide ? place.left : place.crampedLeft, roomWide - width), height, width});
    ui::bringToFront(window);
}

} // namespace app
