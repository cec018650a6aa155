#include "trust/comparisontext.h"

#include "tests/support/ratiosets.h"

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace trust;

namespace
{

Comparison compared(const std::vector<analysis::Request>& requests, const SearchProgress& progress = {},
                    const noise::Errors& errors = {noise::Assumption::EqualOnRatios})
{
    LeastSums unknown;
    return compareModels(requests, errors, unknown, progress);
}

constexpr double kPublishedDigits = 2e-4; // the independent optima have about five digits

const ComparedModel& placeOf(const Comparison& comparison, int model)
{
    return *std::find_if(comparison.places.begin(), comparison.places.end(),
                         [=](const ComparedModel& place) { return place.model == model; });
}

QString remarks(const Comparison& comparison, int model)
{
    const auto place = static_cast<std::size_t>(&placeOf(comparison, model) - comparison.places.data());
    return QString::fromStdString(comparisonRow(comparison, place).back().text);
}

} // namespace

class TestModelComparison : public QObject
{
    Q_OBJECT

private slots:
    void ranksTheModelThatTheDataComeFrom();
    void givesEveryModelAPlace();
    void aModelWithoutFreedomDoesNotLead();
    void preferredIsTheSimplestExactModel();
    void saysWhatIntensitiesCannotTell();
    void testsNestedModels();
    void knownErrorsDecideAlone();
    void marksWhatIsImplausible();
    void tellsWhereTheProbeMatters();
    void ranksUnderTheAssumption();
    void canBeCancelled();
};

void TestModelComparison::ranksTheModelThatTheDataComeFrom()
{
    for (int model : {1, 7, 9}) {
        const Comparison comparison =
            compared(support::allModels(support::simulatedRatios(model, 3, 15, 0.005).points));
        const ComparedModel& truth = placeOf(comparison, model);
        constexpr double kNoEvidenceAgainst = 7; // K. P. Burnham, D. R. Anderson, Model Selection (2002), chapter 2
        QVERIFY2(truth.differenceToFirst && *truth.differenceToFirst < kNoEvidenceAgainst, QByteArray::number(model));
        QVERIFY(truth.details.judgement.verdict == Verdict::AtMinimum);
    }
}

// Six samples with noise of 1 % from Model 13: one sample too few to score three constants.
void TestModelComparison::givesEveryModelAPlace()
{
    const Comparison comparison = compared(support::allModels(support::simulatedRatios(13, 2, 6, 0.01).points));
    QCOMPARE(comparison.places.size(), std::size_t{13});
    QVERIFY(comparison.places.front().isScored() && comparison.places.front().isDetermined());
    const auto rank = [](const ComparedModel& m) { return (m.isScored() ? 0 : 2) + (m.mayLead() ? 0 : 1); };
    for (std::size_t i = 1; i < comparison.places.size(); ++i) {
        const ComparedModel &better = comparison.places[i - 1], &worse = comparison.places[i];
        QVERIFY(rank(better) < rank(worse) ||
                (rank(better) == rank(worse) &&
                 (worse.isScored() ? worse.AICc() >= better.AICc()
                                   : worse.details.sumOfSquares >= better.details.sumOfSquares)));
    }
    for (int model : {2, 6, 10, 12})
        QVERIFY(remarks(comparison, model).contains("not scored: 5 samples besides the reference, needs 6"));
}

// Two ratios: models with two or three constants meet them and tell nothing.
void TestModelComparison::aModelWithoutFreedomDoesNotLead()
{
    const Comparison comparison =
        compared(support::allModels(support::ratioPoints({0, 0.04, 0.1}, {1, 4.418, 10.587}, 17.6e-9)));
    for (std::size_t place = 0; place < comparison.places.size(); ++place)
        QCOMPARE(comparison.places[place].mayLead(), place < 3); // Models 1, 5 and 9
    QVERIFY(remarks(comparison, 2).contains("no degree of freedom"));
    QVERIFY(!remarks(comparison, 3).contains("no degree of freedom")); // the verdict says it
    QVERIFY(comparisonNotes(comparison).find("too few samples for an AICc") != std::string::npos);
}

// Exact data: the sums of all models that have the straight line as a limit are roundings, which decide nothing.
void TestModelComparison::preferredIsTheSimplestExactModel()
{
    const auto line = support::ratioPoints({0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7}, {1, 2, 3, 4, 5, 6, 7, 8}, 1e-8);
    const Comparison comparison = compared(support::allModels(line));
    QCOMPARE(comparison.places.front().model, 1); // with the default probe Model 5 is no exact line
    QCOMPARE(placeOf(comparison, 13).sameCurveAs, 1);
    QVERIFY(comparison.tests.size() < 5); // no test against an exact fit
}

void TestModelComparison::saysWhatIntensitiesCannotTell()
{
    const Comparison comparison = compared(support::allModels(support::ratioPoints(support::acridoneRatios())));
    const std::pair<int, QString> expected[]{
        {1, "same curve as Model 5 (a dark complex or collisions: only lifetimes tell)"},
        {2, "same curve as Model 3, its limit for a large kq1"},
        {3, "one of 2 solutions that fit equally well"},
        {4, "same curve as Model 5, its limit for a large kq1"},
        {6, "same curve as Model 7, its limit for a large kq1"},
        {13, "same curve as Model 1, its limit for a small F"}};
    for (const auto& [model, remark] : expected)
        QVERIFY2(remarks(comparison, model).contains(remark), qPrintable(remarks(comparison, model)));
    for (std::size_t place = 0; place < comparison.places.size(); ++place)
        QVERIFY(!remarks(comparison, comparison.places[place].model).contains("determine")); // the verdict says it
    QCOMPARE(placeOf(comparison, 7).sameCurveAs, 0);
}

// Sums of an independent program: 473.808 with Model 1, 4.05796 with Model 3, which has 4 degrees of freedom. The tail
// of F(1, 4) is that of Student's t: 1 - sin a (1 + cos^2 a / 2) with tan a = t / 2.
void TestModelComparison::testsNestedModels()
{
    const Comparison comparison = compared(support::allModels(support::ratioPoints(support::acridoneRatios())));
    QList<std::pair<int, int>> pairs;
    for (const NestedTest& test : comparison.tests)
        pairs << std::pair(test.model, test.simpler);
    QCOMPARE(pairs, (QList<std::pair<int, int>>{{3, 1}, {3, 5}, {7, 1}, {7, 9}, {13, 1}}));
    const double a = std::atan(std::sqrt((473.808 - 4.05796) / 4.05796 * 4) / 2);
    const double tail = 1 - std::sin(a) * (1 + std::cos(a) * std::cos(a) / 2);
    QVERIFY(std::abs(comparison.tests[0].probability / (tail / 2) - 1) < kPublishedDigits);
    QCOMPARE(comparison.tests[4].probability, 1.0); // no second site lowers the sum of an upward curve
    QVERIFY(comparisonNotes(comparison).find("Model 3 against Model 1: 0.00137") != std::string::npos);
}

// Known errors need no F test: of one degree of freedom, chi-square passes x^2 with the probability erfc(x / sqrt(2)).
// With errors of 0.01 % the data tell a straight line from one that is bent by the probe in the complex.
void TestModelComparison::knownErrorsDecideAlone()
{
    const std::vector<analysis::Request> requests = support::allModels(support::ratioPoints(support::acridoneRatios()));
    const Comparison known = compared(requests, {}, {noise::Assumption::AsTyped, {0.05}, true});
    const auto chiSquare = [&](int model) { return placeOf(known, model).assumed->minimum.sumOfSquares; };
    const double tail = std::erfc(std::sqrt((chiSquare(1) - chiSquare(3)) / 2));
    QVERIFY(std::abs(known.tests[0].probability / (tail / 2) - 1) < kPublishedDigits);
    QVERIFY(comparisonNotes(known).find("Chi-square tests") != std::string::npos);
    QVERIFY(placeOf(known, 1).sameCurveAs == 5 || placeOf(known, 5).sameCurveAs == 1);
    const Comparison exact = compared(requests, {}, {noise::Assumption::AsTyped, {1e-4}, true});
    QVERIFY(placeOf(exact, 1).sameCurveAs != 5 && placeOf(exact, 5).sameCurveAs != 1);
}

// A lifetime of 3 ns and F0/F = 101 at 0.5 M require a constant of 6.7e10 M^-1 s^-1, above the diffusion limit.
void TestModelComparison::marksWhatIsImplausible()
{
    const Comparison fast =
        compared(support::allModels(support::ratioPoints({0, 0.1, 0.2, 0.35, 0.5}, {1, 21.2, 40.9, 71.1, 101}, 3e-9)));
    QVERIFY(remarks(fast, 1).contains("kq2 above the diffusion limit in water"));
    QVERIFY(!remarks(fast, 5).contains("diffusion"));
}

// With 0.15 M probe, more than the quencher of two samples, the bound share of the quencher matters.
void TestModelComparison::tellsWhereTheProbeMatters()
{
    const auto withProbe = [](const char* Cp) {
        app::PanelState panel;
        panel.Cp = Cp;
        const analysis::Request any = support::ratioRequest(panel, support::ratioPoints(support::acridoneRatios()));
        return compared(app::requestsOfAllModels(app::panelValues(panel), 0, any));
    };
    const Comparison much = withProbe("0.15");
    QCOMPARE(much.samplesBelowProbe, 2);
    QVERIFY(comparisonNotes(much).find("above the quencher's in 2 samples") != std::string::npos);
    QVERIFY(placeOf(much, 5).probeEffect && placeOf(much, 5).probeEffect->standardErrors > 1);
    QVERIFY(!placeOf(much, 1).probeEffect); // its law has no probe
    QVERIFY(!placeOf(withProbe("1e-6"), 5).probeEffect);
}

// AICc of tests/data/noisefits.txt: if errors are proportional, Model 3 leads before Model 7 by -19.2844 + 25.0437; if
// they are equal, it is the other way round by 15.6535 - 10.5688.
void TestModelComparison::ranksUnderTheAssumption()
{
    const std::vector<analysis::Request> requests = support::allModels(support::ratioPoints(support::acridoneRatios()));
    constexpr double kTwoDecimals = 0.01; // the analyses end close to the least sums
    const Comparison proportional = compared(requests, {}, {});
    QCOMPARE(proportional.places.front().model, 3);
    QVERIFY(std::abs(*placeOf(proportional, 7).differenceToFirst - 5.7593) < kTwoDecimals);
    const Comparison equal = compared(requests);
    QCOMPARE(equal.places.front().model, 7);
    QVERIFY(std::abs(*placeOf(equal, 3).differenceToFirst - 5.0847) < kTwoDecimals);
    for (const Comparison& comparison : {proportional, equal})
        QVERIFY(comparisonNotes(comparison).find(noise::sentence(comparison.errors)) != std::string::npos);
}

void TestModelComparison::canBeCancelled()
{
    double last = 0;
    bool onwards = true;
    const Comparison cancelled =
        compared(support::allModels(support::ratioPoints(support::acridoneRatios())), [&](double done) {
            onwards = onwards && done >= last && done <= 1;
            return (last = done) < 0.5;
        });
    QVERIFY(cancelled.places.empty());
    QVERIFY(onwards);
    QVERIFY(last >= 0.5 && last < 0.6);
}

QTEST_APPLESS_MAIN(TestModelComparison)
#include "tst_modelcomparison.moc"
