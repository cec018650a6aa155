#include "app/startup.h"

#include "app/resultstable.h"
#include "ui/prompter.h"

namespace app
{

namespace
{

void bringToFront(QWidget& window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

VorloMain::VorloMain(ui::Prompter& prompter)
    : MainWindow(shared), SettingWindow(shared), aboutBox(prompter), m_prompter(prompter)
{
    connectMenus();
    MainWindow.SetSize(0, 6500, 8160, 9750);
    // Plots stack to the left of the main window.
    GraphWindow1.SetPosition(0, 1000);
    GraphWindow2.SetPosition(5000, 1000);
}

void VorloMain::connectMenus()
{
    connect(&MainWindow, &frmVorloMain::setParametersChosen, this, [this] {
        SettingWindow.SetSize(1000, 5000, 3645, 3645);
        bringToFront(SettingWindow);
    });
    connect(&MainWindow, &frmVorloMain::helpChosen, this, [this] {
        helpViewer.openIndex(helpFilePath());
        bringToFront(helpViewer);
    });
    connect(&MainWindow, &frmVorloMain::aboutChosen, this, [this] { bringToFront(aboutBox); });
    connect(&MainWindow, &frmVorloMain::closed, this, &VorloMain::endProgram);
    connect(&SettingWindow, &frmSettingWindow::assessmentChanged, &MainWindow.results(), &ResultsTable::RedrawResult);
}

// Windows are hidden, not destroyed: a fit whose event processing let the close through still uses them.
void VorloMain::endProgram()
{
    for (QWidget* window : std::initializer_list<QWidget*>{&GraphWindow1, &GraphWindow2, &OutputTable1, &OutputTable2,
                                                           &SettingWindow, &helpViewer, &aboutBox})
        window->hide();
    emit ended();
}

} // namespace app
