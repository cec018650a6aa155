#include "analysis/request.h"
#include "fit/report.h"
#include "tests/support/callableproblem.h"
#include "tests/support/decaysessions.h"

#include <QTest>

#include <cmath>
#include <functional>

namespace
{

constexpr double kFewUlps = 1e-14;
constexpr double kTau0 = 10e-9; // s

/// Ratios 1 + slope x at 0, 1, 2 M, the last two off by 0.5 and -0.25, deviations that have no slope.
analysis::Request lineRequest(double slope, double start)
{
    analysis::Request request{.model = 1, .Cp = 50e-6};
    sternvolmer::RatioPoints points{.count = 3, .tau0 = kTau0};
    points.Q = {0, 0, 1, 2};
    points.ratio = {0, 1, 1 + slope - 0.5, 1 + 2 * slope + 0.25};
    request.data = points;
    request.values = {0, start / kTau0};
    request.options.parameterCount = 1;
    return request;
}

double slopeOf(const analysis::Result& result) { return result.values[1] * kTau0; }

/// Does something once, in the first iteration.
struct Interrupter final : support::PatientObserver {
    std::function<void()> action;
    void letEventsRun() override
    {
        if (const auto once = std::exchange(action, nullptr))
            once();
    }
};

analysis::Result ranThrough(const analysis::Request& request)
{
    support::PatientObserver patient;
    return analysis::run(request, patient);
}

} // namespace

class TestRequest : public QObject
{
    Q_OBJECT

private slots:
    void startsFromWhatIsLeftWithoutALogarithm();
    void takesKeptSlotsForFaultsOnlyWhereTheModelUsesThem();
    void keepsItsOwnWhileAnotherRuns();
    void endsAsTheEngineSays();
    void calculatesWhereAFitWouldStart();
    void fitsDecayCurves();
    void namesTheConstantsOfTheModel();
};

void TestRequest::startsFromWhatIsLeftWithoutALogarithm()
{
    analysis::Request request = analysis::startingAt({}, {0, 1, 2, 3});
    request.options.logMode = 1;
    request.options.aboveZero = {0, 1, 0, 1};
    request.values = {0, 1e7, 0, -5};
    QCOMPARE(analysis::startParameters(request), (fit::Parameters{0, std::log(1e7), 2, 3}));
    QCOMPARE(analysis::engineOptions(request).aboveZero, fit::Flags{}); // a logarithm may be negative
    // 50 has been typed, then -5.
    request = analysis::startingAt(request, {0, std::log(50), 0, 0});
    QCOMPARE(analysis::calculate(request).parameters[1], std::log(50));
    request.values[1] = -5;
    QCOMPARE(analysis::calculate(request).parameters[1], std::log(50));
    request.options.logMode = 0;
    QCOMPARE(analysis::startParameters(request), request.values);
    QCOMPARE(analysis::engineOptions(request).aboveZero, request.options.aboveZero);
}

// A slot without a logarithm keeps its value from normal mode, and exp of this value may be infinite. An infinite rate
// constant would vanish in the quotient of Model 4. Model 5 does not use this slot, and Model 1 does not use the probe
// concentration.
void TestRequest::takesKeptSlotsForFaultsOnlyWhereTheModelUsesThem()
{
    constexpr struct {
        int model, parameterCount;
        double first, Cp;
        bool fault;
    } kCases[]{{4, 2, 2, 50e-6, true}, {5, 1, 2, 50e-6, false}, {1, 1, 1e8, INFINITY, false}};
    analysis::Request request = lineRequest(7, 1);
    request.options.logMode = 1;
    request.leftover = {0, 2, 1e9};
    for (const auto& [model, parameterCount, first, Cp, fault] : kCases) {
        request.model = model;
        request.options.parameterCount = parameterCount;
        request.values = {0, first, 0};
        request.Cp = Cp;
        QCOMPARE(ranThrough(request).fault, fault);
        QCOMPARE(analysis::calculate(request).fault, fault);
    }
}

void TestRequest::keepsItsOwnWhileAnotherRuns()
{
    const analysis::Request request = lineRequest(7, 1);
    const analysis::Result undisturbed = ranThrough(request);
    QVERIFY(std::abs(slopeOf(undisturbed) - 7) < kFewUlps * 7);
    QCOMPARE(undisturbed.iterations, 2.0);
    Interrupter interrupter;
    interrupter.action = [] { QVERIFY(std::abs(slopeOf(ranThrough(lineRequest(3, 2))) - 3) < kFewUlps * 3); };
    const analysis::Result result = analysis::run(request, interrupter);
    QVERIFY(!interrupter.action);
    QCOMPARE(result.report, undisturbed.report);
    QCOMPARE(result.parameters, undisturbed.parameters);
}

void TestRequest::endsAsTheEngineSays()
{
    constexpr struct {
        const char* name;
        int count;
        double start;
        int limit;
        fit::Ending ending;
        double iterations; // the first step finds the slope, the second finds nothing better
        const char* error;
    } kCases[]{{"converged", 1, 1, 100, fit::Ending::Converged, 2, "OK"},
               {"limit", 1, 1, 0, fit::Ending::LimitExceeded, 1, "not satisfied"},
               {"no influence", 2, 1, 100, fit::Ending::Converged, 2, "*"},
               {"no derivative", 1, 0, 100, fit::Ending::ArithmeticFault, 0, "OK"}};
    for (const auto& c : kCases) {
        analysis::Request request = lineRequest(0.3, c.start);
        request.values[2] = 1;
        request.options.parameterCount = c.count;
        request.options.iterationLimit = c.limit;
        const analysis::Result result = ranThrough(request);
        QVERIFY2(result.ending == c.ending, c.name);
        QVERIFY2(result.iterations == c.iterations, c.name);
        QVERIFY2(fit::errorText(result.status) == c.error, c.name);
        QCOMPARE(result.fault, c.ending == fit::Ending::ArithmeticFault);
        QCOMPARE(result.report.empty(), result.fault);
    }
}

void TestRequest::calculatesWhereAFitWouldStart()
{
    const analysis::Request request = lineRequest(0.3, 0.3);
    const analysis::Result result = analysis::calculate(request);
    QVERIFY(!result.fitted && !result.fault);
    QCOMPARE(result.values, request.values);
    QVERIFY(std::abs(result.statistics.sumOfSquares - (0.5 * 0.5 + 0.25 * 0.25)) < kFewUlps);
    QVERIFY2(result.report.starts_with("Model  1\r\nkq2 :\t3.e+7\r\nExe num. :  0\r\n"), result.report.c_str());
    QVERIFY(std::abs(analysis::fittedRatio(request, result.parameters)(5) - 2.5) < kFewUlps);
    analysis::Request beyond = request;
    beyond.values[1] = 1e308; // its squares are infinite
    QVERIFY(analysis::startsFinite(beyond));
    QVERIFY(analysis::calculate(beyond).fault);
    beyond.values[1] = INFINITY;
    QVERIFY(!analysis::startsFinite(beyond));
}

// A rate constant of 1e9 M^-1 s^-1 on lifetimes of 400 and 1 / (1/400 + 1e-3) = 285.7 ns.
void TestRequest::fitsDecayCurves()
{
    constexpr double kTyped = 1e-3; // four digits of a lifetime
    analysis::Request request{.model = 1};
    request.data = support::tableFrom({{"0", "1", "1", "400"}, {"1e-3", "1", "1", "285.7"}}, 1);
    request.values = {0, 0}; // a step of its own leads away from 0
    request.options = {.parameterCount = 1, .aboveZero = {0, 1, 1, 1}};
    for (const bool quick : {false, true}) {
        request.quick = quick;
        const analysis::Result result = ranThrough(request);
        QVERIFY(std::abs(result.values[1] / 1e9 - 1) < kTyped);
        const double expected = std::exp(-(1 / 400e-9 + result.values[1] * 1e-3) * 1e-7);
        QVERIFY(std::abs(analysis::fittedDecay(request, result.parameters)(1e-7, 1e-3) - expected) < kFewUlps);
    }
}

void TestRequest::namesTheConstantsOfTheModel()
{
    const analysis::Constants earlier{.K = 9, .F = 9, .kq1 = 9, .kq2 = 9, .kq22 = 9};
    const std::pair<int, analysis::Constants> cases[]{
        {1, {9, 9, 9, 2, 9}}, {2, {2, 9, 3, 4, 9}}, {9, {2, 9, 9, 9, 9}}, {12, {9, 2, 9, 3, 4}}};
    for (const auto& [model, expected] : cases)
        QVERIFY(analysis::constantsOf(model, {0, 2, 3, 4}, earlier) == expected);
}

QTEST_APPLESS_MAIN(TestRequest)
#include "tst_request.moc"
