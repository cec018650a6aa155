#pragma once

#include <QWidgetList>

namespace app
{

/// Gives the controls, frames, tabs and column titles of windows their tooltips. What a control has already stays.
/// Screen readers get the texts of controls, too.
void explainWindows(const QWidgetList& windows);

} // namespace app
