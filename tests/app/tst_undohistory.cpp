#include "app/parameterpanel.h"
#include "app/sessiontext.h"
#include "tests/support/application.h"
#include "ui/clipboard.h"
#include "ui/grid.h"

#include <QCheckBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <malloc.h>
#include <random>
#include <utility>

namespace
{

constexpr int kSequences = 10; // VORLO_UNDO_SEQUENCES sets another number, VORLO_UNDO_SEED another first seed
constexpr int kCommands = 50;
constexpr int kSteps = 200;
constexpr size_t kMostMemory = 64'000'000; // bytes

const QList<support::Column> kSamples{{"0", "2", "4", "24", "6", "57", "", "", "100"},
                                      {"0.005", "2", "5", "19", "5", "45", "", "", "75.1"},
                                      {"0.02", "1", "1", "28", "", "", "", "", "42.9"}};

QString describe(const ui::Grid& grid, bool texts)
{
    QString text = QString("%1,%2-%3,%4 ")
                       .arg(grid.currentRow())
                       .arg(grid.currentColumn())
                       .arg(grid.farRow())
                       .arg(grid.farColumn());
    for (int row = 0; texts && row < grid.rows(); ++row)
        for (int column = 0; column < grid.columns(); ++column)
            text += grid.text(row, column) + '|';
    return text + '\n';
}

/// The program and all that undo must bring back, as text.
struct Desk : support::Application {
    app::DataSheet& sheet = program.MainWindow.sheet();
    app::ResultsTable& results = program.MainWindow.results();

    QString session()
    {
        app::Session all{.panel = program.MainWindow.panel().panelState(),
                         .settings = program.shared.settings,
                         .rows = sheet.rowCount(),
                         .columns = sheet.columnCount(),
                         .cells = {},
                         .results = program.shared.results};
        for (int row = 1; row < all.rows; ++row) {
            all.cells.emplace_back();
            for (int column = 1; column < all.columns; ++column)
                all.cells.back().push_back(sheet.cell(row, column));
        }
        const int end = std::exchange(all.results.ResultRowEnd, app::kMaxResults + 1); // rows beyond the end, too
        QString text = QString::fromStdString(app::writeSession(all)) + program.MainWindow.windowTitle();
        for (const int number :
             {all.panel.FixKq2, all.panel.FixF, int(all.panel.allChosen), all.settings.TimeScale,
              all.settings.IntensityScale, end, all.results.ResultCursor, program.shared.FitRegionMode})
            text += QString(" %1").arg(number);
        for (int row = 0; row < all.rows; ++row)
            text += ' ' + sheet.GetSheetText(row, 0);
        return text;
    }
    QString everything()
    {
        return session() + control<QLineEdit>("txtEdit").text() + describe(sheet.grid(), false) +
               describe(results.grid(), true);
    }
    QString item(const char* name) { return control<QAction>(name).text().remove('&'); }
    bool enabled(const char* name) { return control<QAction>(name).isEnabled(); }
    void typeInCell(const QString& text) // and leave it in the line
    {
        QTest::keyClicks(&sheet.grid(), text.first(1));
        if (auto& line = control<QLineEdit>("txtEdit"); line.text() == text.first(1)) // not on a title
            QTest::keyClicks(&line, text.sliced(1));
    }
    void typeCell(const QString& text)
    {
        typeInCell(text);
        QTest::keyClick(&control<QLineEdit>("txtEdit"), Qt::Key_Return);
    }
    void typeBox(const QString& name, const QString& text)
    {
        auto& box = control<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, Qt::Key_Return);
    }
    void press(const char* button) { control<QPushButton>(button).click(); }
};

/// Random commands of a user, each of which is one step at most.
class User
{
public:
    User(Desk& desk, const QString& folder, uint seed) : m_desk(desk), m_folder(folder), m_random(seed) {}

    void moveAbout()
    {
        ui::Grid& grid = m_desk.sheet.grid();
        grid.selectBlock(upTo(grid.rows() - 1), upTo(grid.columns() - 1), upTo(grid.rows() - 1), upTo(4));
        m_desk.results.SelectResultCell(upTo(4), upTo(8));
    }
    void act()
    {
        static const std::vector<void (User::*)()> ways{&User::typeInSheet, &User::changeCells,  &User::runMenuItem,
                                                        &User::typeInPanel, &User::chooseOption, &User::workOnResults};
        (this->*ways[static_cast<std::size_t>(upTo(static_cast<int>(ways.size()) - 1))])();
    }

private:
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(m_random); }
    QString number() { return QString::number(upTo(300) / 100.0); }

    void typeInSheet()
    {
        if (upTo(1) == 0)
            return m_desk.typeCell(number());
        m_desk.typeInCell(number());
        m_desk.sheet.SelectSheetCell(1 + upTo(8), 1 + upTo(5)); // as a click
    }
    void changeCells()
    {
        ui::copyText(number() + '\t' + number() + "\r\n" + number());
        switch (upTo(2)) {
        case 0:
            return QTest::keyClick(&m_desk.sheet.grid(), Qt::Key_Delete);
        case 1:
            return m_desk.run("mnuCut");
        default:
            return m_desk.run("mnuPaste");
        }
    }
    void runMenuItem()
    {
        if (upTo(3) == 0)
            return m_desk.open(m_folder + QString::number(upTo(2)) + ".vrl");
        const QStringList items{"mnuNew", "mnuNormalization", "mnuNormalization", "mnuSternVolmerAnalysis",
                                "mnuSternVolmerAnalysis"};
        m_desk.run(qPrintable(items[upTo(4)]));
    }
    void typeInPanel()
    {
        const QStringList boxes{"txtkq1", "txtkq2", "txtK", "txtS", "txtConcProbe", "txtIteration", "txtFitRegion"};
        m_desk.typeBox(boxes[upTo(6)], number());
    }
    void chooseOption()
    {
        switch (upTo(4)) {
        case 0:
            return m_desk.control<QCheckBox>(upTo(1) ? "Check1" : "Check2").click();
        case 1:
            return m_desk.choose(1 + upTo(12));
        case 2:
            return m_desk.control<QRadioButton>(upTo(1) ? "opnFitRegion0" : "opnFitRegion1").click();
        case 3:
            emit m_desk.program.modelComparison.modelChosen(models::Analysis::SternVolmer, 1 + upTo(12), {0, 5, 6, 7});
            return;
        default:
            const QString option = QStringList{"opnTime", "opnMethod", "opnAssessment"}[upTo(2)];
            m_desk.program.SettingWindow.findChild<QRadioButton*>(option + QString::number(upTo(1)))->click();
        }
    }
    void workOnResults()
    {
        const QStringList buttons{"cmdClearAll", "cmdDelRow", "cmdSetCursor", "cmdSetCursor", "cmdRestore"};
        m_desk.press(qPrintable(buttons[upTo(4)]));
    }

    Desk& m_desk;
    QString m_folder;
    std::mt19937 m_random;
};

} // namespace

class TestUndoHistory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void randomSequencesComeBackToTheByte();
    void itemsSayWhatTheyUndo();
    void undoneCellsAreNotNormalized();
    void aTextBoxUndoesItsOwnTypingFirst();
    void savingIsNoStep();
    void verdictsComeBackWithTheirData();
    void nothingIsUndoneDuringAFit();
    void twoHundredStepsOfTheLargestSessionNeedLittleMemory();

private:
    QTemporaryDir m_folder;
};

void TestUndoHistory::initTestCase()
{
    for (int file = 0; file < 2; ++file) { // a third does not exist
        Desk desk;
        desk.fill(kSamples);
        desk.type("txtK", QString::number(file));
        desk.program.shared.settings.AssessmentMode = file;
        desk.sheet.setCounts(10, 10 + 5 * file);
        for (int result = 0; result < 3 * file; ++result)
            desk.results.storeResult({.Method = "SV", .Model = 1, .Kq2 = 1e7 * result, .Error = "OK"}, models::Kq2);
        desk.save(m_folder.filePath(QString::number(file)));
    }
}

void TestUndoHistory::randomSequencesComeBackToTheByte()
{
    const int sequences = qEnvironmentVariableIsSet("VORLO_UNDO_SEQUENCES")
                              ? qEnvironmentVariableIntValue("VORLO_UNDO_SEQUENCES")
                              : kSequences;
    const uint first = qEnvironmentVariable("VORLO_UNDO_SEED", "1").toUInt();
    int steps = 0;
    for (uint seed = first; seed < first + static_cast<uint>(sequences); ++seed) {
        Desk desk;
        desk.open(m_folder.filePath("1.vrl"));
        User user(desk, m_folder.filePath(""), seed);
        QStringList before, after;
        for (int command = 0; command < kCommands; ++command) {
            user.moveAbout();
            const QString session = desk.session(), all = desk.everything();
            user.act();
            if (desk.session() == session)
                continue;
            before << all;
            after << desk.everything();
        }
        steps += static_cast<int>(before.size());
        user.moveAbout();
        for (qsizetype step = before.size(); step-- > 0;) {
            desk.run("mnuUndo");
            QVERIFY2(desk.everything() == before[step], qPrintable(QString("seed %1 step %2").arg(seed).arg(step)));
        }
        QCOMPARE(desk.item("mnuUndo"), QString("Undo Open"));
        for (qsizetype step = 0; step < after.size(); ++step) {
            desk.run("mnuRedo");
            QVERIFY2(desk.everything() == after[step], qPrintable(QString("seed %1 step %2").arg(seed).arg(step)));
        }
        QVERIFY(!desk.enabled("mnuRedo"));
    }
    qInfo() << sequences << "sequences," << steps << "steps";
    QVERIFY(steps > sequences * kCommands / 4);
}

void TestUndoHistory::itemsSayWhatTheyUndo()
{
    Desk desk;
    QVERIFY(!desk.enabled("mnuUndo") && !desk.enabled("mnuRedo"));
    const std::pair<QString, std::function<void()>> steps[]{
        {"Open", [&] { desk.open(m_folder.filePath("1.vrl")); }},
        {"Typing", [&] { desk.typeCell("0.5"); }},
        {"Delete", [&] { desk.sheet.clearBlock(); }},
        {"Paste", [&] { desk.sheet.pasteText("1\t2"); }},
        {"Cut", [&] { desk.run("mnuCut"); }},
        {"Tolerance", [&] { desk.typeBox("txtTolerance", "1e-9"); }},
        {"kq2", [&] { desk.typeBox("txtkq2", "1e9"); }},
        {"Fitting Region", [&] { desk.typeBox("txtFitRegion", "0.1"); }},
        {"Model", [&] { desk.choose(5); }},
        {"Fix F value", [&] { desk.control<QCheckBox>("Check2").click(); }},
        {"Set Cursor", [&] { desk.press("cmdSetCursor"); }},
        {"Restore", [&] { desk.press("cmdRestore"); }},
        {"Del Row", [&] { desk.press("cmdDelRow"); }},
        {"Clear All", [&] { desk.press("cmdClearAll"); }},
        {"Gauss-Newton", [&] { desk.program.SettingWindow.findChild<QRadioButton*>("opnMethod0")->click(); }},
        {"New", [&] { desk.run("mnuNew"); }}};
    for (const auto& [name, step] : steps) {
        step();
        QCOMPARE(desk.item("mnuUndo"), "Undo " + name);
        QVERIFY(desk.enabled("mnuUndo") && !desk.enabled("mnuRedo"));
        desk.run("mnuUndo");
        QCOMPARE(desk.item("mnuRedo"), "Redo " + name);
        desk.run("mnuRedo");
    }
}

void TestUndoHistory::undoneCellsAreNotNormalized()
{
    Desk desk;
    desk.fill(kSamples);
    desk.run("mnuNormalization");
    QVERIFY(desk.program.shared.DataNormalized);
    QCOMPARE(desk.sheet.cell(3, 1), ".4");
    desk.choose(2);
    desk.run("mnuUndo");
    QVERIFY(desk.program.shared.DataNormalized); // the sheet is the same
    desk.run("mnuUndo");
    QCOMPARE(desk.sheet.cell(3, 1), "4");
    QVERIFY(!desk.program.shared.DataNormalized);
    desk.program.shared.DataNormalized = true;
    desk.run("mnuRedo");
    QCOMPARE(desk.sheet.cell(3, 1), ".4");
    QVERIFY(!desk.program.shared.DataNormalized);
}

void TestUndoHistory::aTextBoxUndoesItsOwnTypingFirst()
{
    Desk desk;
    desk.program.MainWindow.activateWindow();
    QTRY_VERIFY(desk.program.MainWindow.isActiveWindow());
    const auto undo = [](QWidget& widget) { QTest::keyClick(&widget, Qt::Key_Z, Qt::ControlModifier); };
    auto& line = desk.control<QLineEdit>("txtEdit");
    desk.typeCell("7");
    desk.sheet.SelectSheetCell(1, 1);
    desk.sheet.grid().setFocus();
    desk.typeInCell("5.25");
    QCOMPARE(desk.item("mnuUndo"), QString("Undo Typing")); // though it is not stored
    while (line.text() != "5")
        undo(line);
    undo(line);
    QCOMPARE(line.text(), QString("7"));
    QCOMPARE(desk.item("mnuRedo"), QString("Redo Typing"));
    undo(line);
    QCOMPARE(desk.sheet.cell(1, 1), "");

    auto& box = desk.control<QLineEdit>("txtTolerance");
    const QString usual = box.text();
    desk.typeBox("txtTolerance", "1e-9");
    undo(box);
    QCOMPARE(box.text(), usual);
    QCOMPARE(desk.item("mnuUndo"), QString("Undo Tolerance"));
    undo(box); // as an edit of the box, this is a step of its own
    QCOMPARE(box.text(), QString("1e-9"));
    undo(box);
    QCOMPARE(box.text(), usual);
    QVERIFY(!desk.enabled("mnuUndo"));
}

void TestUndoHistory::savingIsNoStep()
{
    Desk desk;
    desk.open(m_folder.filePath("0.vrl"));
    desk.typeCell("9");
    desk.save(m_folder.filePath("other.vrl"));
    const QString caption = desk.program.MainWindow.windowTitle();
    QVERIFY(caption.contains("other"));
    desk.run("mnuUndo");
    QCOMPARE(desk.sheet.cell(1, 1), "0");
    QCOMPARE(desk.program.MainWindow.windowTitle(), caption);
    const QByteArray file = support::contents(m_folder.filePath("0.vrl"));
    desk.run("mnuUndo");
    QCOMPARE(desk.program.MainWindow.windowTitle(), app::frmVorloMain::kTitle);
    QCOMPARE(support::contents(m_folder.filePath("0.vrl")), file);
}

void TestUndoHistory::verdictsComeBackWithTheirData()
{
    Desk desk;
    desk.fill(kSamples);
    desk.run("mnuSternVolmerAnalysis");
    const auto& line = desk.control<QPushButton>("cmdVerdict");
    QTRY_VERIFY(line.text() != "judging");
    const QString verdict = line.text();
    const auto ofRow = [&] { return QString::fromStdString(desk.program.shared.results.verdicts[1].text); };
    QCOMPARE(ofRow(), verdict);
    desk.typeCell("0.0");
    QTRY_COMPARE(line.text(), "of data changed since: " + verdict.section(':', 0, 0));
    desk.run("mnuUndo");
    QTRY_COMPARE(line.text(), verdict);
    desk.run("mnuUndo");
    QCOMPARE(desk.item("mnuRedo"), QString("Redo New Result"));
    QCOMPARE(ofRow(), QString());
    desk.run("mnuRedo");
    QCOMPARE(ofRow(), verdict); // though it was given after the step
    QCOMPARE(line.text(), verdict);
}

void TestUndoHistory::nothingIsUndoneDuringAFit()
{
    Desk desk;
    desk.fill(kSamples);
    desk.typeCell("0.0");
    desk.type("txtTolerance", "0");
    desk.type("txtIteration", "1e30");
    QString during;
    QTimer::singleShot(0, &desk.sheet, [&] {
        desk.run("mnuUndo");
        during = desk.item("mnuUndo") + QString::number(desk.enabled("mnuUndo")) +
                 QString::fromStdString(desk.sheet.cell(1, 1));
        desk.program.SVAnalyzer.findChild<QPushButton*>("cmdSTOP")->click();
    });
    desk.run("mnuSternVolmerAnalysis");
    QCOMPARE(during, QString("Undo00.0"));
    QCOMPARE(desk.item("mnuUndo"), QString("Undo New Result"));
}

// Opening and emptying the largest session replaces everything in each step.
void TestUndoHistory::twoHundredStepsOfTheLargestSessionNeedLittleMemory()
{
    const QString path = m_folder.filePath("largest.vrl");
    Desk desk;
    for (int column = 1; column <= 20; ++column)
        for (int row = 1; row <= 9; ++row)
            desk.sheet.SetSheetText(row, column, QString::number(row * column * 1.23456789, 'g', 12));
    for (int result = 0; result < 20; ++result)
        desk.results.storeResult({.Method = "SV", .Model = 3, .KorF = 1.5, .Kq2 = 1e7, .Error = "OK"}, 31);
    desk.save(path);
    const size_t before = mallinfo2().uordblks;
    if (before == 0)
        QSKIP("this allocator does not tell what is in use");
    for (int step = 0; step < kSteps; step += 2) {
        desk.open(path);
        desk.run("mnuNew");
    }
    const size_t needed = mallinfo2().uordblks - before;
    qInfo() << needed / 1000 << "kB for" << kSteps << "steps";
    QVERIFY(needed < kMostMemory);
    for (int step = 0; step < kSteps; ++step) {
        QVERIFY(desk.enabled("mnuUndo"));
        desk.run("mnuUndo");
    }
    QCOMPARE(desk.sheet.cell(9, 20), QByteArray::number(180 * 1.23456789, 'g', 12).toStdString());
}

QTEST_MAIN(TestUndoHistory)
#include "tst_undohistory.moc"
