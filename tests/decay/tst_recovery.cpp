#include "decay/decayproblem.h"

#include "tests/support/decaysessions.h"
#include "tests/support/fitrun.h"

#include <QtTest>

#include <cmath>

using namespace decay;
using support::allNear;
using support::engineParameters;
using support::FitRun;
using support::kAlbumin;
using support::kMicelleRange;
using support::kProbe;
using support::kPyrene;
using support::kRuRe;
using support::kWideRange;
using support::scaled;
using support::tableFrom;
using support::Values;

namespace
{
constexpr double kTypedDigits = 1e-3; // precision of the constants with five digits in the sheet

FitRun fitted(const SampleTable& table, int model, int logMode, const Values& start)
{
    DecayProblem problem(table, model, logMode, kProbe);
    return support::runFit(problem, logMode, start, support::kPatientRule);
}

} // namespace

class TestRecovery : public QObject
{
    Q_OBJECT
private slots:
    void getsKnownConstantsBack_data();
    void getsKnownConstantsBack();
};

void TestRecovery::getsKnownConstantsBack_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<int>("components");
    QTest::addColumn<Values>("constants");
    QTest::newRow("two exponentials, dynamic") << 1 << 2 << Values{1.8e7};
    QTest::newRow("three exponentials, dynamic") << 1 << 3 << Values{1.6e9};
    QTest::newRow("complex and dynamic") << 2 << 1 << Values{1290, 5.9e6, 1e9};
    QTest::newRow("dark complex") << 3 << 1 << Values{1290, 1e9};
    QTest::newRow("complex") << 4 << 1 << Values{1290, 5.9e6};
    QTest::newRow("sphere and dynamic") << 6 << 1 << Values{600, 5.9e6, 1e9};
    QTest::newRow("dark sphere") << 7 << 1 << Values{300, 1e9};
    QTest::newRow("sphere") << 8 << 1 << Values{1290, 5.9e6};
    QTest::newRow("two sites") << 12 << 1 << Values{0.6, 8e9, 1e9};
    QTest::newRow("one of two sites") << 13 << 1 << Values{0.6, 8e9};
}

void TestRecovery::getsKnownConstantsBack()
{
    QFETCH(int, model);
    QFETCH(int, components);
    QFETCH(Values, constants);
    const Reference& reference = components == 1 ? kPyrene : components == 2 ? kRuRe : kAlbumin;
    const Values& range = components == 1 ? kMicelleRange : kWideRange;
    const SampleTable table =
        tableFrom(support::simulatedSession(model, reference, {.Cp = kProbe, .p = engineParameters(constants)}, range));
    for (int logMode : {0, 1}) {
        const FitRun run = fitted(table, model, logMode, scaled(constants, 0.8));
        QVERIFY2(run.outcome.ending == fit::Ending::Converged, text(run));
        QVERIFY2(allNear(run.values, constants, kTypedDigits), text(run));
    }
}

QTEST_APPLESS_MAIN(TestRecovery)
#include "tst_recovery.moc"
