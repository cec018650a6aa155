#pragma once

class QButtonGroup;

namespace ui
{

/// Makes Tab stop at the checked option of a group only, however it was checked. By default Tab stops at the first
/// option until the user clicks one.
void stopTabAtChosen(QButtonGroup& group);

} // namespace ui
