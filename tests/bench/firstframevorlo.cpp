#include "app/startup.h"
#include "tests/bench/firstframe.h"
#include "ui/prompter.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    ui::DialogPrompter prompter;
    auto firstWindow = std::make_unique<app::FirstWindow>();
    std::unique_ptr<app::VorloMain> program;
    firstWindow->whenPainted([&] { program = std::make_unique<app::VorloMain>(prompter, std::move(firstWindow)); });
    bench::FirstFrame frame(firstWindow->MainWindow);
    return QApplication::exec();
}
