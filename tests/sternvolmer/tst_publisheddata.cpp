#include "sternvolmer/ratioproblem.h"

#include "fit/numbertext.h"
#include "tests/support/datarows.h"
#include "tests/support/fitrun.h"
#include "tests/support/publishedratios.h"

#include <QtTest>

#include <cmath>

using support::allNear;
using support::PublishedRatios;
using support::Values;

namespace
{
// Forward differences over 1/128 of a parameter shift the end of a fit this far from the least sum of squares.
constexpr double kDifferenceBias = 3e-4;

struct Run : support::FitRun {
    double sumOfSquares = 0;
};

Run fitted(sternvolmer::RatioProblem problem, int logMode, const Values& start, support::StopRule stop)
{
    const support::FitRun run = support::runFit(problem, logMode, start, stop);
    return {run, problem.statistics(run.outcome.parameters).sumOfSquares};
}
} // namespace

class TestPublishedData : public QObject
{
    Q_OBJECT
private slots:
    void reachesTheLeastSquares();
};

void TestPublishedData::reachesTheLeastSquares()
{
    for (const QStringList& row : support::dataRows("ratiooptima.txt")) {
        const bool iodide = row[0] == "acridone";
        const PublishedRatios set = iodide ? support::acridoneRatios() : support::hFis1Ratios();
        const int model = row[1].toInt();
        const double K = row[2].toDouble(), KD = row[3].toDouble(), sumOfSquares = row[4].toDouble();
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
            const sternvolmer::RatioProblem problem(support::ratioPoints(set), model, logMode, fit::numberFrom(set.Cp));
            const Run run = fitted(problem, logMode, start, support::kPatientRule);
            QVERIFY2(run.outcome.ending == fit::Ending::Converged, text(run));
            QVERIFY2(allNear(run.values, optimum, kDifferenceBias), text(run));
            QVERIFY2(std::abs(run.sumOfSquares / sumOfSquares - 1) < kDifferenceBias, text(run));
            if (row.size() == 5)
                continue;
            const Run early = fitted(problem, logMode, start, support::kPanelRule);
            QVERIFY2(early.outcome.ending == fit::Ending::LimitExceeded, text(early));
            QVERIFY2(allNear(early.values, optimum, row[5].toDouble()), text(early));
            QVERIFY2(!allNear(early.values, optimum, kDifferenceBias), text(early));
        }
    }
}

QTEST_APPLESS_MAIN(TestPublishedData)
#include "tst_publisheddata.moc"
