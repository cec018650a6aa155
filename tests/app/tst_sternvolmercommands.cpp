#include "tests/support/application.h"

#include <QTest>
#include <QTimer>

#include <cmath>

namespace
{

using support::Application;
using support::Column;

// Acridone quenched by iodide in water: conc. in M, lifetimes in ns, intensities as printed (CC0 teaching workshop,
// github.com/chemfd/PhotochemistryWorkshopAnswers).
const QList<Column> kAcridone{
    {"0", "1", "1", "17.6", "", "", "", "", "16580"}, {"0.04", "1", "1", "3.9", "", "", "", "", "3753"},
    {"0.1", "1", "1", "1.8", "", "", "", "", "1566"}, {"0.2", "1", "1", "0.95", "", "", "", "", "721"},
    {"0.3", "1", "1", "0.64", "", "", "", "", "446"}, {"0.5", "1", "1", "0.39", "", "", "", "", "242"},
    {"0.8", "1", "1", "0.25", "", "", "", "", "121"}};

const QString kArithmeticFault = "The Gauss-Newton calculation stopped with an arithmetic error.\r\n"
                                 "Please change the initial values and run again.";
const QString kIncomplete = "You must input intensity data.";

struct Program : Application {
    void analyse() { run("mnuSternVolmerAnalysis"); }
    void startNearAcridone()
    {
        fill(kAcridone);
        choose(3);
        for (const auto& [box, text] :
             {std::pair{"txtK", "2"}, {"txtkq2", "5e9"}, {"txtIteration", "1000"}, {"txtTolerance", "1e-9"}})
            type(box, text);
    }
};

} // namespace

class TestSternVolmerCommands : public QObject
{
    Q_OBJECT

private slots:
    void refusesIncompleteSheets();
    void refusesNumbersBeyondTheRange();
    void keepsToWhatItStartedWith();
    void keepsSlotsWithoutLogarithm();
};

void TestSternVolmerCommands::refusesIncompleteSheets()
{
    const Column reference{"0", "1", "1", "10", "", "", "", "", "9"};
    const std::tuple<QList<Column>, QString, QStringList> cases[]{
        {{}, "1e-5", {kIncomplete}},
        {{{"1e-3", "1", "1", "10", "", "", "", "", "9"}},
         "1e-5",
         {"Please input the 0moldm-3 data in the left of column.", kIncomplete}},
        {{reference, {"1e-3", "1", "1", "5"}}, "1e-5", {kIncomplete}},
        {{reference}, "zero", {"Please Input Cp value above zero."}}};
    for (const auto& [samples, probe, messages] : cases) {
        Program vorlo;
        vorlo.fill(samples);
        vorlo.type("txtConcProbe", probe);
        vorlo.analyse();
        QCOMPARE(vorlo.prompter.shown, messages);
        QCOMPARE(vorlo.result(1, 0), "");
        QVERIFY(!vorlo.program.GraphWindow2.isVisible());
    }
}

void TestSternVolmerCommands::refusesNumbersBeyondTheRange()
{
    const QList<Column> sphereOfAction{{"0", "1", "1", "10", "", "", "", "", "10"},
                                       {"0.1", "", "", "", "", "", "", "", "8"},
                                       {"0.2", "", "", "", "", "", "", "", "7"}};
    Program vorlo;
    vorlo.fill(sphereOfAction);
    vorlo.choose(9);
    vorlo.type("txtK", "2");
    vorlo.analyse();
    QCOMPARE(vorlo.prompter.shown, QStringList());
    vorlo.type("txtS", "1e200");
    vorlo.analyse();
    QCOMPARE(vorlo.prompter.shown, QStringList{kArithmeticFault});
    vorlo.fill({sphereOfAction[0], {"0.1", "", "", "", "", "", "", "", "1e400"}});
    for (const char* command : {"mnuCalcSternVolmer", "mnuFindSternVolmerStart", "mnuCompareModels"}) {
        vorlo.prompter.shown.clear();
        vorlo.run(command);
        QCOMPARE(vorlo.prompter.shown, QStringList{kArithmeticFault});
    }
    QCOMPARE(vorlo.result(1, 0), "SV");
    QCOMPARE(vorlo.result(2, 0), "");
}

void TestSternVolmerCommands::keepsToWhatItStartedWith()
{
    Program alone, vorlo;
    alone.startNearAcridone();
    alone.analyse();
    vorlo.startNearAcridone();
    QTimer::singleShot(0, &vorlo.program, [&] { // during the fit below
        vorlo.fill({{"0", "1", "1", "50", "", "", "", "", "3"}, {"0.5", "", "", "", "", "", "", "", "1"}});
        vorlo.choose(5);
        vorlo.type("txtConcProbe", "1e-3");
        vorlo.analyse();
    });
    vorlo.analyse();
    const auto& stored = vorlo.program.shared.results.ResultData;
    QCOMPARE(stored[1].Model, 5);
    QCOMPARE(stored[2], alone.program.shared.results.ResultData[1]);
    QCOMPARE(vorlo.reportOf(vorlo.program.SVAnalyzer), alone.reportOf(alone.program.SVAnalyzer));
}

void TestSternVolmerCommands::keepsSlotsWithoutLogarithm()
{
    Program vorlo;
    sternvolmer::frmSternVolmerAnalyzer& analyzer = vorlo.program.SVAnalyzer;
    analyzer.setInitialParameter(3, 1, 2, 3);
    analyzer.setLogMode(1);
    analyzer.setInitialParameter(2, 1e7, 0, -5);
    QCOMPARE(analyzer.parameters(), (fit::Parameters{0, std::log(1e7), 2, 3}));
}

QTEST_MAIN(TestSternVolmerCommands)
#include "tst_sternvolmercommands.moc"
