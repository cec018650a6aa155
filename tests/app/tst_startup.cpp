#include "app/datasheet.h"
#include "fit/gaussnewton.h"
#include "tests/support/application.h"
#include "tests/support/callableproblem.h"
#include "ui/grid.h"
#include "ui/twips.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void startsWithItsDefaults();
    void sessionsAreSavedAndReopened();
    void blocksMoveThroughTheClipboard();
    void menusOpenModelessWindows();
    void everyWindowHasItsOwnTitle();
    void closingHidesEveryWindowAndEnds();
    void closingEndsARunThatLetsEventsThrough();
};

/// Lets the user close the main window in the third iteration.
struct ClosingObserver final : fit::Observer {
    explicit ClosingObserver(QWidget& mainWindow) : window(mainWindow) {}
    void letEventsRun() override
    {
        if (++iterations == 3)
            window.close();
        QCoreApplication::processEvents();
    }
    bool keepGoing(double) override { return true; }

    QWidget& window;
    int iterations = 0;
};

void TestStartup::startsWithItsDefaults()
{
    support::Application application;
    const app::SharedState& shared = application.program.shared;
    QCOMPARE(shared.settings.TimeScale, 1);
    QCOMPARE(shared.settings.IntensityScale, 0);
    QCOMPARE(shared.settings.LogMode, 1);
    QCOMPARE(shared.settings.AssessmentMode, 1);
    QCOMPARE(shared.FitRegionMode, 2);
    QVERIFY(!shared.DataNormalized);
    QCOMPARE(shared.results.ResultCursor, 1);
    QCOMPARE(shared.results.ResultRowEnd, 1);
    QCOMPARE(application.program.GraphWindow1.pos(), QPoint(ui::toPixels(1000), 0));
    QCOMPARE(application.program.GraphWindow2.pos(), QPoint(ui::toPixels(1000), ui::toPixels(5000)));
    const app::frmVorloMain& window = application.program.MainWindow;
    QVERIFY(window.isVisible());
    QCOMPARE(window.pos(), QPoint(ui::toPixels(6500), 0));
    for (const QWidget* other : QApplication::topLevelWidgets())
        QVERIFY2(other == &window || !other->isVisible(), qPrintable(other->windowTitle()));
}

void TestStartup::sessionsAreSavedAndReopened()
{
    QTemporaryDir folder;
    const QString file = folder.filePath("a.vrl");
    support::Application application;
    application.program.MainWindow.sheet().SetSheetText(9, 20, "3.5");
    application.control<QRadioButton>("opnModel12").click();
    application.program.shared.settings.LogMode = 0;
    application.prompter.nextFile = file;
    application.control<QAction>("mnuSaveAs").trigger();

    support::Application other;
    other.control<QAction>("mnuSetParameters").trigger();
    other.program.MainWindow.sheet().SelectSheetCell(9, 20);
    other.prompter.nextFile = file;
    other.control<QAction>("mnuOpen").trigger();
    QCOMPARE(other.program.MainWindow.sheet().GetSheetText(9, 20), QString("3.5"));
    QCOMPARE(other.program.MainWindow.sheet().grid().indexAt({1, 1}).column(), 1);
    QVERIFY(other.control<QRadioButton>("opnModel12").isChecked());
    QCOMPARE(other.program.MainWindow.windowTitle(), app::captionWithFile(app::frmVorloMain::kTitle, file));
    QVERIFY(other.program.SettingWindow.findChild<QRadioButton*>("opnMethod0")->isChecked());
    QVERIFY(application.prompter.shown.isEmpty() && other.prompter.shown.isEmpty());

    other.control<QAction>("mnuNew").trigger();
    QCOMPARE(other.program.MainWindow.sheet().GetSheetText(9, 20), QString());
}

void TestStartup::blocksMoveThroughTheClipboard()
{
    support::Application application;
    app::DataSheet& sheet = application.program.MainWindow.sheet();
    sheet.SetSheetText(1, 1, "0.1");
    sheet.SelectSheetCell(1, 1);
    application.control<QAction>("mnuCut").trigger();
    QCOMPARE(application.control<QLineEdit>("txtEdit").text(), QString());
    sheet.SelectSheetCell(3, 2);
    application.program.shared.DataNormalized = true;
    application.control<QAction>("mnuPaste").trigger();
    QCOMPARE(sheet.GetSheetText(3, 2), QString("0.1"));
    QCOMPARE(sheet.GetSheetText(1, 1), QString());
    QCOMPARE(application.control<QLineEdit>("txtEdit").text(), QString("0.1"));
    QVERIFY(!application.program.shared.DataNormalized);
}

void TestStartup::menusOpenModelessWindows()
{
    support::Application application;
    application.control<QAction>("mnuHelpItem0").trigger();
    application.control<QAction>("mnuHelpItem1").trigger();
    application.control<QAction>("mnuSetParameters").trigger();
    QVERIFY(application.program.helpViewer.isVisible());
    QVERIFY(application.program.aboutBox.isVisible());
    const app::frmSettingWindow& settings = application.program.SettingWindow;
    QVERIFY(settings.isVisible());
    QCOMPARE(settings.pos(), QPoint(ui::toPixels(5000), ui::toPixels(1000)));
    QVERIFY(!QApplication::activeModalWidget());
}

void TestStartup::everyWindowHasItsOwnTitle()
{
    support::Application application;
    for (const char* item : {"mnuSetParameters", "mnuHelpItem0", "mnuHelpItem1"})
        application.control<QAction>(item).trigger();
    QStringList titles;
    for (const QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            titles << window->windowTitle();
    QVERIFY(titles.size() >= 4);
    QVERIFY(!titles.contains(QString()));
    QCOMPARE(titles.removeDuplicates(), 0);
}

void TestStartup::closingHidesEveryWindowAndEnds()
{
    support::Application application;
    QSignalSpy ended(&application.program, &app::VorloMain::ended);
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog)
            window->show();
    application.program.MainWindow.close();
    for (const QWidget* window : QApplication::topLevelWidgets())
        QVERIFY2(!window->isVisible(), qPrintable(window->windowTitle()));
    QCOMPARE(ended.count(), 1);
    QVERIFY(application.prompter.shown.isEmpty());
}

void TestStartup::closingEndsARunThatLetsEventsThrough()
{
    support::Application application;
    fit::StopRequested = false;
    support::CallableProblem problem(2, [](int point, const fit::Parameters& a) { return a[1] - point; });
    const fit::Options endless{.parameterCount = 1, .iterationLimit = 1e9, .tolerance = 0};
    ClosingObserver observer(application.program.MainWindow);
    const fit::Outcome outcome = fit::gaussNewton(problem, endless, {0, 1}, observer);
    QCOMPARE(outcome.ending, fit::Ending::Stopped);
    QCOMPARE(outcome.iterations, 3.0);
    QVERIFY(!application.program.MainWindow.isVisible());
}

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
