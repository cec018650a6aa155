#include "tests/bench/fittimes.h"

#include <QApplication>
#include <QPlainTextEdit>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QPlainTextEdit window("Text");
    window.show();
    QApplication::processEvents();
    return bench::printFitTimes([&] { window.repaint(); }) ? 0 : 1;
}
