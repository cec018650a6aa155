#include "decay/decayproblem.h"
#include "decay/normalization.h"
#include "sternvolmer/ratioproblem.h"
#include "tests/support/decaysessions.h"
#include "tests/support/fitrun.h"
#include "tests/support/ratiosets.h"
#include "tests/support/vectorstate.h"
#include "trust/fitdetails.h"
#include "trust/modelcomparison.h"
#include "trust/startsearch.h"

#include <QImage>
#include <QtTest>

#include <functional>

namespace
{

/// Leaves the upper halves in use, as painting a window does between two parts of a calculation.
void paint()
{
    QImage image(500, 500, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
}

bool inUse() { return support::upperHalvesInUse().value_or(false); }

/// y = p x; records whether it was ever called with the upper halves in use.
struct Line {
    bool askedUnclean = false;
    support::CallableProblem problem{4, [this](int point, const fit::Parameters& a) {
                                         askedUnclean = askedUnclean || inUse();
                                         return a[1] * point - point * (2.0 + 0.1 * (point % 2));
                                     }};
    analysis::Request request{.model = 1, .options = {.parameterCount = 1}, .values = {0, 1}};
    trust::RequestedFit requested{problem, request};
};

analysis::Request threeRatios()
{
    return {.data = support::ratioPoints({0, 1, 2}, {1, 2.1, 2.9}, 1),
            .model = 1,
            .options = {.parameterCount = 1},
            .values = {0, 1}};
}

bool paintAndGoOn()
{
    paint();
    return true;
}

struct PaintingObserver final : fit::Observer {
    void letEventsRun() override { paint(); }
    bool keepGoing(double) override { return paintAndGoOn(); }
};

bool fitUnclean()
{
    Line line;
    PaintingObserver observer;
    fit::gaussNewton(line.problem, line.request.options, {0, 1}, observer);
    return line.askedUnclean;
}

bool searchUnclean()
{
    Line line;
    trust::LeastSums known;
    trust::searchStart(line.requested, known, [](double) { return paintAndGoOn(); });
    return line.askedUnclean;
}

bool trialUnclean()
{
    bool unclean = false, begun = false;
    trust::runEngine(threeRatios(), [&] {
        unclean = unclean || (begun && inUse());
        begun = true;
        return paintAndGoOn();
    });
    return unclean || !begun;
}

bool detailsUnclean()
{
    trust::LeastSums known;
    trust::fitDetails(threeRatios(), {.values = {0, 2}}, known);
    return inUse();
}

/// Each report of progress sees the state that the calculation before it left.
bool comparisonUnclean()
{
    bool unclean = false, begun = false;
    trust::LeastSums known;
    trust::compareModels(support::allModels(support::ratioPoints(support::acridoneRatios())), {}, known, [&](double) {
        unclean = unclean || (begun && inUse());
        begun = true;
        return paintAndGoOn();
    });
    return unclean || inUse();
}

decay::SampleTable someDecays() { return support::tableFrom({{"0", "1", "1", "400"}, {"1e-3", "1", "1", "200"}}, 1); }

bool normalisationUnclean()
{
    decay::SampleTable table = someDecays();
    paint();
    decay::BuildDecayCurves(table, decay::kFitRegionOwn);
    return inUse();
}

bool decayCurveUnclean()
{
    decay::DecayProblem problem(someDecays(), 1, 0, 0);
    paint();
    problem.value(1e-7, 1e-3, {0, 1e9});
    return inUse();
}

bool decayStatisticsUnclean()
{
    decay::DecayProblem problem(someDecays(), 1, 0, 0);
    paint();
    problem.statistics({0, 1e9});
    return inUse();
}

/// The Poisson law lets events run in the middle of a pass.
bool slowLawUnclean()
{
    decay::DecayProblem problem(someDecays(), 10, 0, 0);
    problem.modelEvaluated = paint;
    problem.residual(1, {0, 500, 1e7, 1e9});
    return inUse();
}

bool ratioCurveUnclean()
{
    sternvolmer::RatioProblem problem(support::ratioPoints(support::acridoneRatios()), 1, 0, 50e-6);
    paint();
    problem.value(0.1, {0, 1e9});
    return inUse();
}

bool ratioStatisticsUnclean()
{
    sternvolmer::RatioProblem problem(support::ratioPoints(support::acridoneRatios()), 1, 0, 50e-6);
    paint();
    problem.statistics({0, 1e9});
    return inUse();
}

} // namespace

class TestVectorRegisters : public QObject
{
    Q_OBJECT

private slots:
    void areClearWhereverACalculationGoesOn_data();
    void areClearWhereverACalculationGoesOn();
};

void TestVectorRegisters::areClearWhereverACalculationGoesOn_data()
{
    using Calculation = std::function<bool()>;
    QTest::addColumn<Calculation>("unclean");
    QTest::newRow("passes of a fit") << Calculation(fitUnclean);
    QTest::newRow("passes of the law with a pause") << Calculation(slowLawUnclean);
    QTest::newRow("search for a start") << Calculation(searchUnclean);
    QTest::newRow("trial of a start") << Calculation(trialUnclean);
    QTest::newRow("comparison of models") << Calculation(comparisonUnclean);
    QTest::newRow("details of a fit") << Calculation(detailsUnclean);
    QTest::newRow("normalisation") << Calculation(normalisationUnclean);
    QTest::newRow("curve of a decay") << Calculation(decayCurveUnclean);
    QTest::newRow("statistics of decays") << Calculation(decayStatisticsUnclean);
    QTest::newRow("curve of ratios") << Calculation(ratioCurveUnclean);
    QTest::newRow("statistics of ratios") << Calculation(ratioStatisticsUnclean);
}

void TestVectorRegisters::areClearWhereverACalculationGoesOn()
{
    QFETCH(std::function<bool()>, unclean);
    if (!support::upperHalvesInUse())
        QSKIP("This processor does not tell whether the upper halves are in use (XGETBV with argument 1).");
    paint();
    if (!inUse())
        QSKIP("Painting leaves the upper halves clear here.");
    QVERIFY(!unclean());
}

QTEST_MAIN(TestVectorRegisters)
#include "tst_vectorregisters.moc"
