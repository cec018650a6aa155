#include "fit/report.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <vector>

namespace
{

std::string tailOfReport(int status)
{
    const std::string text = fit::reportText({.status = status});
    return text.substr(text.find("Se\t0.00\r\n") + 9);
}

} // namespace

class TestReport : public QObject
{
    Q_OBJECT

private slots:
    void hasNoWordsForOtherStatuses();
    void totalSumRunsOverFiftySlots();
};

void TestReport::hasNoWordsForOtherStatuses()
{
    for (const int other : {std::numeric_limits<int>::min(), -1, 0, 4}) {
        QCOMPARE(tailOfReport(other), std::string());
        QCOMPARE(fit::errorText(other), std::string());
    }
}

void TestReport::totalSumRunsOverFiftySlots()
{
    // 60 points of 1 with residuals of 0.5: the mean is 1, only the empty slot 0 differs from it.
    std::vector<double> ones(101, 1.0);
    ones[0] = 0;
    const fit::Statistics beyondTheSlots = fit::slotStatistics(ones, std::vector<double>(101, 0.5), 60);
    QVERIFY(beyondTheSlots.sumOfSquares == 15);
    QVERIFY(beyondTheSlots.R2 == 1 - 15);

    const std::vector<double> zeros(101);
    for (int points : {0, 3})
        QVERIFY(!std::isfinite(fit::slotStatistics(zeros, zeros, points).R2));
}

QTEST_APPLESS_MAIN(TestReport)
#include "tst_report.moc"
