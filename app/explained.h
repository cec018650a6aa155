#pragma once

#include "app/boxguides.h"

#include <string>

class QWidget;

namespace ui
{
class TextBox;
}

namespace app
{

/// Sets the explanation that the tooltip of a control shows and a screen reader reads.
void explain(QWidget& control, const std::string& text);
void explain(QWidget& control, const BoxGuide& guide);

/// Adds to the explanation of a box how its text is read, if not as it stands, and marks the box then.
void remarkOn(ui::TextBox& box);

} // namespace app
