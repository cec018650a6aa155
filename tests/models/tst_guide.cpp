#include "decay/quencheddecay.h"
#include "tests/support/formula.h"

#include <QTest>

#include <cmath>

namespace
{

constexpr double kFewUlps = 1e-13;
// In the decay laws "…" stands for the terms with two and more quenchers, which are this small here.
constexpr double kRareNumbers = 2e-3;

constexpr double kQuencher = 0.01, kProbe = 1e-3, kTime = 7e-9; // M, M, s
constexpr double kK = 5, kKq1 = 3e8, kKq2 = 4e9, kF = 0.6;      // M^-1, s^-1, M^-1 s^-1, 1
constexpr double kFirstSite = 8e9, kSecondSite = 1e9;           // M^-1 s^-1
const decay::Reference kReference{2, {0, 0.3, 0.7}, {0, 1 / 4e-9, 1 / 12e-9}};
constexpr double kTau0 = 0.3 * 4e-9 + 0.7 * 12e-9;

QString fromUtf8(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QString rightSide(std::string_view law) { return fromUtf8(law).section(" = ", 1).remove(QStringLiteral(" + …")); }

fit::Parameters parametersOf(int model)
{
    const bool twoSites = models::row(model).uses(models::Box::F);
    std::map<models::Box, double> values{{models::Box::K, kK},
                                         {models::Box::F, kF},
                                         {models::Box::kq1, twoSites ? kFirstSite : kKq1},
                                         {models::Box::kq2, twoSites ? kSecondSite : kKq2}};
    fit::Parameters p{};
    std::size_t slot = 0;
    for (const models::Parameter& parameter : models::row(model).fitted())
        p[++slot] = values[parameter.box];
    return p;
}

/// The symbols as the guide explains them.
support::Formula formulaFor(int model)
{
    const bool twoSites = models::row(model).uses(models::Box::F);
    const double D = 1 + kK * kProbe;
    const double b = 1 + kK * kProbe - kK * kQuencher;
    const double m = kK * kQuencher;
    support::Formula formula;
    formula.quantities = {{"Q", kQuencher},
                          {"Qf", (-b + std::sqrt(b * b + 4 * kK * kQuencher)) / (2 * kK)},
                          {"K", kK},
                          {"F", kF},
                          {"kq1", twoSites ? kFirstSite : kKq1},
                          {"kq2", twoSites ? kSecondSite : kKq2},
                          {QStringLiteral("τ0"), kTau0},
                          {QStringLiteral("τ1"), 4e-9},
                          {QStringLiteral("τ2"), 12e-9},
                          {"t", kTime},
                          {"D", D},
                          {"E", std::exp(-m / D)},
                          {"p0", std::exp(-m)},
                          {"p1", m * std::exp(-m)},
                          {"p2", m * m * std::exp(-m) / 2}};
    formula.functions["S"] = [](double r) {
        return 0.3 * std::exp(-(1 / 4e-9 + r) * kTime) + 0.7 * std::exp(-(1 / 12e-9 + r) * kTime);
    };
    return formula;
}

bool near(double value, double expected, double tolerance) { return std::abs(value / expected - 1) <= tolerance; }

} // namespace

class TestGuide : public QObject
{
    Q_OBJECT

private slots:
    void printsTheLawsThatAreFitted();
};

void TestGuide::printsTheLawsThatAreFitted()
{
    for (int model = 1; model <= models::kModelCount; ++model) {
        const std::string_view formula = models::row(model).ratio.formula;
        const std::string_view decayFormula = models::row(model).decay.formula;
        const fit::Parameters p = parametersOf(model);
        support::Formula value = formulaFor(model);
        const double ratio = models::ratio(model, kQuencher, {kTau0, kProbe, p});
        QVERIFY2(near(value(rightSide(formula)), ratio, kFewUlps), qPrintable(fromUtf8(formula)));

        QCOMPARE(decayFormula.empty(), !models::row(model).hasDecayLaw());
        if (decayFormula.empty())
            continue;
        const double intensity = decay::intensity(model, kTime, {kQuencher, kProbe, p}, kReference);
        const double tolerance = decayFormula.find("…") == std::string_view::npos ? kFewUlps : kRareNumbers;
        QVERIFY2(near(value(rightSide(decayFormula)), intensity, tolerance), qPrintable(fromUtf8(decayFormula)));
    }
}

QTEST_APPLESS_MAIN(TestGuide)
#include "tst_guide.moc"
