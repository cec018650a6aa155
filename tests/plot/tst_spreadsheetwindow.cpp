#include "plot/spreadsheetwindow.h"
#include "tests/support/waitlimit.h"
#include "tests/support/windowsize.h"
#include "ui/grid.h"
#include "ui/twips.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLayout>
#include <QLineEdit>
#include <QTest>

#include <cstdint>

class TestSpreadSheet : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void copiesTheFilledBlock();
    void growsAsItIsWritten();
    void currentCellIsShownInFull();
    void fillsQuicklyWithoutScrolling();
    void startsSmallAndSavesNothing();
    void theGridGoesToTheFarEdges();

private:
    void write(int column, int row, std::string_view text)
    {
        m_sheet->Locate(column, row);
        m_sheet->Value(text);
    }
    QString copied()
    {
        m_sheet->findChild<QAction*>("Copy_Acc")->trigger();
        return QGuiApplication::clipboard()->text();
    }

    std::unique_ptr<plot::SpreadSheet> m_sheet;
    ui::Grid* m_grid = nullptr;
};

void TestSpreadSheet::init()
{
    m_sheet = std::make_unique<plot::SpreadSheet>();
    m_grid = m_sheet->findChild<ui::Grid*>("MSHFlexGrid1");
    QVERIFY(m_grid);
}

void TestSpreadSheet::copiesTheFilledBlock()
{
    const std::pair<QStringList, QString> cases[]{// "column row text", and the copied text
                                                  {{"0 0 a", "1 0 b", "0 1 c", "1 1 d"}, "a\tb\rc\td\r"},
                                                  {{"1 0 x", "0 1 1"}, "\tx\r1\r"},
                                                  {{"0 0 τ1/ns", "1 0 b", "2 0 c", "4 0 e"}, "τ1/ns\tb\tc\r"},
                                                  {{"0 0 a", "1 1 b", "0 2 c"}, "a\r"},
                                                  {{"100 500 z"}, "\r"}};
    for (const auto& [cells, text] : cases) {
        m_sheet->ClearSheet();
        for (const QString& cell : cells) {
            const QStringList parts = cell.split(' ');
            write(parts[0].toInt(), parts[1].toInt(), parts[2].toStdString());
            QCOMPARE(m_grid->text(parts[1].toInt(), parts[0].toInt()), parts[2]);
        }
        QCOMPARE(copied(), text);
    }
    m_sheet->ClearSheet();
    QCOMPARE(m_grid->text(500, 100), QString());

    write(0, 0, "a");
    m_sheet->show();
    m_sheet->activateWindow();
    QTRY_VERIFY(m_grid->hasFocus());
    QTest::keyClick(m_grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), "a\r");
}

void TestSpreadSheet::growsAsItIsWritten()
{
    m_sheet->Rows(51);
    m_sheet->Cols(10);
    write(10, 51, "x");
    QCOMPARE(m_grid->rows(), 52);
    QCOMPARE(m_grid->columns(), 11);
    m_sheet->Rows(1 << 30);
    m_sheet->Cols(-1);
    QCOMPARE(m_grid->rows(), 501);
    QCOMPARE(m_grid->columns(), 1);
}

void TestSpreadSheet::currentCellIsShownInFull()
{
    const auto* shown = m_sheet->findChild<QLineEdit*>();
    write(2, 1, "1.234e-5");
    write(1, 1, "0.5");
    QCOMPARE(shown->text(), "0.5");
    m_grid->selectCell(1, 2);
    QCOMPARE(shown->text(), "1.234e-5");
    m_sheet->Value("2");
    QCOMPARE(m_grid->text(1, 2), "2");
    m_sheet->Row(1);
    m_sheet->col(1);
    QCOMPARE(m_grid->currentColumn(), 1);
}

void TestSpreadSheet::fillsQuicklyWithoutScrolling()
{
    m_sheet->show();
    QElapsedTimer timer;
    timer.start();
    m_sheet->setRedraw(false);
    for (int row = 0; row <= 500; ++row)
        for (int column = 0; column <= 100; ++column)
            write(column, row, "1.234e-5");
    m_sheet->setRedraw(true);
    QCoreApplication::processEvents();
    QVERIFY2(timer.elapsed() < support::kWaitLimit, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(m_grid->currentRow(), 500);
    QCOMPARE(copied().count('\t'), 501 * 100); // a full table ends at its edges
    QVERIFY(m_grid->visualRect(m_grid->model()->index(1, 1)).intersects(m_grid->viewport()->rect()));
}

void TestSpreadSheet::startsSmallAndSavesNothing()
{
    std::int16_t width = 0, height = 0;
    m_sheet->getSize(width, height);
    QVERIFY(support::hasLargeFont() ? width > 4005 : width == 4005);   // 267 pixels
    QVERIFY(support::hasLargeFont() ? height > 1995 : height == 1995); // 133 pixels
    const QString file = QDir::temp().filePath("vorlo-table.csv");
    m_sheet->SaveCSV(file.toStdString());
    QVERIFY(!QFile::exists(file));
}

void TestSpreadSheet::theGridGoesToTheFarEdges()
{
    m_sheet->resize(500, 400);
    m_sheet->show();
    const QWidget* text = m_sheet->findChild<QLineEdit*>();
    const QPoint corner(ui::toPixels(120), ui::toPixels(120) + m_sheet->layout()->menuBar()->height());
    QTRY_COMPARE(text->geometry().topLeft(), corner);
    QCOMPARE(m_grid->geometry(), QRect(text->geometry().bottomLeft() + QPoint(0, 1), QPoint(499, 399)));
}

QTEST_MAIN(TestSpreadSheet)
#include "tst_spreadsheetwindow.moc"
