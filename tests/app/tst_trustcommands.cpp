#include "app/parameterpanel.h"
#include "fit/numbertext.h"
#include "tests/support/acridonecolumns.h"
#include "tests/support/application.h"
#include "ui/grid.h"
#include "ui/twips.h"

#include <QAccessible>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include <cmath>

namespace
{

// Optima of an independent least-squares program.
constexpr double kSumOfModel1 = 473.808, kSumOfModel3 = 4.05796;
constexpr double kWithin = 2e-3; // 0.1 percent of the search, and the digits shown

struct Program : support::Application {
    Program() { fill(support::kAcridone); }
    QString box(const char* name) { return control<QLineEdit>(name).text(); }
    double number(const char* name) { return fit::numberFrom(box(name).toStdString()); }
    QListWidget& solutions() { return *program.startValues.findChild<QListWidget*>("lstSolutions"); }
    QString found() { return program.startValues.findChild<QPlainTextEdit*>("txtFound")->toPlainText(); }
    QPushButton& stated() { return control<QPushButton>("cmdVerdict"); }
    QString verdict() { return program.fitDetails.findChild<QLabel*>("lblVerdict")->text(); }
    QTableWidget& details(const char* name) { return *program.fitDetails.findChild<QTableWidget*>(name); }
    QAbstractItemModel& models() { return *program.modelComparison.findChild<QTableView*>("grdModels")->model(); }
};

} // namespace

class TestTrustCommands : public QObject
{
    Q_OBJECT

private slots:
    void solutionsCanBeChosenAndTakenBack();
    void findAndFitEndsAtTheLeastSum();
    void statusLineJudgesEachRun();
    void verdictsStayWithTheirResults();
    void escapeClosesTheWindows();
    void refusesInfiniteBoxes();
    void searchesDecayCurves();
    void detailsFollowEachAnalysis();
    void errorsFollowTheChoice();
    void keysOfDetailsDoNotClash();
    void comparisonFollowsTheChoiceBehindOtherWindows();
    void radiusBelongsToTheRun();
    void decayDetailsHaveNoErrors();
    void comparisonLeavesTheRestAlone();
    void decayModelsAreRankedByTheirSum();
    void searchesCanBeEnded();
};

void TestTrustCommands::solutionsCanBeChosenAndTakenBack()
{
    Program p;
    p.choose(3);
    p.type("txtK", " 2 M-1");
    const app::PanelState before = p.program.MainWindow.panel().panelState();
    p.run("mnuFindSternVolmerStart");
    app::PanelState after = p.program.MainWindow.panel().panelState();
    after.K = before.K;
    after.kq2 = before.kq2;
    QCOMPARE(after, before); // nothing else has changed
    QCOMPARE(p.program.shared.results.ResultCursor, 1);
    QCOMPARE(p.solutions().count(), 2);
    QVERIFY(p.found().contains("2 different solutions are equally good"));
    QCOMPARE(p.box("txtK"), QString("1.241e+0")); // as few digits as fit equally well
    p.solutions().setCurrentRow(1);
    QVERIFY(p.number("txtK") > 80);
    p.program.startValues.findChild<QPushButton*>("cmdCopyFound")->click();
    QVERIFY(QGuiApplication::clipboard()->text().contains(p.solutions().item(1)->text()));

    p.type("txtS", "0.9");
    p.program.startValues.findChild<QPushButton*>("cmdBack")->click();
    QCOMPARE(p.box("txtK"), QString(" 2 M-1"));
    QCOMPARE(p.box("txtkq2"), QString("1e+6"));
    QCOMPARE(p.box("txtS"), QString("0.9"));
    p.solutions().setCurrentRow(1); // once more
    QVERIFY(p.number("txtK") > 80);
}

void TestTrustCommands::findAndFitEndsAtTheLeastSum()
{
    Program p;
    p.choose(3);
    p.run("mnuFindAndFitSternVolmer");
    QCOMPARE(p.program.shared.results.ResultCursor, 2);
    QVERIFY(std::abs(p.program.SVAnalyzer.getXaisqr() / kSumOfModel3 - 1) < kWithin);

    p.type("txtK", "1e6");
    p.choose(1);
    p.solutions().setCurrentRow(1); // the other solution of Model 3
    p.program.startValues.findChild<QPushButton*>("cmdFit")->click();
    QVERIFY(p.program.SVAnalyzer.getK() > 80);
    QVERIFY(std::abs(p.program.SVAnalyzer.getXaisqr() / kSumOfModel3 - 1) < kWithin);

    p.program.shared.settings.LogMode = 0; // in log mode the engine stops 0.12 percent above the least sum
    p.run("mnuNormalization");
    p.choose(1);
    p.run("mnuFindAndFitDecay");
    QCOMPARE(p.result(3, 0), "Decay");
    QVERIFY(p.found().contains("ends at this minimum"));

    p.control<QCheckBox>("Check1").click();
    p.run("mnuFindAndFitSternVolmer"); // nothing is free
    QTimer::singleShot(0, &p.program.MainWindow, [&] { p.program.startValues.close(); });
    p.choose(6);
    p.run("mnuFindAndFitSternVolmer");
    QCOMPARE(p.program.shared.results.ResultCursor, 4);
}

void TestTrustCommands::statusLineJudgesEachRun()
{
    Program p;
    QVERIFY(!p.stated().isEnabled());
    p.run("mnuSternVolmerAnalysis"); // from the panel's values it ends on a plateau
    QCOMPARE(p.stated().text(), QString("judging"));
    QTRY_VERIFY(p.stated().text().startsWith("not a minimum: the sum is "));
    QVERIFY(p.stated().toolTip().startsWith(p.stated().text()));
    QCOMPARE(p.stated().accessibleDescription(), QString("finds start values"));
    QTest::keyClick(&p.stated(), Qt::Key_Return);
    QVERIFY(p.program.startValues.isVisible());
    QTRY_COMPARE(p.stated().text(), QString("of data changed since: not a minimum"));

    p.run("mnuSternVolmerAnalysis");
    QTRY_COMPARE(p.stated().text(), QString("at a minimum"));
    QAccessible::queryAccessibleInterface(&p.stated())
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(p.program.fitDetails.isVisible());
    const QString outdated = "of data changed since: at a minimum";
    p.type("txtTolerance", "0.001");
    QTRY_COMPARE(p.stated().text(), outdated);
    p.type("txtTolerance", "0.0001");
    QTRY_COMPARE(p.stated().text(), QString("at a minimum"));
    p.program.SettingWindow.findChild<QRadioButton*>("opnMethod0")->click();
    QTRY_COMPARE(p.stated().text(), outdated);
    p.program.SettingWindow.findChild<QRadioButton*>("opnMethod1")->click();
    p.program.MainWindow.sheet().SetSheetText(9, 7, "122");
    QTRY_COMPARE(p.stated().text(), outdated);

    p.type("txtkq2", "5e9");
    p.run("mnuCalcSternVolmer");
    QTRY_VERIFY(p.stated().text().startsWith("not a minimum"));
    p.type("txtkq2", "5e8");
    p.run("mnuCalcSternVolmer"); // is judged after the next command
    p.type("txtkq2", "1e400");
    p.run("mnuSternVolmerAnalysis");
    QVERIFY(p.stated().text().startsWith("no result: "));
    QCOMPARE(p.stated().accessibleDescription(), QString("finds start values"));
    QTRY_VERIFY(p.verdict().startsWith("not a minimum"));
    QVERIFY(p.stated().text().startsWith("no result: "));
}

void TestTrustCommands::verdictsStayWithTheirResults()
{
    Program p;
    const auto verdictOf = [&p](std::size_t row) {
        return QString::fromStdString(p.program.shared.results.verdicts[row].text);
    };
    p.run("mnuSternVolmerAnalysis");
    p.run("mnuFindAndFitSternVolmer"); // before the first run is judged
    p.run("mnuNormalization");         // begins the judging again
    QCOMPARE(verdictOf(1), QString("not judged"));
    QTRY_COMPARE(verdictOf(2), QString("at a minimum"));
    p.run("mnuSternVolmerAnalysis");
    p.program.MainWindow.results().SelectResultCell(1, 1);
    p.control<QPushButton>("cmdDelRow").click();
    QTRY_COMPARE(p.stated().text(), QString("at a minimum"));
    QCOMPARE(verdictOf(1) + verdictOf(2), QString("at a minimum").repeated(2));

    auto& grid = p.control<ui::Grid>("MSHFlexGrid2");
    const QPoint at(5, grid.rowViewportPosition(1) + 2);
    QHelpEvent hover(QEvent::ToolTip, at, grid.viewport()->mapToGlobal(at));
    QApplication::sendEvent(grid.viewport(), &hover);
    QCOMPARE(QToolTip::text(), QString("OK\nat a minimum"));

    QTemporaryDir folder;
    p.save(folder.filePath("a.vrl"));
    p.open(folder.filePath("a.vrl"));
    QCOMPARE(verdictOf(1), QString());
}

void TestTrustCommands::escapeClosesTheWindows()
{
    Program p;
    for (const auto& [command, window] :
         {std::pair<const char*, QWidget*>{"mnuFindSternVolmerStart", &p.program.startValues},
          {"mnuFitDetails", &p.program.fitDetails},
          {"mnuCompareModels", &p.program.modelComparison},
          {"mnuLifetimes", &p.program.lifetimesWindow},
          {"mnuHelpItem0", &p.program.helpViewer}}) {
        p.run(command);
        QTRY_VERIFY2(window->isActiveWindow(), command);
        QTest::keyClick(window->focusWidget(), Qt::Key_Escape);
        QVERIFY2(!window->isVisible(), command);
    }
    for (const auto& [window, button] : {std::pair<QWidget*, const char*>{&p.program.startValues, "cmdCloseStarts"},
                                         {&p.program.fitDetails, "cmdCloseDetails"}}) {
        window->show();
        window->findChild<QPushButton*>(button)->click();
        QVERIFY(!window->isVisible());
    }
}

// An infinite probe concentration makes the ratio of Model 9 a finite 1. Model 1 does not use it, but a comparison of
// all models does.
void TestTrustCommands::refusesInfiniteBoxes()
{
    const struct {
        int model;
        const char* box;
        QStringList refusing;
    } cases[]{{9, "txtConcProbe", {"mnuFindSternVolmerStart", "mnuCompareModels"}},
              {1, "txtConcProbe", {"mnuCompareModels"}},
              {4, "txtkq1", {"mnuFindSternVolmerStart", "mnuFindDecayStart", "mnuCompareModels"}}};
    for (const auto& [model, box, refusing] : cases) {
        Program p;
        p.run("mnuNormalization");
        p.choose(model);
        p.type(box, "1e400");
        for (const char* command : {"mnuFindSternVolmerStart", "mnuCompareModels", "mnuFindDecayStart"}) {
            if (model == 9 && QString(command) == "mnuFindDecayStart") // has no law for decays
                continue;
            p.prompter.shown.clear();
            p.run(command);
            QVERIFY2(p.prompter.shown.join(' ').contains("arithmetic error") == refusing.contains(command), command);
        }
    }
}

void TestTrustCommands::searchesDecayCurves()
{
    Program p;
    p.run("mnuNormalization");
    p.run("mnuFindDecayStart");
    QVERIFY(p.program.startValues.isVisible());
    // the lifetimes give kq tau0 = 87.3 by an independent program; grid and short lifetimes leave some percent
    constexpr double kFromLifetimes = 87.3 / 17.6e-9, kGrid = 0.05;
    QVERIFY2(std::abs(p.number("txtkq2") / kFromLifetimes - 1) < kGrid, p.box("txtkq2").toUtf8());
    QVERIFY(p.program.shared.DataNormalized);
    // the log mode's wide steps lead 0.12 percent above the least sum
    QVERIFY(p.found().contains("With \"normal\" in the output settings it ends at this minimum."));
}

void TestTrustCommands::detailsFollowEachAnalysis()
{
    Program p;
    QFont large = QApplication::font();
    large.setPointSize(15);
    p.program.fitDetails.setFont(large);
    p.run("mnuFitDetails");
    const int room = p.program.fitDetails.screen()->availableSize().width() - ui::toPixels(150);
    QVERIFY(p.program.fitDetails.width() >= std::min(ui::toPixels(1.2 * 7400), room));      // as large texts need
    QCOMPARE(p.program.fitDetails.focusWidget()->objectName(), QString("cmdCloseDetails")); // no caret in a title
    p.run("mnuSternVolmerAnalysis"); // default panel, log mode: ends where the engine sees no slope
    QCOMPARE(p.verdict(), QString("judging"));
    p.program.fitDetails.close();
    p.run("mnuFitDetails");
    QCOMPARE(p.verdict(), QString("judging"));
    QCOMPARE(p.details("grdResiduals").rowCount(), 7);
    QTRY_COMPARE(p.verdict(), QString("not a minimum: the sum is 52.7 times the least. Find Start Values"));
    p.run("mnuFindSternVolmerStart");
    p.run("mnuSternVolmerAnalysis");
    QTRY_COMPARE(p.verdict(), QString("at a minimum"));
    QCOMPARE(p.details("grdConstants").item(0, 0)->text(), QString("kq2 /M-1s-1"));
    p.program.fitDetails.findChild<QPushButton*>("cmdCopyDetails")->click();
    QVERIFY(QGuiApplication::clipboard()->text().startsWith("Stern-Volmer Analysis, Model 1\r\nat a minimum\r\n"));
    QVERIFY(QGuiApplication::clipboard()->text().contains("\r\nkq2 /M-1s-1\t"));

    // In log mode a value without a logarithm leaves the start where it was: the longer run begins there as well.
    p.type("txtkq2", "1e9");
    p.run("mnuCalcSternVolmer");
    p.type("txtkq2", "-5");
    p.type("txtIteration", "1");
    p.run("mnuSternVolmerAnalysis");
    QTRY_COMPARE(p.verdict(), QString("still moving: raise the iteration limit to 6"));

    p.control<QCheckBox>("Check1").click();
    p.run("mnuFindSternVolmerStart");
    QCOMPARE(p.found(), QString("All constants of this model are fixed."));
    p.choose(3);
    p.run("mnuCalcSternVolmer");
    QCOMPARE(p.details("grdConstants").item(1, 2)->text(), QString("fixed"));
    QTRY_VERIFY2(p.verdict().contains("With kq2 fixed the least lies at K = "), p.verdict().toUtf8());
}

// Standard errors of K in tests/data/noisefits.txt: 0.23176 if errors are proportional, 0.10698 if they are equal; the
// analysis ends close to the least sum.
void TestTrustCommands::errorsFollowTheChoice()
{
    Program p;
    p.choose(3);
    p.run("mnuFindAndFitSternVolmer");
    p.run("mnuFitDetails");
    QWidget& window = p.program.fitDetails;
    auto& choice = *window.findChild<QComboBox*>("cboErrors");
    const auto error = [&] { return p.details("grdConstants").item(0, 2)->text().left(5); };
    const auto assumption = [&] { return window.findChild<QLabel*>("lblAssumption")->text(); };
    const auto choose = [&](int entry) {
        choice.setCurrentIndex(entry);
        emit choice.activated(entry);
    };
    const auto type = [&](const char* box, const char* text) {
        window.findChild<QLineEdit*>(box)->setText(text);
        emit window.findChild<QLineEdit*>(box)->editingFinished();
    };
    QCOMPARE(error(), QString("0.231"));
    QVERIFY(assumption().contains("same relative error"));
    choose(0);
    QCOMPARE(error(), QString("0.106"));
    choose(2);
    QCOMPARE(error(), QString("0.231")); // one error for all is the same as proportional errors
    type("txtErrors", "1 2");
    QVERIFY(assumption().contains("7 samples"));
    type("txtErrors", "0");
    QVERIFY(assumption().contains("a number from"));
    type("txtErrors", "abc");
    QCOMPARE(window.findChild<QLineEdit*>("txtErrors")->text(), QString("abc")); // nothing typed is lost
    QCOMPARE(error(), QString("0.106"));
    QVERIFY(assumption().contains("all ratios to scatter alike"));
    window.findChild<QPushButton*>("cmdCopyDetails")->click();
    QVERIFY(QGuiApplication::clipboard()->text().contains(assumption()));
    type("txtErrors", "3");
    window.findChild<QCheckBox*>("chkKnownErrors")->click();
    QVERIFY(p.details("grdAssumedFigures").item(3, 0)->text().contains("chi-square"));
    p.run("mnuSternVolmerAnalysis");
    QCOMPARE(choice.currentIndex(), 2); // kept

    type("txtTau0Error", "2");
    QCOMPARE(p.details("grdReady").item(1, 2)->text().left(3), QString("9.5")); // 2 % of 4.8e9
    window.findChild<QPushButton*>("cmdCopySentence")->click();
    QVERIFY(QGuiApplication::clipboard()->text().contains("typed relative errors (3 %)"));
}

void TestTrustCommands::keysOfDetailsDoNotClash()
{
    Program p;
    p.choose(7); // with boxes for the errors of tau0, s and Cp
    p.run("mnuFindAndFitSternVolmer");
    p.run("mnuFitDetails");
    auto& choice = *p.program.fitDetails.findChild<QComboBox*>("cboErrors");
    choice.setCurrentIndex(2);
    emit choice.activated(2);
    auto& pages = *p.program.fitDetails.findChild<QTabWidget*>("tabDetails");
    for (int page = 0; page < pages.count(); ++page) {
        pages.setCurrentIndex(page);
        QStringList captions;
        for (int tab = 0; tab < pages.count(); ++tab)
            captions << pages.tabText(tab);
        for (const auto* label : p.program.fitDetails.findChildren<QLabel*>())
            captions << (label->isVisible() && label->buddy() ? label->text() : QString());
        for (const auto* button : p.program.fitDetails.findChildren<QAbstractButton*>())
            captions << (button->isVisible() ? button->text() : QString());
        QStringList keys;
        for (const QString& caption : captions)
            keys << QKeySequence::mnemonic(caption).toString();
        keys.removeAll(QString());
        QVERIFY(keys.size() > pages.count());
        QVERIFY2(keys.removeDuplicates() == 0, qPrintable(pages.tabText(page)));
        QVERIFY2(keys.join("").toLatin1() == keys.join(""), qPrintable(keys.join(' '))); // every keyboard has them
    }
}

// The first row's AICc is that of Model 3 or 7; a change while a comparison runs begins it anew.
void TestTrustCommands::comparisonFollowsTheChoiceBehindOtherWindows()
{
    Program p;
    p.run("mnuCompareModels");
    p.run("mnuFitDetails");
    p.run("mnuFindAndFitSternVolmer");
    const auto first = [&] { return p.models().index(0, 1).data().toString(); };
    const auto choose = [&](QWidget& window, int entry) {
        auto& choice = *window.findChild<QComboBox*>("cboErrors");
        choice.setCurrentIndex(entry);
        emit choice.activated(entry);
    };
    QCOMPARE(first(), QString("3"));
    p.program.fitDetails.activateWindow();
    QTRY_VERIFY(p.program.fitDetails.isActiveWindow());
    choose(p.program.fitDetails, 0);
    QCOMPARE(first(), QString("7"));
    QVERIFY(p.program.fitDetails.isActiveWindow());
    QTimer::singleShot(0, &p.program.MainWindow, [&] { choose(p.program.fitDetails, 0); });
    choose(p.program.modelComparison, 1);
    QCOMPARE(first(), QString("7"));
    QCOMPARE(p.program.modelComparison.findChild<QComboBox*>("cboErrors")->currentIndex(), 0);
    QVERIFY(p.prompter.shown.isEmpty());
}

void TestTrustCommands::radiusBelongsToTheRun()
{
    Program p;
    auto& box = *p.program.fitDetails.findChild<QLineEdit*>("txtSError");
    p.run("mnuFitDetails");
    p.choose(7);
    p.run("mnuFindSternVolmerStart");
    QTimer::singleShot(0, &p.program.MainWindow, [&] { p.type("txtS", "9"); });
    p.run("mnuSternVolmerAnalysis");
    QCOMPARE(p.box("txtS"), QString("9")); // typed while the fit ran
    QVERIFY(!box.isHidden());
    const QString radius = p.details("grdReady").item(2, 0)->text();
    const double r = radius.section(' ', 2, 2).remove('(').toDouble();
    QVERIFY2(radius.startsWith("r = ") && r > 0.82 && r < 1.2, qPrintable(radius)); // with s = 0.82 nm
    p.choose(3);
    p.run("mnuSternVolmerAnalysis");
    QVERIFY(box.isHidden()); // no radius, no error of s
}

void TestTrustCommands::decayDetailsHaveNoErrors()
{
    Program p;
    p.program.shared.settings.LogMode = 0; // in log mode the engine stops 0.12 percent above the least sum
    p.run("mnuNormalization");
    p.run("mnuFindDecayStart");
    p.run("mnuDecayCurveAnalysis");
    p.run("mnuFitDetails");
    QTRY_COMPARE(p.verdict(), QString("at a minimum"));
    QCOMPARE(p.details("grdConstants").columnCount(), 3);
    QCOMPARE(p.details("grdConstants").item(0, 2)->text(), QString("free"));
    QVERIFY(p.program.fitDetails.findChild<QLabel*>("lblRemarks")->text().contains("carry no noise"));
    const QTableWidget& figures = p.details("grdFigures");
    QCOMPARE(figures.item(1, 1)->text(), QString("samples 2 to 7, without the reference"));
    QCOMPARE(figures.item(4, 1)->text(), QString("0.22727")); // 200 ns in 50 steps, lifetime 17.6 ns
}

void TestTrustCommands::comparisonLeavesTheRestAlone()
{
    Program p;
    p.run("mnuSternVolmerAnalysis");
    const double sum = p.program.SVAnalyzer.getXaisqr();
    const int cursor = p.program.shared.results.ResultCursor;
    const app::PanelState panel = p.program.MainWindow.panel().panelState();
    p.run("mnuCompareModels");
    QCOMPARE(p.models().rowCount(), 13);
    QCOMPARE(p.program.SVAnalyzer.getXaisqr(), sum);
    QCOMPARE(p.program.shared.results.ResultCursor, cursor);
    QCOMPARE(p.program.MainWindow.panel().panelState(), panel);

    auto* table = p.program.modelComparison.findChild<QTableView*>("grdModels");
    const int oneLine = table->fontMetrics().horizontalAdvance("Sum of squares of analysis");
    QVERIFY(table->columnWidth(6) < oneLine); // leaves room for the remarks
    constexpr int kModel = 1, kSum = 6;
    table->setCurrentIndex(p.models().index(0, kModel));
    QTest::keyClick(table, Qt::Key_Space);
    QCOMPARE(p.models().index(9, kModel).data().toString(), QString("10")); // by number, not by text
    QVERIFY(std::abs(p.models().index(0, kSum).data().toDouble() / kSumOfModel1 - 1) < kWithin);
    emit table->doubleClicked(p.models().index(2, kModel));
    QCOMPARE(p.program.MainWindow.panel().panelState().Model, 3);
    p.run("mnuSternVolmerAnalysis");
    QVERIFY(std::abs(p.program.SVAnalyzer.getXaisqr() / kSumOfModel3 - 1) < kWithin);
    p.program.modelComparison.findChild<QPushButton*>("cmdCopyModels")->click();
    QCOMPARE(QGuiApplication::clipboard()->text().count("\r\n"), 15); // heading, titles and models; then the notes
}

void TestTrustCommands::decayModelsAreRankedByTheirSum()
{
    Program p;
    p.choose(9); // which has no law for decays
    p.run("mnuNormalization");
    p.run("mnuCompareDecayModels");
    const QAbstractItemModel& cells = p.models();
    QStringList titles;
    for (int column = 0; column < cells.columnCount(); ++column)
        titles << cells.headerData(column, Qt::Horizontal).toString().remove(QChar(0x200e));
    QVERIFY(!titles.contains("AICc") && !titles.contains("Difference"));
    const auto text = [&](int row, const char* title) {
        return cells.index(row, static_cast<int>(titles.indexOf(title))).data().toString();
    };
    QCOMPARE(cells.rowCount(), 13);
    for (int row : {11, 12})
        QCOMPARE(text(row, "Remarks"), QString("no law for decay curves"));
    for (int row = 1; row < 11; ++row) {
        const auto undetermined = [&](int of) { return text(of, "Verdict").contains("not determine"); };
        QVERIFY(undetermined(row) >= undetermined(row - 1));
        QVERIFY(undetermined(row) != undetermined(row - 1) ||
                text(row, "Sum of squares").toDouble() >= text(row - 1, "Sum of squares").toDouble());
    }
    const auto* notes = p.program.modelComparison.findChild<QPlainTextEdit*>("txtNotes");
    QVERIFY(notes->toPlainText().contains("no observations"));

    p.control<QCheckBox>("Check1").click(); // "Fix kq2", which holds for ratios and Model 1 only
    auto* table = p.program.modelComparison.findChild<QTableView*>("grdModels");
    for (int row : {11, 0}) // a model without a fit is not chosen
        emit table->doubleClicked(cells.index(row, 0));
    QCOMPARE(p.program.MainWindow.panel().panelState().Model, text(0, "Model").toInt());
}

void TestTrustCommands::searchesCanBeEnded()
{
    using Action = void (*)(app::VorloMain&);
    const std::pair<const char*, Action> ways[]{
        {"program closed", [](app::VorloMain& program) { program.MainWindow.close(); }},
        {"window closed",
         [](app::VorloMain& program) {
             program.startValues.close();
             program.modelComparison.close();
         }},
        {"Cancel", [](app::VorloMain& program) {
             program.startValues.findChild<QPushButton*>("cmdCancelSearch")->click();
             program.modelComparison.findChild<QPushButton*>("cmdCancelComparison")->click();
         }}};
    for (const auto& [way, end] : ways) {
        Program p;
        p.choose(6);
        const app::PanelState typed = p.program.MainWindow.panel().panelState();
        for (const char* command : {"mnuFindSternVolmerStart", "mnuCompareModels"}) {
            QTimer::singleShot(0, &p.program.MainWindow, [&, end = end] { end(p.program); });
            p.run(command);
            QVERIFY2(p.program.MainWindow.panel().panelState() == typed, way);
        }
        QVERIFY2(p.solutions().count() + p.models().rowCount() == 0, way);
    }
}

QTEST_MAIN(TestTrustCommands)
#include "tst_trustcommands.moc"
