#include "tests/bench/firstframe.h"

#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.menuBar()->addMenu("&File");
    window.setCentralWidget(new QLabel("Text", &window)); // the font system is part of any window's start
    window.resize(650, 544);                              // as large as the program's main window
    bench::FirstFrame frame(window);
    window.show();
    return QApplication::exec();
}
