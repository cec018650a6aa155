#include "app/blocktext.h"
#include "app/textlines.h"
#include "tests/support/memorysheet.h"

#include <QElapsedTimer>
#include <QtTest>

using app::Block;
using support::MemorySheet;

namespace
{

/// Milliseconds: a second for users; unoptimised and sanitised builds get more, a quadratic step would need hours.
#ifdef NDEBUG
constexpr qint64 kBudget = 1000;
#else
constexpr qint64 kBudget = 10'000;
#endif

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
    void copiesTheBlockBetweenTheCorners_data();
    void copiesTheBlockBetweenTheCorners();
    void aCopiedBlockComesBack();
    void everyLineEndEndsARow_data();
    void everyLineEndEndsARow();
    void dropsWhatLiesOutsideAndKeepsTitles();
    void hugeTextsAreQuick_data();
    void hugeTextsAreQuick();
};

void TestBlockText::copiesTheBlockBetweenTheCorners_data()
{
    QTest::addColumn<QList<int>>("corners");
    QTest::addColumn<QByteArray>("text");
    const QByteArray square = "2/3\t2/4\r\n3/3\t3/4\r\n";
    QTest::newRow("single cell") << QList<int>{1, 1, 1, 1} << QByteArray("1/1\r\n");
    QTest::newRow("far corner below right") << QList<int>{2, 3, 3, 4} << square;
    QTest::newRow("far corner above left") << QList<int>{3, 4, 2, 3} << square;
    QTest::newRow("far corner above right") << QList<int>{3, 3, 2, 4} << square;
    QTest::newRow("titles") << QList<int>{0, 0, 1, 1} << QByteArray("0/0\t0/1\r\n1/0\t1/1\r\n");
}

void TestBlockText::copiesTheBlockBetweenTheCorners()
{
    QFETCH(const QList<int>, corners);
    QFETCH(const QByteArray, text);
    MemorySheet sheet = numberedSheet();
    const Block block{corners[0], corners[1], corners[2], corners[3]};
    QCOMPARE(QByteArray::fromStdString(blockText(sheet, block)), text);

    emptyBlock(sheet, block);
    QVERIFY(sheet.cell(corners[0], corners[1]).empty());
    QVERIFY(sheet.cell(corners[2], corners[3]).empty());
    QCOMPARE(sheet.cell(5, 5), "5/5");
}

void TestBlockText::aCopiedBlockComesBack()
{
    MemorySheet sheet = numberedSheet();
    sheet.setCell(2, 2, "");
    sheet.setCell(3, 1, "");
    sheet.setCell(3, 3, "Φ\tab");
    const Block block{1, 1, 3, 3};
    const std::string copied = blockText(sheet, block);
    MemorySheet other;
    pasteBlock(other, 7, 18, copied);
    QCOMPARE(blockText(other, {7, 18, 9, 20}), copied);
    QCOMPARE(other.cell(9, 20), "Φ ab"); // a tab in a cell must not make two of it
}

void TestBlockText::everyLineEndEndsARow_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("block"); // of rows 1..3, columns 1..2, which held "x"
    QTest::newRow("CR LF") << QByteArray("a\tb\r\nc\td\r\n") << QByteArray("a\tb\r\nc\td\r\nx\tx\r\n");
    QTest::newRow("CR") << QByteArray("a\rc\r") << QByteArray("a\tx\r\nc\tx\r\nx\tx\r\n");
    QTest::newRow("LF") << QByteArray("a\nc\n") << QByteArray("a\tx\r\nc\tx\r\nx\tx\r\n");
    QTest::newRow("last row without end") << QByteArray("a\r\nb\tc") << QByteArray("a\tx\r\nb\tc\r\nx\tx\r\n");
    QTest::newRow("empty row") << QByteArray("a\n\nb") << QByteArray("a\tx\r\n\tx\r\nb\tx\r\n");
    QTest::newRow("empty cells") << QByteArray("\tb\r\n\t\r\n") << QByteArray("\tb\r\n\t\r\nx\tx\r\n");
    QTest::newRow("nothing") << QByteArray() << QByteArray("x\tx\r\nx\tx\r\nx\tx\r\n");
}

void TestBlockText::everyLineEndEndsARow()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArray, block);
    MemorySheet sheet;
    for (int row = 1; row <= 3; ++row)
        for (int column = 1; column <= 2; ++column)
            sheet.setCell(row, column, "x");
    pasteBlock(sheet, 1, 1, text.toStdString());
    QCOMPARE(QByteArray::fromStdString(blockText(sheet, {1, 1, 3, 2})), block);
}

void TestBlockText::dropsWhatLiesOutsideAndKeepsTitles()
{
    MemorySheet sheet = numberedSheet();
    pasteBlock(sheet, 9, 20, "in\tout\r\nout\r\n");
    QCOMPARE(sheet.cell(9, 20), "in");
    pasteBlock(sheet, 0, 0, "title\ttitle\r\ntitle\tcell\r\n");
    QCOMPARE(sheet.cell(0, 1), "0/1");
    QCOMPARE(sheet.cell(1, 0), "1/0");
    QCOMPARE(sheet.cell(1, 1), "cell");
}

void TestBlockText::hugeTextsAreQuick_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::addColumn<std::size_t>("firstCell");
    QTest::newRow("cells") << QByteArray("1\t") << std::size_t(1);
    QTest::newRow("rows") << QByteArray("1\n") << std::size_t(1);
    QTest::newRow("one cell") << QByteArray("τ") << app::kMaxFieldBytes / 2 * 2;
}

void TestBlockText::hugeTextsAreQuick()
{
    QFETCH(const QByteArray, piece);
    QFETCH(const std::size_t, firstCell);
    constexpr int kPieces = 10'000'000;
    const std::string text = piece.repeated(kPieces).toStdString();
    MemorySheet sheet;
    QElapsedTimer timer;
    timer.start();
    pasteBlock(sheet, 1, 1, text);
    QVERIFY(timer.elapsed() < kBudget);
    QCOMPARE(sheet.cell(1, 1).size(), firstCell); // no character is cut in two
}

QTEST_APPLESS_MAIN(TestBlockText)
#include "tst_blocktext.moc"
