#include "tests/support/application.h"

#include <QTest>

#include <cmath>

namespace
{

using support::Application;
using support::Column;

const QString kArithmeticFault = "The Gauss-Newton calculation stopped with an arithmetic error.\r\n"
                                 "Please change the initial values and run again.";
const QString kIncomplete = "You must input intensity data.";

} // namespace

class TestSternVolmerCommands : public QObject
{
    Q_OBJECT

private slots:
    void refusesIncompleteSheets();
    void refusesNumbersBeyondTheRange();
    void leavesTheSlotsAsTheyStand();
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
        Application vorlo;
        vorlo.fill(samples);
        vorlo.type("txtConcProbe", probe);
        for (const char* command : {"mnuFindSternVolmerStart", "mnuCompareModels", "mnuSternVolmerAnalysis"}) {
            vorlo.prompter.shown.clear();
            vorlo.run(command);
            QCOMPARE(vorlo.prompter.shown, messages);
        }
        vorlo.prompter.shown.clear();
        vorlo.run("mnuFindDecayStart");
        QCOMPARE(vorlo.prompter.shown, QStringList("Please Normalize the data."));
        QCOMPARE(vorlo.result(1, 0), "");
        QVERIFY(!vorlo.program.GraphWindow2.isVisible());
        QVERIFY(!vorlo.program.startValues.isVisible());
    }
}

void TestSternVolmerCommands::refusesNumbersBeyondTheRange()
{
    const QList<Column> sphereOfAction{{"0", "1", "1", "10", "", "", "", "", "10"},
                                       {"0.1", "", "", "", "", "", "", "", "8"},
                                       {"0.2", "", "", "", "", "", "", "", "7"}};
    Application vorlo;
    vorlo.fill(sphereOfAction);
    vorlo.choose(9);
    vorlo.type("txtK", "2");
    vorlo.run("mnuSternVolmerAnalysis");
    QCOMPARE(vorlo.prompter.shown, QStringList());
    vorlo.type("txtS", "1e200");
    vorlo.run("mnuSternVolmerAnalysis");
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

// A change of the mode changes what a slot means, but not the number in it.
void TestSternVolmerCommands::leavesTheSlotsAsTheyStand()
{
    Application vorlo;
    analysis::frmSternVolmerAnalyzer& analyzer = vorlo.program.SVAnalyzer;
    analyzer.setDX(5, 1);
    QCOMPARE(std::get<sternvolmer::RatioPoints>(analyzer.request().data).Q[1], 0.0); // no data number yet
    vorlo.program.shared.settings.LogMode = 0;
    vorlo.fill({{"0", "1", "1", "10", "", "", "", "", "10"}});
    vorlo.type("txtkq2", "3");
    vorlo.run("mnuCalcSternVolmer");
    vorlo.program.shared.settings.LogMode = 1;
    vorlo.fill({{"0", "1", "1", "10", "", "", "", "", "0"}}); // refused after the mode is set
    vorlo.run("mnuCalcSternVolmer");
    analyzer.getResults();
    QCOMPARE(analyzer.getkq2(), std::exp(3.0));
    analyzer.setAboveZero(1, 1, 1);
    analyzer.setLogMode(0);
    analyzer.getResults();
    QCOMPARE(analyzer.getkq2(), 3.0);
    QCOMPARE(analyzer.request().options.aboveZero, fit::Flags{});
}

QTEST_MAIN(TestSternVolmerCommands)
#include "tst_sternvolmercommands.moc"
