#include "decay/quencheddecay.h"

#include <QtTest>

#include <cmath>

using models::ratio;

namespace
{
constexpr double kFewUlps = 1e-13; // room for some hundreds of roundings
constexpr double kTau0 = 20e-9;    // s
constexpr double kProbe = 50e-6;   // M
constexpr double kQuencher = 0.02; // M
const models::RatioArguments kArguments{kTau0, kProbe, {0, 50, 1e7, 1e6}};

bool near(double a, double b) { return std::abs(a - b) <= kFewUlps * std::abs(b); }
} // namespace

class TestRatioLaws : public QObject
{
    Q_OBJECT
private slots:
    void areOneWithoutQuencher();
    void lifetimesAreMeansOfTheDecay();
    void tendToTheirLimits();
};

void TestRatioLaws::areOneWithoutQuencher()
{
    for (int model = 1; model <= 13; ++model)
        QVERIFY2(near(ratio(model, 0.0, kArguments), 1.0), qPrintable(QString::number(model)));
    for (int model : {-1, 0, 14, 15, 1000000})
        QCOMPARE(ratio(model, kQuencher, kArguments), 0.0);
}

// Weighted by amplitudes; a dark complex leaves no component. The decay law of a sphere counts exp(-K Q) Q as quencher
// for collisions, the ratio law Q / D.
void TestRatioLaws::lifetimesAreMeansOfTheDecay()
{
    const decay::Reference reference{1, {0, 1}, {0, 1 / kTau0}};
    const auto ratioAt = [](int model, double Q, const fit::Parameters& p) {
        double value = 0;
        models::lifetimeRatios(model, {&Q, 1}, {kTau0, kProbe, p}, {&value, 1});
        return value;
    };
    int laws = 0;
    for (int model = 1; model <= models::kModelCount; ++model) {
        if (!models::row(model).hasLifetimeLaw())
            continue;
        ++laws;
        const fit::Parameters p{0, model == 1 ? 3e9 : 25.0, 2e8, 4e9};
        QVERIFY2(near(ratioAt(model, 0, p), 1), qPrintable(QString::number(model)));
        double expected = 1;
        if (model == 7)
            expected = 1 + 2e8 * kTau0 * kQuencher / (1 + 25 * kProbe);
        else if (models::row(model).hasDecayLaw()) {
            double area = 0, amplitudes = 0;
            for (const auto& term : decay::quenchedDecay(model, {kQuencher, kProbe, p}, reference)) {
                area += term.amplitude / term.rate;
                amplitudes += term.amplitude;
            }
            expected = kTau0 * amplitudes / area;
        }
        QVERIFY2(near(ratioAt(model, kQuencher, p), expected), qPrintable(QString::number(model)));
    }
    QCOMPARE(laws, 7);
}

// The other constants keep their order; with K of the Poisson law kq1 loses its effect as well.
void TestRatioLaws::tendToTheirLimits()
{
    constexpr double kFar = 1e5, kNear = 1e-4; // farther away, roundings in the free quencher show
    for (int model = 1; model <= models::kModelCount; ++model)
        for (const models::Limit& limit : models::row(model).limits) {
            if (limit.model == 0)
                continue;
            fit::Parameters larger{};
            std::vector<double> others;
            for (std::size_t slot = 1; slot <= models::row(model).fitted().size(); ++slot) {
                const models::Parameter& parameter = models::parameter(model, slot);
                const double usual = parameter.unit == models::kPerMolarSecond ? 4e9
                                     : parameter.unit == models::kPerSecond    ? 3e7
                                                                               : 5.0;
                larger[slot] = parameter.box != limit.constant ? usual : limit.vanishes ? usual / kFar : usual * kFar;
                if (parameter.box != limit.constant)
                    others.push_back(usual);
            }
            fit::Parameters simpler{};
            const auto count = static_cast<std::ptrdiff_t>(models::row(limit.model).fitted().size());
            std::copy(others.end() - count, others.end(), simpler.begin() + 1);
            const double ratios = ratio(model, kQuencher, {kTau0, kProbe, larger}) /
                                  ratio(limit.model, kQuencher, {kTau0, kProbe, simpler});
            QVERIFY2(std::abs(ratios - 1) < kNear, qPrintable(QString("%1-%2").arg(model).arg(limit.model)));
        }
}

QTEST_APPLESS_MAIN(TestRatioLaws)
#include "tst_ratiolaws.moc"
