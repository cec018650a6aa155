#include "app/startup.h"
#include "ui/prompter.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("Vorlo");
    QApplication::setDesktopFileName("org.vorlo.Vorlo");
    QApplication::setWindowIcon(QIcon(":/128/org.vorlo.Vorlo.png"));
    ui::DialogPrompter prompter;
    app::VorloMain program(prompter);
    QObject::connect(&program, &app::VorloMain::ended, &application, [] { QCoreApplication::exit(); });
    return QApplication::exec();
}
