#include "fit/numbertext.h"

#include <QTest>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace
{

struct PatternCase {
    const char* pattern;
    double value;
    const char* text;
};

// clang-format off
constexpr PatternCase kPatternCases[] = {
    {"#", 0.0, ""}, {"#", -0.0, ""}, {"#", 1.0, "1"}, {"#", 10.0, "10"}, {"#", -2.0, "-2"},
    {"#", 0.4, ""}, {"#", -0.4, ""}, {"#", 0.5, "1"}, {"#", -0.5, "-1"}, {"#", 2.5, "3"},
    {"#", -2.5, "-3"}, {"#", -0.0004, ""}, {"#", 123456.789, "123457"}, {"#", 1e7, "10000000"},

    {"##0", 0.0, "0"}, {"##0", -0.0, "0"}, {"##0", 5.0, "5"}, {"##0", 100.0, "100"},
    {"##0", 1000.0, "1000"}, {"##0", -25.0, "-25"}, {"##0", 0.4, "0"}, {"##0", -0.4, "0"},
    {"##0", 0.5, "1"}, {"##0", -0.5, "-1"}, {"##0", 2.5, "3"}, {"##0", 123456.789, "123457"},

    {"##0.0#", 0.0, "0.0"}, {"##0.0#", 1.0, "1.0"}, {"##0.0#", 10.0, "10.0"},
    {"##0.0#", 0.5, "0.5"}, {"##0.0#", 0.05, "0.05"}, {"##0.0#", 0.0004, "0.0"},
    {"##0.0#", -0.0004, "0.0"}, {"##0.0#", 0.125, "0.13"}, {"##0.0#", 0.375, "0.38"},
    {"##0.0#", 1.005, "1.01"}, {"##0.0#", -1.255, "-1.26"}, {"##0.0#", 99.995, "100.0"},
    {"##0.0#", 123456.789, "123456.79"},

    {"##.##", 0.0, "."}, {"##.##", -0.0, "."}, {"##.##", 5.0, "5."}, {"##.##", 10.0, "10."},
    {"##.##", 0.5, ".5"}, {"##.##", -0.5, "-.5"}, {"##.##", 0.05, ".05"}, {"##.##", 1.1, "1.1"},
    {"##.##", 0.0049, "."}, {"##.##", 0.005, ".01"}, {"##.##", -0.0004, "."},
    {"##.##", 0.125, ".13"}, {"##.##", 0.375, ".38"}, {"##.##", 123456.789, "123456.79"},

    {"#.###", 0.0, "."}, {"#.###", 1.0, "1."}, {"#.###", 0.5, ".5"}, {"#.###", 0.05, ".05"},
    {"#.###", 0.0004, "."}, {"#.###", 0.0005, ".001"}, {"#.###", -0.0004, "."},
    {"#.###", 0.125, ".125"}, {"#.###", 0.6666666666666666, ".667"}, {"#.###", 0.9994, ".999"},
    {"#.###", 0.9996, "1."}, {"#.###", 1e-5, "."}, {"#.###", 123456.789, "123456.789"},

    {"#.#####", 0.0, "."}, {"#.#####", 1.0, "1."}, {"#.#####", 0.5, ".5"}, {"#.#####", -0.5, "-.5"},
    {"#.#####", 0.99987, ".99987"}, {"#.#####", 0.999996, "1."}, {"#.#####", 0.123456, ".12346"},
    {"#.#####", 1e-5, ".00001"}, {"#.#####", 4e-6, "."}, {"#.#####", 5e-6, ".00001"},
    {"#.#####", -0.0004, "-.0004"},

    {"0.#####", 0.0, "0."}, {"0.#####", 1.0, "1."}, {"0.#####", 10.0, "10."}, {"0.#####", 0.5, "0.5"},
    {"0.#####", 0.0004, "0.0004"}, {"0.#####", 1e-5, "0.00001"}, {"0.#####", 4e-6, "0."},
    {"0.#####", -4e-6, "0."}, {"0.#####", 0.999996, "1."}, {"0.#####", 0.98765432, "0.98765"},
    {"0.#####", 0.30000000000000004, "0.3"},

    {"0.00000#", 0.0, "0.00000"}, {"0.00000#", 1.0, "1.00000"}, {"0.00000#", 0.5, "0.50000"},
    {"0.00000#", -0.5, "-0.50000"}, {"0.00000#", 0.98765, "0.98765"}, {"0.00000#", 0.999999, "0.999999"},
    {"0.00000#", 0.9999996, "1.00000"}, {"0.00000#", 0.1234564, "0.123456"}, {"0.00000#", 1e-5, "0.00001"},
    {"0.00000#", 4e-7, "0.00000"}, {"0.00000#", -4e-7, "0.00000"},

    {"#0.###", 0.0, "0."}, {"#0.###", 1.0, "1."}, {"#0.###", -1.0, "-1."}, {"#0.###", 10.0, "10."},
    {"#0.###", 0.5, "0.5"}, {"#0.###", 0.0005, "0.001"}, {"#0.###", -0.0004, "0."},
    {"#0.###", -0.4342944819, "-0.434"}, {"#0.###", -2.30258509, "-2.303"}, {"#0.###", -3.9996, "-4."},

    {"####0.##", 0.0, "0."}, {"####0.##", 5.0, "5."}, {"####0.##", 10.0, "10."}, {"####0.##", 0.5, "0.5"},
    {"####0.##", 0.05, "0.05"}, {"####0.##", -0.0004, "0."}, {"####0.##", 0.125, "0.13"},
    {"####0.##", 0.375, "0.38"}, {"####0.##", 1234567.891, "1234567.89"}, {"####0.##", 99999.995, "100000."},
    {"####0.##", -1e7, "-10000000."}, {"####0.##", 9.9995e9, "9999500000."}, {"####0.##", 2.5e-308, "0."},

    {"####0.###", 0.0, "0."}, {"####0.###", 1.0, "1."}, {"####0.###", 0.5, "0.5"},
    {"####0.###", 0.0004, "0."}, {"####0.###", 0.0005, "0.001"}, {"####0.###", 12.3456, "12.346"},
    {"####0.###", 1234567.891, "1234567.891"}, {"####0.###", 1e-5, "0."},

    {"####0.0##", 0.0, "0.0"}, {"####0.0##", 1.0, "1.0"}, {"####0.0##", 0.5, "0.5"},
    {"####0.0##", 0.05, "0.05"}, {"####0.0##", -0.0004, "0.0"}, {"####0.0##", 0.0005, "0.001"},
    {"####0.0##", 0.125, "0.125"}, {"####0.0##", 12.3456, "12.346"}, {"####0.0##", 1e7, "10000000.0"},

    {"####0.00#", 0.0, "0.00"}, {"####0.00#", 1.0, "1.00"}, {"####0.00#", 0.5, "0.50"},
    {"####0.00#", 0.05, "0.05"}, {"####0.00#", -0.0004, "0.00"}, {"####0.00#", 0.0005, "0.001"},
    {"####0.00#", 0.125, "0.125"}, {"####0.00#", 12.3456, "12.346"}, {"####0.00#", 1e7, "10000000.00"},

    {"#.###e+##", 0.0, "0.e+0"}, {"#.###e+##", -0.0, "0.e+0"}, {"#.###e+##", 1.0, "1.e+0"},
    {"#.###e+##", 5.0, "5.e+0"}, {"#.###e+##", 10.0, "1.e+1"}, {"#.###e+##", 1e7, "1.e+7"},
    {"#.###e+##", -1e7, "-1.e+7"}, {"#.###e+##", 1.2345678e7, "1.235e+7"}, {"#.###e+##", 9.9994e9, "9.999e+9"},
    {"#.###e+##", 9.9995e9, "1.e+10"}, {"#.###e+##", 9.9999e3, "1.e+4"}, {"#.###e+##", 0.5, "5.e-1"},
    {"#.###e+##", 0.05, "5.e-2"}, {"#.###e+##", -0.0004, "-4.e-4"}, {"#.###e+##", 1e-5, "1.e-5"},
    {"#.###e+##", 123456.789, "1.235e+5"}, {"#.###e+##", 0.125, "1.25e-1"}, {"#.###e+##", 1.0005, "1.001e+0"},
    {"#.###e+##", 1e-12, "1.e-12"}, {"#.###e+##", 2.5e-308, "2.5e-308"}, {"#.###e+##", 1e300, "1.e+300"},

    {"#.###e+#", 0.0, "0.e+0"}, {"#.###e+#", 5.0, "5.e+0"}, {"#.###e+#", 1e7, "1.e+7"},
    {"#.###e+#", 9.9995e9, "1.e+10"}, {"#.###e+#", 0.000123456, "1.235e-4"}, {"#.###e+#", -0.0004, "-4.e-4"},
    {"#.###e+#", 1e-12, "1.e-12"}, {"#.###e+#", 2.5e-308, "2.5e-308"},

    {"#.#e+#", 0.0, "0.e+0"}, {"#.#e+#", 1.0, "1.e+0"}, {"#.#e+#", 10.0, "1.e+1"}, {"#.#e+#", 0.5, "5.e-1"},
    {"#.#e+#", -1e7, "-1.e+7"}, {"#.#e+#", 2.5e-7, "2.5e-7"}, {"#.#e+#", 123456.789, "1.2e+5"},
    {"#.#e+#", 0.125, "1.3e-1"}, {"#.#e+#", 9.95, "1.e+1"}, {"#.#e+#", 1e-12, "1.e-12"},

    {"0.###e+#", 0.0, "0.e+0"}, {"0.###e+#", 1.0, "1.e+0"}, {"0.###e+#", 10.0, "1.e+1"},
    {"0.###e+#", 0.5, "5.e-1"}, {"0.###e+#", 0.36787944117144233, "3.679e-1"}, {"0.###e+#", 1e-5, "1.e-5"},
    {"0.###e+#", 9.9999e3, "1.e+4"}, {"0.###e+#", -0.0004, "-4.e-4"},

    {"0.000e+00", 0.0, "0.000e+00"}, {"0.000e+00", 1.0, "1.000e+00"}, {"0.000e+00", 10.0, "1.000e+01"},
    {"0.000e+00", 1e7, "1.000e+07"}, {"0.000e+00", -1e7, "-1.000e+07"}, {"0.000e+00", 1.2345678e7, "1.235e+07"},
    {"0.000e+00", 9.9995e9, "1.000e+10"}, {"0.000e+00", 0.05, "5.000e-02"}, {"0.000e+00", 1e-5, "1.000e-05"},
    {"0.000e+00", 0.125, "1.250e-01"}, {"0.000e+00", 1e300, "1.000e+300"}, {"0.000e+00", 2.5e-308, "2.500e-308"},

    {"0.00e+00", 0.0, "0.00e+00"}, {"0.00e+00", 1.0, "1.00e+00"}, {"0.00e+00", 0.0002, "2.00e-04"},
    {"0.00e+00", 1.5e-8, "1.50e-08"}, {"0.00e+00", 0.125, "1.25e-01"}, {"0.00e+00", 1.005, "1.01e+00"},
    {"0.00e+00", 9.994, "9.99e+00"}, {"0.00e+00", 9.995, "1.00e+01"}, {"0.00e+00", 9.9999e3, "1.00e+04"},
    {"0.00e+00", -1e7, "-1.00e+07"},
};
// clang-format on

struct ParseCase {
    const char* text;
    double number;
};

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// clang-format off
constexpr ParseCase kLeadingNumbers[] = {
    {"", 0}, {"abc", 0}, {"inf", 0}, {"nan", 0}, {"12abc", 12}, {"  12 34 ", 1234}, {"3 .1 4", 3.14},
    {"  -  5", -5}, {".5", 0.5}, {"-.5", -0.5}, {"1e3", 1000}, {"1.e+7", 1e7}, {"50e-6", 0.00005}, {"1e", 1},
    {"1e+", 1}, {"1e 5", 1e5}, {"1.5e2.5", 150}, {"e5", 0}, {".", 0}, {"-", 0}, {"--5", 0}, {"1,234", 1},
    {"12.3.4", 12.3}, {"24 and 57", 24}, {"$5", 0}, {"(5)", 0}, {"1e-400", 0}, {"0,5", 0}, {"5.", 5},
    {"+7", 7}, {"1\t2\r\n3", 123}, {"1\u00a02", 1}, {"2E-3 M", 0.002}, {".e5", 0}, {"0.e+0", 0},
    // the ends of the range, which a plain conversion may refuse
    {"1e400", kInfinity}, {"-1e400", -kInfinity}, {"4.9e-324", 4.9e-324}, {"2e-308", 2e-308},
    {"1e99999999999999999999", kInfinity}, {"0e99999999999999999999", 0}, {"1e-99999999999999999999", 0},
};
// clang-format on

struct ConversionCase {
    double number;
    const char* withSignPosition;
    const char* plain;
};

constexpr ConversionCase kConversions[] = {
    {0.0, " 0", "0"},
    {-0.0, " 0", "0"},
    {3.0, " 3", "3"},
    {-459.65, "-459.65", "-459.65"},
    {0.5, " .5", "0.5"},
    {-0.5, "-.5", "-0.5"},
    {1.0 / 3, " .333333333333333", "0.333333333333333"},
    {0.1 + 0.2, " .3", "0.3"},
    {2.0 / 3 * 1e14, " 66666666666666.7", "66666666666666.7"},
    {2.0 / 3 * 1e-5, " 6.66666666666667E-06", "6.66666666666667E-06"},
    {75.0 / 999, " 7.50750750750751E-02", "7.50750750750751E-02"},
    {0.075, " .075", "0.075"},
    {1e-15, " .000000000000001", "0.000000000000001"},
    {1e-16, " 1E-16", "1E-16"},
    {123456789012345.0, " 123456789012345", "123456789012345"},
    {1e15, " 1E+15", "1E+15"},
    {999999999999999.9, " 1E+15", "1E+15"},
    {1234567890123456.0, " 1.23456789012346E+15", "1.23456789012346E+15"},
    {-1e300, "-1E+300", "-1E+300"},
    {120.0, " 120", "120"},
};

} // namespace

class TestNumberText : public QObject
{
    Q_OBJECT

private slots:
    void writesPatterns_data();
    void writesPatterns();
    void writtenNumbersReadBack();
    void readsLeadingNumbers_data();
    void readsLeadingNumbers();
    void readsToTheNearestDouble();
    void readsVeryLongTextsAtOnce();
    void readsWholeTextsStrictly();
    void writesPlainDecimalText_data();
    void writesPlainDecimalText();
    void roundsTiesToEven();
};

void TestNumberText::writesPatterns_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    for (const PatternCase& row : kPatternCases)
        QTest::addRow("%s of %.9g", row.pattern, row.value) << row.pattern << row.value << row.text;
}

void TestNumberText::writesPatterns()
{
    QFETCH(QString, pattern);
    QFETCH(double, value);
    QTEST(QString::fromStdString(fit::formatNumber(value, pattern.toStdString())), "text");
}

void TestNumberText::writtenNumbersReadBack()
{
    constexpr double kHalfLastDigit = 0.5e-3; // three decimals of a mantissa of at least 1
    for (double value = 1.2345678e-300; value < 1e300; value *= -9.7) {
        const double readBack = fit::numberFrom(fit::formatNumber(value, "#.###e+##"));
        QVERIFY2(std::abs(readBack / value - 1) <= kHalfLastDigit, qPrintable(QString::number(value)));
        const std::string plain = fit::plainText(value);
        QCOMPARE(fit::strictNumber(plain), fit::numberFrom(plain));
        QCOMPARE(fit::plainText(fit::numberFrom(plain)), plain);
    }
}

void TestNumberText::readsLeadingNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    for (const ParseCase& row : kLeadingNumbers)
        QTest::addRow("'%s'", row.text) << row.text << row.number;
}

void TestNumberText::readsLeadingNumbers()
{
    QFETCH(QString, text);
    QFETCH(double, number);
    QVERIFY(fit::numberFrom(text.toStdString()) == number); // exactly, unlike QCOMPARE of doubles
}

void TestNumberText::readsToTheNearestDouble()
{
    // 1 + 2^-53 lies midway between 1 and the next double; only its digits far beyond the 17th decide.
    const std::string midway = "1.00000000000000011102230246251565404236316680908203125";
    const double next = std::nextafter(1.0, 2.0);
    QVERIFY(fit::numberFrom(midway) == 1.0);
    QVERIFY(fit::numberFrom(midway + std::string(2000, '0')) == 1.0);
    QVERIFY(fit::numberFrom(midway + std::string(2000, '0') + "1") == next);
    QVERIFY(fit::numberFrom("." + std::string(400, '0') + "5e401") == 5.0);
    QVERIFY(fit::numberFrom("5" + std::string(1000, '0') + "e-1000") == 5.0);
}

void TestNumberText::readsVeryLongTextsAtOnce()
{
    using std::chrono::steady_clock;
    constexpr std::size_t kLength = 4'000'000;
    const auto start = steady_clock::now();
    QVERIFY(std::isinf(fit::numberFrom(std::string(kLength, '9'))));
    QVERIFY(fit::numberFrom("0." + std::string(kLength, '3')) == 1.0 / 3);
    QVERIFY(fit::numberFrom("1e" + std::string(kLength, '0') + "2") == 100.0);
    QVERIFY(fit::numberFrom(std::string(kLength, ' ') + "7") == 7.0);
    QVERIFY(fit::numberFrom(std::string(kLength, '\0')) == 0.0);
    QVERIFY(fit::numberFrom(std::string("12\0"
                                        "34",
                                        5)) == 12.0);
    QVERIFY(steady_clock::now() - start < std::chrono::seconds(10)); // a quadratic parse would take hours
}

void TestNumberText::readsWholeTextsStrictly()
{
    for (const char* number : {"12", " 12 ", "\t12\r\n", "+1.2e1", "12.", "1200e-2"})
        QVERIFY2(fit::strictNumber(number) == 12.0, number);
    for (const char* other : {"", "  ", "abc", "12abc", "1 2", "1e", "1e+", "1 e5", "- 5", ".", "1.2.3", "0x10", "inf"})
        QVERIFY2(!fit::strictNumber(other), other);
    QVERIFY(!fit::strictNumber(std::string("1\0", 2)));
}

void TestNumberText::writesPlainDecimalText_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("withSignPosition");
    QTest::addColumn<QString>("plain");
    for (const ConversionCase& row : kConversions)
        QTest::addRow("%.17g", row.number) << row.number << row.withSignPosition << row.plain;
}

void TestNumberText::writesPlainDecimalText()
{
    QFETCH(double, number);
    QTEST(QString::fromStdString(fit::signedText(number)), "withSignPosition");
    QTEST(QString::fromStdString(fit::plainText(number)), "plain");
}

void TestNumberText::roundsTiesToEven()
{
    constexpr double kTies[][2] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {2.4999, 2}};
    for (const auto& [value, whole] : kTies) {
        QCOMPARE(fit::roundedInt16(value), static_cast<std::int16_t>(whole));
        QCOMPARE(fit::roundedInt32(value), static_cast<std::int32_t>(whole));
    }
    QCOMPARE(fit::roundedInt16(32767.4), INT16_MAX);
    QCOMPARE(fit::roundedInt16(-32768.5), INT16_MIN);
    QVERIFY(!fit::roundedInt16(32767.5));
    QVERIFY(!fit::roundedInt16(-32769));
    QVERIFY(!fit::roundedInt32(2147483647.5));
    QVERIFY(!fit::roundedInt32(std::nan("")));

    QCOMPARE(fit::heldInt32(-2.5), -2);
    QCOMPARE(fit::heldInt32(1e300), INT32_MAX);
    QCOMPARE(fit::heldInt32(-kInfinity), INT32_MIN);
    QCOMPARE(fit::heldInt32(std::nan("")), 0);
}

QTEST_APPLESS_MAIN(TestNumberText)
#include "tst_numbertext.moc"
