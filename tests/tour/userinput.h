#pragma once

#include <QMainWindow>
#include <QString>
#include <QTableView>

#include <cstdlib>
#include <iostream>

class QAbstractButton;
class QComboBox;
class QLineEdit;

/// Keys and clicks of a user. A control that a user could not operate, because it is missing, hidden or disabled, ends
/// the tour with a message and exit status 1.
namespace tour
{

[[noreturn]] inline void giveUp(const QString& reason)
{
    std::cerr << "The tour ends here: " << reason.toStdString() << '\n';
    std::exit(EXIT_FAILURE);
}

template <class Widget>
Widget& find(QWidget& window, const char* name)
{
    auto* widget = window.findChild<Widget*>(name);
    if (!widget)
        giveUp(QString("%1 has no %2").arg(window.windowTitle(), name));
    return *widget;
}

/// Brings a window to the front and waits until it has the keyboard.
void goTo(QWidget& window);
void click(QWidget& control);
void clickCell(QTableView& grid, int row, int column);
/// Types a text into a cell that is edited in place.
void typeCell(QTableView& table, int row, int column, const QString& text);
/// Types into the control with the focus, key by key, because the first key may move the focus.
void press(Qt::Key key, int times = 1);
void type(const QString& text);
/// Replaces the text of a box.
void retype(QLineEdit& box, const QString& text);
/// Chooses an entry of a list with the arrow keys.
void choose(QComboBox& list, int entry);
/// Opens a menu of the menu bar and clicks the item with that object name.
void chooseItem(QMainWindow& window, const char* item);
/// Waits until a button has another text.
void waitWhile(const QAbstractButton& button, const QString& text);
/// Saves a picture of a window as PNG. A window that is not on the screen ends the tour.
void takePicture(QWidget& window, const QString& path);

} // namespace tour
