#include "decay/decayproblem.h"

#include "tests/support/decaysessions.h"
#include "tests/support/fitrun.h"

#include <QtTest>

using support::kProbe;
using support::Values;

namespace
{
constexpr double kTypedDigits = 1e-3; // precision of the constants with five digits in the sheet

const struct {
    const char* name;
    int model, components;
    Values constants;
} kCases[]{{"two exponentials, dynamic", 1, 2, {1.8e7}},
           {"three exponentials, dynamic", 1, 3, {1.6e9}},
           {"complex and dynamic", 2, 1, {1290, 5.9e6, 1e9}},
           {"dark complex", 3, 1, {1290, 1e9}},
           {"complex", 4, 1, {1290, 5.9e6}},
           {"sphere and dynamic", 6, 1, {600, 5.9e6, 1e9}},
           {"dark sphere", 7, 1, {300, 1e9}},
           {"sphere", 8, 1, {1290, 5.9e6}},
           {"two sites", 12, 1, {0.6, 8e9, 1e9}},
           {"one of two sites", 13, 1, {0.6, 8e9}}};
} // namespace

class TestRecovery : public QObject
{
    Q_OBJECT
private slots:
    void getsKnownConstantsBack();
};

void TestRecovery::getsKnownConstantsBack()
{
    const decay::Reference references[]{support::kPyrene, support::kRuRe, support::kAlbumin};
    for (const auto& [name, model, components, constants] : kCases) {
        const models::DecayArguments truth{.Cp = kProbe, .p = support::engineParameters(constants)};
        const decay::SampleTable table = support::tableFrom(support::simulatedSession(
            model, references[components - 1], truth, components == 1 ? support::kMicelleRange : support::kWideRange));
        for (int logMode : {0, 1}) {
            decay::DecayProblem problem(table, model, logMode, kProbe);
            const support::FitRun run =
                support::runFit(problem, logMode, support::scaled(constants, 0.8), support::kPatientRule);
            QVERIFY2(run.outcome.ending == fit::Ending::Converged, name + (": " + text(run)));
            QVERIFY2(support::allNear(run.values, constants, kTypedDigits), name + (": " + text(run)));
        }
    }
}

QTEST_APPLESS_MAIN(TestRecovery)
#include "tst_recovery.moc"
