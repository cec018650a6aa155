#include "exports/fittables.h"
#include "exports/headrows.h"
#include "fit/numbertext.h"

#include <QTest>

#include <cmath>

using exports::Rows;

namespace
{

constexpr double kTau0 = 2e-8, kKq2 = 5e9; // s, M^-1 s^-1
constexpr double kFewUlps = 1e-14;

double numberAt(const Rows& rows, std::size_t row, std::size_t column) { return fit::numberFrom(rows[row][column]); }

} // namespace

class TestExportTables : public QObject
{
    Q_OBJECT

private slots:
    void quotesWhatWouldEndAField();
    void headSaysWhereNumbersComeFrom();
    void ratiosStandBesideTheModel();
    void decaysStandBesideTheModel();
};

void TestExportTables::quotesWhatWouldEndAField()
{
    const Rows rows{{"a,b", "c;d", "e\"f", "g\nh"}, {"1.5", ""}, {}};
    QCOMPARE(exports::csvText(rows, ','), "\"a,b\",c;d,\"e\"\"f\",\"g\nh\"\r\n1.5,,,\r\n,,,\r\n");
    QCOMPARE(exports::csvText(rows, ';'), "a,b;\"c;d\";\"e\"\"f\";\"g\nh\"\r\n1.5;;;\r\n;;;\r\n");
}

void TestExportTables::headSaysWhereNumbersComeFrom()
{
    const Rows head = exports::headRows({.analysis = "A", .assumption = "B.", .tau0 = 17.6e-9, .Cp = 5e-5});
    const Rows wanted{
        {"Analysis", "A"}, {"Assumption about errors", "B."}, {"tau0 /s", "1.76e-08"}, {"Cp /M", "5e-05"}, {}};
    QCOMPARE(Rows(head.begin() + 1, head.end()), wanted);
    QVERIFY(head[0][1].starts_with("Vorlo "));
    QCOMPARE(exports::headRows({}).size(), 2u);
    QVERIFY(exports::headRows({.older = true})[1][1].find("older data") != std::string::npos);
}

/// Model 1: 1 + kq2 tau0 Q. The samples are not in the order of their concentrations.
void TestExportTables::ratiosStandBesideTheModel()
{
    sternvolmer::RatioPoints points{.count = 3, .tau0 = kTau0};
    points.Q = {0, 0, 0.03, 0.01};
    points.ratio = {0, 1, 4.1, 1.9};
    const analysis::Request request{.data = points, .model = 1};
    const analysis::Result result{.parameters = {0, kKq2}};
    const Rows curve = exports::curveRows(request, result), residuals = exports::residualRows(request, result);
    std::size_t measured = 0;
    for (std::size_t row = 1; row < curve.size(); ++row) {
        QVERIFY(row == 1 || numberAt(curve, row, 0) > numberAt(curve, row - 1, 0));
        QVERIFY(std::abs(numberAt(curve, row, 2) - (1 + kKq2 * kTau0 * numberAt(curve, row, 0))) < kFewUlps * 10);
        measured += curve[row][1].empty() ? 0 : 1;
    }
    QVERIFY(curve.size() > 200);
    QCOMPARE(measured, 3u);
    QCOMPARE(residuals.size(), 4u);
    QCOMPARE(numberAt(residuals, 2, 4), 4.1 - (kKq2 * kTau0 * 0.03 + 1)); // to the last bit, as a reader gets it
    QCOMPARE(exports::lifetimeWithoutQuencher(request), kTau0);
}

/// Model 1: exp(-(1/tau0 + kq2 Q) t).
void TestExportTables::decaysStandBesideTheModel()
{
    decay::SampleTable table{.SampleCount = 2};
    for (const int sample : {1, 2}) {
        decay::SampleRecord& record = table.SampleData[static_cast<std::size_t>(sample)];
        record = {.Conc = 0.01 * (sample - 1), .NComp = 1, .A = {0, 1}, .Tau = {0, kTau0}, .Rate = {0, 1 / kTau0}};
        record.LastFitIndex = 2;
        record.T = {0, 1e-8, 2e-8};
        record.IExp = {1, 0.5, 0.25};
    }
    const Rows rows = exports::residualRows({.data = table, .model = 1}, {.parameters = {0, kKq2}});
    QCOMPARE(rows.size(), 7u);
    for (std::size_t row = 1; row < rows.size(); ++row) {
        const double model = std::exp(-(1 / kTau0 + kKq2 * numberAt(rows, row, 1)) * numberAt(rows, row, 2));
        QVERIFY(std::abs(numberAt(rows, row, 4) - model) < kFewUlps);
        QCOMPARE(numberAt(rows, row, 5), numberAt(rows, row, 3) - numberAt(rows, row, 4));
    }
}

QTEST_APPLESS_MAIN(TestExportTables)
#include "tst_exporttables.moc"
