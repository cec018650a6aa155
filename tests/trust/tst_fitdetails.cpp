#include "trust/detailstext.h"
#include "trust/profilecurve.h"

#include "leastsquares/akaike.h"
#include "tests/support/callableproblem.h"
#include "tests/support/ratiosets.h"
#include "trust/judging.h"

#include <QTest>

#include <algorithm>

using namespace trust;

namespace
{

constexpr double kHandCalculation = 1e-9;

analysis::Request startingFrom(analysis::Request request, const fit::Parameters& values)
{
    request.values = values;
    return request;
}

FitDetails judgedDetails(const analysis::Request& request, const analysis::Result& result)
{
    LeastSums unknown;
    return fitDetails(request, result, judged(request, result, unknown));
}

FitDetails detailsOfFit(const analysis::Request& request)
{
    support::PatientObserver patient;
    return judgedDetails(request, analysis::run(request, patient));
}

FitDetails detailsAt(const analysis::Request& request, const fit::Parameters& values)
{
    return judgedDetails(request, {.values = values});
}

FitDetails detailsAtOptimum(const analysis::Request& request, const fit::Parameters& start)
{
    const std::unique_ptr<fit::Problem> problem = realProblem(request);
    return detailsAt(request, leastsquares::descend(*problem, start, RequestedFit{*problem, request}.free()).values);
}

} // namespace

class TestFitDetails : public QObject
{
    Q_OBJECT

private slots:
    void printsFiveDigits();
    void givesTheFiguresOfALine();
    void roundingsAtTheReferenceAreZero();
    void judgesWhereAFitEnded();
    void judgesACalculation();
    void namesWhatTheDataDoNotDetermine();
    void showsErrorsUnderTheAssumption();
    void saysOnlyWhatErrorsAllow();
    void saysWhyThereAreNoErrors();
    void drawsAProfileWhereItBends();
    void countsRunsExactly();
};

void TestFitDetails::printsFiveDigits()
{
    const std::pair<double, const char*> cases[]{
        {0.00348, "0.0034800"}, {6.8723e-4, "6.8723e-4"}, {-4.05797, "-4.0580"},  {473.8081, "473.81"},
        {12345.4, "12345"},     {99999.6, "1.0000e+5"},   {0.99999600, "1.0000"}, {0.0, "0"}};
    for (const auto& [value, text] : cases)
        QCOMPARE(figure(value), std::string(text));
}

// Ratios 1, 2.1, 2.9, 4.2 at 0, 1, 2, 3 M with a slope of 1.05: residuals 0, 0.05, -0.2, 0.05, their squares 0.045.
void TestFitDetails::givesTheFiguresOfALine()
{
    const analysis::Request request =
        support::ratioRequest(1, support::ratioPoints({0, 1, 2, 3}, {1, 2.1, 2.9, 4.2}, 1));
    const FitDetails details = detailsAt(request, {0, 1.05});
    const auto near = [](double value, double expected) { return std::abs(value - expected) < kHandCalculation; };
    QVERIFY(near(details.residuals[1], 0.05));
    QVERIFY(near(details.residuals[2], -0.2));
    QVERIFY(near(details.residuals[3], 0.05));
    QVERIFY(near(details.sumOfSquares, 0.045));
    QVERIFY(near(details.rootMeanSquareError, std::sqrt(0.045 / 2)));
    QVERIFY(near(details.uncertainty.standardError[1], std::sqrt(0.045 / 2 / (1 + 4 + 9))));
    QVERIFY(near(details.R2, 1 - 0.045 / (1.55 * 1.55 + 0.45 * 0.45 + 0.35 * 0.35 + 1.65 * 1.65)));
    QVERIFY(!details.AICc.has_value()); // three points, one constant and the variance
    const FitLabels labels = labelsOf(request);
    const DetailsText text = detailsText(details, labels);
    QCOMPARE(text.figures[7][1], std::string("too few samples to test"));
    QCOMPARE(text.figures[8][1], std::string("-"));
    QCOMPARE(text.residuals[1], (std::vector<std::string>{"0", "1.0000", "1.0000", "0"}));
    QCOMPARE(text.residuals[3], (std::vector<std::string>{"2.0000", "2.9000", "3.1000", "-0.20000"}));
    const std::vector<double> conc{0, 1, 2, 3, 4, 5, 6, 7, 8}, ratio{1, 2.1, 2.9, 4.1, 4.9, 6.1, 6.9, 8.1, 8.9};
    const analysis::Request nine = support::ratioRequest(1, support::ratioPoints(conc, ratio, 1));
    const TitledRows tested = detailsText(detailsAt(nine, {0, 1}), labelsOf(nine)).figures;
    QCOMPARE(tested[7][1], std::string("8 (4 samples above, 4 below)"));
    QCOMPARE(tested[8][1], std::string("100.00 %"));
    const FitDetails allPointsAbove = detailsAt(nine, {0, 0.9});
    QCOMPARE(detailsText(allPointsAbove, labelsOf(nine)).figures[7][1],
             std::string("no runs test, all have the same sign"));
    QVERIFY(near(*leastsquares::correctedAkaike(0.045, 6, 2), 6 * std::log(0.0075) + 4 + 12.0 / 3));
}

// The law of Model 6 gives 1 only within a rounding there. A rounding has no sign that the runs test may count.
void TestFitDetails::roundingsAtTheReferenceAreZero()
{
    int roundings = 0;
    for (double kq1 = 1e9; kq1 < 2e9; kq1 += 1e8) {
        const analysis::Request request = support::acridone(6);
        const fit::Parameters values{0, 0.7, kq1, 5e9};
        roundings += realProblem(request)->residual(1, values) != 0 ? 1 : 0;
        QCOMPARE(detailsAt(request, values).residuals[0], 0.0);
    }
    QVERIFY(roundings > 0);
}

void TestFitDetails::judgesWhereAFitEnded()
{
    const fit::Parameters start{0, 2, 5e9, 0};
    QVERIFY(detailsOfFit(startingFrom(support::acridone(3), start)).judgement.verdict == Verdict::StillMoving);
    const analysis::Request patient = support::acridone({.tolerance = "1e-9", .iteration = "5000", .Model = 3});
    QVERIFY(detailsOfFit(startingFrom(patient, start)).judgement.verdict == Verdict::AtMinimum);

    analysis::Request dynamic = support::acridone({.kq2 = "1e6", .Model = 1});
    dynamic.options.logMode = 1; // from the default panel the engine ends on a plateau
    QVERIFY(detailsOfFit(dynamic).judgement.verdict == Verdict::NotAMinimum);
}

void TestFitDetails::judgesACalculation()
{
    const analysis::Request line = support::ratioRequest(1, support::ratioPoints({0, 1, 2, 3}, {1, 2, 3, 4}, 1));
    const std::tuple<analysis::Request, fit::Parameters, Verdict> cases[]{
        {support::acridone(1), {0, 154.055 / 17.6e-9}, Verdict::AtMinimum},
        {support::acridone(1), {0, 1e9}, Verdict::NotAMinimum},
        {support::acridone(3), {0, 1e-12, 1e-20}, Verdict::NotAMinimum}, // so small that the law is flat far around
        {support::acridone(5), {}, Verdict::NotDefined},                 // K = 0
        // Sums of 2.2e-12 and 5e-12 for four points: a millionth a point is below what any instrument sees.
        {line, {0, 1 + 4e-7}, Verdict::AtMinimum},
        {line, {0, 1 + 6e-7}, Verdict::NotAMinimum}};
    for (const auto& [request, values, verdict] : cases) {
        const FitDetails details = detailsAt(request, values);
        QVERIFY2(details.judgement.verdict == verdict, sentence(details.judgement, request.model).c_str());
        const std::string remarks = detailsText(details, labelsOf(request)).remarks;
        QCOMPARE(remarks.find("rough guide") != std::string::npos, verdict == Verdict::NotAMinimum);
    }
}

void TestFitDetails::namesWhatTheDataDoNotDetermine()
{
    const analysis::Request request = support::ratioRequest(11, support::simulatedRatios(11, 1, 8, 0.01).points);
    const FitDetails details = detailsAtOptimum(request, {0, 100, 1e6, 0});
    QVERIFY(details.judgement.verdict == Verdict::Undetermined);
    const DetailsText text = detailsText(details, {models::Analysis::SternVolmer, 11, {}});
    QCOMPARE(text.constants[1], (std::vector<std::string>{"K /M-1", text.constants[1][1], "not determined", "", ""}));
    QCOMPARE(text.correlations[1], (std::vector<std::string>{"K", "-", "-"}));
    QCOMPARE(text.verdict, std::string("the data do not determine K and kq1"));
}

// The errors of tests/data/noisefits.txt: 0.23176 for the constant of the analysis if errors are proportional, 0.11322
// for the constant fitted under this assumption, whose profile goes from 0.98244 to 1.6183.
void TestFitDetails::showsErrorsUnderTheAssumption()
{
    const analysis::Request request = support::acridone(3);
    FitDetails details = detailsAtOptimum(request, {0, 1, 3e9, 0});
    details.errors = errorDetails(request, details.values, {.errors = {}, .typed = {.tau0 = 0.01}}, 0.82);
    const DetailsText text = detailsText(details, labelsOf(request));
    QCOMPARE(text.constants[1][2], std::string("0.23176"));
    QCOMPARE(text.errors.constants[1],
             (std::vector<std::string>{"K /M-1", "1.2755", "0.11322", "0.96114", "1.5898", "0.98242 to 1.6182"}));
    QCOMPARE(text.errors.ready[1][0], std::string("K = (1.24 ± 0.23) M⁻¹"));
    QCOMPARE(text.errors.meaning, std::string("± standard error, with an error of 1 % of τ0, without the error of Cp"));
    QCOMPARE(text.residuals[0].size(), text.residuals[1].size());
    QCOMPARE(text.residuals[1].back(), std::string("-")); // the reference
    QCOMPARE(text.errors.leftOut.size(), std::size_t(8));
    for (const char* part : {"K = (1.24 ± 0.23) M⁻¹", "kq2 = (4.80 ± 0.38)·10⁹ M⁻¹ s⁻¹", "n = 7",
                             "4 degrees of freedom", "τ0 = 17.600 ns", "Vorlo 4", "same relative error"})
        QVERIFY2(text.errors.sentence.find(part) != std::string::npos, part);
    QVERIFY(plainText(text).find(text.errors.sentence) != std::string::npos);
}

// Three samples for two constants leave no degree of freedom: only known errors tell how exact the constants are.
void TestFitDetails::saysOnlyWhatErrorsAllow()
{
    const analysis::Request request =
        support::ratioRequest(3, support::ratioPoints({0, 0.1, 0.2}, {1, 2.6, 4.6}, 1e-8));
    FitDetails details = detailsAtOptimum(request, {0, 1, 1e9});
    const auto textUnder = [&](const noise::Errors& errors) {
        details.errors = errorDetails(request, details.values, {.errors = errors, .typed = {}}, 0);
        return detailsText(details, labelsOf(request));
    };
    const DetailsText scaled = textUnder({noise::Assumption::AsTyped, {0.01}, false});
    QCOMPARE(scaled.constants[1][2] + scaled.errors.ready[1][1], std::string("--"));
    QVERIFY(scaled.remarks.find("too few samples for standard errors") != std::string::npos);
    QVERIFY(scaled.errors.sentence.find("±") == std::string::npos);
    QVERIFY(scaled.errors.sentence.find("no degree of freedom is left") != std::string::npos);
    QVERIFY(scaled.errors.sentence.find("nothing tests them") != std::string::npos);
    const DetailsText known = textUnder({noise::Assumption::AsTyped, {0.01}, true});
    QVERIFY(std::stod(known.constants[1][2]) > 0 && std::stod(known.errors.ready[1][1]) > 0);
    QVERIFY(known.remarks.empty());
    QCOMPARE(known.errors.figures[4][1], std::string("no degree of freedom left"));
    QVERIFY(known.errors.assumption.find("roundings") == std::string::npos); // known errors do not ask the scatter
    details.judgement.verdict = Verdict::StillMoving;
    QVERIFY(textUnder({}).errors.sentence.ends_with(
        "not at a minimum of the sum of squares; their errors are a rough guide."));
    constexpr const char* kRough = "valid only at a minimum";
    QVERIFY(textUnder({}).remarks.find(kRough) != std::string::npos);
    details.judgement.verdict = Verdict::Stopped; // without advice: at the least sum
    QVERIFY(textUnder({}).remarks.find(kRough) == std::string::npos);
}

void TestFitDetails::saysWhyThereAreNoErrors()
{
    const std::vector<double> Q{0, 1, 2, 3, 4};
    const std::tuple<std::vector<double>, const char*, const char*> cases[]{
        {{1, 2, 3, 4, 5}, "meet the model within roundings", "kq2 = 1.0000 M⁻¹ s⁻¹ and"},
        {{1, 2, -3, 4, 5}, "a ratio is not positive", "without standard errors, because a ratio is not positive"}};
    for (const auto& [ratios, assumption, sentence] : cases) {
        const analysis::Request request = support::ratioRequest(1, support::ratioPoints(Q, ratios, 1));
        FitDetails details = detailsAt(request, {0, 1});
        details.errors = errorDetails(request, details.values, {}, 0);
        const ErrorText text = detailsText(details, labelsOf(request)).errors;
        QVERIFY2(text.assumption.find(assumption) != std::string::npos, text.assumption.c_str());
        QVERIFY2(text.sentence.find(sentence) != std::string::npos, text.sentence.c_str());
    }
}

// The walk of a profile ends at the edge of its range, many decades beyond the place where the sum has flattened.
void TestFitDetails::drawsAProfileWhereItBends()
{
    using leastsquares::Profile;
    const auto drawn = [](const Profile& profile, double fitted = 1) {
        const ProfileCurve curve = profileCurve(profile, fitted, 11);
        return std::tuple(curve.points.front().value, curve.points.back().value, curve.logarithmic);
    };
    const Profile closed{1, 4, {{1, 11}, {2, 1}, {4, 11}}, {}};
    const Profile below{{}, 3, {{1e-9, 2}, {1e-5, 2.05}, {0.1, 1.9}, {0.5, 1.2}, {1, 1}, {3, 11}}, {}};
    const Profile flat{{}, 3, {{1e-9, 1}, {1e-5, 1}, {0.5, 1}, {1, 1}, {3, 11}}, {}};
    const Profile above{0.1, {}, {{0.1, 11}, {1, 1}, {9, 6}, {90, 6.9}, {900, 7}, {1e6, 7}}, {}};
    const Profile negative{{}, -0.1, {{-1e6, 7}, {-9, 7}, {-3, 6}, {-1, 1}, {-0.1, 11}}, {}};
    const Profile level{{}, {}, {{1e-9, 1.1}, {1, 1}, {4, 1}, {1e9, 1}}, {}};
    QCOMPARE(drawn(closed, 2), std::tuple(1.0, 4.0, false));
    QCOMPARE(drawn(below), std::tuple(0.1, 3.0, false));
    QCOMPARE(drawn(flat), std::tuple(0.5, 3.0, false));
    QCOMPARE(drawn(above), std::tuple(0.1, 90.0, true));
    QCOMPARE(drawn(negative, -1), std::tuple(-9.0, -0.1, false));
    QCOMPARE(drawn(level), std::tuple(1e-9, 1e9, true));
    QCOMPARE(profileCurve(closed, 2, 11).along(2.5), 0.5);
    QVERIFY(std::abs(profileCurve(above, 1, 11).along(3) - 0.5) < kHandCalculation); // 0.1, 3, 90
}

// Four signs of each kind: 70 orders, of which 2 have two runs, 6 three, 18 four.
void TestFitDetails::countsRunsExactly()
{
    const std::tuple<std::vector<double>, int, double> cases[]{{{1, 1, 1, 1, -1, -1, -1, -1}, 2, 2.0 / 70},
                                                               {{0, 1, 1, -1, -1, -1, -1, 1, 1}, 3, 8.0 / 70},
                                                               {{1, 1, 0, -1, -1, 1, 1, -1, -1}, 4, 26.0 / 70},
                                                               {{1, 2, 3}, 1, 1}, // one sign
                                                               {{1, -1, 1, -1}, 4, 1}};
    for (const auto& [residuals, runs, probability] : cases) {
        const leastsquares::RunsTest test = leastsquares::runsTest(residuals);
        QCOMPARE(test.runs, runs);
        QVERIFY(std::abs(test.probability - probability) < kHandCalculation);
    }
}

QTEST_APPLESS_MAIN(TestFitDetails)
#include "tst_fitdetails.moc"
