#include "leastsquares/profile.h"
#include "leastsquares/uncertainty.h"

#include "tests/support/callableproblem.h"

#include <QTest>

#include <cmath>

using namespace leastsquares;

namespace
{

using Law = std::function<double(double x, const fit::Parameters& b)>;

constexpr double kSixDigits = 1e-6;
constexpr std::array kX{1.0, 2.0, 3.0, 4.0, 5.0, 6.0};
constexpr std::array kDeviations{0.01, -0.02, 0.015, 0.005, -0.01, 0.005};

/// Observations of a law at kX with fixed deviations.
support::CallableProblem observed(const Law& law, const fit::Parameters& truth)
{
    return {static_cast<int>(kX.size()), [=](int point, const fit::Parameters& b) {
                const auto i = static_cast<std::size_t>(point - 1);
                return law(kX[i], b) - law(kX[i], truth) - kDeviations[i];
            }};
}

Profile profileFrom(support::CallableProblem& problem, const fit::Parameters& start, const FreeSlots& free,
                    std::size_t slot, const Range& range = kAnySize)
{
    const Minimum minimum = descend(problem, start, free);
    const int degreesOfFreedom = problem.pointCount() - static_cast<int>(free.size());
    return profileOf(problem, minimum, free, slot, estimatedScatter(minimum.sumOfSquares, degreesOfFreedom), range);
}

} // namespace

class TestProfile : public QObject
{
    Q_OBJECT

private slots:
    void isTheSymmetricalIntervalOfALine();
    void endsWhereTheSumDoes();
    void isOpenWhereTheDataAllowAnything();
    void tellsOfALowerSum();
};

void TestProfile::isTheSymmetricalIntervalOfALine()
{
    for (const fit::Parameters& truth : {fit::Parameters{0, 2, 0.5}, {0, -2e-9, 0.5}, {0, 2e9, -0.5}}) {
        const double unit = std::abs(truth[1]);
        support::CallableProblem problem = observed([=](double x, auto& b) { return b[1] / unit * x + b[2]; }, truth);
        const FreeSlots free{1, 2};
        const Minimum minimum = descend(problem, truth, free);
        const Uncertainty symmetrical = uncertaintyOf(problem, minimum.values, free, problem.pointCount());
        for (const std::size_t slot : free) {
            const Profile profile = profileFrom(problem, truth, free, slot);
            const double half = symmetrical.halfWidth[slot];
            QVERIFY(std::abs(*profile.low - (minimum.values[slot] - half)) < kSixDigits * half);
            QVERIFY(std::abs(*profile.high - (minimum.values[slot] + half)) < kSixDigits * half);
            QVERIFY(!profile.lower.has_value());
            QVERIFY2(profile.points.size() >= 9, "too few points to draw");
            QCOMPARE(profile.points.front().value, *profile.low);
            QCOMPARE(profile.points.back().value, *profile.high);
        }
    }
}

// With one parameter the ends need no descent, so that the sum there can be calculated by hand.
void TestProfile::endsWhereTheSumDoes()
{
    support::CallableProblem problem =
        observed([](double x, auto& b) { return std::exp(-b[1] * x); }, fit::Parameters{0, 0.7});
    const Minimum minimum = descend(problem, {0, 1}, {1});
    const Scatter known = knownScatter(5);
    constexpr double kNormal = 1.959964; // two-sided 95 percent in every table
    // as if every observation had an error of 0.02
    support::CallableProblem inErrors(problem.pointCount(),
                                      [&](int i, auto& b) { return problem.residual(i, b) / 0.02; });
    const Minimum scaled{minimum.values, sumOfSquares(inErrors, minimum.values)};
    const Profile profile = profileOf(inErrors, scaled, {1}, 1, known);
    for (const double end : {*profile.low, *profile.high})
        QVERIFY(std::abs((sumOfSquares(inErrors, {0, end}) - scaled.sumOfSquares) / (kNormal * kNormal) - 1) <
                kSixDigits);
    QVERIFY(*profile.high - minimum.values[1] > minimum.values[1] - *profile.low); // it bends
    // chi-square of 11.070 for five degrees of freedom: 5 percent in every table
    QVERIFY(std::abs(chiSquareProbability(11.0705, 5) - 0.05) < 1e-5);
}

void TestProfile::isOpenWhereTheDataAllowAnything()
{
    const Law saturation = [](double x, auto& b) { return 1 - std::exp(-b[1] * x); };
    const Law line = [](double x, auto& b) { return b[1] * x; };
    const Law product = [](double x, auto& b) { return b[1] * b[2] * x; };
    const struct {
        const char* name;
        Law law;
        fit::Parameters truth;
        FreeSlots free;
        bool openBelow, openAbove;
    } cases[]{{"saturated at once", saturation, {0, 8}, {1}, false, true},
              {"hardly any effect", line, {0, 1e-4}, {1}, true, false},
              {"hardly any effect, negative", line, {0, -1e-4}, {1}, false, true},
              {"no effect at 0", line, {}, {1}, true, false},
              {"a product determines no factor", product, {0, 2, 1}, {1, 2}, true, true}};
    for (const auto& c : cases) {
        support::CallableProblem problem = observed(c.law, c.truth);
        const Profile profile = profileFrom(problem, c.truth, c.free, 1, {1e-12, 1e12});
        QVERIFY2(profile.low.has_value() != c.openBelow, c.name);
        QVERIFY2(profile.high.has_value() != c.openAbove, c.name);
    }
}

void TestProfile::tellsOfALowerSum()
{
    support::CallableProblem problem = observed([](double x, auto& b) { return b[1] * x; }, {0, 2});
    const fit::Parameters beside{0, 2.02};
    const Profile profile =
        profileOf(problem, {beside, sumOfSquares(problem, beside)}, {1}, 1, estimatedScatter(0.01, 5));
    QVERIFY(profile.lower.has_value());
    QVERIFY(profile.lower->sumOfSquares < sumOfSquares(problem, beside));
    QVERIFY(profileOf(problem, {beside, 1}, {1}, 1, estimatedScatter(1, 0)).points.empty()); // no scatter, no interval
}

QTEST_APPLESS_MAIN(TestProfile)
#include "tst_profile.moc"
