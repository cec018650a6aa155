#include <QApplication>
#include <QFont>

namespace
{

constexpr double kLargePoints = 16; // desktops start with 9 to 11

/// Loaded before a program, gives it the font of a desktop that is set to large texts.
void enlargeFont()
{
    QFont font = QApplication::font();
    font.setPointSizeF(kLargePoints);
    QApplication::setFont(font);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(enlargeFont)
