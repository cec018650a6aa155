#include "lifetimes/fittext.h"
#include "lifetimes/overviewtext.h"

#include "tests/support/typedsheet.h"

#include <QStringList>
#include <QTest>

#include <cmath>

using namespace lifetimes;

namespace
{

/// Concentration, count, amplitudes and lifetimes, ns, in turn, and the intensity in row 9.
std::vector<std::string> column(const char* Q, std::vector<std::string> components, const char* intensity)
{
    std::vector<std::string> texts{Q, components.empty() ? "" : std::to_string(components.size() / 2)};
    texts.insert(texts.end(), components.begin(), components.end());
    texts.resize(8);
    texts.emplace_back(intensity);
    return texts;
}

Measurements read(const support::TypedSheet& sheet) { return readMeasurements(support::cellsOf(sheet), 50e-6); }

} // namespace

class TestMeasurements : public QObject
{
    Q_OBJECT

private slots:
    void readsWhatIsThere();
    void saysWhatIsOdd_data();
    void saysWhatIsOdd();
    void refusesWhatCannotBeCompared_data();
    void refusesWhatCannotBeCompared();
};

void TestMeasurements::readsWhatIsThere()
{
    const Measurements measured = read({column("0", {"1", "2", "3", "6"}, "100"), column("0.1", {"1", "2.5"}, ""),
                                        column("0.2", {"1", ""}, "50"), column("0.3", {}, "-1"), column("", {}, "9")});
    QCOMPARE(measured.samples.size(), std::size_t{4});
    QVERIFY(std::abs(measured.tau0() - 5e-9) < 1e-20);                                // (2 + 18) / 4
    QVERIFY(std::abs(measured.samples[0].lifetimeByIntensity - 112e-9 / 20) < 1e-20); // (4 + 108) / 20
    QCOMPARE(measured.components.size(), std::size_t{2});
    QVERIFY(measured.ratio(Kind::Lifetime, 1) == 2 && measured.ratio(Kind::Intensity, 1) == 0);
    QVERIFY(measured.ratio(Kind::Lifetime, 2) == 0 && measured.ratio(Kind::Intensity, 2) == 2);
    QCOMPARE(measured.observed(Kind::Intensity), (std::vector<std::size_t>{0, 2}));
    QCOMPARE(measured.observed(Kind::Lifetime), (std::vector<std::size_t>{0, 1}));
}

void TestMeasurements::saysWhatIsOdd_data()
{
    QTest::addColumn<support::TypedSheet>("quenched");
    QTest::addColumn<QStringList>("beginnings");
    using support::TypedSheet;
    const std::vector<std::string> usual = column("0.1", {"1", "4"}, "50");
    QTest::newRow("nothing") << TypedSheet{usual} << QStringList{};
    QTest::newRow("a missing lifetime") << TypedSheet{usual, column("0.2", {}, "30")}
                                        << QStringList{"Sample 3 has no lifetime"};
    QTest::newRow("a comma in a lifetime")
        << TypedSheet{usual, column("0.2", {"1", "3,5"}, "30")} << QStringList{"Sample 3 has no lifetime"};
    QTest::newRow("a comma in an intensity")
        << TypedSheet{usual, column("0.2", {"1", "3"}, "3,000")} << QStringList{"Sample 3 has no intensity"};
    QTest::newRow("missing intensities") << TypedSheet{usual, column("0.2", {"1", "3"}, ""),
                                                       column("0.3", {"1", "2"}, "0")}
                                         << QStringList{"Samples 3 and 4 have no intensity"};
    QTest::newRow("neither") << TypedSheet{usual, column("0.2", {}, "")} << QStringList{"Sample 3 has neither"};
    QTest::newRow("longer") << TypedSheet{usual, column("0.2", {"1", "5.5"}, "40")}
                            << QStringList{"Sample 3 has a longer lifetime than the reference"};
    QTest::newRow("intensities only") << TypedSheet{column("0.1", {}, "50")}
                                      << QStringList{"No sample but the reference has a lifetime"};
    QTest::newRow("lifetimes only") << TypedSheet{column("0.1", {"1", "4"}, "")}
                                    << QStringList{"No sample but the reference has an intensity"};
}

void TestMeasurements::saysWhatIsOdd()
{
    QFETCH(support::TypedSheet, quenched);
    QFETCH(QStringList, beginnings);
    quenched.insert(quenched.begin(), column("0", {"1", "5"}, "100"));
    const Measurements measured = read(quenched);
    QVERIFY(!complaint(measured));
    const std::vector<std::string> sentences = remarks(measured);
    QCOMPARE(static_cast<int>(sentences.size()), static_cast<int>(beginnings.size()));
    for (int i = 0; i < beginnings.size(); ++i)
        QVERIFY2(sentences[static_cast<std::size_t>(i)].starts_with(beginnings[i].toStdString()),
                 sentences[static_cast<std::size_t>(i)].c_str());
    // Few samples are no reason to fail, and every text is there.
    const Overview overview = overviewOf(measured, {});
    const OverviewText text = overviewText(overview);
    QCOMPARE(text.remarks.empty(), beginnings.isEmpty());
    QVERIFY(!text.finding.empty() && plainText(text).find("nan") == std::string::npos);
    const bool hasBoth = measured.has(Kind::Intensity) && measured.has(Kind::Lifetime);
    QCOMPARE(text.errors.starts_with("All intensities") && text.errors.find("all lifetimes") != std::string::npos,
             hasBoth);
    for (const Place& place : overview.places)
        if (place.fit) {
            const FitText fit = fitText(overview, *place.fit);
            QVERIFY(plainText(fit).find("nan") == std::string::npos);
            QCOMPARE(fit.sentence.starts_with("Intensities and lifetimes together"), hasBoth);
        }
}

void TestMeasurements::refusesWhatCannotBeCompared_data()
{
    QTest::addColumn<support::TypedSheet>("sheet");
    const std::vector<std::string> usual = column("0.1", {"1", "4"}, "50"), reference = column("0", {"1", "5"}, "100");
    using support::TypedSheet;
    QTest::newRow("an empty sheet") << TypedSheet{};
    QTest::newRow("no reference") << TypedSheet{usual, reference};
    QTest::newRow("no lifetime of the reference") << TypedSheet{column("0", {}, "100"), usual};
    QTest::newRow("no quencher") << TypedSheet{reference};
    QTest::newRow("a negative amount") << TypedSheet{reference, column("-0.1", {"1", "4"}, "50")};
    QTest::newRow("a word as amount") << TypedSheet{reference, usual, column("abc", {"1", "4"}, "50")};
    QTest::newRow("a comma in an amount") << TypedSheet{reference, usual, column("0,2", {"1", "4"}, "50")};
    QTest::newRow("an infinite amount") << TypedSheet{reference, column("1e400", {"1", "4"}, "50")};
}

void TestMeasurements::refusesWhatCannotBeCompared()
{
    QFETCH(support::TypedSheet, sheet);
    QVERIFY(complaint(read(sheet)));
}

QTEST_APPLESS_MAIN(TestMeasurements)
#include "tst_measurements.moc"
