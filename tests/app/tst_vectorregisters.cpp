#include "decay/decayproblem.h"
#include "decay/normalization.h"
#include "lifetimes/fittext.h"
#include "sternvolmer/ratioproblem.h"
#include "tests/support/decaysessions.h"
#include "tests/support/pairedsamples.h"
#include "tests/support/ratiosets.h"
#include "tests/support/vectorstate.h"
#include "trust/enginerun.h"
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

/// Paints while a calculation lets events run, and notes whether the upper halves are in use wherever it looks.
struct Painter {
    bool seenInUse = false;

    void look() { seenInUse = seenInUse || inUse(); }
    bool operator()(double = 0)
    {
        look();
        paint();
        return true;
    }
};

decay::SampleTable someDecays() { return support::tableFrom({{"0", "1", "1", "400"}, {"1e-3", "1", "1", "200"}}, 1); }

analysis::Request threeRatios()
{
    return {.data = support::ratioPoints({0, 1, 2}, {1, 2.1, 2.9}, 1),
            .model = 1,
            .options = {.parameterCount = 1},
            .values = {0, 1}};
}

/// Calculations that begin with the upper halves in use.
const std::pair<const char*, void (*)(Painter&)> kCalculations[]{
    {"fit", [](Painter& painter) { trust::runEngine(threeRatios(), [&] { return painter(); }); }},
    {"law that lets events run in the middle of a pass",
     [](Painter& painter) {
         decay::DecayProblem problem(someDecays(), 10, 0, 0);
         problem.modelEvaluated = [&] { painter(); };
         problem.residual(1, {0, 500, 1e7, 1e9});
         painter.look();
     }},
    {"search for a start",
     [](Painter& painter) {
         const analysis::Request request = threeRatios();
         const std::unique_ptr<fit::Problem> problem = trust::realProblem(request);
         trust::LeastSums known;
         trust::searchStart({*problem, request}, known, std::ref(painter));
     }},
    {"comparison of models",
     [](Painter& painter) {
         trust::LeastSums known;
         trust::compareModels(support::allModels(support::ratioPoints(support::acridoneRatios())), {}, known,
                              std::ref(painter));
         painter.look();
     }},
    {"intensities and lifetimes together",
     [](Painter& painter) {
         const lifetimes::Overview overview = lifetimes::overviewOf(support::acridoneMeasurements(), {});
         painter.look();
         paint();
         lifetimes::fitText(overview, *overview.places.front().fit);
         painter.look();
     }},
    {"normalisation",
     [](Painter& painter) {
         decay::SampleTable table = someDecays();
         paint();
         decay::BuildDecayCurves(table, decay::kFitRegionOwn);
         painter.look();
     }},
    {"curve and statistics of decays",
     [](Painter& painter) {
         decay::DecayProblem problem(someDecays(), 1, 0, 0);
         paint();
         problem.value(1e-7, 1e-3, {0, 1e9});
         painter();
         problem.statistics({0, 1e9});
         painter.look();
     }},
    {"curve and statistics of ratios", [](Painter& painter) {
         sternvolmer::RatioProblem problem(support::ratioPoints(support::acridoneRatios()), 1, 0, 50e-6);
         paint();
         problem.value(0.1, {0, 1e9});
         painter();
         problem.statistics({0, 1e9});
         painter.look();
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
    for (const auto& [name, calculate] : kCalculations) {
        Painter painter;
        paint();
        calculate(painter);
        QVERIFY2(!painter.seenInUse, name);
    }
}

QTEST_MAIN(TestVectorRegisters)
#include "tst_vectorregisters.moc"
