#include "app/startup.h"
#include "ui/prompter.h"

#include <QApplication>
#include <QIcon>

#include <memory>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("Vorlo");
    QApplication::setDesktopFileName("org.vorlo.Vorlo");
    ui::DialogPrompter prompter;
    auto firstWindow = std::make_unique<app::FirstWindow>();
    std::unique_ptr<app::VorloMain> program;
    firstWindow->whenPainted([&] {
        QApplication::setWindowIcon(QIcon(":/128/org.vorlo.Vorlo.png"));
        program = std::make_unique<app::VorloMain>(prompter, std::move(firstWindow));
        QObject::connect(program.get(), &app::VorloMain::ended, &application, [] { QCoreApplication::exit(); });
    });
    return QApplication::exec();
}
