#include "analysis/request.h"
#include "fit/numbertext.h"
#include "tests/support/callableproblem.h"
#include "tests/support/datarows.h"
#include "tests/support/decaysessions.h"
#include "tests/support/publishedratios.h"

#include <QTest>

#include <cmath>

namespace
{

constexpr double kTypedDigits = 1e-3; // precision of the constants with five digits in the sheet
// Forward differences over 1/128 of a parameter shift the end of a fit this far from the least sum of squares.
constexpr double kDifferenceBias = 3e-4;

const struct {
    const char* name;
    int model, components;
    fit::Parameters constants;
} kDecays[]{{"two exponentials, dynamic", 1, 2, {0, 1.8e7}},
            {"three exponentials, dynamic", 1, 3, {0, 1.6e9}},
            {"complex and dynamic", 2, 1, {0, 1290, 5.9e6, 1e9}},
            {"dark complex", 3, 1, {0, 1290, 1e9}},
            {"complex", 4, 1, {0, 1290, 5.9e6}},
            {"sphere and dynamic", 6, 1, {0, 600, 5.9e6, 1e9}},
            {"dark sphere", 7, 1, {0, 300, 1e9}},
            {"sphere", 8, 1, {0, 1290, 5.9e6}},
            {"two sites", 12, 1, {0, 0.6, 8e9, 1e9}},
            {"one of two sites", 13, 1, {0, 0.6, 8e9}}};

/// A fit with every parameter free and above zero; until it settles, or with the panel's usual tolerance and limit.
analysis::Result fitted(analysis::Request request, int logMode, bool untilItSettles = true)
{
    request.options = {
        .logMode = logMode, .parameterCount = models::row(request.model).parameterCount(), .aboveZero = {0, 1, 1, 1}};
    if (untilItSettles) {
        request.options.tolerance = 1e-9;
        request.options.iterationLimit = 50000;
    }
    support::PatientObserver patient;
    return analysis::run(request, patient);
}

/// The largest relative distance between values and what is expected.
double distance(const fit::Parameters& values, const fit::Parameters& expected)
{
    double largest = 0;
    for (std::size_t slot = 1; slot < expected.size(); ++slot)
        if (expected[slot] != 0)
            largest = std::max(largest, std::abs(values[slot] / expected[slot] - 1));
    return largest;
}

} // namespace

class TestRecovery : public QObject
{
    Q_OBJECT

private slots:
    void getsKnownConstantsBack();
    void reachesTheLeastSquares();
};

void TestRecovery::getsKnownConstantsBack()
{
    const decay::Reference references[]{support::kPyrene, support::kRuRe, support::kAlbumin};
    for (const auto& [name, model, components, constants] : kDecays) {
        const models::DecayArguments truth{.Cp = support::kProbe, .p = constants};
        analysis::Request request{.model = model, .Cp = support::kProbe, .values = constants};
        request.data = support::tableFrom(support::simulatedSession(
            model, references[components - 1], truth, components == 1 ? support::kMicelleRange : support::kWideRange));
        for (double& value : request.values)
            value *= 0.8;
        for (const int logMode : {0, 1}) {
            const analysis::Result result = fitted(request, logMode);
            QVERIFY2(result.ending == fit::Ending::Converged, name);
            QVERIFY2(distance(result.values, constants) < kTypedDigits, name);
        }
    }
}

void TestRecovery::reachesTheLeastSquares()
{
    for (const QStringList& row : support::dataRows("ratiooptima.txt")) {
        const bool iodide = row[0] == "acridone";
        const support::PublishedRatios set = iodide ? support::acridoneRatios() : support::hFis1Ratios();
        const double K = row[2].toDouble(), kq = row[3].toDouble() / set.tau0, sumOfSquares = row[4].toDouble();
        analysis::Request request{.model = row[1].toInt(), .Cp = fit::numberFrom(set.Cp)};
        request.data = support::ratioPoints(set);
        const double startK = request.model == 9 ? 5 : 2, startKq = iodide ? 5e9 : 1e9;
        request.values = K == 0 ? fit::Parameters{0, startKq} : fit::Parameters{0, startK, startKq};
        const fit::Parameters optimum = K == 0 ? fit::Parameters{0, kq} : fit::Parameters{0, K, kq};
        const QByteArray name = row.join(' ').toUtf8();
        for (const int logMode : {0, 1}) {
            const analysis::Result result = fitted(request, logMode);
            QVERIFY2(result.ending == fit::Ending::Converged, name);
            QVERIFY2(distance(result.values, optimum) < kDifferenceBias, name);
            QVERIFY2(std::abs(result.statistics.sumOfSquares / sumOfSquares - 1) < kDifferenceBias, name);
            if (row.size() == 5)
                continue;
            const analysis::Result early = fitted(request, logMode, false);
            QVERIFY2(early.ending == fit::Ending::LimitExceeded, name);
            QVERIFY2(distance(early.values, optimum) < row[5].toDouble(), name);
            QVERIFY2(distance(early.values, optimum) > kDifferenceBias, name);
        }
    }
}

QTEST_APPLESS_MAIN(TestRecovery)
#include "tst_recovery.moc"
