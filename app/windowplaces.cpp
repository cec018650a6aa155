#include "app/windowplaces.h"

#include "ui/twips.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace app
{

void showInFront(QWidget& window, const RoomyPlace& place)
{
    constexpr int kTitleBar = 450, kBorders = 150; // twips, about
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
