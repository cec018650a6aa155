#include "app/sheetreading.h"

#include "tests/support/memorysheet.h"

#include <QTest>

namespace
{

struct CountingSheet : app::SheetText {
    support::MemorySheet texts;
    mutable int read = 0;
    int rowCount() const override { return texts.rows; }
    int columnCount() const override { return texts.columns; }
    void setCounts(int rows, int columns) override { texts.setCounts(rows, columns); }
    void setCell(int row, int column, const std::string& text) override { texts.setCell(row, column, text); }
    std::string cell(int row, int column) const override
    {
        ++read;
        return texts.cell(row, column);
    }
};

} // namespace

class TestSheetReading : public QObject
{
    Q_OBJECT

private slots:
    void tellsHowATextIsRead_data();
    void tellsHowATextIsRead();
    void tellsWhatIsMissing_data();
    void tellsWhatIsMissing();
};

void TestSheetReading::tellsHowATextIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read"); // empty: as it stands
    for (const char* whole : {"", "0", "-2.5", "2.0E-3", ".5", "1 000", " 7 ", "3.", "1e5", " "})
        QTest::newRow(whole) << whole << "";
    QTest::newRow("unit") << "50 mM"
                          << "50";
    QTest::newRow("comma") << "1,000"
                           << "1";
    QTest::newRow("decimal comma") << "0,05"
                                   << "0";
    QTest::newRow("power of ten") << "5×10⁻²"
                                  << "5";
    QTest::newRow("exponent without digits") << "2.5e"
                                             << "2.5";
    QTest::newRow("two points") << "1.2.3"
                                << "1.2";
    QTest::newRow("no number") << "abc"
                               << "0";
    QTest::newRow("no-break space") << "1\u00a0000"
                                    << "1";
}

void TestSheetReading::tellsHowATextIsRead()
{
    QFETCH(QString, text);
    QFETCH(QString, read);
    const QString expected = read.isEmpty() ? QString() : '"' + text + "\" is read as " + read;
    QCOMPARE(QString::fromStdString(app::remarkOnNumber(text.toStdString())), expected);
}

// The remarked cells of a sheet as "row,column", and the beginning of the first remark.
void TestSheetReading::tellsWhatIsMissing_data()
{
    using Columns = QList<QStringList>;
    QTest::addColumn<Columns>("samples");
    QTest::addColumn<int>("model");
    QTest::addColumn<QString>("cells");
    QTest::addColumn<QString>("first");
    const QStringList reference{"0", "1", "1", "10", "", "", "", "", "100"};
    QTest::newRow("nothing typed") << Columns{} << 1 << ""
                                   << "";
    QTest::newRow("intensities alone") << Columns{reference, {"1", "", "", "", "", "", "", "", "50"}} << 1 << ""
                                       << "";
    QTest::newRow("reference without components") << Columns{{"0", "", "", "", "", "", "", "", "9"}} << 1 << "2,1 "
                                                  << "needed";
    QTest::newRow("up to Component") << Columns{{"0", "2", "1"}} << 1 << "4,1 5,1 6,1 "
                                     << "needed";
    QTest::newRow("an intensity") << Columns{reference, {"1", "1", "1", "5"}} << 1 << "9,2 "
                                  << "needed";
    QTest::newRow("decays") << Columns{reference,
                                       {"1", "1", "1", "5", "", "", "", "", "2"},
                                       {"2", "", "", "", "", "", "", "", "1"}}
                            << 1 << "2,3 "
                            << "needed";
    QTest::newRow("decays of a model without their law")
        << Columns{reference, {"1", "1", "1", "5", "", "", "", "", "2"}, {"2", "", "", "", "", "", "", "", "1"}} << 5
        << ""
        << "";
    QTest::newRow("a gap") << Columns{reference, {}, {"2", "", "", "", "", "", "", "", "1"}} << 1 << "1,2 1,3 9,3 "
                           << "needed: without a concentration";
    QTest::newRow("blanks") << Columns{{"0", " ", "1", "10", " ", "", "", "", " "},
                                       {"1", "", " ", "", "", "", "", "", "9"},
                                       {" ", "", "", "", "", "", "", "", "9"},
                                       {"", "", " "}}
                            << 1 << "1,3 2,1 9,1 "
                            << "\" \" is read as 0";
    QTest::newRow("25 samples") << Columns(25, {"0", "1", "1", "5"}) << 1
                                << "1,21 1,22 1,23 1,24 1,25 2,21 2,22 2,23 2,24 2,25 3,21 3,22 3,23 3,24 3,25 4,21 "
                                   "4,22 4,23 4,24 4,25 "
                                << "not read: there are at most 20";
}

void TestSheetReading::tellsWhatIsMissing()
{
    using Columns = QList<QStringList>;
    QFETCH(Columns, samples);
    QFETCH(int, model);
    QFETCH(QString, cells);
    QFETCH(QString, first);
    CountingSheet sheet;
    sheet.setCounts(10, 30);
    for (int column = 1; column <= samples.size(); ++column)
        for (int row = 1; row <= samples[column - 1].size(); ++row)
            sheet.setCell(row, column, samples[column - 1][row - 1].toStdString());
    const app::SheetReading reading(sheet, model);
    QVERIFY2(sheet.read <= 4 * 10 * 30, qPrintable(QString::number(sheet.read))); // not the sheet for each cell
    QString remarked, remark;
    for (int row = 0; row < 10; ++row)
        for (int column = 0; column < 30; ++column)
            if (const std::string text = reading.remarkOn(row, column); !text.empty()) {
                remarked += QString("%1,%2 ").arg(row).arg(column);
                if (remark.isEmpty())
                    remark = QString::fromStdString(text);
            }
    QCOMPARE(remarked, cells);
    QCOMPARE(remark.left(first.size()), first);
}

QTEST_APPLESS_MAIN(TestSheetReading)
#include "tst_sheetreading.moc"
