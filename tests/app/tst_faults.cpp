#include "app/parameterpanel.h"
#include "tests/support/application.h"
#include "tests/support/diskfault.h"
#include "ui/clipboard.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <cerrno>
#include <csignal>
#include <functional>
#include <sys/resource.h>

using support::contents;

namespace
{

const QList<support::Column> kSamples{{"0", "2", "0.4", "24000", "0.6", "57000", "", "", "100"},
                                      {"0.005", "2", "0.5", "19800", "0.5", "45100", "", "", "75.1"},
                                      {"0.02", "2", "0.6", "12500", "0.4", "28600", "", "", "42.9"}};
const QStringList kArithmeticFault{"The Gauss-Newton calculation stopped with an arithmetic error.\r\n"
                                   "Please change the initial values and run again."};
const QList<support::Column> kOtherSamples{{"0", "2", "0.7", "21000", "0.3", "63000", "", "", "90"},
                                           {"0.03", "2", "0.8", "9100", "0.2", "19900", "", "", "24.8"}};
constexpr int kPatientIterations = 12; // no fit below converges sooner

struct Program : support::Application {
    Program() { refill(); }
    void refill()
    {
        fill(kSamples);
        program.shared.settings.LogMode = 1;
        choose(2);
        for (const auto& [box, text] :
             {std::pair{"txtK", "20"}, {"txtF", "0.4"}, {"txtkq1", "3e5"}, {"txtkq2", "8e5"}, {"txtConcProbe", "5e-5"}})
            type(box, text);
        type("txtTolerance", "0");
        type("txtIteration", QString::number(kPatientIterations - 1));
        run("mnuNormalization");
    }
    /// The last stored result; an empty record if there is none.
    app::ResultRecord last()
    {
        const app::ResultStore& store = program.shared.results;
        return store.ResultData[static_cast<std::size_t>(store.ResultCursor - 1)];
    }
};

/// Calls a function once, when a fit lets events run for the nth time.
class Interruption
{
public:
    Interruption(int phase, std::function<void()> action) : m_phase(phase), m_action(std::move(action)) { wait(); }
    bool happened() const { return m_phase == 0; }

private:
    void wait()
    {
        QMetaObject::invokeMethod(
            &m_context, [this] { --m_phase == 0 ? m_action() : wait(); }, Qt::QueuedConnection);
    }

    QObject m_context;
    int m_phase;
    std::function<void()> m_action;
};

/// The clipboard's contents while another program owns it and does not respond, as the toolkit presents them under
/// Wayland.
class HangingOwner : public QMimeData
{
public:
    HangingOwner(const QStringList& offered, int& timeOuts) : m_offered(offered), m_timeOuts(timeOuts) {}
    QStringList formats() const override
    {
        if (m_offered.isEmpty())
            timeOut();
        return m_offered;
    }

protected:
    QVariant retrieveData(const QString& /*format*/, QMetaType /*type*/) const override
    {
        timeOut();
        return {};
    }

private:
    void timeOut() const
    {
        QThread::sleep(1);
        ++m_timeOuts;
    }

    QStringList m_offered;
    int& m_timeOuts;
};

} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    void interruptedFitsReportTheirOwnOutcome_data();
    void interruptedFitsReportTheirOwnOutcome();
    void interruptedSearchesFindTheSame();
    void manyNestedRunsEnd();
    void stopEndsAfterTheIteration();
    void arithmeticFaultsLoseNothing_data();
    void arithmeticFaultsLoseNothing();
    void failedSavesLoseNothing();
    void savesTellOfAnUncertainName();
    void pastingFromAHangingProgramTellsAfterOneTimeOut();
};

/// Phases and fits by commands and windows to close.
void TestFaults::interruptedFitsReportTheirOwnOutcome_data()
{
    QTest::addColumn<QString>("fit");
    QTest::addColumn<int>("phase");
    QTest::addColumn<QString>("menuItem"); // or the title of a window
    const Program vorlo;
    QStringList actions;
    for (const QAction* action : vorlo.program.MainWindow.findChildren<QAction*>(QRegularExpression("^mnu")))
        actions << action->objectName();
    for (const QWidget* window : QApplication::topLevelWidgets())
        if (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog)
            actions << window->windowTitle();
    QVERIFY(actions.size() > 20);
    for (const char* fit : {"mnuSternVolmerAnalysis", "mnuDecayCurveAnalysis"})
        for (const int phase : {1, 2, kPatientIterations})
            for (const QString& action : actions)
                QTest::addRow("%s in iteration %d of %s", qPrintable(action), phase, fit) << fit << phase << action;
}

void TestFaults::interruptedFitsReportTheirOwnOutcome()
{
    QFETCH(const QString, fit);
    QFETCH(const int, phase);
    QFETCH(const QString, menuItem);
    QTemporaryDir folder;
    const QString session = folder.filePath("session.vrl");

    Program vorlo;
    vorlo.save(session);
    vorlo.run(qPrintable(fit));
    const app::ResultRecord undisturbed = vorlo.last();
    QCOMPARE(undisturbed.Error, "not satisfied");
    vorlo.run("mnuNormalization");

    QSignalSpy ended(&vorlo.program, &app::VorloMain::ended);
    const Interruption interruption(phase, [&] {
        vorlo.prompter.nextFile = session;
        vorlo.choose(3); // another model, probe and sheet than the fit started with
        vorlo.type("txtConcProbe", "1e-3");
        vorlo.fill(kOtherSamples);
        if (menuItem.startsWith("mnu"))
            return vorlo.run(qPrintable(menuItem));
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->windowTitle() == menuItem)
                window->close();
    });
    vorlo.run(qPrintable(fit));
    QVERIFY(interruption.happened());
    QCOMPARE(vorlo.prompter.shown, QStringList());
    QCOMPARE(vorlo.last(), undisturbed);
    if (ended.count() > 0) {
        QCOMPARE(vorlo.result(2, 0), "");
        for (const QWidget* window : QApplication::topLevelWidgets())
            QVERIFY2(!window->isVisible(), qPrintable(window->windowTitle()));
        return;
    }
    vorlo.refill();
    vorlo.run(qPrintable(fit));
    QCOMPARE(vorlo.prompter.shown, QStringList());
    QCOMPARE(vorlo.last(), undisturbed);
}

void TestFaults::interruptedSearchesFindTheSame()
{
    const auto foundWhile = [](const char* search, const char* menuItem) {
        Program vorlo;
        const Interruption interruption(1, [&] {
            if (!menuItem)
                return;
            vorlo.choose(5);
            vorlo.type("txtConcProbe", "1");
            vorlo.run(menuItem);
        });
        vorlo.run(search);
        const QWidget& window = qstrcmp(search, "mnuCompareModels") == 0
                                    ? static_cast<QWidget&>(vorlo.program.modelComparison)
                                    : vorlo.program.startValues;
        window.findChildren<QPushButton*>(QRegularExpression("^cmdCopy")).front()->click();
        return QGuiApplication::clipboard()->text();
    };
    for (const char* search : {"mnuFindSternVolmerStart", "mnuFindDecayStart", "mnuCompareModels"}) {
        const QString undisturbed = foundWhile(search, nullptr);
        QVERIFY2(undisturbed.contains("kq2"), qPrintable(undisturbed));
        for (const char* menuItem : {"mnuNew", "mnuSternVolmerAnalysis", "mnuCalcDecayCurve", "mnuCompareModels"})
            QCOMPARE(foundWhile(search, menuItem), undisturbed);
    }
}

void TestFaults::manyNestedRunsEnd()
{
    constexpr int kRuns = 60; // more than any user would wait for
    Program vorlo;
    int started = 0;
    const std::function<void()> start = [&] {
        if (++started < kRuns)
            QMetaObject::invokeMethod(&vorlo.program, start, Qt::QueuedConnection);
        vorlo.run("mnuSternVolmerAnalysis");
    };
    start();
    QCOMPARE(started, kRuns);
    QCOMPARE(vorlo.prompter.shown, QStringList());
    QCOMPARE(vorlo.program.shared.results.ResultRowEnd, app::kMaxResults + 1);
}

void TestFaults::stopEndsAfterTheIteration()
{
    for (const char* fit : {"mnuSternVolmerAnalysis", "mnuDecayCurveAnalysis"})
        for (const int phase : {1, 2, 5}) {
            Program vorlo;
            const QWidget& analyzer = QString(fit).contains("Decay")
                                          ? static_cast<QWidget&>(vorlo.program.DecayAnalyzer)
                                          : vorlo.program.SVAnalyzer;
            auto& stop = *analyzer.findChild<QPushButton*>("cmdSTOP");
            QVERIFY(!stop.isEnabled());
            const Interruption interruption(phase, [&] { stop.click(); });
            vorlo.run(fit);
            QVERIFY(!stop.isEnabled()); // nothing runs any more
            QVERIFY2(vorlo.reportOf(analyzer).contains(QString("Exe num. :  %1\n").arg(phase)), fit);
            QCOMPARE(vorlo.last().Error, "OK");
        }
}

/// All models, commands and modes; every enabled box gets a number beyond the range of a double or, for a derivative
/// step of 0, zero. Then the boxes that all models share, for laws that use them.
void TestFaults::arithmeticFaultsLoseNothing_data()
{
    const QStringList constants{"txtK", "txtF", "txtkq1", "txtkq2"};
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("model");
    QTest::addColumn<int>("logMode");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("boxes");
    const auto addBoxes = [](const char* command, int model, int logMode, const char* text, const QStringList& boxes) {
        QTest::addRow("%s, model %d, mode %d, %s in %s", command, model, logMode, text, qPrintable(boxes.last()))
            << command << model << logMode << text << boxes;
    };
    const auto add = [&](const char* command, int model, int logMode, const char* text) {
        addBoxes(command, model, logMode, text, constants);
    };
    for (const char* command :
         {"mnuSternVolmerAnalysis", "mnuCalcSternVolmer", "mnuDecayCurveAnalysis", "mnuCalcDecayCurve"})
        for (const char* box : {"txtTolerance", "txtIteration", "txtConcProbe"})
            addBoxes(command, 4, 1, "1e400", {box});
    addBoxes("mnuSternVolmerAnalysis", 8, 1, "1e400", {"txtConcProbe"});
    for (int model = 1; model <= models::kModelCount; ++model) {
        add("mnuSternVolmerAnalysis", model, 0, "0");
        if (model == 6 || model == 8 || model == 10) // the only laws with an exponential in the denominator
            for (const char* command : {"mnuSternVolmerAnalysis", "mnuCalcSternVolmer"})
                add(command, model, 0, "-19000");
        if (model >= 2 && model <= 5) // the complex of K = 0 has no free quencher
            add("mnuCalcSternVolmer", model, 0, "0");
        for (const int logMode : {0, 1}) {
            for (const char* command : {"mnuSternVolmerAnalysis", "mnuCalcSternVolmer"})
                add(command, model, logMode, "1e400");
            if (models::row(model).hasDecayLaw())
                for (const char* command : {"mnuDecayCurveAnalysis", "mnuCalcDecayCurve"})
                    add(command, model, logMode, "1e400");
        }
    }
}

void TestFaults::arithmeticFaultsLoseNothing()
{
    QFETCH(const QString, command);
    QFETCH(const int, model);
    QFETCH(const int, logMode);
    QFETCH(const QString, text);
    QFETCH(const QStringList, boxes);
    Program vorlo;
    vorlo.choose(model);
    vorlo.program.shared.settings.LogMode = logMode;
    for (const QString& box : boxes)
        if (vorlo.control<QLineEdit>(qPrintable(box)).isEnabled())
            vorlo.type(qPrintable(box), text);
    vorlo.run(qPrintable(command));
    QCOMPARE(vorlo.prompter.shown, kArithmeticFault);
    QCOMPARE(vorlo.last(), app::ResultRecord());
    QVERIFY(!vorlo.program.GraphWindow2.isVisible());
    QVERIFY(!vorlo.program.OutputTable2.isVisible());

    vorlo.refill();
    vorlo.run(qPrintable(command));
    QCOMPARE(vorlo.prompter.shown, kArithmeticFault);
    QVERIFY(vorlo.program.GraphWindow2.isVisible());
    QVERIFY(vorlo.program.OutputTable2.isVisible());
}

void TestFaults::failedSavesLoseNothing()
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    for (const QString fault : {"disk full", "disk broken", "folder gone", "no permission"}) {
        QTemporaryDir folder;
        const QString path = folder.filePath("session.vrl");
        Program vorlo;
        const QString table = folder.filePath("sheet.csv");
        const auto save = [&](const QString& session, const QString& sheet) {
            vorlo.save(session);
            vorlo.prompter.nextFile = sheet;
            vorlo.program.exportWindow.findChild<QPushButton*>("cmdSaveTable")->click();
        };
        save(path, table);
        const QByteArray before = contents(path) + contents(table);

        QString target = path, tableTarget = table;
        if (fault == "disk full") { // a disk with room for 100 bytes
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit small{100, limit.rlim_max};
            setrlimit(RLIMIT_FSIZE, &small);
        } else if (fault == "disk broken") {
            support::diskFault = {.file = EIO};
        } else if (fault == "folder gone") {
            target = folder.filePath("gone/session.vrl");
            tableTarget = folder.filePath("gone/sheet.csv");
        } else {
            QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner);
            if (QFileInfo(folder.path()).isWritable()) // the superuser may write in every other folder
                target = "/proc/session.vrl", tableTarget = "/proc/sheet.csv";
        }
        vorlo.type("txtK", "77");
        save(target, tableTarget);
        setrlimit(RLIMIT_FSIZE, &limit);
        support::diskFault = {};
        QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY2(vorlo.prompter.shown.size() == 2, qPrintable(fault));
        QVERIFY(vorlo.prompter.shown[0].startsWith(target + " cannot be saved:\r\n"));
        QVERIFY(vorlo.prompter.shown[1].startsWith(tableTarget + " cannot be saved:\r\n"));
        QCOMPARE(contents(path) + contents(table), before);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), (QStringList{"session.vrl", "sheet.csv"}));

        vorlo.save(path);
        QCOMPARE(vorlo.prompter.shown.size(), 2);
        QVERIFY(contents(path).contains("K=77\r\n"));
    }
}

void TestFaults::savesTellOfAnUncertainName()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("session.vrl");
    Program vorlo;
    support::diskFault = {.folder = EIO};
    vorlo.save(path);
    QCOMPARE(vorlo.prompter.shown.size(), 1);
    QVERIFY2(vorlo.prompter.shown[0].contains("a power cut may undo that"), qPrintable(vorlo.prompter.shown[0]));
    QVERIFY(contents(path).startsWith("Vorlo File\r\n"));

    support::diskFault = {.file = EINVAL, .folder = EINVAL}; // a file system that cannot wait
    vorlo.save(path);
    support::diskFault = {};
    QCOMPARE(vorlo.prompter.shown.size(), 1);
}

void TestFaults::pastingFromAHangingProgramTellsAfterOneTimeOut()
{
    const QStringList cases[]{{},                                                       // does not even say what it has
                              {"text/plain", "text/plain;charset=utf-8", "text/html"}}; // does not hand over its text
    for (const QStringList& offered : cases) {
        Program vorlo;
        const auto& prompter = vorlo.prompter;
        const app::DataSheet& sheet = vorlo.program.MainWindow.sheet();
        const std::string before = sheet.cell(1, 1);
        int timeOuts = 0;
        QGuiApplication::clipboard()->setMimeData(new HangingOwner(offered, timeOuts));
        vorlo.run("mnuPaste");
        QCOMPARE(timeOuts, 1);
        QCOMPARE(prompter.shown.size(), 1);
        QVERIFY2(prompter.shown[0].contains("does not answer"), qPrintable(prompter.shown[0]));
        QCOMPARE(sheet.cell(1, 1), before);
        QVERIFY(vorlo.program.shared.DataNormalized);

        auto& box = vorlo.control<QLineEdit>("txtK");
        const QString typed = box.text();
        QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(prompter.shown.size(), 2);
        QCOMPARE(box.text(), typed);
        QContextMenuEvent menu(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(vorlo.program.helpViewer.findChild<QLineEdit*>(), &menu); // would offer Paste
        QCOMPARE(timeOuts, 3);
        QCOMPARE(prompter.shown.size(), 3);

        ui::copyImage(QImage(3, 3, QImage::Format_RGB32)); // has no text
        vorlo.run("mnuPaste");
        QCOMPARE(sheet.cell(1, 1), before);
        ui::copyText("5");
        vorlo.run("mnuPaste");
        QCOMPARE(prompter.shown.size(), 3);
        QCOMPARE(sheet.cell(1, 1), "5");
    }
}

QTEST_MAIN(TestFaults)
#include "tst_faults.moc"
