#include "lifetimes/combinedfit.h"

#include "tests/support/datarows.h"
#include "tests/support/pairedsamples.h"

#include <QTest>

#include <cmath>

using namespace lifetimes;

namespace
{

constexpr double kFourDigits = 5e-5;

#define COMPARE_DIGITS(value, expected)                                                                                \
    QVERIFY2(std::abs((value) / (expected)-1) < kFourDigits,                                                           \
             QByteArray::number(value, 'g', 10) + " for " + QByteArray::number(expected, 'g', 10))

} // namespace

class TestCombinedFit : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithAnotherProgram_data();
    void agreesWithAnotherProgram();
};

void TestCombinedFit::agreesWithAnotherProgram_data()
{
    QTest::addColumn<QStringList>("row");
    for (const QStringList& row : support::dataRows("combinedfits.txt"))
        QTest::newRow(qPrintable(row[0])) << row;
}

void TestCombinedFit::agreesWithAnotherProgram()
{
    QFETCH(QStringList, row);
    const Measurements acridone = support::acridoneMeasurements();
    const CombinedFit fit = fitTogether(acridone, row[0].toInt(), {});
    COMPARE_DIGITS(fit.minimum.sumOfSquares, row[1].toDouble());
    QCOMPARE(fit.degreesOfFreedom, row[2].toInt());
    COMPARE_DIGITS(*fit.AICc, row[3].toDouble());
    const auto profiles = profilesOf(acridone, fit);
    for (int slot = 1; 4 * slot < row.size(); ++slot) {
        const auto i = static_cast<std::size_t>(slot);
        const QStringList constant = row.mid(4 * slot, 4);
        COMPARE_DIGITS(fit.minimum.values[i], constant[0].toDouble());
        COMPARE_DIGITS(fit.uncertainty.standardError[i], constant[1].toDouble());
        COMPARE_DIGITS(*profiles[i].low, constant[2].toDouble());
        COMPARE_DIGITS(*profiles[i].high, constant[3].toDouble());
    }
    QCOMPARE(fit.judgement.verdict, trust::Verdict::AtMinimum);
    QCOMPARE(fit.solutions.size(), std::size_t{1});
}

QTEST_APPLESS_MAIN(TestCombinedFit)
#include "tst_combinedfit.moc"
