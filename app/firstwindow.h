#pragma once

#include "app/mainwindow.h"
#include "app/sharedstate.h"

#include <functional>

namespace app
{

/// The first window on the screen: the main window with the shared state. It does not wait for the other windows.
struct FirstWindow {
    FirstWindow();
    /// Calls a function once after the main window has been painted for the first time.
    void whenPainted(std::function<void()> then);

    SharedState shared;
    frmVorloMain MainWindow{shared};
};

} // namespace app
