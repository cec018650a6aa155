#include "fit/gaussnewton.h"
#include "tests/support/application.h"
#include "tests/support/callableproblem.h"
#include "ui/twips.h"

#include <QAction>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void startsWithItsDefaults();
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
