#include "app/resultrow.h"
#include "app/resultstable.h"
#include "app/sharedstate.h"
#include "ui/grid.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolTip>
#include <QtTest>

using app::ResultRecord;

namespace
{

constexpr auto kRatios = models::Analysis::SternVolmer;

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
    void keepsTheRowsBelowACursorSetBack();
    void readsTheFieldsOfAFileLine();
    void aNegativeVolumeHasNoRadius();
    void showsTheColumnsThatTheModelReports();
    void theMarkerFollowsSetCursorUntilARedraw();
    void aNewResultIsInViewAndItsTipTellsTheError();
    void deletedRowsMoveUp();
    void deletingAtTheFirstCursorLeavesIt();
    void copyTakesTheRowsAboveTheCursor();
    void restoreHandsOutTheDisplayedRow();

private:
    void press(const char* button, int row, int column = 1)
    {
        m_table->SelectResultCell(row, column);
        m_table->findChild<QPushButton*>(button)->click();
    }
    void store(const ResultRecord& result)
    {
        m_table->storeResult(result, models::reportedMask(result.Model, kRatios));
    }
    QString row(int row) const
    {
        QStringList texts;
        for (int column = 0; column < app::kResultColumns; ++column)
            texts << m_table->GetResultText(row, column);
        return texts.join('|');
    }
    /// The rows with a cursor mark.
    QString marked() const
    {
        QStringList rows;
        for (int row = 1; row <= app::kMaxResults; ++row)
            if (m_table->GetResultText(row, 0) == ">")
                rows << QString::number(row);
        return rows.join(' ');
    }

    std::unique_ptr<app::SharedState> m_shared;
    std::unique_ptr<app::ResultsTable> m_table;
};

void TestResultsTable::init()
{
    m_table.reset();
    m_shared = std::make_unique<app::SharedState>();
    m_table = std::make_unique<app::ResultsTable>(*m_shared);
}

void TestResultsTable::keepsTheRowsBelowACursorSetBack()
{
    app::ResultStore& store = m_shared->results;
    store.ResultCursor = 7;
    store.store(fitted(2), models::KorF);
    QCOMPARE(store.ResultRowEnd, 8);
    store.ResultCursor = 2;
    store.store(fitted(2), models::KorF);
    QCOMPARE(store.ResultCursor, 3);
    QCOMPARE(store.ResultRowEnd, 8);
}

void TestResultsTable::readsTheFieldsOfAFileLine()
{
    app::ResultStore& store = m_shared->results;
    const std::array<std::string, 11> fields{"SV",   " 12", "5.000e-01", "1e3 s",  "abc",   "2.5e+07",
                                             "0.03", "*",   "1.2",       "0.9876", "beyond"};
    const ResultRecord expected{"SV", 12, .5, 1000, 0, 2.5e7, .9876, "*", 1.2, .03};
    store.SetResultRecord(20, fields);
    QVERIFY(store.ResultData[20] == expected);

    store.ResultData[1] = fitted(3);
    store.SetResultRecord(1, {});
    QVERIFY(store.ResultData[1] == fitted(3));
    // Numbers that do not fit into their type, and texts that are not a single number where a number is expected.
    const std::array<std::string, 10> unusable{"SV",    "1e12", "1e400", "-1e400", "1e400",
                                               "1e999", "0.1x", "OK",    "",       "1e400"};
    store.SetResultRecord(1, unusable);
    QVERIFY(store.ResultData[1] == fitted(3));
}

void TestResultsTable::aNegativeVolumeHasNoRadius() { QCOMPARE(app::RadiusFromK(-7.567461992, 1), 0.0); }

// tst_everycommand compares the rows of all models.
void TestResultsTable::showsTheColumnsThatTheModelReports()
{
    const std::tuple<const char*, int, const char*> cases[]{
        {"Decay", 6, "Decay| 6|5.e+1|1.235e+7|2.e+6||0.013|OK|1.25"},
        {"Decay", 9, "Decay| 9|||||0.013|OK|"},
        {"SV", -14, "SV|-14|||||0.013|OK|"}};
    for (const auto& [method, model, shown] : cases) {
        m_shared->results.ResultData[1] = fitted(model);
        m_shared->results.ResultData[1].Method = method;
        m_shared->results.ResultRowEnd = 2;
        m_table->RedrawResult();
        QCOMPARE(row(1), shown);
        QCOMPARE(row(2), "||||||||");
    }

    // An unused record keeps the columns of the row above.
    m_shared->results.clearAll();
    m_shared->results.ResultData[2] = fitted(3);
    m_shared->results.ResultRowEnd = 4;
    m_table->RedrawResult();
    QCOMPARE(row(1), "| 0|||||0.||");
    QCOMPARE(row(3), "| 0|0.e+0||0.e+0||0.||");
}

void TestResultsTable::theMarkerFollowsSetCursorUntilARedraw()
{
    press("cmdSetCursor", 1);
    QCOMPARE(marked(), "1");
    press("cmdSetCursor", 4);
    QCOMPARE(marked(), "4");
    press("cmdSetCursor", 0);
    QCOMPARE(m_shared->results.ResultCursor, 4);
    store(fitted(1)); // redraws
    QCOMPARE(marked(), "");
}

void TestResultsTable::aNewResultIsInViewAndItsTipTellsTheError()
{
    ui::Grid& grid = m_table->grid();
    m_table->resize(300, 200); // a few rows and columns
    m_table->show();
    grid.scrollTo(grid.model()->index(1, 8));
    const int sideways = grid.columnAt(0);
    QVERIFY(sideways > 1);
    const auto tipAt = [&grid](QWidget* viewport, int row) {
        const QPoint place(5, grid.rowViewportPosition(row) + 5);
        QHelpEvent pointedAt(QEvent::ToolTip, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &pointedAt);
        return QToolTip::text();
    };
    for (int row = 1; row <= 22; ++row) {
        ResultRecord result = fitted(5);
        result.Error = "not satisfied " + std::to_string(row);
        store(result);
        const int stored = (row - 1) % app::kMaxResults + 1;
        QVERIFY2(grid.viewport()->rect().contains(grid.visualRect(grid.model()->index(stored, sideways))),
                 qPrintable(QString::number(row)));
        QCOMPARE(tipAt(grid.viewport(), stored), QString::fromStdString(result.Error));
    }
    QCOMPARE(grid.columnAt(0), sideways);
    QCOMPARE(tipAt(grid.verticalHeader()->viewport(), 2), "not satisfied 22");
    press("cmdClearAll", 1);
    QTRY_COMPARE(tipAt(grid.viewport(), 2), "");
}

void TestResultsTable::deletedRowsMoveUp()
{
    for (int i = 1; i <= 20; ++i)
        store(fitted(5, i));
    press("cmdSetCursor", 3);
    press("cmdDelRow", 0);
    press("cmdDelRow", 1, 4);
    QCOMPARE(row(1), "SV| 5|1.e+2||||0.013|OK|");
    QCOMPARE(marked(), "2");
    QCOMPARE(row(20), row(19)); // the last row stays as a duplicate
    QCOMPARE(m_shared->results.ResultData[1].KorF, 100.0);
    QVERIFY(m_shared->results.ResultData[20] == m_shared->results.ResultData[19]);
    QCOMPARE(m_shared->results.ResultCursor, 2);
    QCOMPARE(m_shared->results.ResultRowEnd, 20);
    QCOMPARE(m_table->grid().currentRow(), 1);
    QCOMPARE(m_table->grid().currentColumn(), 4);
}

void TestResultsTable::deletingAtTheFirstCursorLeavesIt()
{
    store(fitted(5, 1));
    store(fitted(5, 2));
    press("cmdSetCursor", 1);
    press("cmdDelRow", 1);
    QCOMPARE(m_shared->results.ResultData[1].KorF, 100.0);
    QCOMPARE(m_shared->results.ResultCursor, 1);
    QCOMPARE(m_shared->results.ResultRowEnd, 3);

    // However often rows are deleted below a far cursor, the table keeps an end.
    press("cmdClearAll", 1);
    QCOMPARE(row(1), "||||||||");
    QVERIFY(m_shared->results.ResultData[1] == ResultRecord());
    press("cmdSetCursor", 20);
    for (int i = 0; i < 25; ++i)
        press("cmdDelRow", 20);
    QCOMPARE(m_shared->results.ResultCursor, 1);
    QCOMPARE(m_shared->results.ResultRowEnd, 1);
}

void TestResultsTable::copyTakesTheRowsAboveTheCursor()
{
    store(fitted(4));
    store(fitted(9));
    press("cmdSetCursor", 2);
    press("cmdCopy", 1);
    QCOMPARE(QGuiApplication::clipboard()->text(),
             "Method\tModel\tK or F\tkq1/s\tkq2/M-1s-1\tkq22/M-1s-1\tSe\tError\tr /nm\r\n"
             "SV\t 4\t5.e+1\t1.235e+7\t\t\t0.013\tOK\t\r\n");
}

void TestResultsTable::restoreHandsOutTheDisplayedRow()
{
    QSignalSpy restored(m_table.get(), &app::ResultsTable::restoreChosen);
    press("cmdRestore", 1);
    QCOMPARE(restored.count(), 0);
    store(fitted(2));
    press("cmdRestore", 1);
    QCOMPARE(restored.count(), 1);
    QCOMPARE(restored[0][0].toStringList().join('|'), row(1));
}

QTEST_MAIN(TestResultsTable)
#include "tst_resultstable.moc"
