#include "tests/tour/userinput.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QTest>

namespace tour
{
namespace
{

constexpr int kInsideLeft = 8; // pixels: on the indicator of an option button, on the text of anything else

QWidget& focused()
{
    if (QWidget* widget = QApplication::focusWidget())
        return *widget;
    giveUp("nothing has the keyboard");
}

/// The menu that contains an item or the title of a submenu.
QMenu* menuOf(const QAction& action)
{
    for (QObject* holder : action.associatedObjects())
        if (auto* menu = qobject_cast<QMenu*>(holder))
            return menu;
    return nullptr;
}

/// Moves down to an item with the arrow keys and chooses it.
void chooseFrom(QMenu& menu, const QAction& item)
{
    for (qsizetype left = menu.actions().size(); left > 0 && menu.activeAction() != &item; --left)
        QTest::keyClick(&menu, Qt::Key_Down);
    if (menu.activeAction() != &item)
        giveUp(QString("the item %1 cannot be chosen").arg(item.text()));
    QTest::keyClick(&menu, Qt::Key_Return);
}

/// Opens a menu and, before it, the menus that contain it.
void openMenu(QMenuBar& bar, const QMenu& menu)
{
    QAction* title = menu.menuAction();
    if (bar.actions().contains(title)) {
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(title).center());
    } else if (QMenu* parent = menuOf(*title)) {
        openMenu(bar, *parent);
        chooseFrom(*parent, *title);
    }
    if (!QTest::qWaitFor([&menu] { return menu.isVisible(); })) // a submenu opens after a moment
        giveUp(QString("the menu %1 does not open").arg(title->text()));
}

} // namespace

void goTo(QWidget& window)
{
    window.raise();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        giveUp(QString("%1 does not come to the front").arg(window.windowTitle()));
}

void click(QWidget& control)
{
    if (!control.isVisible() || !control.isEnabled())
        giveUp(QString("%1 cannot be clicked").arg(control.objectName()));
    const QPoint inside(kInsideLeft, control.height() / 2);
    QTest::mouseClick(&control, Qt::LeftButton, {},
                      QStyle::visualPos(control.layoutDirection(), control.rect(), inside));
}

void clickCell(QTableView& grid, int row, int column)
{
    const QRect cell = grid.visualRect(grid.model()->index(row, column));
    if (!grid.viewport()->rect().contains(cell.center()))
        giveUp(QString("cell %1, %2 is out of view").arg(row).arg(column));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell.center());
}

void typeCell(QTableView& table, int row, int column, const QString& text)
{
    clickCell(table, row, column);
    QTest::keyClicks(&table, text.first(1)); // opens the editor, which takes the rest
    type(text.sliced(1));
    press(Qt::Key_Return);
    if (!QTest::qWaitFor([&table] { return table.hasFocus(); }))
        giveUp(QString("cell %1, %2 stays open").arg(row).arg(column));
}

void press(Qt::Key key, int times)
{
    for (int i = 0; i < times; ++i)
        QTest::keyClick(&focused(), key);
}

void type(const QString& text)
{
    for (const QChar character : text)
        QTest::keyClick(&focused(), character.toLatin1());
}

void retype(QLineEdit& box, const QString& text)
{
    click(box);
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    type(text);
}

void choose(QComboBox& list, int entry)
{
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Home);
    for (int i = 0; i < entry; ++i)
        QTest::keyClick(&list, Qt::Key_Down);
    if (list.currentIndex() != entry)
        giveUp(QString("%1 has no entry %2").arg(list.objectName()).arg(entry));
}

void chooseItem(QMainWindow& window, const char* item)
{
    goTo(window);
    auto* action = window.findChild<QAction*>(item);
    QMenu* menu = action ? menuOf(*action) : nullptr;
    if (!menu)
        giveUp(QString("there is no menu item %1").arg(item));
    openMenu(*window.menuBar(), *menu);
    chooseFrom(*menu, *action);
}

void waitWhile(const QAbstractButton& button, const QString& text)
{
    if (!QTest::qWaitFor([&] { return button.text() != text; }, 60'000))
        giveUp(QString("%1 stays at %2").arg(button.objectName(), text));
    QCoreApplication::sendPostedEvents(); // the layout follows the new text
}

void takePicture(QWidget& window, const QString& path)
{
    if (!window.isVisible() || !QTest::qWaitForWindowExposed(&window))
        giveUp(QString("%1 is not shown").arg(window.windowTitle()));
    QCoreApplication::sendPostedEvents(); // the layout follows the last change
    if (!window.grab().save(path))
        giveUp(QString("cannot write %1").arg(path));
}

} // namespace tour
