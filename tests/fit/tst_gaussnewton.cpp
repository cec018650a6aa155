#include "fit/gaussnewton.h"

#include "tests/support/callableproblem.h"

#include <QScopeGuard>
#include <QStringList>
#include <QTest>

#include <cmath>
#include <limits>
#include <vector>

using fit::Ending;
using fit::Parameters;
using fit::Status;
using support::CallableProblem;

namespace
{

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kFewUlps = 1e-14;  // room for some tens of roundings
constexpr double kTenDigits = 1e-9; // the engine's decimal logarithm is good to ten digits
constexpr double kConverged = 1e-6; // of a parameter, after convergence to kTight
constexpr double kTight = 1e-13;    // on the sum of squares, which is flat at the minimum

fit::Options optionsFor(int parameterCount, double iterationLimit = 100)
{
    return {.parameterCount = parameterCount, .iterationLimit = iterationLimit};
}

fit::Outcome run(CallableProblem problem, const fit::Options& options, const Parameters& start)
{
    support::PatientObserver observer;
    return fit::gaussNewton(problem, options, start, observer);
}

/// Four points near the line 1 + 2 x; the exact least-squares line of them is 0.7 + 2.1 x.
double scatteredLine(int point, const Parameters& a)
{
    constexpr double kObserved[] = {0, 3, 4.6, 7, 9.2};
    return a[1] + a[2] * point - kObserved[point];
}

double constantTwo(int, const Parameters&) { return 2; }

struct RecordingObserver final : fit::Observer {
    QStringList calls;
    double lastIteration = kInfinity; // keepGoing ends the run then
    bool requestStop = false;

    void letEventsRun() override
    {
        calls << "events";
        fit::StopRequested = requestStop;
    }
    bool keepGoing(double iterations) override
    {
        calls << QString::number(iterations);
        return iterations < lastIteration;
    }
};

} // namespace

class TestGaussNewton : public QObject
{
    Q_OBJECT

private slots:
    void findsTheLeastSquaresLine();
    void usesTheUpperTriangleOnly();
    void halvesTheDerivativeStepUntilTheFifthIteration();
    void restoresShiftedParametersBySubtraction();
    void comparesTheFirstSumWithOne();
    void fixedParametersStay();
    void halvesInsteadOfCrossingZero();
    void keepsParametersInRange_data();
    void keepsParametersInRange();
    void retriesAfterAZeroPivotWithoutTheLastParameter();
    void doesNotRetryForTheFirstParameter();
    void testsTheLimitBeforeItAsksTheObserver();
    void stopsOnRequestBeforeTheLimitTest();
    void endsOnArithmeticFaults_data();
    void endsOnArithmeticFaults();
    void aPerfectFitDividesZeroByZero();
};

void TestGaussNewton::findsTheLeastSquaresLine()
{
    fit::Options options = optionsFor(2, 10000);
    options.tolerance = kTight;
    const fit::Outcome outcome = run({4, scatteredLine}, options, {0, 5, 5});
    QCOMPARE(outcome.ending, Ending::Converged);
    QVERIFY2(std::abs(outcome.parameters[1] - 0.7) < kConverged, qPrintable(QString::number(outcome.parameters[1])));
    QVERIFY2(std::abs(outcome.parameters[2] - 2.1) < kConverged, qPrintable(QString::number(outcome.parameters[2])));
}

void TestGaussNewton::usesTheUpperTriangleOnly()
{
    // By hand: r = (16, 24), normal matrix (2 3; . 5), right-hand side (-40, -64), hence the step (-0.8, -12.8).
    const auto lineThroughZeros = [](int x, const Parameters& a) { return a[1] + a[2] * x; };
    const fit::Outcome outcome = run({2, lineThroughZeros}, optionsFor(2, 0), {0, 8, 8});
    QVERIFY(std::abs(outcome.parameters[1] - 7.2) < kFewUlps * 8);
    QVERIFY(std::abs(outcome.parameters[2] + 4.8) < kFewUlps * 8);
}

void TestGaussNewton::halvesTheDerivativeStepUntilTheFifthIteration()
{
    for (const double start : {128.0, 0.0}) {
        std::vector<double> seen;
        const auto growing = [&seen](int, const Parameters& a) {
            seen.push_back(a[1]);
            return static_cast<double>(seen.size() + 1); // never converges
        };
        fit::Options options = optionsFor(1, 5);
        options.fix[1] = 1;
        options.unitStepForZero = true;
        QCOMPARE(run({1, growing}, options, {0, start}).iterations, 6.0);
        const double unit = start == 0 ? 1 : start;
        const std::vector<double> expected{
            start, start + unit / 8,  start, start + unit / 16,  start, start + unit / 32,
            start, start + unit / 64, start, start + unit / 128, start, start + unit / 128,
        };
        QCOMPARE(seen, expected);
    }
}

void TestGaussNewton::restoresShiftedParametersBySubtraction()
{
    constexpr double kStart = 0.9; // 0.9 + 0.9 / 8 - 0.9 / 8 differs from it in the last digit
    fit::Options options = optionsFor(1, 0);
    options.fix[1] = 1;
    const double left = run({1, constantTwo}, options, {0, kStart}).parameters[1];
    QVERIFY(left != kStart);
    QVERIFY(std::abs(left - kStart) < kFewUlps);
}

void TestGaussNewton::comparesTheFirstSumWithOne()
{
    const auto almostOne = [](int, const Parameters& a) { return std::sqrt(1.00001) + 0 * a[1]; };
    const fit::Outcome outcome = run({1, almostOne}, optionsFor(1), {0, 3});
    QCOMPARE(outcome.ending, Ending::Converged);
    QVERIFY(outcome.iterations == 0);
    QVERIFY(outcome.parameters == (Parameters{0, 3}));
}

void TestGaussNewton::fixedParametersStay()
{
    fit::Options options = optionsFor(2, 1000);
    options.fix = {0, 1, 1};
    const fit::Outcome allFixed = run({4, scatteredLine}, options, {0, 5, 5});
    QCOMPARE(allFixed.ending, Ending::Converged);
    QVERIFY(allFixed.iterations == 1); // the second sum of squares is the first
    QVERIFY(allFixed.parameters == (Parameters{0, 5, 5}));

    options.fix = {0, 1, 0};
    const fit::Outcome oneFixed = run({4, scatteredLine}, options, {0, 5, 5});
    QVERIFY(oneFixed.parameters[1] == 5);
    QVERIFY(oneFixed.parameters[2] < 2);
}

void TestGaussNewton::halvesInsteadOfCrossingZero()
{
    fit::Options options = optionsFor(1, 0);
    const auto towards = [](double target) {
        return CallableProblem(1, [target](int, const Parameters& a) { return a[1] - target; });
    };
    QVERIFY(run(towards(-3), options, {0, 4}).parameters[1] == -3);
    options.aboveZero[1] = 1;
    QVERIFY(run(towards(-3), options, {0, 4}).parameters[1] == 2);
    QVERIFY(run(towards(0), options, {0, 4}).parameters[1] == 2);
    QVERIFY(run(towards(1), options, {0, 4}).parameters[1] == 1);
}

void TestGaussNewton::keepsParametersInRange_data()
{
    QTest::addColumn<int>("logMode");
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("held");
    QTest::newRow("above 1e25") << 0 << 3e27 << 3e24;
    QTest::newRow("below -1e25") << 0 << -3e27 << -3e24;
    QTest::newRow("at 1e25") << 0 << 1e25 << 1e25;
    QTest::newRow("a big logarithm") << 1 << 60.0 << 10.0;
    QTest::newRow("a small logarithm") << 1 << -60.0 << -60 / std::pow(10, 0.75);
    QTest::newRow("at 50") << 1 << 50.0 << 50.0;
    QTest::newRow("at -50") << 1 << -50.0 << -50.0;
}

void TestGaussNewton::keepsParametersInRange()
{
    QFETCH(int, logMode);
    QFETCH(double, start);
    QFETCH(double, held);
    fit::Options options = optionsFor(1, 0);
    options.logMode = logMode;
    options.fix[1] = 1; // fixed ones are held in range, too
    const double a = run({1, constantTwo}, options, {0, start}).parameters[1];
    QVERIFY2(std::abs(a / held - 1) < kTenDigits, qPrintable(QString::number(a, 'g', 17)));
}

void TestGaussNewton::retriesAfterAZeroPivotWithoutTheLastParameter()
{
    fit::Options options = optionsFor(3, 10000);
    const fit::Outcome outcome = run({4, scatteredLine}, options, {0, 5, 5, 7});
    QCOMPARE(outcome.ending, Ending::Converged);
    QCOMPARE(outcome.status, Status::ZeroPivot);
    QVERIFY(outcome.parameters[3] == 7);
    options.parameterCount = 2;
    const fit::Outcome without = run({4, scatteredLine}, options, {0, 5, 5, 7});
    QCOMPARE(without.status, Status::Fine);
    QVERIFY(outcome.parameters == without.parameters);

    options = optionsFor(3, 0);
    QCOMPARE(run({4, scatteredLine}, options, {0, 5, 5, 7}).status, Status::LimitExceeded);
}

void TestGaussNewton::doesNotRetryForTheFirstParameter()
{
    // Only a2 matters: r = 6, J2 = 2. The unsolved right-hand side is -12, the solution would be -3.
    CallableProblem problem(1, [](int, const Parameters& a) { return 2 * (a[2] - 1); });
    RecordingObserver observer;
    observer.lastIteration = 1;
    const fit::Outcome outcome = fit::gaussNewton(problem, optionsFor(2), {0, 5, 4}, observer);
    QCOMPARE(outcome.status, Status::Fine);
    QVERIFY(outcome.parameters == (Parameters{0, 5, 4 - 12}));
}

void TestGaussNewton::testsTheLimitBeforeItAsksTheObserver()
{
    fit::Options options = optionsFor(1, 1);
    options.tolerance = 0;
    CallableProblem problem(1, constantTwo);
    RecordingObserver patient;
    const fit::Outcome limited = fit::gaussNewton(problem, options, {0, 1}, patient);
    QCOMPARE(limited.ending, Ending::LimitExceeded);
    QCOMPARE(limited.status, Status::LimitExceeded);
    QVERIFY(limited.iterations == 2); // one more than the limit
    QCOMPARE(patient.calls, QStringList({"events", "1", "events"}));

    RecordingObserver stopping;
    stopping.lastIteration = 1;
    const fit::Outcome stopped = fit::gaussNewton(problem, options, {0, 1}, stopping);
    QCOMPARE(stopped.ending, Ending::Stopped);
    QCOMPARE(stopped.status, Status::Fine);
}

void TestGaussNewton::stopsOnRequestBeforeTheLimitTest()
{
    const auto cleared = qScopeGuard([] { fit::StopRequested = false; });
    CallableProblem problem(1, constantTwo);
    RecordingObserver observer;
    observer.requestStop = true;
    const fit::Outcome outcome = fit::gaussNewton(problem, optionsFor(1, 0), {0, 1}, observer);
    QCOMPARE(outcome.ending, Ending::Stopped);
    QCOMPARE(outcome.status, Status::Fine);
    QVERIFY(outcome.iterations == 1);
    QCOMPARE(observer.calls, QStringList("events"));
}

void TestGaussNewton::endsOnArithmeticFaults_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("tolerance");
    QTest::newRow("no points") << 0 << 1.0 << 1.0 << 2.0; // not converged, though |1 - 0 / 1| < 2
    QTest::newRow("zero derivative step") << 1 << 0.0 << 1.0 << 0.0001;
    QTest::newRow("start beyond all numbers") << 1 << kInfinity << 1.0 << 0.0001;
    QTest::newRow("residual overflows") << 1 << 1e10 << 1e300 << 0.0001;
    QTest::newRow("sum of squares overflows") << 1 << 1.0 << 1e200 << 0.0001;
    QTest::newRow("tolerance beyond all numbers") << 1 << 1.0 << 1.0 << kInfinity;
}

void TestGaussNewton::endsOnArithmeticFaults()
{
    QFETCH(int, points);
    QFETCH(double, start);
    QFETCH(double, scale);
    QFETCH(double, tolerance);
    fit::Options options = optionsFor(1, 3);
    options.tolerance = tolerance;
    const auto residual = [scale](int, const Parameters& a) { return scale * a[1] + 3; };
    QCOMPARE(run({points, residual}, options, {0, start}).ending, Ending::ArithmeticFault);
}

void TestGaussNewton::aPerfectFitDividesZeroByZero()
{
    const auto zero = [](int, const Parameters&) { return 0.0; };
    fit::Options options = optionsFor(1);
    const fit::Outcome outcome = run({3, zero}, options, {0, 4});
    QCOMPARE(outcome.ending, Ending::ArithmeticFault); // in the second iteration
    QVERIFY(outcome.iterations == 1);
    options.tolerance = 2; // |1 - 0 / 1| passes
    QCOMPARE(run({3, zero}, options, {0, 4}).ending, Ending::Converged);
}

QTEST_APPLESS_MAIN(TestGaussNewton)
#include "tst_gaussnewton.moc"
