#include "decay/decayproblem.h"
#include "decay/normalization.h"
#include "sternvolmer/ratioproblem.h"
#include "tests/support/callableproblem.h"
#include "tests/support/decaysessions.h"
#include "tests/support/ratiosets.h"
#include "tests/support/vectorstate.h"
#include "trust/enginerun.h"
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

using support::acridoneRatios, support::ratioPoints;

decay::SampleTable someDecays() { return support::tableFrom({{"0", "1", "1", "400"}, {"1e-3", "1", "1", "200"}}, 1); }

/// A progress that paints; it sees the state that the calculation before it left.
struct PaintingProgress {
    bool begun = false, unclean = false;
    bool operator()(double = 0)
    {
        unclean = unclean || (begun && inUse());
        begun = true;
        return paintAndGoOn();
    }
};

/// Calculations that begin with the upper halves in use, and whether they meet or leave them so.
const std::pair<const char*, std::function<bool()>> kCalculations[]{
    {"passes of a fit",
     [] {
         Line line;
         PaintingObserver observer;
         fit::gaussNewton(line.problem, line.request.options, {0, 1}, observer);
         return line.askedUnclean;
     }},
    {"passes of the law with a pause", // the Poisson law lets events run in the middle of a pass
     [] {
         decay::DecayProblem problem(someDecays(), 10, 0, 0);
         problem.modelEvaluated = paint;
         problem.residual(1, {0, 500, 1e7, 1e9});
         return inUse();
     }},
    {"search for a start",
     [] {
         Line line;
         trust::LeastSums known;
         trust::searchStart(line.requested, known, [](double) { return paintAndGoOn(); });
         return line.askedUnclean;
     }},
    {"trial of a start",
     [] {
         PaintingProgress progress;
         trust::runEngine(threeRatios(), [&progress] { return progress(); });
         return progress.unclean || !progress.begun;
     }},
    {"comparison of models",
     [] {
         PaintingProgress progress;
         trust::LeastSums known;
         trust::compareModels(support::allModels(ratioPoints(acridoneRatios())), {}, known, std::ref(progress));
         return progress.unclean || inUse();
     }},
    {"details of a fit",
     [] {
         trust::fitDetails(threeRatios(), {.values = {0, 2}}, {});
         return inUse();
     }},
    {"normalisation",
     [] {
         decay::SampleTable table = someDecays();
         paint();
         decay::BuildDecayCurves(table, decay::kFitRegionOwn);
         return inUse();
     }},
    {"curve and statistics of decays",
     [] {
         decay::DecayProblem problem(someDecays(), 1, 0, 0);
         paint();
         problem.value(1e-7, 1e-3, {0, 1e9});
         const bool unclean = inUse();
         paint();
         problem.statistics({0, 1e9});
         return unclean || inUse();
     }},
    {"curve and statistics of ratios", [] {
         sternvolmer::RatioProblem problem(ratioPoints(acridoneRatios()), 1, 0, 50e-6);
         paint();
         problem.value(0.1, {0, 1e9});
         const bool unclean = inUse();
         paint();
         problem.statistics({0, 1e9});
         return unclean || inUse();
     }}};

} // namespace

class TestVectorRegisters : public QObject
{
    Q_OBJECT

private slots:
    void areClearWhereverACalculationGoesOn();
};

void TestVectorRegisters::areClearWhereverACalculationGoesOn()
{
    if (!support::upperHalvesInUse())
        QSKIP("This processor does not tell whether the upper halves are in use (XGETBV with argument 1).");
    paint();
    if (!inUse())
        QSKIP("Painting leaves the upper halves clear here.");
    for (const auto& [name, unclean] : kCalculations) {
        paint();
        QVERIFY2(!unclean(), name);
    }
}

QTEST_MAIN(TestVectorRegisters)
#include "tst_vectorregisters.moc"
