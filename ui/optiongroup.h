#pragma once

class QButtonGroup;

namespace ui
{

/// Makes the chosen option of a group the only one that the Tab key stops at, whoever chooses it. By itself Tab stops
/// at the first option until one of them has been clicked.
void stopTabAtChosen(QButtonGroup& group);

} // namespace ui
