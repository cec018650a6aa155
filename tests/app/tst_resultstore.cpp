#include "app/resultstore.h"

#include <QtTest>

using app::ResultRecord;
using app::ResultStore;

namespace
{

ResultRecord decayResult(double k)
{
    return {.Method = "Decay",
            .Model = 2,
            .KorF = k,
            .Kq1 = 2 * k,
            .Kq2 = 3 * k,
            .Kq22 = 4 * k,
            .R2 = .99,
            .Error = "OK",
            .R = 5 * k,
            .Se = .01};
}

} // namespace

class TestResultStore : public QObject
{
    Q_OBJECT

private slots:
    void takesOverOnlyTheReportedQuantities();
    void wrapsAfterTheLastRow();
    void cursorSetBackKeepsTheRowsBelow();
    void readsTheFieldsOfAFileLine();
    void leavesFieldsThatTheLineDoesNotGive();
    void swapsAndMovesWholeRecords();
    void radiusIsThatOfTheSphereAroundTheProbe();
};

void TestResultStore::takesOverOnlyTheReportedQuantities()
{
    ResultStore store;
    store.ResultData[1].Kq1 = 7;
    store.ResultData[1].Kq22 = 8;
    store.ResultData[1].R = 9;
    store.store(decayResult(100), app::KorF | app::Kq2);
    ResultRecord expected = decayResult(100);
    expected.Kq1 = 7;
    expected.Kq22 = 8;
    expected.R = 9;
    QVERIFY(store.ResultData[1] == expected);
    QCOMPARE(store.ResultCursor, 2);
    QCOMPARE(store.ResultRowEnd, 2);
}

void TestResultStore::wrapsAfterTheLastRow()
{
    ResultStore store;
    for (int i = 1; i <= app::kMaxResults; ++i)
        store.store(decayResult(i), app::KorF);
    QCOMPARE(store.ResultCursor, 1);
    QCOMPARE(store.ResultRowEnd, 21);
    store.store(decayResult(21), app::KorF);
    QCOMPARE(store.ResultData[1].KorF, 21.0);
    QCOMPARE(store.ResultData[20].KorF, 20.0);
    QCOMPARE(store.ResultCursor, 2);
    QCOMPARE(store.ResultRowEnd, 21);
}

void TestResultStore::cursorSetBackKeepsTheRowsBelow()
{
    ResultStore store;
    store.ResultCursor = 7;
    store.store(decayResult(1), app::KorF);
    QCOMPARE(store.ResultRowEnd, 8);
    store.ResultCursor = 2;
    store.store(decayResult(1), app::KorF);
    QCOMPARE(store.ResultCursor, 3);
    QCOMPARE(store.ResultRowEnd, 8);
}

void TestResultStore::readsTheFieldsOfAFileLine()
{
    ResultStore store;
    const std::array<std::string, 11> fields{"SV",   " 12", "5.000e-01", "1e3 s",  "abc",   "2.5e+07",
                                             "0.03", "*",   "1.2",       "0.9876", "beyond"};
    store.SetResultRecord(20, fields);
    const ResultRecord expected{.Method = "SV",
                                .Model = 12,
                                .KorF = .5,
                                .Kq1 = 1000,
                                .Kq2 = 0,
                                .Kq22 = 2.5e7,
                                .R2 = .9876,
                                .Error = "*",
                                .R = 1.2,
                                .Se = .03};
    QVERIFY(store.ResultData[20] == expected);
}

void TestResultStore::leavesFieldsThatTheLineDoesNotGive()
{
    ResultStore store;
    const ResultRecord before = decayResult(3);
    store.ResultData[1] = before;
    store.SetResultRecord(1, {});
    QVERIFY(store.ResultData[1] == before);

    // Numbers beyond their type, texts that are not one number each where one is demanded.
    const std::array<std::string, 10> unusable{"Decay", "1e12", "1e400", "-1e400", "1e400",
                                               "1e999", "0.1x", "OK",    "",       "1e400"};
    store.SetResultRecord(1, unusable);
    QVERIFY(store.ResultData[1] == before);
}

void TestResultStore::swapsAndMovesWholeRecords()
{
    ResultStore store;
    store.ResultData[1] = decayResult(1);
    store.ResultData[2] = decayResult(2);
    store.SwapData(1, 2);
    QVERIFY(store.ResultData[1] == decayResult(2));
    store.MoveData(1, 2);
    QVERIFY(store.ResultData[2] == decayResult(2));
    store.clearAll();
    QVERIFY(store.ResultData[1] == ResultRecord());
}

void TestResultStore::radiusIsThatOfTheSphereAroundTheProbe()
{
    constexpr double kFewUlps = 1e-14;
    QVERIFY(std::abs(app::RadiusFromK(0, 0.82) - 0.82) < kFewUlps);
    QVERIFY(std::abs(app::RadiusFromK(7.567461992, 0) - 1.4422495703074083) < kFewUlps); // cube root of 3
    QCOMPARE(app::RadiusFromK(-7.567461992, 1), 0.0);
}

QTEST_APPLESS_MAIN(TestResultStore)
#include "tst_resultstore.moc"
