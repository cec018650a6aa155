#include "app/mainwindow.h"
#include "app/sharedstate.h"
#include "app/statusline.h"
#include "tests/support/datarows.h"
#include "tests/support/windowsize.h"
#include "ui/twips.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void menus();
    void mnemonicsDoNotClash();
    void tabFollowsTheReadingOrder();
    void fitsItsUsualSize();
    void editKeysStayInATextBox();
    void calculationAndHelpKeysWorkFromEverywhere();

private:
    static bool mnemonicsDiffer(const QStringList& captions)
    {
        QList<QKeySequence> taken;
        for (const QString& caption : captions)
            if (const QKeySequence mnemonic = QKeySequence::mnemonic(caption); !mnemonic.isEmpty()) {
                if (taken.contains(mnemonic))
                    return false;
                taken << mnemonic;
            }
        return true;
    }
    /// The menus of the menu bar, each followed by its submenus.
    QList<const QAction*> allMenus() const
    {
        QList<const QAction*> menus;
        for (const QAction* menu : m_window->menuBar()->actions()) {
            menus << menu;
            for (const QAction* item : menu->menu()->actions())
                if (item->menu())
                    menus << item;
        }
        return menus;
    }
    QAction& action(const char* name) { return *m_window->findChild<QAction*>(name); }
    void showActive();

    app::SharedState m_shared;
    std::unique_ptr<app::frmVorloMain> m_window;
};

void TestMainWindow::init()
{
    m_shared = {};
    m_window = std::make_unique<app::frmVorloMain>(m_shared);
}

void TestMainWindow::showActive()
{
    m_window->SetSize(0, 6500, 8160, 9750);
    m_window->activateWindow();
    QTRY_VERIFY(m_window->isActiveWindow());
}

void TestMainWindow::menus()
{
    QString shown;
    for (const QAction* menu : allMenus())
        for (const QAction* item : menu->menu()->actions())
            shown += QStringList{menu->text().remove('&'), item->text().remove('&'), item->objectName(),
                                 item->shortcut().toString()}
                         .join('\t') +
                     '\n';
    QString expected;
    for (const QStringList& row : support::dataRows("menus.txt"))
        expected += row.join('\t') + '\n';
    QCOMPARE(shown, expected);
}

void TestMainWindow::mnemonicsDoNotClash()
{
    QStringList everywhere; // reached by Alt and a letter
    for (const QAction* menu : m_window->menuBar()->actions())
        everywhere << menu->text();
    for (const QAction* menu : allMenus()) {
        QStringList items;
        for (const QAction* item : menu->menu()->actions())
            if (!item->isSeparator())
                items << item->text();
        QVERIFY2(mnemonicsDiffer(items), qPrintable(menu->text()));
        QVERIFY2(items.filter("&").size() == items.size(), qPrintable(menu->text()));
    }
    for (const auto* button : m_window->findChildren<QAbstractButton*>())
        everywhere << button->text();
    for (const auto* label : m_window->findChildren<QLabel*>())
        everywhere << label->text();
    QVERIFY2(mnemonicsDiffer(everywhere), qPrintable(everywhere.join(' ')));
    for (const char* losing : {"cmdClearAll", "cmdDelRow"}) // a slip of the fingers would lose results
        QVERIFY(m_window->findChild<QAbstractButton*>(losing)->shortcut().isEmpty());
}

void TestMainWindow::fitsItsUsualSize()
{
    showActive();
    QCOMPARE(m_window->windowTitle(), QString("Vorlo G4 2002.01.18"));
    QCOMPARE(m_window->size(), support::expectedSize(*m_window, {ui::toPixels(9750), ui::toPixels(8160)}));
    for (const auto* label : m_window->findChildren<QLabel*>())
        QVERIFY2(label->width() >= label->sizeHint().width(), qPrintable(label->text()));
    for (const auto* button : m_window->findChildren<QAbstractButton*>()) {
        const int caption = button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width();
        QVERIFY2(button->width() >= caption, qPrintable(button->text()));
    }

    m_window->statusLine().showVerdict(QString(500, 'x'), "opens Fit Details", true);
    QTest::qWait(50); // lays out anew, one level of widgets after the other
    QCOMPARE(m_window->size(), support::expectedSize(*m_window, {ui::toPixels(9750), ui::toPixels(8160)}));

    QWidgetList controls;
    for (auto* child : m_window->centralWidget()->findChildren<QWidget*>())
        if (qobject_cast<QLabel*>(child) || qobject_cast<QLineEdit*>(child) || qobject_cast<QPushButton*>(child) ||
            qobject_cast<QCheckBox*>(child) || qobject_cast<QRadioButton*>(child))
            controls << child;
    for (const QWidget* control : controls) {
        QVERIFY2(control->parentWidget()->rect().contains(control->geometry()), qPrintable(control->objectName()));
        for (const QWidget* other : controls)
            QVERIFY2(other == control || other->parentWidget() != control->parentWidget() ||
                         !other->geometry().intersects(control->geometry()),
                     qPrintable(control->objectName() + " over " + other->objectName()));
    }
}

void TestMainWindow::tabFollowsTheReadingOrder()
{
    showActive();
    m_window->findChild<QWidget*>("txtEdit")->setFocus();
    m_window->findChild<QRadioButton*>("opnModel3")->click();
    m_window->statusLine().showVerdict("at a minimum", "opens Fit Details", false);
    QStringList order;
    for (QString name = "txtEdit"; !order.contains(name); name = QApplication::focusWidget()->objectName()) {
        order << name;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(QApplication::focusWidget()->objectName(), QString("txtEdit"));
    QCOMPARE(order, QStringList({"txtEdit",    "MSHFlexGrid1", "cmdCopy",      "cmdClearAll",   "cmdDelRow",
                                 "cmdRestore", "cmdSetCursor", "MSHFlexGrid2", "opnModel3",     "txtkq2",
                                 "txtK",       "txtS",         "txtConcProbe", "txtTolerance",  "txtIteration",
                                 "Check1",     "Check2",       "txtFitRegion", "opnFitRegion0", "cmdVerdict"}));
}

void TestMainWindow::editKeysStayInATextBox()
{
    showActive();
    QSignalSpy copied(m_window.get(), &app::frmVorloMain::copyChosen);
    QSignalSpy cut(m_window.get(), &app::frmVorloMain::cutChosen);
    QSignalSpy pasted(m_window.get(), &app::frmVorloMain::pasteChosen);
    auto* box = m_window->findChild<QLineEdit*>("txtkq2");
    auto* other = m_window->findChild<QLineEdit*>("txtEdit");
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(box->text(), QString());
    other->setFocus();
    QTest::keyClick(other, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(other->text(), QString("1e+6"));
    QCOMPARE(copied.count() + cut.count() + pasted.count(), 0);

    auto* grid = m_window->findChild<QWidget*>("MSHFlexGrid1");
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(copied.count(), 1);
    other->setFocus();
    action("mnuCut").trigger(); // the menu item acts on the sheet even if the focus is elsewhere
    QCOMPARE(cut.count(), 1);
}

void TestMainWindow::calculationAndHelpKeysWorkFromEverywhere()
{
    showActive();
    const QSignalSpy calculate(m_window.get(), &app::frmVorloMain::calcDecayCurveChosen);
    auto* box = m_window->findChild<QLineEdit*>("txtkq2");
    box->setFocus();
    box->setCursorPosition(0);
    QTest::keyClick(box, Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(calculate.count(), 1);
    QCOMPARE(box->text(), QString("1e+6"));

    const QSignalSpy help(m_window.get(), &app::frmVorloMain::helpChosen);
    QWidget other; // plots, tables and analyzers are windows of their own
    other.show();
    other.activateWindow();
    QTRY_VERIFY(other.isActiveWindow());
    QTest::keyClick(&other, Qt::Key_F1);
    QCOMPARE(help.count(), 1);
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
