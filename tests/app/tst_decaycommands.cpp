#include "tests/support/application.h"
#include "ui/grid.h"

#include <QElapsedTimer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using support::Column;

namespace
{

// Two components and dynamic quenching with kq2 = 1e7 M^-1 s^-1: rates 1/400 and 1/100 ns^-1, plus 0.1 ns^-1 per 10 M.
const QList<Column> kTwoComponents{{"0", "2", "3", "400", "1", "100"},
                                   {"0.5", "2", "3", "133.333333333333", "1", "66.6666666666667"}};

const QString kBlank = "Please input value(s) in blank cell(s).";

struct Program : support::Application {
    explicit Program(const QList<Column>& samples = kTwoComponents)
    {
        fill(samples);
        program.shared.settings.LogMode = 0;
    }
    void normalise() { run("mnuNormalization"); }
    void analyse() { run("mnuDecayCurveAnalysis"); }
};

} // namespace

class TestDecayCommands : public QObject
{
    Q_OBJECT

private slots:
    void tablesFollowTheOutputSettings();
    void keepsTheNormalisedDataOfARefusedSheet();
    void keepsTheFittedCurvesInTheAnalyzer();
    void stopsALongPoissonFitAtOnce();
};

void TestDecayCommands::tablesFollowTheOutputSettings()
{
    Program vorlo({{"0", "1", "1", "400"}}); // after 3920 ns I = exp(-9.8)
    const auto* grid = vorlo.program.OutputTable1.findChild<ui::Grid*>("MSHFlexGrid1");
    const auto lastRow = [&] {
        vorlo.normalise();
        return grid->text(50, 0) + " " + grid->text(50, 1);
    };
    QCOMPARE(lastRow(), "3920. 5.545e-5");
    vorlo.program.shared.settings.TimeScale = 0;
    QCOMPARE(lastRow(), "3.92e-06 5.545e-5");
    vorlo.program.shared.settings.IntensityScale = 1;
    QCOMPARE(lastRow(), "3.92e-06 -4.256");
}

void TestDecayCommands::keepsTheNormalisedDataOfARefusedSheet()
{
    Program vorlo;
    vorlo.normalise();
    vorlo.fill({{"0", "2", "3", "400", "-3", "100"}}); // amplitudes sum to 0
    vorlo.normalise();
    QCOMPARE(vorlo.prompter.shown, QStringList{kBlank});
    QVERIFY(vorlo.program.shared.DataNormalized);
    QCOMPARE(vorlo.program.shared.samples.value().SampleData[1].A[1], 0.75);
    QCOMPARE(vorlo.program.MainWindow.sheet().GetSheetText(5, 1), "-3");

    vorlo.fill({{"0", "2", "3", "1e400", "1", "100"}}); // the rate 0 would look valid
    vorlo.normalise();
    QVERIFY(vorlo.prompter.shown.back().contains("arithmetic error"));
    QCOMPARE(vorlo.program.shared.samples.value().SampleData[1].Tau[1], 400 / 1e9);

    vorlo.prompter.shown.clear();
    vorlo.fill(kTwoComponents);
    vorlo.type("txtFitRegion", "1e400");
    vorlo.control<QAbstractButton>("opnFitRegion1").click();
    vorlo.normalise();
    QVERIFY(vorlo.prompter.shown.back().contains("arithmetic error"));
}

void TestDecayCommands::keepsTheFittedCurvesInTheAnalyzer()
{
    Program vorlo;
    vorlo.normalise();
    for (const char* command : {"mnuDecayCurveAnalysis", "mnuCalcDecayCurve"}) {
        vorlo.run(command);
        const auto& analyzer = vorlo.program.DecayAnalyzer;
        const decay::SampleRecord& quenched = analyzer.sampleData().SampleData[2];
        QCOMPARE(quenched.IFit[9], analyzer.getfvalue(quenched.T[9], quenched.Conc));
        QVERIFY(quenched.IFit[9] > 0);
        QCOMPARE(quenched.sumOfSquares, analyzer.getXaisqr()); // the last sample has the sum of all
    }
}

void TestDecayCommands::stopsALongPoissonFitAtOnce()
{
    QList<Column> samples;
    for (int i = 0; i < 20; ++i)
        samples << Column{QString::number(i * 0.01), "3", "5", "400", "3", "150", "2", "40"};
    Program vorlo(samples);
    vorlo.normalise();
    vorlo.choose(10);
    vorlo.type("txtK", "400");
    vorlo.type("txtIteration", "1e30");
    vorlo.type("txtTolerance", "0");
    QElapsedTimer sinceStop;
    QTimer::singleShot(100, &vorlo.program, [&] {
        QVERIFY(!vorlo.control<QAction>("mnuDecayCurveAnalysis").isEnabled());
        vorlo.program.DecayAnalyzer.findChild<QPushButton*>("cmdSTOP")->click();
        sinceStop.start();
    });
    vorlo.analyse();
    QVERIFY(sinceStop.isValid());
    qInfo() << "from STOP to the end of the command" << sinceStop.elapsed() << "ms";
    QCOMPARE(vorlo.prompter.shown, QStringList());
    QCOMPARE(vorlo.result(1, 0), "Decay");
}

QTEST_MAIN(TestDecayCommands)
#include "tst_decaycommands.moc"
