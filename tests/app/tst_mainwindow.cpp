#include "app/mainwindow.h"
#include "app/sharedstate.h"
#include "fit/gaussnewton.h"
#include "ui/grid.h"
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
#include <QSet>
#include <QSignalSpy>
#include <QTest>

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void menus_data();
    void menus();
    void mnemonicsDoNotClash();
    void fitsItsPrescribedSize();
    void everyBoxHasALabel();
    void typingInTheSheetNeedsNormalizationAgain();
    void editKeysStayInATextBox();
    void calculationKeysWorkFromATextBox();
    void f1AsksForHelp();
    void decayAnalysisCanBeDisabled();
    void closingStopsRunsAndAnnouncesIt();

private:
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

void TestMainWindow::menus_data()
{
    QTest::addColumn<int>("menu");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("items"); // caption, control, shortcut
    QTest::newRow("File") << 0 << "File"
                          << QStringList{"New mnuNew Ctrl+N", "Open mnuOpen Ctrl+O", "Save as mnuSaveAs Ctrl+S",
                                         "Quit mnuQuit "};
    QTest::newRow("Edit") << 1 << "Edit"
                          << QStringList{"Cut mnuCut Ctrl+X", "Copy mnuCopy Ctrl+C", "Paste mnuPaste Ctrl+V"};
    QTest::newRow("Calc") << 2 << "Calc"
                          << QStringList{"Normalization mnuNormalization ",
                                         "Decay Curve Analysis mnuDecayCurveAnalysis ",
                                         "Calc Decay Curve with input param. mnuCalcDecayCurve Ctrl+D",
                                         "Stern-Volmer Analysis mnuSternVolmerAnalysis ",
                                         "Calc Stern-Volmer with Input param. mnuCalcSternVolmer Ctrl+T"};
    QTest::newRow("Settings") << 3 << "Settings" << QStringList{"Set Parameters mnuSetParameters "};
    QTest::newRow("Help") << 4 << "Help" << QStringList{"Help mnuHelpItem0 ", "About Vorlo mnuHelpItem1 "};
}

void TestMainWindow::menus()
{
    QFETCH(int, menu);
    QCOMPARE(m_window->menuBar()->actions().size(), 5);
    const QAction* shown = m_window->menuBar()->actions().at(menu);
    QTEST(shown->text().remove('&'), "title");
    QStringList items;
    for (const QAction* item : shown->menu()->actions())
        items << item->text().remove('&') + ' ' + item->objectName() + ' ' + item->shortcut().toString();
    QTEST(items, "items");
}

void TestMainWindow::mnemonicsDoNotClash()
{
    QStringList window; // Alt and a letter reach these from everywhere
    for (const QAction* menu : m_window->menuBar()->actions()) {
        window << menu->text();
        QSet<QKeySequence> inMenu;
        for (const QAction* item : menu->menu()->actions())
            inMenu << QKeySequence::mnemonic(item->text());
        QVERIFY2(!inMenu.contains(QKeySequence()), qPrintable(menu->text()));
        QCOMPARE(inMenu.size(), menu->menu()->actions().size());
    }
    for (const auto* button : m_window->findChildren<QAbstractButton*>())
        window << button->text();
    for (const auto* label : m_window->findChildren<QLabel*>())
        window << label->text();
    QSet<QKeySequence> taken;
    for (const QString& text : window) {
        const QKeySequence mnemonic = QKeySequence::mnemonic(text);
        QVERIFY2(!taken.contains(mnemonic), qPrintable(text));
        if (!mnemonic.isEmpty())
            taken << mnemonic;
    }
}

void TestMainWindow::fitsItsPrescribedSize()
{
    showActive();
    QCOMPARE(m_window->windowTitle(), QString("Vorlo G4 2002.01.18"));
    QCOMPARE(m_window->size(), QSize(ui::toPixels(9750), ui::toPixels(8160)));
    for (const auto* label : m_window->findChildren<QLabel*>())
        QVERIFY2(label->width() >= label->sizeHint().width(), qPrintable(label->text()));
    for (const auto* button : m_window->findChildren<QAbstractButton*>()) {
        const int caption = button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width();
        QVERIFY2(button->width() >= caption, qPrintable(button->text()));
    }

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

void TestMainWindow::everyBoxHasALabel()
{
    QList<QWidget*> labelled;
    for (const auto* label : m_window->findChildren<QLabel*>())
        labelled << label->buddy();
    for (auto* box : m_window->findChildren<QLineEdit*>())
        QVERIFY2(labelled.contains(box) || !box->accessibleName().isEmpty(), qPrintable(box->objectName()));
    for (auto* grid : m_window->findChildren<ui::Grid*>())
        QVERIFY2(labelled.contains(grid) || !grid->accessibleName().isEmpty(), qPrintable(grid->objectName()));
}

void TestMainWindow::typingInTheSheetNeedsNormalizationAgain()
{
    m_shared.DataNormalized = true;
    QTest::keyClick(m_window->findChild<QLineEdit*>("txtEdit"), '1');
    QVERIFY(!m_shared.DataNormalized);
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
    action("mnuCut").trigger(); // from the menu it is the sheet's, wherever the focus is
    QCOMPARE(cut.count(), 1);
}

void TestMainWindow::calculationKeysWorkFromATextBox()
{
    showActive();
    QSignalSpy chosen(m_window.get(), &app::frmVorloMain::calcDecayCurveChosen);
    auto* box = m_window->findChild<QLineEdit*>("txtkq2");
    box->setFocus();
    box->setCursorPosition(0);
    QTest::keyClick(box, Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(box->text(), QString("1e+6"));
}

void TestMainWindow::f1AsksForHelp()
{
    showActive();
    const QSignalSpy chosen(m_window.get(), &app::frmVorloMain::helpChosen);
    QWidget other; // plots, tables and analyzers are windows of their own
    other.show();
    other.activateWindow();
    QTRY_VERIFY(other.isActiveWindow());
    QTest::keyClick(&other, Qt::Key_F1);
    QCOMPARE(chosen.count(), 1);
}

void TestMainWindow::decayAnalysisCanBeDisabled()
{
    QSignalSpy chosen(m_window.get(), &app::frmVorloMain::decayCurveAnalysisChosen);
    m_window->setDecayAnalysisEnabled(false);
    action("mnuDecayCurveAnalysis").trigger();
    QCOMPARE(chosen.count(), 0);
    m_window->setDecayAnalysisEnabled(true);
    action("mnuDecayCurveAnalysis").trigger();
    QCOMPARE(chosen.count(), 1);
}

void TestMainWindow::closingStopsRunsAndAnnouncesIt()
{
    showActive();
    fit::StopRequested = false;
    QSignalSpy closed(m_window.get(), &app::frmVorloMain::closed);
    action("mnuQuit").trigger();
    QVERIFY(fit::StopRequested);
    QCOMPARE(closed.count(), 1);
    QVERIFY(!m_window->isVisible());
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
