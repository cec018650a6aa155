#include "fit/gaussnewton.h"

#include "fit/normalequations.h"
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
constexpr double kFewUlps = 1e-13;  // room for the roundings of a well-conditioned 6 x 6 system
constexpr double kTenDigits = 1e-9; // the engine's decimal logarithm is exact to ten digits
constexpr double kConverged = 1e-6; // of a parameter, after convergence to kTight
constexpr double kTight = 1e-13;    // on the sum of squares, which is flat at the minimum

struct System {
    fit::Matrix7 A{};
    fit::Vector7 B{};
    int info = -1;

    void solve(int n) { fit::GaussianElimination(A, B, n, info); }
    bool operator==(const System&) const = default;
};

System twoByTwo(const fit::Vector7& row1, const fit::Vector7& row2, const fit::Vector7& B)
{
    return {.A = {fit::Vector7{}, row1, row2}, .B = B};
}

fit::Options optionsFor(int parameterCount, double iterationLimit = 100)
{
    return {.parameterCount = parameterCount, .iterationLimit = iterationLimit};
}

fit::Outcome run(CallableProblem problem, const fit::Options& options, const Parameters& start)
{
    support::PatientObserver observer;
    return fit::gaussNewton(problem, options, start, observer);
}

/// Four points near the line 1 + 2 x; their exact least-squares line is 0.7 + 2.1 x.
double scatteredLine(int point, const Parameters& a)
{
    constexpr double kObserved[] = {0, 3, 4.6, 7, 9.2};
    return a[1] + a[2] * point - kObserved[point];
}

double constantTwo(int, const Parameters&) { return 2; }

struct RecordingObserver final : fit::Observer {
    QStringList calls;
    double lastIteration = kInfinity; // keepGoing ends the run after it
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
    void eliminationExchangesRowsForTheLargerPivot();
    void eliminationSolvesSixUnknowns();
    void eliminationNamesTheStepOfAZeroPivot();
    void halvesTheDerivativeStepUntilTheFifthIteration();
    void addsUpPointByPoint();
    void comparesTheFirstSumWithOne();
    void halvesInsteadOfCrossingZero();
    void keepsParametersInRange();
    void retriesAfterAZeroPivotWithoutTheLastParameter();
    void doesNotRetryForTheFirstParameter();
    void asksInOrderWhetherToStop();
    void endsOnArithmeticFaults();
};

void TestGaussNewton::eliminationExchangesRowsForTheLargerPivot()
{
    System system = twoByTwo({0, 1, 2}, {0, -3, 4}, {0, 5, 6});
    system.solve(2);
    QVERIFY(system.A[1] == (fit::Vector7{0, -3, 4})); // the second row came up

    System tie = twoByTwo({0, 2, 1}, {0, -2, 1}, {0, 3, 5});
    tie.solve(2);
    QVERIFY(tie.A[1] == (fit::Vector7{0, 2, 1})); // equal magnitudes: the earlier row stays
    QVERIFY(tie.B == (fit::Vector7{0, -0.5, 4}));
}

void TestGaussNewton::eliminationSolvesSixUnknowns()
{
    const fit::Vector7 solution{0, 1, -2, 3, -4, 5, -6};
    System system;
    for (int i = 1; i <= 6; ++i)
        for (int j = 1; j <= 6; ++j) {
            system.A[i][j] = (i + j == 7 ? 10.0 : 1.0) / (i + j); // the largest entries lie on the other diagonal
            system.B[i] += system.A[i][j] * solution[j];
        }
    system.solve(6);
    QCOMPARE(system.info, 0);
    for (int i = 1; i <= 6; ++i)
        QVERIFY2(std::abs(system.B[i] - solution[i]) < kFewUlps, qPrintable(QString::number(system.B[i])));
}

void TestGaussNewton::eliminationNamesTheStepOfAZeroPivot()
{
    System singular = twoByTwo({0, 1, 2}, {0, 2, 4}, {0, 1, 1});
    singular.solve(2);
    QCOMPARE(singular.info, 2);

    System zeroColumn = twoByTwo({0, 0, 2}, {0, 0, 4}, {0, 5, 6});
    System untouched = zeroColumn;
    untouched.info = 1;
    zeroColumn.solve(2);
    QVERIFY(zeroColumn == untouched);

    // Eliminating a triangle changes nothing, so no diagonal entry above a zero pivot is zero: a retry cannot fail.
    System triangle{.A = {fit::Vector7{}, {0, 2, 3, 4}, {0, 0, 5, 6}}, .B = {0, 1, 2, 3}};
    System same = triangle;
    same.info = 3;
    triangle.solve(3);
    QVERIFY(triangle == same);

    System single{.B = {0, 7}};
    single.solve(1);
    QVERIFY(single.info == 1);
    QVERIFY(single.B[1] == 7);
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
        std::vector<double> expected;
        for (const double divisor : {8, 16, 32, 64, 128, 128})
            expected.insert(expected.end(), {start, start + (start == 0 ? 1 : start) / divisor});
        QCOMPARE(seen, expected);
    }
}

// The engine requests residuals of many points at once, but every sum adds its terms in the order of the points, and a
// parameter that was rounded by its shift stays rounded at the next point.
void TestGaussNewton::addsUpPointByPoint()
{
    const auto residual = [](int point, const Parameters& a) {
        return a[1] * std::exp(-a[2] * point / 100.0) + a[3] - 1.0 / point;
    };
    const Parameters start{0, 0.1, 0.7, 0.3};
    for (const fit::Vector7& h : {fit::Vector7{0, 0.0125, 0.0875, 0.0375}, fit::Vector7{0, 100.3, 7.7, 0.3}}) {
        Parameters expected = start, a = start;
        fit::NormalEquations sums;
        constexpr int kPoints = 2 * fit::kMostPointsAtOnce + 10;
        for (int point = 1; point <= kPoints; ++point) {
            const double r = residual(point, expected);
            fit::Vector7 J{};
            for (std::size_t j = 1; j <= 3; ++j) {
                expected[j] += h[j];
                J[j] = (residual(point, expected) - r) / h[j];
                expected[j] -= h[j];
            }
            for (std::size_t j = 1; j <= 3; ++j) {
                for (std::size_t k = j; k <= 3; ++k)
                    sums.matrix[j][k] += J[j] * J[k];
                sums.rightSide[j] -= r * J[j];
            }
            sums.sumOfSquares += r * r;
        }
        CallableProblem problem(kPoints, residual);
        const fit::NormalEquations equations = fit::normalEquations(problem, a, h, 3);
        QVERIFY(equations.matrix == sums.matrix);
        QVERIFY(equations.rightSide == sums.rightSide);
        QVERIFY(equations.sumOfSquares == sums.sumOfSquares);
        QVERIFY(a == expected);
    }
}

void TestGaussNewton::comparesTheFirstSumWithOne()
{
    const auto almostOne = [](int, const Parameters& a) { return std::sqrt(1.00001) + 0 * a[1]; };
    const fit::Outcome outcome = run({1, almostOne}, optionsFor(1), {0, 3});
    QCOMPARE(outcome.ending, Ending::Converged);
    QVERIFY(outcome.iterations == 0);
    QVERIFY(outcome.parameters == (Parameters{0, 3}));
}

void TestGaussNewton::halvesInsteadOfCrossingZero()
{
    fit::Options options = optionsFor(1, 0);
    const auto from4Towards = [&options](double target) {
        const auto distance = [target](int, const Parameters& a) { return a[1] - target; };
        return run({1, distance}, options, {0, 4}).parameters[1];
    };
    QVERIFY(from4Towards(-3) == -3);
    options.aboveZero[1] = 1;
    QVERIFY(from4Towards(-3) == 2);
    QVERIFY(from4Towards(0) == 2);
    QVERIFY(from4Towards(1) == 1);
}

void TestGaussNewton::keepsParametersInRange()
{
    constexpr struct {
        int logMode;
        double start, held;
    } kCases[]{{0, 3e27, 3e24}, {0, -3e27, -3e24},          {0, 1e25, 1e25}, {1, 60, 10}, {1, 50, 50},
               {1, -50, -50},   {1, -60, -10.6696764600630}}; // 60 / 10^(3/4)
    for (const auto& [logMode, start, held] : kCases) {
        fit::Options options = optionsFor(1, 0);
        options.logMode = logMode;
        options.fix[1] = 1; // fixed parameters are kept in range, too
        const double a = run({1, constantTwo}, options, {0, start}).parameters[1];
        QVERIFY2(std::abs(a / held - 1) < kTenDigits, qPrintable(QString::number(a, 'g', 17)));
    }
}

void TestGaussNewton::retriesAfterAZeroPivotWithoutTheLastParameter()
{
    fit::Options options = optionsFor(3, 10000);
    options.tolerance = kTight;
    const fit::Outcome outcome = run({4, scatteredLine}, options, {0, 5, 5, 7});
    QCOMPARE(outcome.ending, Ending::Converged);
    QCOMPARE(outcome.status, Status::ZeroPivot);
    QVERIFY(std::abs(outcome.parameters[1] - 0.7) < kConverged);
    QVERIFY(std::abs(outcome.parameters[2] - 2.1) < kConverged);
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

void TestGaussNewton::asksInOrderWhetherToStop()
{
    constexpr struct {
        bool stopRequested;
        double limit, lastIteration;
        Ending ending;
        Status status;
        double iterations;
        const char* calls;
    } kCases[]{{true, 0, kInfinity, Ending::Stopped, Status::Fine, 1, "events"}, // before the limit is tested
               {false, 1, kInfinity, Ending::LimitExceeded, Status::LimitExceeded, 2, "events 1 events"},
               {false, 1, 1, Ending::Stopped, Status::Fine, 1, "events 1"}};
    const auto cleared = qScopeGuard([] { fit::StopRequested = false; });
    CallableProblem problem(1, constantTwo);
    for (const auto& c : kCases) {
        fit::Options options = optionsFor(1, c.limit);
        options.tolerance = 0;
        RecordingObserver observer;
        observer.requestStop = c.stopRequested;
        observer.lastIteration = c.lastIteration;
        const fit::Outcome outcome = fit::gaussNewton(problem, options, {0, 1}, observer);
        QCOMPARE(outcome.ending, c.ending);
        QCOMPARE(outcome.status, c.status);
        QCOMPARE(outcome.iterations, c.iterations);
        QCOMPARE(observer.calls.join(' '), c.calls);
    }
}

void TestGaussNewton::endsOnArithmeticFaults()
{
    constexpr struct {
        const char* fault;
        int points;
        double start, slope, offset, tolerance;
    } kCases[]{{"no points", 0, 1, 1, 3, 2}, // not converged, though |1 - 0 / 1| < 2
               {"zero derivative step", 1, 0, 1, 3, 1e-4},
               {"start beyond all numbers", 1, kInfinity, 1, 3, 1e-4},
               {"residual overflows", 1, 1e10, 1e300, 3, 1e-4},
               {"sum of squares overflows", 1, 1, 1e200, 3, 1e-4},
               {"tolerance beyond all numbers", 1, 1, 1, 3, kInfinity},
               {"a perfect fit divides 0 by 0 in its second iteration", 3, 4, 0, 0, 1e-4}};
    fit::Options options = optionsFor(1, 3);
    for (const auto& c : kCases) {
        options.tolerance = c.tolerance;
        const auto residual = [c](int, const Parameters& a) { return c.slope * a[1] + c.offset; };
        QVERIFY2(run({c.points, residual}, options, {0, c.start}).ending == Ending::ArithmeticFault, c.fault);
    }
    options.tolerance = 2; // |1 - 0 / 1| passes, so a perfect fit ends well
    const auto zero = [](int, const Parameters&) { return 0.0; };
    QCOMPARE(run({3, zero}, options, {0, 4}).ending, Ending::Converged);
}

QTEST_APPLESS_MAIN(TestGaussNewton)
#include "tst_gaussnewton.moc"
