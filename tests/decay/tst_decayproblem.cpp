#include "decay/decayproblem.h"
#include "decay/normalization.h"

#include <QtTest>

#include <array>
#include <cmath>

using namespace decay;

namespace
{
constexpr double kFewUlps = 1e-13; // room for some hundreds of roundings in a sum
constexpr double kTau = 1e-6;      // s
constexpr double kProbe = 50e-6;   // M

/// Three samples quenched with kq2 = 1e9 M^-1 s^-1. The last sample has a single point to fit.
SampleTable quenchedTable()
{
    SampleTable table;
    for (double Q : {0.0, 1e-3, 2e-3}) {
        SampleRecord& record = table.SampleData[static_cast<std::size_t>(++table.SampleCount)];
        record.Conc = Q;
        record.NComp = 1;
        record.A[1] = 1;
        record.Rate[1] = 1 / kTau + 1e9 * Q;
        record.Tau[1] = 1 / record.Rate[1];
    }
    table.FitRegionLevel = 1e-3;
    BuildDecayCurves(table, 1);
    table.SampleData[3].LastFitIndex = 0;
    return table;
}

} // namespace

class TestDecayProblem : public QObject
{
    Q_OBJECT
private slots:
    void fitsAllButTheReferencePointByPoint();
    void givesTheResidualsOfASampleAtOnce();
    void announcesEveryCurveOfAPoissonFit();
    void hasNoPointsWithoutQuencher();
};

void TestDecayProblem::fitsAllButTheReferencePointByPoint()
{
    for (int logMode : {0, 1}) {
        DecayProblem problem(quenchedTable(), 1, logMode, kProbe);
        const auto kq2 = [logMode](double value) { return fit::Parameters{0, logMode == 1 ? std::log(value) : value}; };
        QCOMPARE(problem.pointCount(), 51);
        const double t = problem.samples().SampleData[1].T[7];
        const double residual = problem.residual(8, kq2(3e9)); // sample 2, grid point 7
        QVERIFY(std::abs(residual - (std::exp(-4e6 * t) - std::exp(-2e6 * t))) < kFewUlps);
        for (int point = 1; point <= 51; ++point)
            QVERIFY(std::abs(problem.residual(point, kq2(1e9))) < kFewUlps);
        QVERIFY(std::abs(problem.residual(51, kq2(3e9))) < kFewUlps); // sample 3 at t = 0
    }
}

void TestDecayProblem::givesTheResidualsOfASampleAtOnce()
{
    DecayProblem problem(quenchedTable(), 2, 0, kProbe), pointwise = problem;
    const fit::Parameters a{0, 60, 1e7, 1e6};
    std::array<double, kGridSize> room{};
    for (int first : {1, 8, 51}) { // samples 2 and 3 have 50 points and 1
        const int count = problem.pointsAtOnce(first);
        QCOMPARE(count, first == 51 ? 1 : 51 - first);
        problem.residuals(first, a, std::span(room).first(static_cast<std::size_t>(count)));
        for (int i = 0; i < count; ++i)
            QVERIFY(room[static_cast<std::size_t>(i)] == pointwise.residual(first + i, a));
    }
}

void TestDecayProblem::announcesEveryCurveOfAPoissonFit()
{
    for (int model : {10, 11}) {
        DecayProblem problem(quenchedTable(), model, 0, kProbe);
        const fit::Parameters p{0, 50, 1e7, 1e6};
        problem.residual(1, p); // nobody listens
        int calls = 0;
        problem.modelEvaluated = [&calls] { ++calls; };
        for (int point = 1; point <= problem.pointCount(); ++point)
            for (double factor : {1.0, 1.1})
                problem.residual(point, {0, 60 * factor, 1e7, 1e6});
        QCOMPARE(calls, model == 10 ? 2 * 2 : 0); // of two samples for two vectors
    }
}

void TestDecayProblem::hasNoPointsWithoutQuencher()
{
    SampleTable table = quenchedTable();
    table.SampleCount = 1;
    QCOMPARE(DecayProblem(table, 1, 0, kProbe).pointCount(), 0);
    table.SampleCount = 0;
    DecayProblem empty(table, 1, 0, kProbe);
    empty.CalcFity({0, 1e9});
    QCOMPARE(empty.pointCount(), 0);
}

QTEST_APPLESS_MAIN(TestDecayProblem)
#include "tst_decayproblem.moc"
