#include "lifetimes/combinedfit.h"

#include "models/catalogue.h"
#include "tests/support/noisyratios.h"
#include "tests/support/pairedsamples.h"

#include <QTest>

#include <algorithm>
#include <cmath>

// How often 95 % intervals of fits of intensities and lifetimes hold the truth. Model m draws its random data from seed
// 1000000 m.

using namespace lifetimes;

namespace
{

/// How lifetimes err and what a fit assumes. Intensities err by 1 %.
struct Situation {
    const char* name;
    double trueRatio; // error of a lifetime / that of an intensity
    ErrorRatio assumed;
    double least, most; // percent of intervals that may hold the truth
};

// With seven samples, estimated weights cost two percent at most. With a wrong ratio, an interval is too short or too
// long, depending on which kind determines its constant.
const Situation kSituations[]{
    {"equal errors", 1, {}, 92, 98},
    {"lifetimes three times worse, as typed", 3, {3}, 92, 98},
    {"equal errors, each estimated", 1, {1, true}, 90, 98},
    {"lifetimes three times worse, each estimated", 3, {1, true}, 90, 98},
    {"lifetimes three times worse than typed", 3, {}, 85, 100},
    {"lifetimes three times better than typed", 1.0 / 3, {}, 75, 100},
};

struct Count {
    int byProfile = 0, symmetrical = 0, withTau0 = 0, all = 0, undetermined = 0;
    Count& operator+=(const Count& other)
    {
        byProfile += other.byProfile;
        symmetrical += other.symmetrical;
        withTau0 += other.withTau0;
        all += other.all;
        return *this;
    }
    double share(int number) const { return 100.0 * number / all; }
    /// Intervals for a measured tau0 may be longer: its error moves the constant and is part of the scatter.
    bool isBetween(double least, double most) const
    {
        const double profile = share(byProfile), symmetricalShare = share(symmetrical);
        return std::min(profile, symmetricalShare) >= least && std::max(profile, symmetricalShare) <= most &&
               share(withTau0) >= least;
    }
};

bool holds(const leastsquares::Profile& profile, double truth)
{
    return truth >= profile.low.value_or(-INFINITY) && truth <= profile.high.value_or(INFINITY);
}

/// Intervals for an exact tau0 hold KSV = k tau0, those for a measured one k itself.
void countSet(const support::PairedCase& of, const ErrorRatio& assumed, std::mt19937& generator,
              std::span<Count> bySlot)
{
    const Measurements measured = support::simulated(of, generator);
    const CombinedFit fit = fitTogether(measured, of.model, assumed);
    const auto profiles = profilesOf(measured, fit);
    const auto& undetermined = fit.uncertainty.undetermined;
    for (std::size_t slot = 1; slot <= models::row(of.model).fitted().size(); ++slot) {
        Count& count = bySlot[slot];
        if (std::find(undetermined.begin(), undetermined.end(), slot) != undetermined.end()) {
            ++count.undetermined;
            continue;
        }
        const bool isRate = models::parameter(of.model, slot).isCollisional();
        const double truth = of.truth[slot] * (isRate ? of.tau0 / measured.tau0() : 1),
                     value = fit.minimum.values[slot];
        ++count.all;
        count.byProfile += holds(profiles[slot], truth);
        count.symmetrical += std::abs(value - truth) <= fit.uncertainty.halfWidth[slot];
        count.withTau0 += std::abs(value - of.truth[slot]) <= fit.scatter[slot].quantile * fit.errorWithTau0[slot];
    }
}

} // namespace

class TestCombinedCoverage : public QObject
{
    Q_OBJECT

private slots:
    void intervalsHoldTheTruth_data();
    void intervalsHoldTheTruth();
};

void TestCombinedCoverage::intervalsHoldTheTruth_data()
{
    QTest::addColumn<std::size_t>("situation");
    for (std::size_t i = 0; i < std::size(kSituations); ++i)
        QTest::newRow(kSituations[i].name) << i;
}

void TestCombinedCoverage::intervalsHoldTheTruth()
{
    QFETCH(std::size_t, situation);
    const Situation& in = kSituations[situation];
    constexpr int kEnoughForACase = 1000; // sets, of whose share the standard deviation is 0.7 percent
    // Two standard deviations of the share of all constants in few sets.
    constexpr double kMarginOfFew = 4;
    const int sets = support::setsPerCase(10);
    Count total;
    for (const support::NoiseCase& noiseCase : support::noiseCases()) {
        if (!models::row(noiseCase.model).hasLifetimeLaw())
            continue;
        support::PairedCase of{.model = noiseCase.model, .truth = noiseCase.truth};
        of.errors.lifetime = of.errors.intensity * in.trueRatio;
        for (int i = 0; i < noiseCase.samples; ++i)
            of.Q.push_back(0.5 * i / (noiseCase.samples - 1));
        std::mt19937 generator(static_cast<unsigned>(1000000 * of.model));
        std::array<Count, fit::kMaxParameters + 1> bySlot;
        for (int set = 0; set < sets; ++set)
            countSet(of, in.assumed, generator, bySlot);
        for (std::size_t slot = 1; slot <= models::row(of.model).fitted().size(); ++slot) {
            const Count& count = bySlot[slot];
            total += count;
            qInfo("Model %d, %s, %d samples, seed %d: profile %.1f, symmetrical %.1f, tau0 measured %.1f %% of %d; %d "
                  "undetermined",
                  of.model, models::parameter(of.model, slot).name().c_str(), noiseCase.samples, 1000000 * of.model,
                  count.share(count.byProfile), count.share(count.symmetrical), count.share(count.withTau0), count.all,
                  count.undetermined);
            if (sets >= kEnoughForACase)
                QVERIFY(count.isBetween(in.least, in.most));
        }
    }
    const double margin = sets >= kEnoughForACase ? 0 : kMarginOfFew;
    QVERIFY(total.isBetween(in.least - margin, in.most + margin));
}

QTEST_APPLESS_MAIN(TestCombinedCoverage)
#include "tst_combinedcoverage.moc"
