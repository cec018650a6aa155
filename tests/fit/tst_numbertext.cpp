#include "fit/numbertext.h"

#include "tests/support/datarows.h"

#include <QTest>

#include <cmath>
#include <cstdint>
#include <ctime>
#include <limits>
#include <string>

class TestNumberText : public QObject
{
    Q_OBJECT

private slots:
    void writesPatterns();
    void writesPlainDecimalText();
    void readsLeadingNumbers();
    void readsToTheNearestDouble();
    void readsVeryLongTextsAtOnce();
    void readsWholeTextsStrictly();
    void roundsTiesToEven();
};

void TestNumberText::writesPatterns()
{
    for (const QStringList& row : support::dataRows("numberpatterns.txt")) {
        const auto text = QString::fromStdString(fit::formatNumber(row[1].toDouble(), row[0].toStdString()));
        QVERIFY2(text == row[2], qPrintable(row.join(' ') + " not " + text));
    }
}

void TestNumberText::writesPlainDecimalText()
{
    for (const QStringList& row : support::dataRows("plaintexts.txt")) {
        const double number = row[0].toDouble();
        QCOMPARE(QString::fromStdString(fit::signedText(number)), row[1]);
        QCOMPARE(QString::fromStdString(fit::plainText(number)), row[2]);
        QCOMPARE(QString::fromStdString(fit::exactText(number)).toDouble(), number); // to the last bit
    }
}

void TestNumberText::readsLeadingNumbers()
{
    for (const QStringList& row : support::dataRows("leadingnumbers.txt"))
        QVERIFY2(fit::numberFrom(row[0].toStdString()) == row[1].toDouble(), qPrintable(row[0])); // to the last bit
    QVERIFY(fit::numberFrom("1\t2\r\n3") == 123);
    QVERIFY(fit::numberFrom("1\u00a02") == 1);
}

void TestNumberText::readsToTheNearestDouble()
{
    // 1 + 2^-53 lies midway between 1 and the next double; only its digits far beyond the 17th decide.
    const std::string midway = "1.00000000000000011102230246251565404236316680908203125";
    QVERIFY(fit::numberFrom(midway + std::string(2000, '0')) == 1.0);
    QVERIFY(fit::numberFrom(midway + std::string(2000, '0') + "1") == std::nextafter(1.0, 2.0));
    QVERIFY(fit::numberFrom("." + std::string(400, '0') + "5e401") == 5.0);
    QVERIFY(fit::numberFrom("5" + std::string(1000, '0') + "e-1000") == 5.0);
}

void TestNumberText::readsVeryLongTextsAtOnce()
{
    constexpr std::size_t kLength = 4'000'000;
    const std::clock_t start = std::clock(); // processor time: other processes run, too
    QVERIFY(std::isinf(fit::numberFrom(std::string(kLength, '9'))));
    QVERIFY(fit::numberFrom("0." + std::string(kLength, '3')) == 1.0 / 3);
    QVERIFY(fit::numberFrom("1e" + std::string(kLength, '0') + "2") == 100.0);
    QVERIFY(fit::numberFrom(std::string(kLength, ' ') + "7") == 7.0);
    QVERIFY(fit::numberFrom("12" + std::string(kLength, '\0') + "34") == 12.0);
    QVERIFY(std::clock() - start < 10 * CLOCKS_PER_SEC); // a quadratic parse would take hours
}

void TestNumberText::readsWholeTextsStrictly()
{
    for (const char* number : {"12", " 12 ", "\t12\r\n", "+1.2e1", "12.", "1200e-2"})
        QVERIFY2(fit::strictNumber(number) == 12.0, number);
    for (const char* other : {"", "  ", "abc", "12abc", "1 2", "1e", "1e+", "1 e5", "- 5", ".", "1.2.3", "0x10", "inf"})
        QVERIFY2(!fit::strictNumber(other), other);
    QVERIFY(!fit::strictNumber(std::string("1\0", 2)));
}

void TestNumberText::roundsTiesToEven()
{
    constexpr double kTies[][2] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {2.4999, 2}};
    for (const auto& [value, whole] : kTies) {
        QCOMPARE(fit::roundedInt16(value), static_cast<std::int16_t>(whole));
        QCOMPARE(fit::roundedInt32(value), static_cast<std::int32_t>(whole));
        QCOMPARE(fit::heldInt32(value), static_cast<std::int32_t>(whole));
    }
    QCOMPARE(fit::roundedInt16(32767.4), INT16_MAX);
    QCOMPARE(fit::roundedInt16(-32768.5), INT16_MIN);
    QVERIFY(!fit::roundedInt16(32767.5));
    QVERIFY(!fit::roundedInt16(-32769));
    QVERIFY(!fit::roundedInt32(2147483647.5));
    QVERIFY(!fit::roundedInt32(std::nan("")));
    QCOMPARE(fit::heldInt32(1e300), INT32_MAX);
    QCOMPARE(fit::heldInt32(-std::numeric_limits<double>::infinity()), INT32_MIN);
    QCOMPARE(fit::heldInt32(std::nan("")), 0);
}

QTEST_APPLESS_MAIN(TestNumberText)
#include "tst_numbertext.moc"
