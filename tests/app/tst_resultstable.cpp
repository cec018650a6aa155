#include "app/resultstable.h"
#include "app/sharedstate.h"
#include "ui/clipboard.h"
#include "ui/grid.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

using app::ResultRecord;

namespace
{

ResultRecord fitted(int model, double scale = 1)
{
    return {.Method = "SV",
            .Model = model,
            .KorF = 50 * scale,
            .Kq1 = 1.2345e7,
            .Kq2 = 2e6,
            .Kq22 = 3e5,
            .R2 = 0.98765,
            .Error = "OK",
            .R = 1.25,
            .Se = 0.0126};
}

} // namespace

class TestResultsTable : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void startsEmptyUnderItsTitles();
    void showsTheColumnsThatTheModelReports_data();
    void showsTheColumnsThatTheModelReports();
    void anUnusedRecordKeepsTheColumnsOfTheRowAbove();
    void assessmentChoosesColumnSix();
    void theMarkerIsGoneAfterARedraw();
    void theTwentyFirstResultOverwritesTheFirst();
    void setCursorMovesTheMarker();
    void deletedRowsMoveUp();
    void deletingAtTheFirstCursorLeavesIt();
    void clearAllForgetsEverything();
    void copyTakesTheRowsAboveTheCursor();
    void restoreHandsOutTheDisplayedRow();

private:
    void press(const char* button);
    QString row(int row) const;
    void store(const ResultRecord& result);

    std::unique_ptr<app::SharedState> m_shared;
    std::unique_ptr<app::ResultsTable> m_table;
};

void TestResultsTable::init()
{
    m_shared = std::make_unique<app::SharedState>();
    m_table = std::make_unique<app::ResultsTable>(*m_shared);
}

void TestResultsTable::cleanup() { m_table.reset(); }

void TestResultsTable::press(const char* button)
{
    auto* found = m_table->findChild<QPushButton*>(button);
    QVERIFY2(found, button);
    found->click();
}

QString TestResultsTable::row(int row) const
{
    QStringList texts;
    for (int column = 0; column < 9; ++column)
        texts << m_table->GetResultText(row, column);
    return texts.join('|');
}

void TestResultsTable::store(const ResultRecord& result)
{
    m_table->storeResult(result, app::SVParamMask[static_cast<std::size_t>(result.Model)]);
}

void TestResultsTable::startsEmptyUnderItsTitles()
{
    auto* grid = m_table->findChild<ui::Grid*>("MSHFlexGrid2");
    QCOMPARE(grid->rows(), 21);
    QCOMPARE(grid->columns(), 9);
    QCOMPARE(row(0), "Method|Model|K or F|kq1/s|kq2/M-1s-1|kq22/M-1s-1|Se|Error|r /nm");
    QCOMPARE(row(1), "||||||||");
}

void TestResultsTable::showsTheColumnsThatTheModelReports_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<int>("model");
    QTest::addColumn<QString>("shown");
    QTest::newRow("dynamic") << QByteArray("SV") << 1 << "SV| 1|||2.e+6||0.013|OK|";
    QTest::newRow("all but the second site")
        << QByteArray("Decay") << 6 << "Decay| 6|5.e+1|1.235e+7|2.e+6||0.013|OK|1.25";
    QTest::newRow("two sites") << QByteArray("SV") << 12 << "SV| 12|5.e+1||2.e+6|3.e+5|0.013|OK|";
    QTest::newRow("ratios only") << QByteArray("SV") << 9 << "SV| 9|5.e+1||||0.013|OK|1.25";
    QTest::newRow("no decay law") << QByteArray("Decay") << 9 << "Decay| 9|||||0.013|OK|";
    QTest::newRow("no such model") << QByteArray("SV") << -14 << "SV|-14|||||0.013|OK|";
}

void TestResultsTable::showsTheColumnsThatTheModelReports()
{
    QFETCH(const QByteArray, method);
    QFETCH(const int, model);
    QFETCH(const QString, shown);
    m_shared->results.ResultData[1] = fitted(model);
    m_shared->results.ResultData[1].Method = method.toStdString();
    m_shared->results.ResultRowEnd = 2;
    m_table->RedrawResult();
    QCOMPARE(row(1), shown);
    QCOMPARE(row(2), "||||||||");
}

void TestResultsTable::anUnusedRecordKeepsTheColumnsOfTheRowAbove()
{
    m_shared->results.ResultData[2] = fitted(3);
    m_shared->results.ResultRowEnd = 4;
    m_table->RedrawResult();
    QCOMPARE(row(1), "| 0|||||0.||");
    QCOMPARE(row(3), "| 0|0.e+0||0.e+0||0.||");
}

void TestResultsTable::assessmentChoosesColumnSix()
{
    store(fitted(1));
    m_shared->settings.AssessmentMode = 0;
    m_table->RedrawResult();
    QCOMPARE(m_table->GetResultText(0, 6), "R2");
    QCOMPARE(m_table->GetResultText(1, 6), ".98765");
    m_shared->settings.AssessmentMode = 1;
    m_table->RedrawResult();
    QCOMPARE(m_table->GetResultText(0, 6), "Se");
    QCOMPARE(m_table->GetResultText(1, 6), "0.013");
}

void TestResultsTable::theMarkerIsGoneAfterARedraw()
{
    m_table->SelectResultCell(4, 2);
    press("cmdSetCursor");
    QCOMPARE(m_table->GetResultText(4, 0), ">");
    m_table->RedrawResult();
    QCOMPARE(m_table->GetResultText(4, 0), "");
    store(fitted(1));
    QCOMPARE(m_table->GetResultText(5, 0), "");
}

void TestResultsTable::theTwentyFirstResultOverwritesTheFirst()
{
    for (int i = 1; i <= 21; ++i)
        store(fitted(5, i));
    QCOMPARE(m_table->GetResultText(1, 2), "1.05e+3");
    QCOMPARE(m_table->GetResultText(2, 2), "1.e+2");
    QCOMPARE(m_table->GetResultText(20, 2), "1.e+3");
    QCOMPARE(m_shared->results.ResultCursor, 2);
    QCOMPARE(m_shared->results.ResultRowEnd, 21);
}

void TestResultsTable::setCursorMovesTheMarker()
{
    store(fitted(1));
    store(fitted(1));
    m_table->SelectResultCell(1, 3);
    press("cmdSetCursor");
    QCOMPARE(m_shared->results.ResultCursor, 1);
    QCOMPARE(m_table->GetResultText(1, 0), ">");
    m_table->SelectResultCell(2, 0);
    press("cmdSetCursor");
    QCOMPARE(m_table->GetResultText(1, 0), "");
    QCOMPARE(m_table->GetResultText(2, 0), ">");
    m_table->SelectResultCell(0, 3);
    press("cmdSetCursor");
    QCOMPARE(m_shared->results.ResultCursor, 2);
}

void TestResultsTable::deletedRowsMoveUp()
{
    for (int i = 1; i <= 20; ++i)
        store(fitted(5, i));
    m_table->SelectResultCell(3, 4);
    press("cmdSetCursor");
    m_table->SelectResultCell(1, 4);
    press("cmdDelRow");
    QCOMPARE(row(1), "SV| 5|1.e+2||||0.013|OK|");
    QCOMPARE(m_table->GetResultText(2, 0), ">");
    QCOMPARE(m_table->GetResultText(3, 0), "");
    QCOMPARE(row(20), row(19)); // the last row stays as a duplicate
    QCOMPARE(m_shared->results.ResultData[1].KorF, 100.0);
    QVERIFY(m_shared->results.ResultData[20] == m_shared->results.ResultData[19]);
    QCOMPARE(m_shared->results.ResultCursor, 2);
    QCOMPARE(m_shared->results.ResultRowEnd, 20);
    QCOMPARE(m_table->grid().currentRow(), 1);
    QCOMPARE(m_table->grid().currentColumn(), 4);

    m_table->SelectResultCell(0, 4);
    press("cmdDelRow");
    QCOMPARE(m_shared->results.ResultData[1].KorF, 100.0);
    QCOMPARE(m_shared->results.ResultCursor, 2);
}

void TestResultsTable::deletingAtTheFirstCursorLeavesIt()
{
    store(fitted(5, 1));
    store(fitted(5, 2));
    m_table->SelectResultCell(1, 1);
    press("cmdSetCursor");
    press("cmdDelRow");
    QCOMPARE(m_shared->results.ResultData[1].KorF, 100.0);
    QCOMPARE(m_shared->results.ResultCursor, 1);
    QCOMPARE(m_shared->results.ResultRowEnd, 3);

    // However often rows are deleted below a far cursor, the table keeps an end.
    press("cmdClearAll");
    m_table->SelectResultCell(20, 1);
    press("cmdSetCursor");
    for (int i = 0; i < 25; ++i)
        press("cmdDelRow");
    QCOMPARE(m_shared->results.ResultCursor, 1);
    QCOMPARE(m_shared->results.ResultRowEnd, 1);
}

void TestResultsTable::clearAllForgetsEverything()
{
    store(fitted(6));
    store(fitted(6));
    press("cmdClearAll");
    QCOMPARE(row(1), "||||||||");
    QVERIFY(m_shared->results.ResultData[1] == ResultRecord());
    QCOMPARE(m_shared->results.ResultCursor, 1);
    QCOMPARE(m_shared->results.ResultRowEnd, 1);
}

void TestResultsTable::copyTakesTheRowsAboveTheCursor()
{
    const QString titles = "Method\tModel\tK or F\tkq1/s\tkq2/M-1s-1\tkq22/M-1s-1\tSe\tError\tr /nm\r\n";
    press("cmdCopy");
    QCOMPARE(ui::clipboardText(), titles);
    store(fitted(4));
    store(fitted(9));
    m_table->SelectResultCell(2, 1);
    press("cmdSetCursor");
    press("cmdCopy");
    QCOMPARE(ui::clipboardText(), titles + "SV\t 4\t5.e+1\t1.235e+7\t\t\t0.013\tOK\t\r\n");
}

void TestResultsTable::restoreHandsOutTheDisplayedRow()
{
    QSignalSpy restored(m_table.get(), &app::ResultsTable::restoreChosen);
    press("cmdRestore");
    QCOMPARE(restored.count(), 0);
    store(fitted(2));
    press("cmdRestore");
    QCOMPARE(restored.count(), 1);
    QCOMPARE(restored[0][0].toStringList().join('|'), row(1));
}

QTEST_MAIN(TestResultsTable)
#include "tst_resultstable.moc"
