#pragma once

class QButtonGroup;
class QLayout;

namespace ui
{

/// Makes Tab stop at the checked option of a group only, however it was checked. By default Tab stops at the first
/// option until the user clicks one.
void stopTabAtChosen(QButtonGroup& group);

/// Small margins and gaps for the options of a narrow panel.
void tighten(QLayout& layout);

} // namespace ui
