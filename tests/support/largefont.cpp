#include <QApplication>
#include <QFont>

namespace
{

constexpr double kLargePoints = 16; // desktops start with 9 to 11

/// A library that, preloaded, gives a program the font of a desktop with large texts.
void enlargeFont()
{
    QFont font = QApplication::font();
    font.setPointSizeF(kLargePoints);
    QApplication::setFont(font);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(enlargeFont)
