#pragma once

#include <QApplication>
#include <QWidget>

namespace support
{

/// On desktops with large texts, windows are larger by the same factor.
inline bool hasLargeFont() { return QApplication::font().pointSizeF() > 12; }

inline QSize expectedSize(const QWidget& window, const QSize& usual)
{
    return hasLargeFont() ? usual.expandedTo(window.minimumSizeHint()) : usual;
}

} // namespace support
