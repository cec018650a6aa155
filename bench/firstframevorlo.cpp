#include "app/startup.h"
#include "bench/firstframe.h"
#include "ui/prompter.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    ui::DialogPrompter prompter;
    app::VorloMain program(prompter);
    bench::FirstFrame frame(program.MainWindow);
    return QApplication::exec();
}
