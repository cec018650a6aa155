#include "app/startup.h"
#include "ui/prompter.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("Vorlo");
    ui::DialogPrompter prompter;
    app::VorloMain program(prompter);
    QObject::connect(&program, &app::VorloMain::ended, &application, [] { QCoreApplication::exit(); });
    return QApplication::exec();
}
