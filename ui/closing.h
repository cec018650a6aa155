#pragma once

class QWidget;

namespace ui
{

/// Lets Esc close a window as its title bar does, with the focus on any of its controls.
void closeOnEscape(QWidget& window);

} // namespace ui
