#include "sternvolmer/ratiodata.h"

#include "tests/support/typedsheet.h"

#include <QtTest>

#include <cmath>

using namespace sternvolmer;
using support::cellsOf;
using support::TypedSheet;

namespace
{
using Column = std::vector<std::string>;
const Column kReference{"0", "2", "1", "4", "3", "8", "", "", "100"};
Column intensityOnly(const std::string& Q, const std::string& phi) { return {Q, "", "", "", "", "", "", "", phi}; }
} // namespace

class TestRatioData : public QObject
{
    Q_OBJECT
private slots:
    void givesRatiosAndTheMeanLifetime();
    void needsTheReferenceFirstAndAllIntensities();
    void needsComponentsOfTheReferenceOnly();
};

void TestRatioData::givesRatiosAndTheMeanLifetime()
{
    const TypedSheet sheet{kReference, intensityOnly("2e-3", "40"), intensityOnly("1e-3", "80")};
    RatioData data = readSternVolmerData(cellsOf(sheet));
    computeRatios(data);
    QCOMPARE(data.samples.SampleData[2].SVRatio, 2.5);
    QCOMPARE(data.Xmax, 2e-3);
    QCOMPARE(data.Ymax, 2.5);
    QCOMPARE(data.tau0, 7e-9); // (1 * 4 + 3 * 8) / 4 ns

    const TypedSheet brighter{kReference, intensityOnly("1e-3", "200")};
    RatioData rising = readSternVolmerData(cellsOf(brighter));
    computeRatios(rising);
    QCOMPARE(rising.Ymax, 1.0);
}

void TestRatioData::needsTheReferenceFirstAndAllIntensities()
{
    const RatioData other = readSternVolmerData(cellsOf({intensityOnly("1e-3", "80"), kReference}));
    QVERIFY(!other.complete);
    QVERIFY(!other.referenceFirst);
    QVERIFY(other.samples.SampleCount == 0);
    const RatioData empty = readSternVolmerData(cellsOf({}));
    QVERIFY(!empty.complete);
    QVERIFY(empty.referenceFirst);
    for (const char* phi : {"", "0", "-5", "dark"}) {
        const TypedSheet sheet{kReference, intensityOnly("1e-3", phi), intensityOnly("2e-3", "60")};
        const RatioData data = readSternVolmerData(cellsOf(sheet));
        QVERIFY2(!data.complete, phi);
        QVERIFY2(data.samples.SampleCount == 1, phi);
    }
    TypedSheet tooMany(25, intensityOnly("1e-3", "80"));
    tooMany[0] = kReference;
    QCOMPARE(readSternVolmerData(cellsOf(tooMany)).samples.SampleCount, 20);
}

void TestRatioData::needsComponentsOfTheReferenceOnly()
{
    const auto completeWith = [](const Column& first, const Column& second) {
        return readSternVolmerData(cellsOf({first, second})).complete;
    };
    const Column later = intensityOnly("1e-3", "80");
    QVERIFY(!completeWith(intensityOnly("0", "100"), later));
    QVERIFY(completeWith(kReference, later));
    QVERIFY(completeWith(kReference, {"1e-3", "1", "1", "3", "", "", "", "", "80"}));
    QVERIFY(!completeWith(kReference, {"1e-3", "1", "1", "", "", "", "", "", "80"}));
    QVERIFY(!completeWith(kReference, {"1e-3", "4", "1", "3", "", "", "", "", "80"}));
}

QTEST_APPLESS_MAIN(TestRatioData)
#include "tst_ratiodata.moc"
