#include "ui/twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <cmath>

namespace ui
{

double twipsPerPixel()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? 1440.0 / screen->logicalDotsPerInch() : 15.0;
}

int toPixels(double twips) { return static_cast<int>(std::lround(twips / twipsPerPixel())); }

int toTwips(int pixels) { return static_cast<int>(std::lround(pixels * twipsPerPixel())); }

void placeFrame(QWidget& window, int top, int left)
{
    const QPoint corner(toPixels(left), toPixels(top));
    window.move(corner);
    // Before a window is shown, only its native window accepts a position of the frame.
    window.winId();
    window.windowHandle()->setFramePosition(corner);
}

void placeAndShow(QWidget& window, const Place& place)
{
    if (window.isMinimized())
        return;
    window.resize(toPixels(place.width), toPixels(place.height)); // first: a later resize would move the frame
    placeFrame(window, place.top, place.left);
    window.show();
}

void bringToFront(QWidget& window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace ui
