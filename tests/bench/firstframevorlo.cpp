#include "app/startup.h"
#include "tests/bench/firstframe.h"
#include "ui/prompter.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    ui::DialogPrompter prompter;
    auto front = std::make_unique<app::Front>();
    std::unique_ptr<app::VorloMain> program;
    front->whenPainted([&] { program = std::make_unique<app::VorloMain>(prompter, std::move(front)); });
    bench::FirstFrame frame(front->MainWindow);
    return QApplication::exec();
}
