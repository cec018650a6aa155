#pragma once

class QLabel;
class QWidget;

namespace ui
{

/// A line for a window that shows results, hidden at first: the data were changed since.
QLabel* makeOlderNote(QWidget* window);

/// Shows or hides the line of a window, if it has one.
void showOlderNote(const QWidget& window, bool older);

} // namespace ui
