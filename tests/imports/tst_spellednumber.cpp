#include "imports/spellednumber.h"

#include "imports/units.h"

#include <QTest>

using imports::DecimalSign;
using imports::spelledNumber;

namespace
{

std::string readAs(const char* text, DecimalSign sign)
{
    const auto number = spelledNumber(text, sign);
    return number ? plainNumber(*number, number->unit.value_or(imports::Unit{}).power).value_or("none") : "none";
}

} // namespace

class TestSpelledNumber : public QObject
{
    Q_OBJECT

private slots:
    void readsWholeTextsOnly();
    void movesDigitsByAnyPower();
    void findsUnits();
};

void TestSpelledNumber::readsWholeTextsOnly()
{
    const struct {
        const char *text, *withPoint, *withComma;
    } cases[] = {
        {"0.0501", "0.0501", "none"},
        {"0,0501", "none", "0.0501"},
        {"-1.50e+3", "-1500", "none"},
        {"+5", "5", "5"},
        {"-0", "0", "0"},
        {"5.", "5", "none"},
        {"5,", "none", "none"},
        {".5", "0.5", "none"},
        {"5×10⁻²", "0.05", "0.05"},
        {"5,1 · 10^-2", "none", "0.051"},
        {"5*10-2", "0.05", "0.05"},
        {"5x102", "none", "none"}, // a lost raised digit
        {"10⁻³", "0.001", "0.001"},
        {"\u22125E\u22122", "-0.05", "-0.05"},
        {"1,000", "1000", "1"},
        {"1.000", "1", "1000"},
        {"0.050", "0.05", "none"}, // no number of thousands begins with 0
        {"1,234,567.5", "1234567.5", "none"},
        {"1.234.567,5", "none", "1234567.5"},
        {"12,34.5", "none", "none"},
        {"16\u2009580", "16580", "16580"},
        {"16\u202f580,25", "none", "16580.25"},
        {"16'580.25", "16580.25", "none"},
        {"0.050 12", "0.05012", "none"},
        {"1 2", "none", "none"},
        {"50.1 mM", "0.0501", "none"},
        {"50µM", "0.00005", "0.00005"},
        {"7 nM", "7e-9", "7e-9"},
        {"1e400", "none", "none"},
        {"1e-400", "none", "none"},
        {"12 apples", "none", "none"},
        {"n.d.", "none", "none"},
        {"", "none", "none"},
        {"-", "none", "none"},
    };
    for (const auto& one : cases) {
        QVERIFY2(readAs(one.text, DecimalSign::Point) == one.withPoint, one.text);
        QVERIFY2(readAs(one.text, DecimalSign::Comma) == one.withComma, one.text);
    }
}

// Multiplied by 10^-3 as a double, 50.1 would become 0.050100000000000006.
void TestSpelledNumber::movesDigitsByAnyPower()
{
    const std::pair<int, const char*> texts[] = {
        {-3, "0.0501"}, {-8, "5.01e-7"}, {0, "50.1"}, {3, "50100"}, {14, "5.01e15"}};
    for (const auto& [power, text] : texts)
        QCOMPARE(plainNumber(*spelledNumber("50.1", DecimalSign::Point), power).value(), std::string(text));
}

void TestSpelledNumber::findsUnits()
{
    using imports::UnitKind;
    const struct {
        const char* title;
        UnitKind kind;
        int power;
    } titles[] = {
        {"[Q] / mM", UnitKind::Concentration, -3},
        {"c(KI) in mol/L", UnitKind::Concentration, 0},
        {"conc (umol L^-1)", UnitKind::Concentration, -6},
        {"tau1 [ns]", UnitKind::Time, -9},
        {"t_ps", UnitKind::Time, -12},
        {"[M]", UnitKind::Concentration, 0},
        {"Intensity (a.u.)", UnitKind::None, 0},
        {"Forms", UnitKind::None, 0},
    };
    for (const auto& one : titles) {
        const auto unit = imports::unitOfTitle(one.title).value_or(imports::Unit{});
        QVERIFY2(unit == (imports::Unit{one.kind, one.power}), one.title);
    }
}

QTEST_APPLESS_MAIN(TestSpelledNumber)
#include "tst_spellednumber.moc"
