#include "decay/complaints.h"

#include "tests/support/typedsheet.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace decay;
using support::cellsOf;
using support::TypedSheet;

namespace
{
constexpr double kFewUlps = 1e-14;
constexpr double kBisection = 1e-7; // tolerance of the search, s
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

SampleRecord exponential(double tau)
{
    SampleRecord record;
    record.NComp = 1;
    record.A[1] = 1;
    record.Tau[1] = tau;
    record.Rate[1] = 1 / tau;
    return record;
}

SampleTable tableOf(std::initializer_list<double> lifetimes, double level)
{
    SampleTable table;
    for (double tau : lifetimes)
        table.SampleData[static_cast<std::size_t>(++table.SampleCount)] = exponential(tau);
    table.FitRegionLevel = level;
    return table;
}

double endTime(double tau, double level)
{
    bool found = false;
    return FindDecayTime(0, 1.0, level, kBisection, exponential(tau), 500, found);
}
} // namespace

class TestNormalization : public QObject
{
    Q_OBJECT
private slots:
    void readsSamplesInOrder();
    void knowsIncompleteSheets();
    void asksForNormalisedDataFirst();
    void searchesTheTimeOfTheLevelByItsRules();
    void endsTheFitAtTheSamplesOwnTime();
    void survivesAnyRegion();
};

void TestNormalization::readsSamplesInOrder()
{
    const TypedSheet sheet{{"0", "2", "3", "5", "1", "20"}, {"1e-3", " 1.4 ", "2 a.u.", "4"}};
    const DecayData data = readDecayData(cellsOf(sheet), 1e-3, 12);
    QVERIFY(data.complete);
    QVERIFY(!data.siteModelRefused);
    QCOMPARE(data.samples.SampleCount, 2);
    QCOMPARE(data.samples.SampleData[1].Tau[2], 20 / 1e9);
    QVERIFY(data.samples.SampleData[2].NComp == 1);
    QVERIFY(data.samples.SampleData[2].A[1] == 2);

    // Three components with a two-site model are not refused, because the check reads slot 0, which is never filled.
    const TypedSheet three{{"0", "3", "1", "1", "1", "2", "1", "3"}};
    QVERIFY(readDecayData(cellsOf(three), 1e-3, 12).usable());
}

void TestNormalization::knowsIncompleteSheets()
{
    using Column = std::vector<std::string>;
    const std::pair<const char*, Column> cases[]{{"no component count", {"1e-3", "", "1", "5"}},
                                                 {"four components", {"1e-3", "4", "1", "5", "1", "5", "1", "5"}},
                                                 {"huge component count", {"1e-3", "1e300", "1", "5"}},
                                                 {"negative component count", {"1e-3", "-1", "1", "5"}},
                                                 {"no amplitude", {"1e-3", "1", "", "5"}},
                                                 {"zero lifetime", {"1e-3", "1", "1", "0"}},
                                                 {"second component missing", {"1e-3", "2", "1", "5"}},
                                                 {"amplitudes cancel", {"1e-3", "2", "1", "5", "-1", "7"}},
                                                 {"amplitude beyond all numbers", {"1e-3", "1", "1e400", "5"}}};
    for (const auto& [what, column] : cases) {
        const TypedSheet sheet{{"0", "1", "1", "5"}, column, {"2e-3", "1", "1", "4"}};
        const DecayData data = readDecayData(cellsOf(sheet), 1e-3, 1);
        QVERIFY2(!data.complete, what);
        QVERIFY2(data.samples.SampleCount == 3, what); // the other samples are read, too
    }
    QVERIFY(!readDecayData(cellsOf({}), 1e-3, 1).complete);
    const TypedSheet tooMany(25, {"1e-3", "1", "1", "5"});
    const DecayData data = readDecayData(cellsOf(tooMany), 1e-3, 1);
    QVERIFY(data.complete);
    QVERIFY(data.samples.SampleCount == 20);
}

void TestNormalization::asksForNormalisedDataFirst()
{
    QCOMPARE(analysisComplaint(false, 5), "Please Normalize the data.");
    QCOMPARE(analysisComplaint(true, 5), "Model 5 cannot be analyzed with decay curves.");
    QCOMPARE(analysisComplaint(true, 4), std::nullopt);
}

void TestNormalization::searchesTheTimeOfTheLevelByItsRules()
{
    for (double tau : {1e-6, 1e-5, 1e-3, 0.05})
        QVERIFY(std::abs(endTime(tau, 1e-3) - tau * std::log(1e3)) <= kBisection + tau * kBisection / 1e-3);
    // The first midpoint is half a second, which ends this search at once.
    bool found = false;
    QCOMPARE(FindDecayTime(0, 1.0, std::exp(-5.0), kBisection, exponential(0.1), 1, found), 0.5);
    QVERIFY(found);
    // A level that is never reached drives the search to the end of its range: 24 halvings of one second.
    QCOMPARE(endTime(10.0, 1e-3), 1.0 - std::pow(2.0, -24));
    // Far below the tolerance of time the answer is the middle of the first interval.
    QCOMPARE(endTime(1e-12, 1e-3), std::pow(2.0, -24));
    QCOMPARE(FindDecayTime(0, 1.0, 1e-3, kBisection, exponential(1e-6), 3, found), 0.125);
    QVERIFY(!found);
}

void TestNormalization::endsTheFitAtTheSamplesOwnTime()
{
    SampleTable table = tableOf({2e-6, 0.51e-6}, 1e-3);
    BuildDecayCurves(table, kFitRegionOwn);
    // Steps of 0.2 us: 3.52 us lie between points 17 and 18; 13.8 us lie beyond the grid.
    QCOMPARE(table.SampleData[1].LastFitIndex, 49);
    QCOMPARE(table.SampleData[2].LastFitIndex, 18);
    BuildDecayCurves(table, kFitRegionThreshold);
    QCOMPARE(table.SampleData[2].LastFitIndex, 49);

    // 16.6 us round up to a grid of 20 us in steps of 0.4 us: the sample itself ends within it.
    table = tableOf({2.4e-6}, 1e-3);
    BuildDecayCurves(table, kFitRegionOwn);
    QCOMPARE(table.TimeMax, 2e-5);
    QCOMPARE(table.SampleData[1].LastFitIndex, 42);
}

void TestNormalization::survivesAnyRegion()
{
    for (double level : {0.0, -1.0, 1.0, 5.0, 1e-300, kInfinity, -kInfinity, kNaN})
        for (double tau : {1e-9, 1e-320, 1e300, -1e-9, kInfinity}) {
            SampleTable table = tableOf({tau, 5e-9}, level);
            BuildDecayCurves(table, kFitRegionOwn);
            QVERIFY(table.TimeMax > 0 && table.TimeMax <= 1.0);
            for (std::size_t s : {1u, 2u}) {
                QVERIFY(table.SampleData[s].LastFitIndex >= 1 && table.SampleData[s].LastFitIndex <= 50);
                QVERIFY(std::ranges::all_of(table.SampleData[s].T, [](double t) { return t >= 0 && t <= 1.0; }));
            }
        }
}

QTEST_APPLESS_MAIN(TestNormalization)
#include "tst_normalization.moc"
