#include "noise/noisefit.h"

#include "models/catalogue.h"
#include "tests/support/noisyratios.h"

#include <QTest>

#include <algorithm>
#include <cmath>

// How often 95 % intervals hold the truth. Model m draws its random data from seed 1000000 m.

using namespace noise;

namespace
{

struct Noise {
    const char* name;
    Errors errors;
};

const Noise kNoises[]{
    {"equal", {Assumption::EqualOnRatios}},
    {"proportional", {Assumption::Proportional}},
    {"typed", {Assumption::AsTyped, {0.005, 0.01, 0.01, 0.015, 0.02, 0.01, 0.02, 0.01, 0.02, 0.01, 0.02, 0.02}}},
    {"typed, known",
     {Assumption::AsTyped, {0.005, 0.01, 0.01, 0.015, 0.02, 0.01, 0.02, 0.01, 0.02, 0.01, 0.02, 0.02}, true}},
};

/// Sites exchange their names where both have collisions; the faster comes first.
bool isOutOfOrder(int model, const fit::Parameters& values)
{
    const auto fitted = models::row(model).fitted();
    return fitted.size() == 3 && fitted[0].box == models::Box::F && values[2] < values[3];
}

/// Intervals that hold the truth.
struct Count {
    int byProfile = 0, symmetrical = 0, ofAnalysis = 0, all = 0, undetermined = 0;

    Count& operator+=(const Count& other)
    {
        byProfile += other.byProfile;
        symmetrical += other.symmetrical;
        ofAnalysis += other.ofAnalysis;
        all += other.all;
        undetermined += other.undetermined;
        return *this;
    }
    double share(int number) const { return 100.0 * number / all; }
};

bool holds(const leastsquares::Profile& profile, double truth)
{
    return truth >= profile.low.value_or(-INFINITY) && truth <= profile.high.value_or(INFINITY);
}

void countSet(const support::NoiseCase& of, const Errors& errors, std::mt19937& generator, std::span<Count> bySlot)
{
    const RatioFit ratioFit = support::noisyRatios(of, errors, generator);
    const auto equal = problemUnder(ratioFit, {Assumption::EqualOnRatios});
    const fit::Parameters analysed = leastsquares::descend(*equal, of.truth, ratioFit.free).values;
    NoiseFit fitted = fitUnder(errors, ratioFit, analysed, {&of.truth, 1});
    const auto profiles = profilesOf(fitted, ratioFit);
    const bool outOfOrder = isOutOfOrder(of.model, fitted.minimum.values);
    for (const std::size_t slot : ratioFit.free) {
        Count& count = bySlot[slot];
        const auto& undetermined = fitted.uncertainty.undetermined;
        if (outOfOrder || std::find(undetermined.begin(), undetermined.end(), slot) != undetermined.end()) {
            ++count.undetermined;
            continue;
        }
        const double truth = of.truth[slot];
        ++count.all;
        count.byProfile += holds(profiles[slot], truth);
        count.symmetrical += std::abs(fitted.minimum.values[slot] - truth) <= fitted.uncertainty.halfWidth[slot];
        count.ofAnalysis += std::abs(analysed[slot] - truth) <= fitted.analysed.halfWidth[slot];
    }
}

} // namespace

class TestCoverage : public QObject
{
    Q_OBJECT

private slots:
    void intervalsHoldTheTruth_data();
    void intervalsHoldTheTruth();
};

void TestCoverage::intervalsHoldTheTruth_data()
{
    QTest::addColumn<std::size_t>("noise");
    for (std::size_t noise = 0; noise < std::size(kNoises); ++noise)
        QTest::newRow(kNoises[noise].name) << noise;
}

void TestCoverage::intervalsHoldTheTruth()
{
    QFETCH(std::size_t, noise);
    constexpr double kLeast = 92, kMost = 98; // percent
    constexpr int kEnoughForACase = 1000;     // sets, of whose share the standard deviation is 0.7 percent
    const int sets = support::setsPerCase(40);
    Count total;
    for (const support::NoiseCase& of : support::noiseCases()) {
        std::mt19937 generator(static_cast<unsigned>(1000000 * of.model));
        std::array<Count, fit::kMaxParameters + 1> bySlot;
        for (int set = 0; set < sets; ++set)
            countSet(of, kNoises[noise].errors, generator, bySlot);
        for (int slot = 1; slot <= models::row(of.model).parameterCount(); ++slot) {
            const Count& count = bySlot[static_cast<std::size_t>(slot)];
            total += count;
            qInfo("Model %d, constant %d, %d samples, seed %d: profile %.1f, symmetrical %.1f, analysis %.1f %% of %d; "
                  "%d undetermined",
                  of.model, slot, of.samples, 1000000 * of.model, count.share(count.byProfile),
                  count.share(count.symmetrical), count.share(count.ofAnalysis), count.all, count.undetermined);
            if (sets < kEnoughForACase)
                continue;
            for (const int held : {count.byProfile, count.symmetrical})
                QVERIFY(count.share(held) >= kLeast && count.share(held) <= kMost);
            QVERIFY(count.share(count.ofAnalysis) >= kLeast);
        }
    }
    for (const int held : {total.byProfile, total.symmetrical})
        QVERIFY2(total.share(held) >= kLeast && total.share(held) <= kMost, QByteArray::number(total.share(held)));
    QVERIFY2(total.share(total.ofAnalysis) >= kLeast, QByteArray::number(total.share(total.ofAnalysis)));
}

QTEST_APPLESS_MAIN(TestCoverage)
#include "tst_coverage.moc"
