#include "app/clipboardcommands.h"
#include "app/datasheet.h"
#include "app/sharedstate.h"
#include "ui/clipboard.h"
#include "ui/grid.h"

#include <QLineEdit>
#include <QtTest>

class TestClipboardCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void copyLeavesSheetAndSelection();
    void cutAndPasteMoveABlock();
    void pasteTakesSpreadsheetText();
    void onlyPastingForgetsTheNormalization();

private:
    std::unique_ptr<app::DataSheet> m_sheet;
    app::SharedState m_shared;
};

void TestClipboardCommands::init()
{
    m_sheet = std::make_unique<app::DataSheet>();
    m_sheet->SetSheetText(1, 1, "0");
    m_sheet->SetSheetText(1, 2, "1e-3");
    m_sheet->SetSheetText(2, 2, "τ");
    m_shared.DataNormalized = true;
}

void TestClipboardCommands::copyLeavesSheetAndSelection()
{
    ui::Grid& grid = m_sheet->grid();
    grid.selectBlock(2, 2, 1, 1);
    mnuCopy_Click(*m_sheet, grid);
    QCOMPARE(ui::clipboardText(), QString("0\t1e-3\r\n\tτ\r\n"));
    QCOMPARE((QList<int>{grid.currentRow(), grid.currentColumn(), grid.farRow(), grid.farColumn()}),
             (QList<int>{2, 2, 1, 1}));
    QCOMPARE(m_sheet->GetSheetText(2, 2), QString("τ"));
}

void TestClipboardCommands::cutAndPasteMoveABlock()
{
    ui::Grid& grid = m_sheet->grid();
    grid.selectBlock(1, 1, 2, 2);
    mnuCut_Click(*m_sheet, grid);
    QCOMPARE(m_sheet->GetSheetText(1, 2), QString());
    QCOMPARE(m_sheet->findChild<QLineEdit*>("txtEdit")->text(), QString());
    m_sheet->SelectSheetCell(8, 19);
    mnuPaste_Click(*m_sheet, grid, m_shared);
    QCOMPARE(m_sheet->GetSheetText(8, 19), QString("0"));
    QCOMPARE(m_sheet->GetSheetText(9, 20), QString("τ"));
    QCOMPARE(m_sheet->findChild<QLineEdit*>("txtEdit")->text(), QString("0"));
}

void TestClipboardCommands::pasteTakesSpreadsheetText()
{
    ui::copyText("5\t6\n7\t8\n");
    m_sheet->SelectSheetCell(0, 1);
    mnuPaste_Click(*m_sheet, m_sheet->grid(), m_shared);
    QCOMPARE(m_sheet->GetSheetText(0, 1), QString());
    QCOMPARE(m_sheet->GetSheetText(1, 1), QString("7"));
    QCOMPARE(m_sheet->GetSheetText(1, 2), QString("8"));
}

void TestClipboardCommands::onlyPastingForgetsTheNormalization()
{
    mnuCopy_Click(*m_sheet, m_sheet->grid());
    mnuCut_Click(*m_sheet, m_sheet->grid());
    QVERIFY(m_shared.DataNormalized);
    mnuPaste_Click(*m_sheet, m_sheet->grid(), m_shared);
    QVERIFY(!m_shared.DataNormalized);
}

QTEST_MAIN(TestClipboardCommands)
#include "tst_clipboardcommands.moc"
