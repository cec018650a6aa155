#pragma once

namespace app
{

class VorloMain;
class WindowMenu;

/// Lists every window of the program in its menu. The windows must have their first titles.
void listWindows(VorloMain& program, WindowMenu& menu);

} // namespace app
