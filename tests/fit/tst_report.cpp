#include "fit/report.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <vector>

namespace
{

constexpr double kFewUlps = 1e-14; // room for some tens of roundings

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
    void warnsByStatus();
    void totalSumRunsOverFiftySlots();
};

void TestReport::warnsByStatus()
{
    QCOMPARE(tailOfReport(1), std::string());
    QCOMPARE(tailOfReport(2), std::string("Tolerance has not been satisfied.\r\nPlease increase the iteration.\r\n"));
    QCOMPARE(tailOfReport(3),
             std::string("This fitting result may be doubltful.\r\nPlease try another initial parameters.\r\n"));
    QCOMPARE(fit::errorText(1), std::string("OK"));
    QCOMPARE(fit::errorText(2), std::string("not satisfied"));
    QCOMPARE(fit::errorText(3), std::string("*"));
    for (const int other : {std::numeric_limits<int>::min(), -1, 0, 4}) {
        QCOMPARE(tailOfReport(other), std::string());
        QCOMPARE(fit::errorText(other), std::string());
    }
}

void TestReport::totalSumRunsOverFiftySlots()
{
    const std::vector<double> observed{0, 2, 4, 6, 8, 10};
    const fit::Statistics perfect = fit::slotStatistics(observed, observed, 5);
    QVERIFY(perfect.R2 == 1 && perfect.residualSum == 0);

    // The mean is 6: 16 + 4 + 0 + 4 + 16 from the points, 36 from each of the 45 other slots.
    const fit::Statistics offByOne = fit::slotStatistics(observed, std::vector<double>{9, 3, 5, 7, 9, 11}, 5);
    QVERIFY(offByOne.residualSum == 5);
    QVERIFY(std::abs(offByOne.R2 - (1 - 5.0 / (40 + 45 * 36))) < kFewUlps);

    // 60 points of 1 with residuals of 0.5: the mean is 1, only the empty slot 0 differs from it.
    std::vector<double> ones(101, 1.0);
    ones[0] = 0;
    const fit::Statistics beyondTheSlots = fit::slotStatistics(ones, std::vector<double>(101, 0.5), 60);
    QVERIFY(beyondTheSlots.residualSum == 15 && beyondTheSlots.R2 == 1 - 15);

    const std::vector<double> zeros(101);
    for (int points : {0, 3})
        QVERIFY(!std::isfinite(fit::slotStatistics(zeros, zeros, points).R2));
}

QTEST_APPLESS_MAIN(TestReport)
#include "tst_report.moc"
