#pragma once

class QLabel;
class QWidget;

namespace ui
{

/// A label with an object name for sentences: it wraps, and its text can be selected with the mouse.
QLabel* wrappingLabel(const char* name, QWidget* parent);

} // namespace ui
