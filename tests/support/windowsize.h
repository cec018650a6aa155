#pragma once

#include <QApplication>
#include <QWidget>

namespace support
{

/// Desktops that are set to large texts have windows as much larger as these need.
inline bool hasLargeFont() { return QApplication::font().pointSizeF() > 12; }

inline QSize expectedSize(const QWidget& window, const QSize& usual)
{
    return hasLargeFont() ? usual.expandedTo(window.minimumSizeHint()) : usual;
}

} // namespace support
