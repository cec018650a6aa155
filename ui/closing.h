#pragma once

class QWidget;

namespace ui
{

/// Lets Esc close a window as its title bar does, wherever the focus is in it.
void closeOnEscape(QWidget& window);

} // namespace ui
