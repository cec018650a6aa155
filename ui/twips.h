#pragma once

class QWidget;

/// Window geometry is kept in twips, 1/1440 inch.
namespace ui
{

double twipsPerPixel(); // of the primary screen: 15 at 96 dots per inch
int toPixels(double twips);
int toTwips(int pixels);

/// Moves the top-left corner of the window's frame, in twips; a window not yet shown appears there.
void placeFrame(QWidget& window, int top, int left);

/// Twips.
struct Place {
    int top, left, height, width;
};

/// Places and shows a window. Does nothing while the window is minimised.
void placeAndShow(QWidget& window, const Place& place);

/// Shows the window in front of all others, even if it was minimised, and gives it the focus.
void bringToFront(QWidget& window);

} // namespace ui
