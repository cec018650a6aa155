#include "app/datasheet.h"
#include "app/parameterpanel.h"
#include "app/sessioncommands.h"
#include "app/sharedstate.h"
#include "tests/support/application.h"
#include "ui/grid.h"

#include <QElapsedTimer>
#include <QtTest>

#include <sys/stat.h>

using support::contents;

namespace
{

struct Desk : support::Application {
    app::SharedState& shared = program.shared;
    app::DataSheet& sheet = program.MainWindow.sheet();
    app::ParameterPanel& panel = program.MainWindow.panel();

    void fill()
    {
        sheet.setCell(1, 1, "0");
        sheet.setCell(9, 20, "Φ");
        app::PanelState state;
        state.K = "77";
        state.Model = 12;
        panel.setPanelState(state);
        shared.settings.LogMode = 0;
        shared.settings.AssessmentMode = 0;
        program.MainWindow.results().storeResult({.Method = "SV", .Model = 1, .Kq2 = 1e7, .R2 = .5, .Error = "OK"},
                                                 models::Kq2);
    }
};

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

class TestSessionCommands : public QObject
{
    Q_OBJECT

private slots:
    void savedSessionsComeBack();
    void newEmptiesTheSheetAndForgetsItsFile();
    void namesGetTheExtensionAndFitTheCaption();
    void aNameThatTheExtensionMakesIsNotReplacedUnasked();
    void otherFilesAreRefused();
    void pipesAndDevicesAreNotReplaced();
    void aSessionTooLongToOpenIsNotSaved();
    void everyByteOfAnotherEncodingIsKept();
    void aHugeFileIsQuick();

private:
    QString inFolder(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

void TestSessionCommands::savedSessionsComeBack()
{
    Desk saved;
    saved.fill();
    saved.save(inFolder("whole.vrl"));
    QCOMPARE(saved.prompter.shown, QStringList());
    const QString caption = app::captionWithFile(app::frmVorloMain::kTitle, inFolder("whole.vrl"));
    QCOMPARE(saved.program.MainWindow.windowTitle(), caption);

    Desk opened;
    opened.shared.DataNormalized = true;
    opened.shared.FitRegionMode = decay::kFitRegionThreshold;
    opened.control<QRadioButton>("opnFitRegion1").click();
    opened.run("mnuSetParameters");
    opened.sheet.SelectSheetCell(9, 20);
    opened.open(inFolder("whole.vrl"));
    QCOMPARE(opened.sheet.cell(9, 20), "Φ");
    QCOMPARE(opened.sheet.grid().indexAt({1, 1}).column(), 1); // in view again
    QVERIFY(opened.panel.panelState() == saved.panel.panelState());
    QVERIFY(opened.control<QRadioButton>("opnFitRegion0").isChecked());
    QVERIFY(opened.program.SettingWindow.findChild<QRadioButton*>("opnMethod0")->isChecked());
    QCOMPARE(opened.shared.FitRegionMode, decay::kFitRegionOwn);
    QCOMPARE(opened.shared.settings.LogMode, 0);
    QCOMPARE(opened.result(1, 6), ".5"); // R2, not Se
    QVERIFY(!opened.shared.DataNormalized);
    QCOMPARE(opened.program.MainWindow.windowTitle(), caption);
    opened.save(inFolder("missing/whole.vrl")); // fails
    QCOMPARE(opened.prompter.shown.size(), 1);
    for (Desk* desk : {&saved, &opened}) {
        desk->run("mnuSaveAs"); // cancelled
        QCOMPARE(desk->prompter.proposed, inFolder("whole.vrl"));
        QCOMPARE(desk->program.MainWindow.windowTitle(), caption);
    }
}

void TestSessionCommands::newEmptiesTheSheetAndForgetsItsFile()
{
    Desk desk;
    desk.fill();
    desk.run("mnuOpen"); // cancelled, and so is the next
    desk.run("mnuSaveAs");
    QCOMPARE(desk.prompter.shown, QStringList());
    QCOMPARE(desk.sheet.cell(1, 1), "0");
    desk.save(inFolder("before.vrl"));
    desk.sheet.setCell(9, 0, "");
    desk.sheet.SelectSheetCell(9, 0);
    desk.run("mnuNew");
    QCOMPARE(desk.sheet.cell(1, 1), "");
    QVERIFY(desk.sheet.cell(9, 20).empty());
    QVERIFY(desk.sheet.cell(9, 0) == "Φ");
    QCOMPARE(desk.control<QLineEdit>("txtEdit").text(), "Φ");
    QCOMPARE(desk.program.MainWindow.windowTitle(), app::frmVorloMain::kTitle);
    desk.run("mnuSaveAs");
    QCOMPARE(desk.prompter.proposed, "");
    QVERIFY(desk.panel.panelState().K == "77");
    QVERIFY(desk.shared.results.ResultRowEnd == 2);
}

void TestSessionCommands::namesGetTheExtensionAndFitTheCaption()
{
    const QStringList names[]{{"plain", "plain.vrl"},
                              {"given.vrl", "given.vrl"},
                              {"CAPITALS.VRL", "CAPITALS.VRL"},
                              {"data.txt", "data.txt.vrl"}};
    for (const QStringList& name : names) {
        Desk desk;
        desk.save(inFolder(name[0]));
        QVERIFY(contents(inFolder(name[1])).startsWith("Vorlo File\r\nkq1=1e+7\r\n"));
    }
    const QString end = QString(31, 'e');
    QCOMPARE(app::captionWithFile("Title", 'x' + end), "Title---x" + end);
    QCOMPARE(app::captionWithFile("Title", "xy" + end), "Title---..." + end);
}

void TestSessionCommands::aNameThatTheExtensionMakesIsNotReplacedUnasked()
{
    const QString path = inFolder("run.2024.vrl");
    write(path, "precious");
    Desk desk;
    desk.save(inFolder("run.2024"));
    QCOMPARE(desk.prompter.askedToReplace, QStringList(path));
    QCOMPARE(contents(path), QByteArray("precious"));
}

void TestSessionCommands::otherFilesAreRefused()
{
    Desk desk;
    desk.fill();
    for (const QString& path : {inFolder("missing.vrl"), m_folder.path()}) {
        desk.open(path);
        QVERIFY(desk.prompter.shown.last().contains(path));
        QVERIFY(desk.prompter.shown.last().section("\r\n", 1).size() > 5); // the reason
    }
    QCOMPARE(desk.shared.results.ResultRowEnd, 2);
    write(inFolder("foreign.vrl"), "Vorlo File of another kind\r\nkq1=5\r\n");
    desk.open(inFolder("foreign.vrl"));
    QCOMPARE(desk.prompter.shown.last(), QString("This file type is not recognized."));
    QCOMPARE(desk.shared.results.ResultRowEnd, 1); // cleared before the file is read
    QCOMPARE(desk.sheet.cell(1, 1), "0");
    QCOMPARE(desk.panel.panelState().kq1, app::PanelState().kq1);
}

void TestSessionCommands::pipesAndDevicesAreNotReplaced()
{
    const QString path = inFolder("pipe.vrl");
    QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
    Desk desk;
    desk.save(path);
    QVERIFY(desk.prompter.shown.value(0).contains(path));
    QVERIFY(!QFileInfo(path).isFile());
}

void TestSessionCommands::aSessionTooLongToOpenIsNotSaved()
{
    Desk desk;
    const QString path = inFolder("kept.vrl");
    desk.save(path);
    const QByteArray before = contents(path);
    desk.sheet.setCell(1, 1, std::string(app::kMaxSessionBytes, '1'));
    desk.save(path);
    QVERIFY(desk.prompter.shown.value(0).contains(path));
    QCOMPARE(contents(path), before);
}

void TestSessionCommands::everyByteOfAnotherEncodingIsKept()
{
    const std::pair<QByteArray, QString> files[]{
        {QByteArray("Vorlo File\nK=5\nTable\n\0M\xE9", 24), QString::fromUtf8("\0Mé", 4)}, // only the last byte tells
        {"\xEF\xBB\xBFVorlo File\nK=5\nTable\nµM", "µM"},
        {"\xEF\xBB\xBFVorlo File\nK=5\nTable\n\xB5M", "µM"}};
    for (const auto& [bytes, text] : files) {
        write(inFolder("bytes.vrl"), bytes);
        Desk desk;
        desk.open(inFolder("bytes.vrl"));
        desk.save(inFolder("bytes.vrl"));
        desk.open(inFolder("bytes.vrl"));
        QCOMPARE(desk.prompter.shown, QStringList());
        QCOMPARE(desk.panel.panelState().K, "5");
        QCOMPARE(desk.sheet.GetSheetText(1, 1), text);
    }
}

void TestSessionCommands::aHugeFileIsQuick()
{
    constexpr int kFileBytes = 100'000'000;
    write(inFolder("huge.vrl"), "Vorlo File\nK=" + QByteArray(kFileBytes, '5'));
    Desk desk;
    QElapsedTimer timer;
    timer.start();
    desk.open(inFolder("huge.vrl"));
    QVERIFY(timer.elapsed() < 1000);
    QVERIFY(desk.panel.panelState().K.starts_with("555"));
}

QTEST_MAIN(TestSessionCommands)
#include "tst_sessioncommands.moc"
