#include "lifetimes/overviewtext.h"

#include "models/catalogue.h"
#include "tests/support/noisyratios.h"
#include "tests/support/pairedsamples.h"

#include <QTest>

#include <algorithm>
#include <cmath>

// Simulated sessions and what is said of them. Model m draws its random data from seed 1000000 m.

using namespace lifetimes;

Q_DECLARE_METATYPE(support::PairedCase)
Q_DECLARE_METATYPE(lifetimes::Mechanism)

namespace
{

const std::vector<double> kQ{0, 0.04, 0.1, 0.2, 0.3, 0.5, 0.8};

/// Like acridone and iodide, where both models describe the ratios.
support::PairedCase likeAcridone(int model)
{
    return {.model = model,
            .truth = model == 3 ? fit::Parameters{0, 1.2348, 4.9145e9} : fit::Parameters{0, 0.83956, 5.0324e9},
            .Q = kQ,
            .tau0 = 17.6e-9,
            .errors = {0.02, 0.02}};
}

/// AICc of ratios alone, with errors proportional to every intensity.
double criterionOfRatios(const Measurements& measured, int model, const fit::Parameters& start)
{
    noise::RatioFit ratioFit{.points = {}, .model = model, .Cp = measured.Cp, .free = {1, 2}};
    std::vector<double> ratios;
    for (std::size_t i = 0; i < kQ.size(); ++i)
        ratios.push_back(measured.ratio(Kind::Intensity, i));
    ratioFit.points = support::ratioPoints(kQ, ratios, measured.tau0());
    return *noise::fitUnder({}, ratioFit, start).AICc;
}

} // namespace

class TestMechanism : public QObject
{
    Q_OBJECT

private slots:
    void isNamedRightly_data();
    void isNamedRightly();
    void lifetimesTellModelsApart_data();
    void lifetimesTellModelsApart();
    void weighsAcridone();
    void factorsBelowOneAreNotFitted();
    void saysWhatOneKindTells();
};

void TestMechanism::isNamedRightly_data()
{
    QTest::addColumn<support::PairedCase>("of");
    QTest::addColumn<Mechanism>("named");
    QTest::addColumn<QString>("words");
    const auto row = [](const char* name, int model, fit::Parameters truth, double error, Mechanism named,
                        const char* words) {
        QTest::newRow(name) << support::PairedCase{.model = model, .truth = truth, .Q = kQ, .errors = {error, error}}
                            << named << words;
    };
    using enum Mechanism;
    row("purely dynamic", 1, {0, 1e9}, 0.01, Collisions, "Collisions alone");
    row("purely static", 5, {0, 10}, 0.01, Complex, "The lifetimes do not change, and a complex");
    row("sphere", 9, {0, 4}, 0.01, Sphere, "The lifetimes do not change, and a sphere");
    row("complex and collisions", 3, {0, 4, 1e9}, 0.01, ComplexAndCollisions, "Beside collisions, a complex");
    row("sphere and collisions", 7, {0, 1.2, 2e9}, 0.01, SphereAndCollisions, "Beside collisions, a sphere");
    row("two sites", 12, {0, 0.5, 3e9, 5e7}, 0.01, TwoSites, "two populations");
    row("one of two sites", 13, {0, 0.6, 2e9}, 0.01, TwoSites, "two populations");
    row("noisy", 3, {0, 1, 1e9}, 0.4, Open, "do not tell");
    row("noisy and static", 5, {0, 10}, 0.3, Open, "do not tell");
}

void TestMechanism::isNamedRightly()
{
    QFETCH(support::PairedCase, of);
    QFETCH(Mechanism, named);
    QFETCH(QString, words);
    constexpr double kLeast = 75; // percent; one interval in twenty misses the truth, and a test may be cautious
    const int sets = support::setsPerCase(8);
    std::mt19937 generator(static_cast<unsigned>(1000000 * of.model));
    int right = 0;
    std::array<int, 10> byMechanism{};
    for (int set = 0; set < sets; ++set) {
        const Finding finding = overviewOf(support::simulated(of, generator), {}).finding;
        ++byMechanism[static_cast<std::size_t>(finding.mechanism)];
        if (finding.mechanism != named)
            continue;
        ++right;
        QVERIFY2(QString::fromStdString(finding.sentence).contains(words), finding.sentence.c_str());
    }
    qInfo("named rightly in %.1f %% of %d sets, seed %d, left open in %.1f %%", 100.0 * right / sets, sets,
          1000000 * of.model, 100.0 * byMechanism[0] / sets);
    QVERIFY(100.0 * right >= kLeast * sets);
}

void TestMechanism::lifetimesTellModelsApart_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<int>("other");
    QTest::newRow("complex") << 3 << 7;
    QTest::newRow("sphere") << 7 << 3;
}

void TestMechanism::lifetimesTellModelsApart()
{
    QFETCH(int, model);
    QFETCH(int, other);
    const support::PairedCase of = likeAcridone(model);
    const int sets = support::setsPerCase(80);
    std::mt19937 generator(static_cast<unsigned>(1000000 * model));
    int together = 0, alone = 0, named = 0;
    for (int set = 0; set < sets; ++set) {
        const Measurements measured = support::simulated(of, generator);
        const double lead = *fitTogether(measured, other, {}).AICc - *fitTogether(measured, model, {}).AICc;
        together += lead < 0;
        named += lead < -kEquallyWell;
        alone += criterionOfRatios(measured, other, likeAcridone(other).truth) <
                 criterionOfRatios(measured, model, of.truth);
    }
    qInfo("Model %d leads instead of %d in %.2f %% of %d sets, seed %d, by the margin of a statement in %.2f %%; with "
          "ratios alone in %.2f %%",
          other, model, 100.0 * together / sets, sets, 1000000 * model, 100.0 * named / sets, 100.0 * alone / sets);
    QVERIFY(together < alone);
    QVERIFY(named <= 0.05 * sets);
}

void TestMechanism::weighsAcridone()
{
    const Overview overview = overviewOf(support::acridoneMeasurements(), {});
    QCOMPARE(
        overview.finding.sentence,
        std::string("Beside collisions, a complex describes this better than a sphere: (s − 1)/Q is 1.21 1.17 1.04 "
                    "1.18 against 1.08 1.00 0.84 0.83 M⁻¹ for ln s/Q; transient effects can look alike."));
    QCOMPARE(overview.places.front().model, 3);
    QCOMPARE(overview.places.size(), std::size_t{models::kModelCount});
    QVERIFY(std::abs(*overview.places[1].differenceToFirst - 9.894) < 0.001); // -86.150584 + 96.044873
    // ln s has the variance of two intensities and two lifetimes.
    QVERIFY(std::abs(overview.factor.rows[5].relativeError - 2 * 0.020508) < 1e-5);
    QVERIFY(std::abs(overview.factor.rows[5].s - 137.025 / 70.4) < 1e-4);
    for (const Place& place : overview.places)
        QCOMPARE(place.fit.has_value(), place.whyNotFitted.empty());
}

// Intensities that fall less than the lifetimes.
void TestMechanism::factorsBelowOneAreNotFitted()
{
    std::mt19937 generator(1);
    Measurements measured = support::simulated({.model = 1, .truth = {0, 1e9}, .Q = kQ}, generator);
    for (Sample& sample : measured.samples)
        sample.intensity *= std::exp(0.4 * sample.Q);
    const Overview overview = overviewOf(measured, {});
    QCOMPARE(overview.finding.mechanism, Mechanism::NotOnePopulation);
    QVERIFY(std::abs(overview.factor.slope.value + 0.4) < overview.factor.slope.halfWidth);
}

void TestMechanism::saysWhatOneKindTells()
{
    Measurements intensities = support::acridoneMeasurements(), lifetimes = intensities;
    for (std::size_t i = 1; i < intensities.samples.size(); ++i)
        intensities.samples[i].lifetime = lifetimes.samples[i].intensity = 0;
    QVERIFY(overviewOf(intensities, {}).finding.sentence.starts_with("There are only intensities"));
    Measurements inTurn = intensities;
    for (std::size_t i = 1; i < 4; ++i)
        std::swap(inTurn.samples[i], lifetimes.samples[i]);
    QVERIFY(overviewOf(inTurn, {}).finding.sentence.starts_with("No sample with quencher has both"));
    for (std::size_t i = 1; i < 4; ++i)
        std::swap(inTurn.samples[i], lifetimes.samples[i]);
    const Overview overview = overviewOf(lifetimes, {});
    QVERIFY(overview.finding.sentence.starts_with("There are only lifetimes"));
    QVERIFY(overviewText(overview).staticFactor.empty());
    for (const Place& place : overview.places)
        QCOMPARE(place.fit.has_value(),
                 models::row(place.model).hasLifetimeLaw() && !models::row(place.model).uses(models::Box::K));
}

QTEST_APPLESS_MAIN(TestMechanism)
#include "tst_mechanism.moc"
