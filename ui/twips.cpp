#include "ui/twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

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

void placeAndShow(QWidget& window, int top, int left, int height, int width)
{
    if (window.isMinimized())
        return;
    window.move(toPixels(left), toPixels(top));
    window.resize(toPixels(width), toPixels(height));
    window.show();
}

} // namespace ui
