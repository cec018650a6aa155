#include "app/firstwindow.h"

#include "app/windowplaces.h"

namespace app
{

FirstWindow::FirstWindow()
{
    constexpr WindowPlace place = kMainWindowPlace;
    MainWindow.SetSize(place.top, place.left, place.height, place.width);
}

void FirstWindow::whenPainted(std::function<void()> then)
{
    // Queued, because the frame reaches the screen only after its paint event.
    QObject::connect(&MainWindow, &frmVorloMain::painted, &MainWindow, std::move(then),
                     static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

} // namespace app
