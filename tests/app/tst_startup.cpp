#include "app/datasheet.h"
#include "app/windowplaces.h"
#include "tests/support/application.h"
#include "ui/clipboard.h"
#include "ui/grid.h"
#include "ui/twips.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <functional>

namespace
{

enum class SourceEnds { No, Yes }; // the program that is dragged from, before the drop

/// Drags these files onto a control as a file manager does, and drops them there if a widget accepts them.
bool drop(QWidget& control, const QList<QUrl>& files, SourceEnds ends = SourceEnds::No)
{
    QMimeData dragged;
    dragged.setUrls(files);
    dragged.setText("text of the files");
    const auto actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter({1, 1}, actions, &dragged, Qt::LeftButton, Qt::NoModifier);
    enter.setDropAction(Qt::MoveAction); // after a move, some sources would delete the file
    QApplication::sendEvent(&control, &enter);
    QDropEvent release(QPointF(1, 1), actions, &dragged, Qt::LeftButton, Qt::NoModifier);
    if (!enter.isAccepted() || enter.dropAction() != Qt::CopyAction)
        return false;
    if (ends == SourceEnds::Yes)
        dragged.clear();
    QApplication::sendEvent(&control, &release);
    return release.isAccepted();
}

const QList<support::Column> kRatios{{"0", "1", "2", "20", "", "", "", "", "100"},
                                     {"0.001", "1", "2", "18", "", "", "", "", "80"},
                                     {"0.005", "1", "2", "12", "", "", "", "", "44"}};

} // namespace

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void showsTheMainWindowFirst();
    void placesItsWindows();
    void tablesAppearOnTheScreen();
    void aDroppedFileOpensWhereverItFalls();
    void editMenuMovesBlocks();
    void editKeysInTheResultsKeepToThem();
    void commandsTakeWhatIsInTheLine();
    void statusLineTellsWhichSamplesAreRead();
    void preparedIntensitiesFillTheSheetInOneStep();
    void contextMenuOfTheSheetEdits();
    void menusOpenTitledModelessWindows();
    void windowMenuShowsClosedWindowsAgain();
    void olderDataIsSaid();
};

void TestStartup::showsTheMainWindowFirst()
{
    support::RecordingPrompter prompter;
    auto firstWindow = std::make_unique<app::FirstWindow>();
    std::unique_ptr<app::VorloMain> program;
    firstWindow->whenPainted([&] { program = std::make_unique<app::VorloMain>(prompter, std::move(firstWindow)); });
    QVERIFY(!program);
    QVERIFY(firstWindow->MainWindow.isVisible());
    QTRY_VERIFY(program);
    QSignalSpy ended(program.get(), &app::VorloMain::ended);
    program->MainWindow.close();
    QCOMPARE(ended.count(), 1);
}

void TestStartup::placesItsWindows()
{
    support::Application application;
    QCOMPARE(application.program.GraphWindow1.pos(), QPoint(ui::toPixels(1000), 0));
    QCOMPARE(application.program.GraphWindow2.pos(), QPoint(ui::toPixels(1000), ui::toPixels(5000)));
    const app::frmVorloMain& window = application.program.MainWindow;
    QVERIFY(window.isVisible());
    QCOMPARE(window.pos(), QPoint(ui::toPixels(6500), 0));
    for (const QWidget* other : QApplication::topLevelWidgets())
        QVERIFY2(other == &window || !other->isVisible(), qPrintable(other->windowTitle()));
}

void TestStartup::tablesAppearOnTheScreen()
{
    constexpr app::Extent kTable{4000, 2000};
    constexpr app::Extent kFullHd{28800, 16200}, kSmall{20490, 11520}, kFullHdEnlarged{19200, 10800}; // 150 %
    const auto corners = [](app::Extent screen) {
        const auto [decay, analysis] = app::tableCorners(screen, kTable);
        return QList<QPoint>{{decay.left, decay.top}, {analysis.left, analysis.top}};
    };
    QCOMPARE(corners(kFullHd), (QList<QPoint>{{6500, 9600}, {11000, 9600}})); // below the main window
    QCOMPARE(corners(kSmall), (QList<QPoint>{{16350, 0}, {16350, 2450}}));    // on its right
    QCOMPARE(corners(kFullHdEnlarged), (QList<QPoint>{{0, 8350}, {15080, 8350}}));
}

void TestStartup::aDroppedFileOpensWhereverItFalls()
{
    support::Application vorlo;
    QTemporaryDir folder;
    vorlo.type("txtK", "7");
    vorlo.save(folder.filePath("a.vrl"));
    vorlo.type("txtK", "8");
    const QUrl session = QUrl::fromLocalFile(folder.filePath("a.vrl"));
    QWidget& viewport = *vorlo.program.MainWindow.sheet().grid().viewport();
    for (const QList<QUrl>& refused : {QList<QUrl>{}, {session, session}, {QUrl("https://example.org/a.vrl")}})
        QVERIFY(!drop(viewport, refused));
    QVERIFY(!drop(vorlo.control<QLineEdit>("txtK"), {session, session}));
    QCOMPARE(vorlo.control<QLineEdit>("txtK").text(), QString("8"));
    for (QWidget* control : {&viewport, &vorlo.control<QWidget>("txtK"), &vorlo.control<QWidget>("txtEdit")}) {
        vorlo.type("txtK", "8");
        QVERIFY2(drop(*control, {session}), qPrintable(control->objectName()));
        QTRY_COMPARE(vorlo.control<QLineEdit>("txtK").text(), QString("7"));
    }
    vorlo.program.MainWindow.results().storeResult({.Method = "SV", .Model = 1, .Error = "OK"}, models::Kq2);
    QVERIFY(!drop(vorlo.program.MainWindow, {session}, SourceEnds::Yes));
    QVERIFY(drop(vorlo.program.MainWindow, {QUrl::fromLocalFile(QCoreApplication::applicationFilePath())}));
    QTRY_COMPARE(vorlo.prompter.shown, QStringList("This file type is not recognized."));
    QCOMPARE(vorlo.result(1, 0), "SV"); // a file dropped by mistake loses nothing
}

void TestStartup::editMenuMovesBlocks()
{
    support::Application application;
    app::DataSheet& sheet = application.program.MainWindow.sheet();
    ui::Grid& grid = sheet.grid();
    const auto& editor = application.control<QLineEdit>("txtEdit");
    bool& normalized = application.program.shared.DataNormalized;
    application.fill({{"0"}, {"1e-3", "τ"}});
    normalized = true;
    grid.selectBlock(2, 2, 1, 1);
    application.run("mnuCopy");
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("0\t1e-3\r\n\tτ\r\n"));
    QCOMPARE((QList<int>{grid.currentRow(), grid.currentColumn(), grid.farRow(), grid.farColumn()}),
             (QList<int>{2, 2, 1, 1}));
    application.run("mnuCut");
    QCOMPARE(sheet.GetSheetText(1, 2), QString());
    QCOMPARE(editor.text(), QString());
    QVERIFY(normalized); // only pasting resets it
    sheet.SelectSheetCell(8, 19);
    application.run("mnuPaste");
    QCOMPARE(sheet.GetSheetText(8, 19), QString("0"));
    QCOMPARE(sheet.GetSheetText(9, 20), QString("τ"));
    QCOMPARE(editor.text(), QString("0"));
    QVERIFY(!normalized);
}

void TestStartup::editKeysInTheResultsKeepToThem()
{
    support::Application vorlo;
    vorlo.fill({{"0"}});
    app::ResultsTable& results = vorlo.program.MainWindow.results();
    results.SetResultText(1, 1, " 5");
    results.SetResultText(2, 2, "7");
    results.grid().selectBlock(1, 1, 2, 2);
    vorlo.program.MainWindow.activateWindow();
    for (QWidget* control : {static_cast<QWidget*>(&results.grid()), &vorlo.control<QWidget>("cmdCopy")}) {
        control->setFocus();
        QTRY_VERIFY(control->hasFocus());
        ui::copyText("9");
        for (const Qt::Key key : {Qt::Key_X, Qt::Key_V})
            QTest::keyClick(control, key, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QString("9"));
        QTest::keyClick(control, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QString(" 5\t\r\n\t7\r\n"));
        QVERIFY(vorlo.program.MainWindow.sheet().GetSheetText(1, 1) == "0");
        QVERIFY(results.GetResultText(1, 1) == " 5");
        vorlo.run("mnuCopy");
        QCOMPARE(QGuiApplication::clipboard()->text(), QString("0\r\n"));
    }
}

void TestStartup::commandsTakeWhatIsInTheLine()
{
    support::Application vorlo;
    QTemporaryDir folder;
    const QString path = folder.filePath("a.vrl");
    app::frmVorloMain& window = vorlo.program.MainWindow;
    app::DataSheet& sheet = window.sheet();
    auto& line = vorlo.control<QLineEdit>("txtEdit");
    const QUrl text = QUrl::fromLocalFile(QCoreApplication::applicationFilePath());
    bool& normalized = vorlo.program.shared.DataNormalized;
    const std::pair<const char*, std::function<void()>> commands[]{
        {"menu", [&] { vorlo.save(path); }},
        {"shortcut", [&] { QTest::keyClick(&line, Qt::Key_D, Qt::ControlModifier); }},
        {"help key", [&] { QTest::keyClick(&line, Qt::Key_F1); }},
        {"button", [&] { vorlo.control<QAbstractButton>("cmdRestore").click(); }},
        {"drop", [&] { drop(window, {text}); }}};
    int number = 0;
    for (const auto& [name, run] : commands) {
        window.activateWindow();
        line.setFocus();
        QTRY_VERIFY2(line.hasFocus(), name);
        normalized = true;
        QTest::keyClick(&line, Qt::Key_Control);
        QVERIFY2(normalized, name);
        line.setText(QString::number(++number));
        window.menuBar()->setFocus(Qt::MenuBarFocusReason); // as Alt does
        line.setFocus(Qt::MenuBarFocusReason);
        vorlo.program.SettingWindow.show();
        vorlo.program.SettingWindow.activateWindow();
        QTRY_VERIFY2(!line.hasFocus(), name);
        window.activateWindow();
        QTRY_VERIFY2(line.hasFocus(), name);
        QVERIFY2(sheet.GetSheetText(1, 1) == QString::number(number - 1).remove("0"), name);
        QVERIFY2(normalized, name);
        run();
        QVERIFY2(sheet.GetSheetText(1, 1) == QString::number(number), name);
        QVERIFY2(!normalized, name);
    }
    QVERIFY(support::contents(path).contains("Table\r\n1\t"));
    QCOMPARE(vorlo.prompter.shown.front(), QString("Please Normalize the data."));
}

void TestStartup::statusLineTellsWhichSamplesAreRead()
{
    const support::Column reference{"0", "1", "1", "20", "", "", "", "", "100"};
    const support::Column referenceDecay{"0", "1", "1", "20"};
    const support::Column intensity{"1e-3", "", "", "", "", "", "", "", "80"};
    const support::Column decay{"1e-3", "1", "1", "18"};
    const support::Column both{"1e-3", "1", "1", "18", "", "", "", "", "80"};
    const std::pair<QList<support::Column>, QString> cases[]{
        {{}, "no samples"},
        {{reference, intensity}, "2 of 2 samples"},
        {{referenceDecay, decay}, "2 of 2 samples"},
        {{reference, both}, "2 of 2 samples"},
        {{reference, intensity, {}, intensity}, "2 of 3 samples: column 3 has no concentration"},
        {{reference, intensity, {"2e-3"}}, "column 3 is incomplete"},
        {{referenceDecay, {"1e-3", "2", "1", "18"}}, "column 2 is incomplete"},
        {{intensity}, "the first column is not at 0 M"},
        {{reference, decay}, "Stern-Volmer: column 2 is incomplete; decay curves: 2 of 2 samples"}};
    support::Application vorlo;
    const auto& line = vorlo.control<QLabel>("lblSamples");
    for (const auto& [typed, text] : cases) {
        vorlo.run("mnuNew");
        QTRY_COMPARE(line.text(), QString("no samples"));
        vorlo.fill(typed);
        QTRY_COMPARE(line.text(), text);
    }
    vorlo.program.MainWindow.sheet().SelectSheetCell(1, 20);
    ui::copyText("1\t2\t3");
    vorlo.run("mnuPaste");
    QTRY_COMPARE(line.text(), QString("2 pasted cells did not fit; Stern-Volmer: column 2 is incomplete; "
                                      "decay curves: 2 of 3 samples: column 3 has no concentration"));
    vorlo.run("mnuUndo");
    QTRY_VERIFY(line.text().startsWith("Stern"));
}

void TestStartup::preparedIntensitiesFillTheSheetInOneStep()
{
    constexpr double KSV = 50, tau0 = 1e-8; // M^-1, s
    constexpr double kSixDigits = 1e-5;     // in the sheet
    constexpr double kV0 = 2, kStep = 0.02, kStock = 0.1;
    support::Application vorlo;
    vorlo.fill({{"0", "1", "1", "10"}});
    preparation::PreparationWindow& window = vorlo.program.preparationWindow;
    vorlo.run("mnuPrepareIntensities");
    QVERIFY(window.isVisible());
    for (const char* step : {"chkBlank", "chkInnerFilter", "chkDilution"})
        window.findChild<QCheckBox*>(step)->click();
    window.findChild<QLineEdit*>("txtV0")->setText(QString::number(kV0));
    window.findChild<QLineEdit*>("txtStock")->setText(QString::number(kStock));
    auto* table = window.findChild<QTableWidget*>("grdPreparation");
    for (int sample = 0; sample < 6; ++sample) {
        const double volume = kV0 + kStep * sample, Q = kStock * kStep * sample / volume, Aex = 25 * Q;
        const double reading = 900 * kV0 / volume / (1 + KSV * Q) * std::pow(10, -Aex / 2) + 30;
        const double typed[]{sample > 0 ? kStep : 0, reading, 1.001 * reading, 0.999 * reading, 30, Aex, 0};
        for (int entry = 0; entry < 7; ++entry)
            table->item(sample, entry)->setText(QString::number(typed[entry], 'g', 12));
    }
    vorlo.program.shared.DataNormalized = true;
    window.findChild<QPushButton*>("cmdApplyPreparation")->click();
    QCOMPARE(vorlo.prompter.shown, QStringList());
    QVERIFY(!vorlo.program.shared.DataNormalized);
    vorlo.type("txtkq2", "1e9");
    vorlo.type("txtTolerance", "1e-12");
    vorlo.run("mnuSternVolmerAnalysis");
    const double Kq2 = vorlo.program.shared.results.ResultData[1].Kq2;
    QVERIFY2(std::abs(Kq2 * tau0 / KSV - 1) < kSixDigits, qPrintable(QString::number(Kq2)));
    vorlo.run("mnuFitDetails");
    QCOMPARE(vorlo.program.fitDetails.findChild<QComboBox*>("cboErrors")->currentText(), QString("as typed"));
    // Three readings and one blank, each with 0.1 %: hypot(930 / sqrt(3), 30) / (930 - 30) of it for the reference.
    QVERIFY(vorlo.program.fitDetails.findChild<QLineEdit*>("txtErrors")->text().startsWith("0.0598 "));
    vorlo.run("mnuUndo"); // the result
    while (vorlo.control<QAction>("mnuUndo").text() != "&Undo Prepare Intensities")
        vorlo.run("mnuUndo");
    vorlo.run("mnuUndo");
    QCOMPARE(vorlo.program.MainWindow.sheet().cell(9, 1), "");
    QCOMPARE(vorlo.program.MainWindow.sheet().cell(1, 2), "");
}

void TestStartup::contextMenuOfTheSheetEdits()
{
    support::Application vorlo;
    vorlo.fill({{"0"}, {"1"}});
    ui::Grid& grid = vorlo.program.MainWindow.sheet().grid();
    const auto choose = [&](QContextMenuEvent::Reason reason, const QString& item) {
        const QRect cell = grid.visualRect(grid.currentIndex());
        QTimer::singleShot(0, &grid, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            for (QAction* action : menu ? menu->actions() : QList<QAction*>())
                if (action->text().remove('&').startsWith(item))
                    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        });
        if (reason == QContextMenuEvent::Keyboard)
            return QTest::keyClick(&grid, Qt::Key_F10, Qt::ShiftModifier);
        QContextMenuEvent event(reason, cell.center(), grid.viewport()->mapToGlobal(cell.center()));
        QApplication::sendEvent(grid.viewport(), &event);
    };
    grid.selectBlock(1, 1, 1, 2);
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, grid.visualRect(grid.model()->index(1, 2)).center());
    QCOMPARE(grid.farColumn(), 2); // the block stays
    choose(QContextMenuEvent::Mouse, "Cut");
    QCOMPARE(grid.text(1, 2), QString());
    choose(QContextMenuEvent::Keyboard, "Undo");
    QCOMPARE(grid.text(1, 2), QString("1"));
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, grid.visualRect(grid.model()->index(3, 2)).center());
    QCOMPARE(grid.currentRow(), 3);
    const QRect cell = grid.visualRect(grid.currentIndex()).translated(grid.viewport()->pos());
    QCOMPARE(grid.inputMethodQuery(Qt::ImCursorRectangle).toRect(), cell); // the menu key opens the menu here
}

void TestStartup::menusOpenTitledModelessWindows()
{
    support::Application application;
    for (const char* item : {"mnuSetParameters", "mnuHelpItem0", "mnuHelpItem1"})
        application.run(item);
    QVERIFY(application.program.helpViewer.isVisible());
    QVERIFY(application.program.aboutBox.isVisible());
    const app::frmSettingWindow& settings = application.program.SettingWindow;
    settings.findChild<QRadioButton*>("opnAssessment0")->click();
    QCOMPARE(application.result(0, 6), "R2");
    QCOMPARE(settings.pos(), QPoint(ui::toPixels(5000), ui::toPixels(1000)));
    QVERIFY(!QApplication::activeModalWidget());
    QStringList titles;
    for (const QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            titles << window->windowTitle();
    QVERIFY(titles.size() >= 4);
    QVERIFY(!titles.contains(QString()));
    QCOMPARE(titles.removeDuplicates(), 0);
}

void TestStartup::windowMenuShowsClosedWindowsAgain()
{
    support::Application vorlo;
    QMenu& menu = vorlo.program.MainWindow.windowMenu();
    QSet<QKeySequence> mnemonics;
    for (const QAction* item : menu.actions()) {
        if (item->isSeparator())
            continue;
        QVERIFY2(item->isEnabled() == (item->objectName() == "mnuWindowMain"), qPrintable(item->text()));
        QVERIFY2(!mnemonics.contains(QKeySequence::mnemonic(item->text())), qPrintable(item->text()));
        mnemonics << QKeySequence::mnemonic(item->text());
    }
    QVERIFY(!mnemonics.contains(QKeySequence()));
    vorlo.fill(kRatios);
    vorlo.run("mnuSternVolmerAnalysis");
    plot::Graph& plot = vorlo.program.GraphWindow2;
    const auto picture = [&plot] { return plot.findChild<QWidget*>("Picture1")->grab().toImage(); };
    const QImage shown = picture();
    plot.close();
    QVERIFY(!plot.isVisible());
    emit menu.aboutToShow();
    QCOMPARE(vorlo.control<QAction>("mnuWindowAnalysisPlot").text(), "&Analysis Plot: Stern-Volmer Plot");
    vorlo.run("mnuWindowAnalysisPlot");
    QTRY_VERIFY(plot.isActiveWindow());
    QCOMPARE(picture(), shown);
}

void TestStartup::olderDataIsSaid()
{
    support::Application vorlo;
    const auto& line = vorlo.control<QLabel>("lblSamples");
    const auto& note = *vorlo.program.fitDetails.findChild<QLabel*>("lblOlderData");
    const QString remark = "older data in view";
    vorlo.fill(kRatios);
    vorlo.run("mnuFitDetails");
    const auto isSaid = [&](const char* item) {
        emit vorlo.program.MainWindow.windowMenu().aboutToShow();
        return line.text().contains(remark) && vorlo.control<QAction>(item).text().endsWith(" (older data)");
    };
    vorlo.run("mnuSternVolmerAnalysis");
    vorlo.type("txtConcProbe", "1e-3"); // no part of the sheet
    QTRY_VERIFY(line.text() == "3 of 3 samples");
    vorlo.program.MainWindow.sheet().SetSheetText(9, 3, "43");
    QTRY_VERIFY(isSaid("mnuWindowAnalysisPlot"));
    QVERIFY(note.isVisible());
    vorlo.program.MainWindow.sheet().SetSheetText(9, 3, kRatios[2][8]);
    QTRY_VERIFY(!isSaid("mnuWindowAnalysisPlot"));
    QVERIFY(!note.isVisible());
    vorlo.run("mnuNormalization"); // which writes amplitudes, and no ratio changes by them
    QTRY_VERIFY(line.text() == "3 of 3 samples");
    vorlo.type("txtFitRegion", "1e-2");
    QTRY_VERIFY(isSaid("mnuWindowDecayPlot"));
    for (QWidget* window : std::initializer_list<QWidget*>{&vorlo.program.GraphWindow1, &vorlo.program.OutputTable1})
        window->close();
    QTRY_VERIFY(line.text() == "3 of 3 samples");
}

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
