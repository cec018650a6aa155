#include "trust/enginestart.h"
#include "trust/startsearch.h"

#include "leastsquares/spread.h"
#include "tests/support/datarows.h"
#include "tests/support/decaysessions.h"
#include "tests/support/randomsessions.h"
#include "tests/support/ratiosets.h"

#include <QTest>

#include <limits>
#include <vector>

using namespace trust;

namespace
{

constexpr double kPublishedDigits = 2e-4; // the independent optima have about five digits

SearchResult searched(const analysis::Request& request)
{
    const std::unique_ptr<fit::Problem> problem = realProblem(request);
    LeastSums unknown;
    return searchStart({*problem, request}, unknown);
}

EngineStart startFor(const analysis::Request& request, const leastsquares::Solution& solution)
{
    const std::unique_ptr<fit::Problem> problem = realProblem(request);
    return engineStart({*problem, request}, solution);
}

double tau0Of(const analysis::Request& request) { return std::get<sternvolmer::RatioPoints>(request.data).tau0; }

} // namespace

class TestStartSearch : public QObject
{
    Q_OBJECT

private slots:
    void findsPublishedOptima();
    void findsTheLeastSumOfManyDecayPoints();
    void passesTheJumpsOfASeries();
    void leadsTheEngineToTheOptimum_data();
    void leadsTheEngineToTheOptimum();
    void saysWhereTheEngineCannotStay();
    void givesEverySolutionThatIsEquallyGood();
    void oneSolutionStandsForWhatIsNotDetermined();
    void keepsFixedConstants();
    void startsFromValuesWithoutLogarithm();
};

void TestStartSearch::findsPublishedOptima()
{
    for (const QStringList& row : support::dataRows("ratiooptima.txt")) {
        const int model = row[1].toInt();
        const double K = row[2].toDouble(), KD = row[3].toDouble(), sumOfSquares = row[4].toDouble();
        const analysis::Request request = row[0] == "acridone" ? support::acridone(model) : support::hFis1(model);
        const leastsquares::Solution best = searched(request).solutions.front();
        QVERIFY2(std::abs(best.sumOfSquares / sumOfSquares - 1) < kPublishedDigits, qPrintable(row.join(' ')));
        if (K != 0)
            QVERIFY2(std::abs(best.values[1] / K - 1) < kPublishedDigits, qPrintable(row.join(' ')));
        if (KD != 0)
            QVERIFY2(std::abs(best.values[K != 0 ? 2 : 1] * tau0Of(request) / KD - 1) < kPublishedDigits,
                     qPrintable(row.join(' ')));
    }
}

// A search that leaves out points evenly misses the first points of fast decays, and the best of many starts may all
// lie on one plateau. The reference goes downhill from a few spread starts with all points.
void TestStartSearch::findsTheLeastSumOfManyDecayPoints()
{
    for (const unsigned seed : {75U, 329U, 381U, 502U, 614U, 668U}) {
        const support::RandomSessions::Session session = support::RandomSessions(seed).session();
        const analysis::Request request = app::requestOf(
            app::panelValues({.Model = session.trueModel}), 0,
            analysis::Request{.data = support::tableFrom(session.sheet, 1 + static_cast<int>(seed % 2))});
        const std::unique_ptr<fit::Problem> problem = realProblem(request);
        const leastsquares::FreeSlots free = RequestedFit{*problem, request}.free();
        double least = std::numeric_limits<double>::infinity();
        for (int n = 1; n <= 8; ++n) {
            fit::Parameters start = request.values;
            leastsquares::spread(start, free, sensibleRanges(request.model), n);
            least = std::min(least, leastsquares::descend(*problem, start, free).sumOfSquares);
        }
        QVERIFY2(leastsquares::equallyGood(searched(request).solutions.front().sumOfSquares, least, 1),
                 QByteArray::number(seed));
    }
}

// Where a series ends depends on K, so the sum of squares jumps along K. The reference fits the other constants at many
// K around the truth.
void TestStartSearch::passesTheJumpsOfASeries()
{
    for (const unsigned seed : {4U, 61U, 95U}) {
        const support::RandomSessions::Session session = support::RandomSessions(seed).session();
        const analysis::Request request = app::requestOf(
            app::panelValues({.Model = session.trueModel}), 0,
            analysis::Request{.data = support::tableFrom(session.sheet, 1 + static_cast<int>(seed % 2))});
        const std::unique_ptr<fit::Problem> problem = realProblem(request);
        leastsquares::FreeSlots others = RequestedFit{*problem, request}.free();
        others.erase(others.begin());
        double least = std::numeric_limits<double>::infinity();
        for (int n = -50; n <= 50; ++n) {
            fit::Parameters start = support::RandomSessions::trueValues(session);
            start[1] *= std::pow(1.01, n);
            least = std::min(least, leastsquares::descend(*problem, start, others).sumOfSquares);
        }
        QVERIFY2(leastsquares::equallyGood(searched(request).solutions.front().sumOfSquares, least, 1),
                 QByteArray::number(seed));
    }
}

void TestStartSearch::leadsTheEngineToTheOptimum_data()
{
    QTest::addColumn<int>("model");
    for (int model = 1; model <= models::kModelCount; ++model)
        QTest::addRow("%d", model) << model;
}

// From the default panel, in both modes. The reference is the optimum reached from the constants from which the data
// were made; the search does not know these constants.
void TestStartSearch::leadsTheEngineToTheOptimum()
{
    QFETCH(int, model);
    constexpr unsigned kSets = 50;
    constexpr int kSamples = 8;
    constexpr double kNoise = 0.01, kShare = 0.98;
    int determined = 0, reached = 0, missed = 0;
    for (unsigned seed = 0; seed < kSets; ++seed) {
        const support::SimulatedRatios simulated = support::simulatedRatios(model, seed, kSamples, kNoise);
        analysis::Request request = support::ratioRequest(model, simulated.points);
        const std::unique_ptr<fit::Problem> problem = realProblem(request);
        const SearchResult found = searched(request);
        QVERIFY(!found.solutions.empty());
        const leastsquares::Solution& best = found.solutions.front();
        const leastsquares::FreeSlots free = leastsquares::freeSlots(models::row(model).parameterCount(), {});
        const double lowest = leastsquares::descend(*problem, simulated.constants, free).sumOfSquares;
        missed += best.sumOfSquares > lowest * (1 + leastsquares::kEquallyGood) ? 1 : 0;
        for (int logMode : {0, 1}) {
            request.options.logMode = logMode;
            const bool counts = best.undetermined.empty();
            determined += counts ? 1 : 0;
            reached += counts && startFor(request, best).leadsToMinimum ? 1 : 0;
        }
    }
    qInfo("model %d: the engine ends at the optimum in %d of %d determined cases", model, reached, determined);
    QCOMPARE(missed, 0);
    QVERIFY(reached >= kShare * determined);
    // The product K kq1 alone shows in the eleventh law as long as the probe is dilute.
    QCOMPARE(determined == 0, model == 11);
}

// If the last constant is fixed off its optimum, the engine's triangular steps miss the optimum of the others.
void TestStartSearch::saysWhereTheEngineCannotStay()
{
    const analysis::Request request = support::acridone({.kq2 = "4.5e9", .Model = 6, .FixKq2 = 1});
    const leastsquares::Solution best = searched(request).solutions.front();
    const EngineStart start = startFor(request, best);
    QVERIFY(!start.leadsToMinimum);
    QVERIFY(start.reached > best.sumOfSquares * (1 + leastsquares::kEquallyGood));
    QVERIFY(std::abs(start.values[1] / best.values[1] - 1) < kPublishedDigits); // the values are the optimum
}

// The law of two sites is the same with the sites exchanged, which is one solution. With a dilute probe, the law of a
// dark complex with collisions is nearly the same with K and kq2 tau0 exchanged.
void TestStartSearch::givesEverySolutionThatIsEquallyGood()
{
    const SearchResult sites = searched(support::ratioRequest(12, support::simulatedRatios(12, 1, 8, 0.01).points));
    QCOMPARE(sites.solutions.size(), std::size_t{1});

    const analysis::Request iodide = support::acridone(3);
    const SearchResult complex = searched(iodide);
    QCOMPARE(complex.solutions.size(), std::size_t{2});
    constexpr double kDilute = 2e-3; // K times the probe concentration
    const fit::Parameters& exchanged = complex.solutions[1].values;
    QVERIFY(std::abs(exchanged[1] / 84.4383 - 1) < kDilute);
    QVERIFY(std::abs(exchanged[2] * tau0Of(iodide) / 1.24126 - 1) < kDilute);
}

// Only the product of the constants shows in the eleventh law while the probe is dilute.
void TestStartSearch::oneSolutionStandsForWhatIsNotDetermined()
{
    const sternvolmer::RatioPoints points = support::simulatedRatios(11, 1, 8, 0.01).points;
    std::vector<double> products;
    for (const char* typed : {"1", "1e3"}) {
        const SearchResult found = searched(support::ratioRequest({.K = typed, .Model = 11}, points));
        QCOMPARE(found.solutions.size(), std::size_t{1});
        QCOMPARE(found.solutions[0].undetermined, (leastsquares::FreeSlots{1, 2}));
        products.push_back(found.solutions[0].values[1] * found.solutions[0].values[2]);
    }
    constexpr double kOneError = 0.05; // of the product, from noise of 1 percent
    QVERIFY(std::abs(products[0] / products[1] - 1) < kOneError);
}

void TestStartSearch::keepsFixedConstants()
{
    const analysis::Request request = support::acridone({.kq2 = "4.94e9", .Model = 3, .FixKq2 = 1});
    const leastsquares::Solution best = searched(request).solutions.front();
    QCOMPARE(best.values[2], 4.94e9);
    QVERIFY(best.values[1] > 1 && best.values[1] < 1.3); // published with this kq2: 1.19

    analysis::Request allFixed = support::acridone({.kq2 = "4.94e9", .Model = 1, .FixKq2 = 1});
    allFixed.options.tolerance = std::numeric_limits<double>::infinity(); // which no engine run survives
    QVERIFY(!startFor(allFixed, searched(allFixed).solutions.front()).leadsToMinimum);
}

void TestStartSearch::startsFromValuesWithoutLogarithm()
{
    const SearchResult found = searched(support::acridone({.kq2 = "none", .K = "-5", .Model = 3}));
    QVERIFY(std::abs(found.solutions.front().sumOfSquares / 4.05796 - 1) < kPublishedDigits);
    // the law of the complex cannot be evaluated at K = 0
    QVERIFY(std::isinf(searched(support::acridone({.kq2 = "none", .K = "0", .Model = 3})).typedSum));
}

QTEST_APPLESS_MAIN(TestStartSearch)
#include "tst_startsearch.moc"
