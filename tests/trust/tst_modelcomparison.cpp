#include "trust/modelcomparison.h"

#include "tests/support/ratiosets.h"

#include <QTest>

#include <algorithm>

using namespace trust;

namespace
{

std::vector<ComparedModel> compared(const std::vector<analysis::Request>& requests, const SearchProgress& progress = {})
{
    LeastSums unknown;
    return compareModels(requests, unknown, progress);
}

} // namespace

class TestModelComparison : public QObject
{
    Q_OBJECT

private slots:
    void ranksTheModelThatTheDataComeFrom();
    void marksWhatIsImplausible();
    void canBeCancelled();
};

void TestModelComparison::ranksTheModelThatTheDataComeFrom()
{
    for (int model : {1, 7, 9}) {
        const auto models = compared(support::allModels(support::simulatedRatios(model, 3, 15, 0.005).points));
        const ComparedModel& truth = models[static_cast<std::size_t>(model - 1)];
        constexpr double kNoEvidenceAgainst = 7; // K. P. Burnham, D. R. Anderson, Model Selection (2002), chapter 2
        QVERIFY2(truth.differenceToBest && *truth.differenceToBest < kNoEvidenceAgainst, QByteArray::number(model));
        QVERIFY(truth.details.judgement.verdict == Verdict::AtMinimum);
        QVERIFY(std::any_of(models.begin(), models.end(), [](const auto& m) { return m.differenceToBest == 0.0; }));
    }
}

// A lifetime of 3 ns and F0/F = 101 at 0.5 M require a constant of 6.7e10 M^-1 s^-1, above the diffusion limit.
void TestModelComparison::marksWhatIsImplausible()
{
    const auto fast =
        compared(support::allModels(support::ratioPoints({0, 0.1, 0.2, 0.35, 0.5}, {1, 21.2, 40.9, 71.1, 101}, 3e-9)));
    QVERIFY(fast.front().doubts[1] == Doubt::AboveDiffusionLimit);
    const auto iodide = compared(support::allModels(support::ratioPoints(support::acridoneRatios())));
    QCOMPARE(iodide.size(), std::size_t{13});
    QVERIFY(iodide[2].doubts[1] == Doubt::None);
    QVERIFY(iodide[2].doubts[2] == Doubt::None);
    QVERIFY(iodide[10].doubts[1] == Doubt::Undetermined);
}

void TestModelComparison::canBeCancelled()
{
    double last = 0;
    bool onwards = true;
    const auto models = compared(support::allModels(support::ratioPoints(support::acridoneRatios())), [&](double done) {
        onwards = onwards && done >= last && done <= 1;
        return (last = done) < 0.5;
    });
    QVERIFY(models.empty());
    QVERIFY(onwards);
    QVERIFY(last >= 0.5 && last < 0.6);
}

QTEST_APPLESS_MAIN(TestModelComparison)
#include "tst_modelcomparison.moc"
