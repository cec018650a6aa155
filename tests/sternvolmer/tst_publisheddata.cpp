#include "sternvolmer/models.h"
#include "sternvolmer/ratioproblem.h"

#include "fit/numbertext.h"
#include "tests/support/datarows.h"
#include "tests/support/fitrun.h"

#include <QtTest>

#include <cmath>
#include <map>

using namespace sternvolmer;
using support::allNear;
using support::Values;

namespace
{
// Forward differences over 1/128 of a parameter move the end of an iteration that far from the least sum of squares.
constexpr double kDifferenceBias = 3e-4;
constexpr double kOtherWeights = 0.05; // the publisher's fit is not an unweighted one of all points
constexpr double kTypedDigits = 1e-3;  // what six digits of the data leave of constants that depend on each other

struct DataSet {
    Values conc;  // M
    Values ratio; // F0/F
    double tau0;  // s
    double Cp;    // M
};

// Acridone quenched by iodide in water, 26 C; photochemistry workshop, github.com/chemfd/PhotochemistryWorkshopAnswers,
// 04-workshopweek4.Rmd. Published: (1 + 1.19 x) (1 + 4.94e9 tau0 x). Probe concentration assumed.
DataSet acridone()
{
    DataSet set{{0, 0.04, 0.1, 0.2, 0.3, 0.5, 0.8}, {}, 17.6e-9, 50e-6};
    for (double intensity : {16580, 3753, 1566, 721, 446, 242, 121})
        set.ratio.push_back(16580 / intensity);
    return set;
}

// Tryptophan of hFis1 without its N-terminal arm, quenched by acrylamide, 341 nm; github.com/Hill-Lab/
// Fis1_structural_studies_N-term_arm, 20200220_TRP_dN_nativeN_acrylamide_D1. Published: KSV = 4.86781 per M. The
// lifetime is a nominal one, the source has none.
DataSet hFis1()
{
    return {{0, 0.05, 0.1, 0.2, 0.3, 0.4, 0.5}, {1, 1.1789, 1.4212, 1.821, 2.444, 3.0051, 3.4779}, 3e-9, 10e-6};
}

struct Run : support::FitRun {
    double residualSum = 0;
};

Run fitted(const DataSet& set, int model, int logMode, const Values& start, support::StopRule stop)
{
    RatioProblem problem;
    problem.setLogMode(logMode);
    problem.setModel(model);
    problem.setTauZero(set.tau0);
    problem.setConcentrationofProbe(set.Cp);
    problem.setDatanumber(static_cast<double>(set.conc.size()));
    for (std::size_t i = 0; i < set.conc.size(); ++i) {
        problem.setDX(set.conc[i], static_cast<int>(i) + 1);
        problem.setDY(set.ratio[i], static_cast<int>(i) + 1);
    }
    const support::FitRun run = support::runFit(problem, logMode, start, stop);
    return {run, problem.statistics(run.outcome.parameters).residualSum};
}
} // namespace

class TestPublishedData : public QObject
{
    Q_OBJECT
private slots:
    void reachesTheLeastSquares();
    void agreesWithThePublishedConstants();
    void dependsOnTheStartInLogMode();
    void getsKnownConstantsBack();
};

void TestPublishedData::reachesTheLeastSquares()
{
    for (const QStringList& row : support::dataRows("ratiooptima.txt")) {
        const bool iodide = row[0] == "acridone";
        const DataSet set = iodide ? acridone() : hFis1();
        const int model = row[1].toInt();
        const double K = row[2].toDouble(), KD = row[3].toDouble(), residualSum = row[4].toDouble();
        Values start, optimum;
        if (K != 0) {
            start.push_back(model == 9 ? 5 : 2);
            optimum.push_back(K);
        }
        if (KD != 0) {
            start.push_back(iodide ? 5e9 : 1e9);
            optimum.push_back(KD / set.tau0);
        }
        for (int logMode : {0, 1}) {
            const Run run = fitted(set, model, logMode, start, support::kPatientRule);
            QVERIFY2(run.outcome.ending == fit::Ending::Converged, text(run));
            QVERIFY2(allNear(run.values, optimum, kDifferenceBias), text(run));
            QVERIFY2(std::abs(run.residualSum / residualSum - 1) < kDifferenceBias, text(run));
            if (row.size() == 5)
                continue;
            const Run early = fitted(set, model, logMode, start, support::kPanelRule);
            QVERIFY2(early.outcome.ending == fit::Ending::LimitExceeded, text(early));
            QVERIFY2(allNear(early.values, optimum, row[5].toDouble()), text(early));
            QVERIFY2(!allNear(early.values, optimum, kDifferenceBias), text(early));
        }
    }
}

void TestPublishedData::agreesWithThePublishedConstants()
{
    const Run iodide = fitted(acridone(), 3, 0, {2, 5e9}, support::kPatientRule);
    QVERIFY2(allNear(iodide.values, {1.19, 4.94e9}, kOtherWeights), text(iodide));
    const Run acrylamide = fitted(hFis1(), 1, 0, {1e9}, support::kPatientRule);
    QVERIFY2(allNear(acrylamide.values, {4.86781 / 3e-9}, kDifferenceBias), text(acrylamide));
}

void TestPublishedData::dependsOnTheStartInLogMode()
{
    const Values optimum{154.055 / 17.6e-9};
    const Run normal = fitted(acridone(), 1, 0, {1e6}, support::kPanelRule);
    QVERIFY2(normal.outcome.ending == fit::Ending::Converged && allNear(normal.values, optimum, kDifferenceBias),
             text(normal));
    const Run nearby = fitted(acridone(), 1, 1, {5e9}, support::kPanelRule);
    QVERIFY2(nearby.outcome.ending == fit::Ending::Converged && allNear(nearby.values, optimum, kDifferenceBias),
             text(nearby));
    // From far below, the first step of the logarithm overshoots, is held at 10 and has no slope there: the sum of
    // squares stands still, which counts as converged.
    const Run far = fitted(acridone(), 1, 1, {1e6}, support::kPanelRule);
    QVERIFY2(far.outcome.ending == fit::Ending::Converged && allNear(far.values, {std::exp(10.0)}, kDifferenceBias),
             text(far));
    // A constant of exactly 1 has the logarithm 0 and so no derivative step.
    QCOMPARE(fitted(acridone(), 5, 1, {1}, support::kPanelRule).outcome.ending, fit::Ending::ArithmeticFault);
}

// Not here: 10 and 12, whose constants the engine approaches in thousands of iterations only and only from nearby, and
// 11, which fixes the product of its constants but neither of them.
void TestPublishedData::getsKnownConstantsBack()
{
    const std::map<int, Values> constantsOf{{1, {5.1234567e9}}, // a perfect fit would end with a fault
                                            {2, {30, 1e7, 5e9}}, {3, {5, 5e9}}, {4, {30, 1e8}}, {5, {30}},
                                            {6, {10, 1e8, 5e9}}, {7, {5, 5e9}}, {8, {10, 1e8}}, {9, {5}},
                                            {13, {0.6, 5e9}}};
    for (const auto& [model, constants] : constantsOf) {
        DataSet set{{0, 0.02, 0.05, 0.1, 0.2, 0.3, 0.4, 0.5}, {}, 20e-9, 50e-6};
        Values p = constants, start;
        p.resize(3);
        for (double x : set.conc) {
            const double exact = ratio(model, x, set.tau0, set.Cp, p[0], p[1], p[2]);
            set.ratio.push_back(fit::numberFrom(fit::formatNumber(exact, "0.00000e+00")));
        }
        for (double constant : constants)
            start.push_back(0.8 * constant);
        for (int logMode : {0, 1}) {
            const Run run = fitted(set, model, logMode, start, support::kPatientRule);
            QVERIFY2(run.outcome.ending == fit::Ending::Converged, text(run));
            QVERIFY2(allNear(run.values, constants, kTypedDigits), text(run));
        }
    }
}

QTEST_APPLESS_MAIN(TestPublishedData)
#include "tst_publisheddata.moc"
