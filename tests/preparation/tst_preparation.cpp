#include "fit/numbertext.h"
#include "preparation/preparationtext.h"

#include <QTest>

#include <cmath>
#include <random>

using namespace preparation;

namespace
{

constexpr double kFewUlps = 1e-14; // relative room for some tens of roundings
constexpr Steps kAll{.replicates = true, .blank = true, .innerFilter = true, .dilution = true};

// added, readings, blank, Aex and Aem of each sample
TypedSeries series(const Steps& steps, const std::vector<TypedSample>& samples)
{
    return {.steps = steps, .V0 = "2000", .stock = "0.1", .samples = samples};
}

Prepared prepared(const TypedSeries& typed) { return std::get<Prepared>(prepare(typed)); }

std::string text(double value) { return fit::plainText(value); }

bool near(double value, double expected, double room = kFewUlps)
{
    return std::abs(value - expected) <= room * std::abs(expected);
}

/// Readings of a probe whose intensity falls by 1 + KSV Q, in a cell that dilutes and absorbs, above a blank.
TypedSeries titration(double KSV)
{
    TypedSeries typed = series(kAll, {});
    typed.V0 = "2";
    double added = 0;
    for (int sample = 0; sample < 8; ++sample) {
        added += sample == 0 ? 0 : 0.02;
        const double Q = 0.1 * added / (2 + added), dilution = 2 / (2 + added);
        const double Aex = 0.02 * dilution + 30 * Q, Aem = 0.01;
        const double reading = 1000 * dilution / (1 + KSV * Q) * std::pow(10, -(Aex + Aem) / 2) + 25;
        typed.samples.push_back({sample == 0 ? "" : "0.02", text(reading), "", "", "25", text(Aex), text(Aem)});
    }
    return typed;
}

/// KSV by the last sample alone, from the texts that go into the sheet.
double lastKSV(const Prepared& of)
{
    const SheetSamples sheet = sheetTexts(of, {});
    const auto number = [](const std::string& typed) { return fit::numberFrom(typed); };
    return (number(sheet.Phi.front()) / number(sheet.Phi.back()) - 1) / of.samples.back().Q;
}

} // namespace

class TestPreparation : public QObject
{
    Q_OBJECT

private slots:
    void stepsFollowTheirFormulas();
    void simulatedReadingsComeBackToTheirConstant();
    void everyStepCounts();
    void errorsAreThoseOfSimulatedReadings();
    void refusalsNameCellAndReason_data();
    void refusalsNameCellAndReason();
    void writesSixDigitsAndSaysWhatMatters();
};

void TestPreparation::stepsFollowTheirFormulas()
{
    const std::vector<TypedSample> typed{{"", "98", "100 102", "", "9 11", "0.2", "0.1"},
                                         {"100", "55", "", "", "", "0", "0"},
                                         {"100;", " 43;45", "47", "", "4", "1", "-0.05"}};
    const Prepared all = prepared(series(kAll, typed));
    QCOMPARE(all.samples[0].reading.mean, 100.0);
    QCOMPARE(all.samples[0].reading.deviation, 2.0);
    QCOMPARE(all.samples[0].reading.count, 3);
    QVERIFY(near(all.samples[0].Phi, 90 * std::pow(10, 0.15)));
    QCOMPARE(all.samples[0].Q, 0.0);
    QVERIFY(near(all.samples[1].Q, 0.1 * 100 / 2100));
    QVERIFY(near(all.samples[1].Phi, 45 * 2100.0 / 2000)); // the blank above
    QVERIFY(near(all.samples[2].Q, 0.1 * 200 / 2200));
    QVERIFY(near(all.samples[2].Phi, 41 * std::pow(10, 0.475) * 1.1));
    QCOMPARE(all.scatter->freedom, 4);
    QVERIFY(near(all.scatter->deviation, std::sqrt((2 * 0.02 * 0.02 + 2 * 4.0 / (45 * 45)) / 4)));

    const Prepared none = prepared(series({.replicates = false}, typed));
    QCOMPARE(none.samples[0].Phi, 98.0); // the first reading
    QCOMPARE(none.samples[2].Phi, 43.0);
    QVERIFY(!none.scatter);
}

void TestPreparation::simulatedReadingsComeBackToTheirConstant()
{
    constexpr double kSixDigits = 1e-5; // of 1 + KSV Q
    for (const double KSV : {3.0, 50.0, 2000.0})
        QVERIFY(near(lastKSV(prepared(titration(KSV))), KSV, kSixDigits * (1 + 1 / (KSV * 0.006))));
}

void TestPreparation::everyStepCounts()
{
    constexpr double kLeastChange = 0.04;
    for (bool Steps::*const step : {&Steps::blank, &Steps::innerFilter}) {
        TypedSeries typed = titration(50);
        typed.steps.*step = false;
        QVERIFY(!near(lastKSV(prepared(typed)), 50, kLeastChange));
    }
    Prepared undiluted = prepared(titration(50));
    for (PreparedSample& sample : undiluted.samples)
        sample.Phi /= sample.dilution;
    QVERIFY(!near(lastKSV(undiluted), 50, kLeastChange));
}

// The mean of the estimated variances is the variance of the prepared intensities, for readings with a relative and
// blanks with an absolute deviation.
void TestPreparation::errorsAreThoseOfSimulatedReadings()
{
    constexpr int kSets = 4000;
    constexpr double kRoom = 0.05; // about twice the standard error of a variance from 4000 sets, 2.2 %
    constexpr double kReading = 0.01, kBlank = 2;
    const std::vector<double> means{500, 300, 120};
    std::mt19937 random(7);
    std::normal_distribution<double> normal;
    std::array<double, 3> squares{}, estimated{};
    for (int set = 0; set < kSets; ++set) {
        std::vector<TypedSample> samples;
        for (std::size_t i = 0; i < means.size(); ++i) {
            TypedSample sample{"", "", "", "", "", "0.3", "0.2"};
            for (std::size_t reading = 0; reading < i + 1;
                 ++reading) // one reading of the first sample, three of the last
                sample[1] += text(means[i] * (1 + kReading * normal(random))) + ' ';
            for (int reading = 0; reading < 4; ++reading)
                sample[4] += text(80 + kBlank * normal(random)) + ' ';
            samples.push_back(sample);
        }
        const Prepared result = prepared(series({.replicates = true, .blank = true, .innerFilter = true}, samples));
        for (std::size_t i = 0; i < means.size(); ++i) {
            const double Phi = (means[i] - 80) * std::pow(10, 0.25), error = result.samples[i].relativeError;
            squares[i] += std::pow(result.samples[i].Phi / Phi - 1, 2);
            estimated[i] += error * error;
        }
    }
    for (std::size_t i = 0; i < means.size(); ++i)
        QVERIFY2(near(estimated[i], squares[i], kRoom), qPrintable(QString::number(estimated[i] / squares[i])));
}

void TestPreparation::refusalsNameCellAndReason_data()
{
    QTest::addColumn<QStringList>("second"); // sample, after a complete first one
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QStringList& second, const char* text) {
        QTest::newRow(name) << second << QString(text);
    };
    row("reading", {"1", "", "", "", "", "0", "0"}, "Sample 2, Reading: is empty.");
    row("word", {"1", "abc", "", "", "", "0", "0"}, "Sample 2, Reading: \"abc\" is not a number.");
    row("comma", {"1", "90", "", "", "1,5", "0", "0"},
        "Sample 2, Blank: \"1,5\" is not a number; the decimal sign is a point.");
    row("infinite", {"1", "90 1e400", "", "", "", "0", "0"}, "Sample 2, Reading: \"1e400\" is beyond all instruments.");
    row("blank above", {"1", "9", "", "", "", "0", "0"}, "Sample 2, Reading: the mean 9 is not above its blank 10.");
    row("dark", {"1", "-1", "", "", "-3", "0", "0"}, "Sample 2, Reading: the mean -1 is not above 0.");
    row("no absorbance", {"1", "90", "", "", "", "0", ""}, "Sample 2, Aem: is empty.");
    row("percent", {"1", "90", "", "", "", "12", "0"}, "Sample 2, Aex: \"12\" is no absorbance from -0.1 to 3.");
    row("two", {"1", "90", "", "", "", "0.1 0.2", "0"}, "Sample 2, Aex: has more than one number.");
    row("no volume", {"", "90", "", "", "", "0", "0"}, "Sample 2, Added: is empty.");
    row("taken out", {"-1", "90", "", "", "", "0", "0"}, "Sample 2, Added: \"-1\" is no volume.");
    row("too few", {}, "Sample 2, Reading: is empty, but the sheet has 2 samples.");
}

void TestPreparation::refusalsNameCellAndReason()
{
    QFETCH(QStringList, second);
    QFETCH(QString, text);
    TypedSample sample;
    for (qsizetype entry = 0; entry < second.size(); ++entry)
        sample[static_cast<std::size_t>(entry)] = second[entry].toStdString();
    const auto outcome = prepare(series(kAll, {{"", "100", "", "", "10", "0", "0"}, sample, {}}), 2);
    QVERIFY(std::holds_alternative<Refusal>(outcome));
    QCOMPARE(QString::fromStdString(std::get<Refusal>(outcome).text), text);
}

void TestPreparation::writesSixDigitsAndSaysWhatMatters()
{
    TypedSeries typed = titration(50);
    typed.samples[1][2] = typed.samples[1][1] + "1";
    const Prepared all = prepared(typed);
    const SheetSamples before{{"0", "1"}, {"7", "8"}};
    QCOMPARE(sheetTexts(all, before).Q[1], "0.000990099"); // 0.1 * 0.02 / 2.02
    QCOMPARE(sheetTexts(all, before).Phi[0], "1000");
    for (const char* part : {"Aex + Aem is above 0.1 in samples 4, 5, 6, 7, 8", "another geometry has another",
                             "to 93.5 % of its concentration", "(pooled, 1 degrees of freedom)"})
        QVERIFY2(notes(all).find(part) != std::string::npos, notes(all).c_str());
    typed.steps.dilution = false;
    QCOMPARE(sheetTexts(prepared(typed), before).Q[1], "1");
    for (auto& [box, text] : {std::pair{&typed.V0, "V0, the volume of the reference"},
                              {&typed.stock, "Stock, the concentration of the added solution"}}) {
        typed.steps.dilution = true;
        const std::string kept = std::exchange(*box, "0");
        QCOMPARE(std::get<Refusal>(prepare(typed)).text, text + std::string(": \"0\" must be above 0."));
        *box = kept;
    }
    QCOMPARE(std::get<Refusal>(prepare({})).text, "Sample 1, Reading: is empty: type the measured intensities.");
    QVERIFY(std::holds_alternative<Refusal>(prepare(series(kAll, {{"1", "9", "", "", "1", "0", "0"}}))));
}

QTEST_APPLESS_MAIN(TestPreparation)
#include "tst_preparation.moc"
