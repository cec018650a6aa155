#include "app/sheetreading.h"

#include "tests/support/memorysheet.h"

#include <QTest>

namespace
{

struct CountingSheet final : support::MemorySheet {
    mutable int read = 0;
    std::string cell(int row, int column) const override
    {
        ++read;
        return MemorySheet::cell(row, column);
    }
};

} // namespace

class TestSheetReading : public QObject
{
    Q_OBJECT

private slots:
    void tellsHowATextIsRead();
    void tellsWhatIsMissing();
};

void TestSheetReading::tellsHowATextIsRead()
{
    for (const char* whole : {"", "0", "-2.5", "2.0E-3", ".5", "1 000", " 7 ", "3.", "1e5", " "})
        QVERIFY2(app::remarkOnNumber(whole).empty(), whole);
    const std::pair<std::string, std::string> cases[]{{"50 mM", "50"}, {"1,000", "1"},     {"0,05", "0"},
                                                      {"5×10⁻²", "5"}, {"2.5e", "2.5"},    {"1.2.3", "1.2"},
                                                      {"abc", "0"},    {"1\u00a0000", "1"}};
    for (const auto& [text, read] : cases)
        QCOMPARE(app::remarkOnNumber(text), '"' + text + "\" is read as " + read);
}

void TestSheetReading::tellsWhatIsMissing()
{
    const QStringList reference{"0", "1", "1", "10", "", "", "", "", "100"};
    const QStringList decay{"1", "1", "1", "5", "", "", "", "", "2"}, intensity{"2", "", "", "", "", "", "", "", "1"};
    const struct {
        QList<QStringList> samples;
        int model;
        QString cells, first; // the remarked cells as "row,column", and the beginning of the first remark
    } cases[]{{{}, 1, "", ""},
              {{reference, intensity}, 1, "", ""},
              {{{"0", "", "", "", "", "", "", "", "9"}}, 1, "2,1 ", "needed"},
              {{{"0", "2", "1"}}, 1, "4,1 5,1 6,1 ", "needed"},
              {{{"0", "9", "1", "10"}}, 1, "2,1 ", "\"9\" is not 1, 2 or 3"},
              {{{"0", "1.7", "1", "10", "1", "5"}}, 1, "2,1 ", "\"1.7\" is read as 2"},
              {{reference, {"1", "1", "1", "5"}}, 1, "9,2 ", "needed"},
              {{reference, decay, intensity}, 1, "2,3 ", "needed"},
              {{reference, decay, intensity}, 5, "", ""}, // which has no law for decays
              {{reference, {}, intensity}, 1, "1,2 1,3 9,3 ", "needed: without a concentration"},
              {{{"0", " ", "1", "10", " ", "", "", "", " "},
                {"1", "", " ", "", "", "", "", "", "9"},
                {" ", "", "", "", "", "", "", "", "9"},
                {"", "", " "}},
               1,
               "1,3 2,1 9,1 ",
               "\" \" is read as 0"},
              {QList<QStringList>(25, {"0", "1", "1", "5"}), 1,
               "1,21 1,22 1,23 1,24 1,25 2,21 2,22 2,23 2,24 2,25 3,21 3,22 3,23 3,24 3,25 4,21 4,22 4,23 4,24 4,25 ",
               "not read: there are at most 20"}};
    for (const auto& [samples, model, cells, first] : cases) {
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
                    remark = remark.isEmpty() ? QString::fromStdString(text) : remark;
                }
        QCOMPARE(remarked, cells);
        QCOMPARE(remark.left(first.size()), first);
    }
}

QTEST_APPLESS_MAIN(TestSheetReading)
#include "tst_sheetreading.moc"
