#include "app/blocktext.h"
#include "app/textlines.h"
#include "tests/support/memorysheet.h"
#include "tests/support/waitlimit.h"

#include <QElapsedTimer>
#include <QtTest>

#include <algorithm>
#include <cctype>

using app::Block;
using support::MemorySheet;

namespace
{

MemorySheet numberedSheet()
{
    MemorySheet sheet;
    for (int row = 0; row < sheet.rows; ++row)
        for (int column = 0; column < sheet.columns; ++column)
            sheet.setCell(row, column, std::to_string(row) + "/" + std::to_string(column));
    return sheet;
}

} // namespace

class TestBlockText : public QObject
{
    Q_OBJECT

private slots:
    void copiesTheBlockBetweenTheCorners();
    void aCopiedBlockComesBack();
    void everyLineEndEndsARow();
    void dropsWhatLiesOutsideAndKeepsTitles();
    void hugeTextsAreQuick();
};

void TestBlockText::copiesTheBlockBetweenTheCorners()
{
    const std::string square = "2/3\t2/4\r\n3/3\t3/4\r\n";
    const std::pair<Block, std::string> cases[]{{{1, 1, 1, 1}, "1/1\r\n"},
                                                {{2, 3, 3, 4}, square},
                                                {{3, 4, 2, 3}, square},
                                                {{3, 3, 2, 4}, square},
                                                {{0, 0, 1, 1}, "0/0\t0/1\r\n1/0\t1/1\r\n"}};
    for (const auto& [block, text] : cases) {
        MemorySheet sheet = numberedSheet();
        QCOMPARE(blockText(cellsOf(sheet), block), text);
        emptyBlock(sheet, block);
        QVERIFY(std::ranges::all_of(blockText(cellsOf(sheet), block), [](char c) { return std::isspace(c); }));
        QCOMPARE(sheet.cell(5, 5), "5/5");
    }
}

void TestBlockText::aCopiedBlockComesBack()
{
    MemorySheet sheet = numberedSheet();
    sheet.setCell(2, 2, "");
    sheet.setCell(3, 1, "");
    sheet.setCell(3, 3, "Φ\tab");
    const Block block{1, 1, 3, 3};
    const std::string copied = blockText(cellsOf(sheet), block);
    MemorySheet other;
    pasteBlock(other, 7, 18, copied);
    QCOMPARE(app::blockText(cellsOf(other), {7, 18, 9, 20}), copied);
    QCOMPARE(other.cell(9, 20), "Φ ab"); // a tab must not split a cell
}

void TestBlockText::everyLineEndEndsARow()
{
    // pasted text, and rows 1..3 of columns 1 and 2 afterwards; all held "x" before
    const std::pair<std::string, std::string> cases[]{{"a\tb\r\nc\td\r\n", "a\tb\r\nc\td\r\nx\tx\r\n"},
                                                      {"a\rc\r", "a\tx\r\nc\tx\r\nx\tx\r\n"},
                                                      {"a\nc\n", "a\tx\r\nc\tx\r\nx\tx\r\n"},
                                                      {"a\r\nb\tc", "a\tx\r\nb\tc\r\nx\tx\r\n"},
                                                      {"a\n\nb", "a\tx\r\n\tx\r\nb\tx\r\n"},
                                                      {"\tb\r\n\t\r\n", "\tb\r\n\t\r\nx\tx\r\n"},
                                                      {"", "x\tx\r\nx\tx\r\nx\tx\r\n"}};
    for (const auto& [text, block] : cases) {
        MemorySheet sheet;
        pasteBlock(sheet, 1, 1, "x\tx\nx\tx\nx\tx\n");
        pasteBlock(sheet, 1, 1, text);
        QCOMPARE(app::blockText(cellsOf(sheet), {1, 1, 3, 2}), block);
    }
}

void TestBlockText::dropsWhatLiesOutsideAndKeepsTitles()
{
    MemorySheet sheet = numberedSheet();
    QCOMPARE(pasteBlock(sheet, 9, 20, "in\tout\t\r\nout\tout"), 3);
    QCOMPARE(sheet.cell(9, 20), "in");
    QCOMPARE(pasteBlock(sheet, 1, 1, "in\tin\r\n\r\n"), 0);
    pasteBlock(sheet, 0, 0, "title\ttitle\r\ntitle\tcell\r\n");
    QCOMPARE(sheet.cell(0, 1), "0/1");
    QCOMPARE(sheet.cell(1, 0), "1/0");
    QCOMPARE(sheet.cell(1, 1), "cell");
}

void TestBlockText::hugeTextsAreQuick()
{
    const std::pair<QByteArray, std::size_t> cases[]{
        {"1\t", 1}, {"1\n", 1}, {"τ", app::kMaxFieldBytes / 2 * 2}}; // no character is cut in two
    for (const auto& [piece, firstCell] : cases) {
        const std::string text = piece.repeated(10'000'000).toStdString();
        MemorySheet sheet;
        QElapsedTimer timer;
        timer.start();
        pasteBlock(sheet, 1, 1, text);
        QVERIFY2(timer.elapsed() < support::kWaitLimit, piece);
        QCOMPARE(sheet.cell(1, 1).size(), firstCell);
    }
}

QTEST_APPLESS_MAIN(TestBlockText)
#include "tst_blocktext.moc"
