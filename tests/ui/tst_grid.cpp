#include "tests/support/windowsize.h"
#include "ui/fittingfont.h"
#include "ui/grid.h"
#include "ui/titleline.h"
#include "ui/twips.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

#include <cmath>

class TestGrid : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void titlesAreHeadersAndCells();
    void titlesSelectTheirCells();
    void arrowsStayAmongTheCells();
    void shiftArrowsKeepTheAnchor();
    void dragKeepsTheAnchor();
    void keysOfOthersAreLeftToThem();
    void longTextsAreCondensed();
    void narrowColumnsKeepTheirTextsToThemselves();
    void titlesAreAsWideAsTexts();
    void looksTheSameRightToLeft();
    void theCellThatKeysGoToIsFramed();

private:
    QPoint centreOf(int row, int column) const
    {
        return m_grid->visualRect(m_grid->model()->index(row, column)).center();
    }
    /// Current cell and opposite corner of the selection: "row,column to row,column".
    QString block() const
    {
        const QList<int> corners{m_grid->currentRow(), m_grid->currentColumn(), m_grid->farRow(), m_grid->farColumn()};
        return QString("%1,%2 to %3,%4").arg(corners[0]).arg(corners[1]).arg(corners[2]).arg(corners[3]);
    }

    QWidget* m_window = nullptr;
    ui::Grid* m_grid = nullptr;
    QWidget* m_next = nullptr;
};

void TestGrid::init()
{
    m_window = new QWidget;
    m_window->resize(600, 400);
    m_grid = new ui::Grid(m_window);
    m_grid->setGeometry(0, 0, 600, 300);
    m_next = new QWidget(m_window);
    m_next->setFocusPolicy(Qt::StrongFocus);
    m_grid->setCounts(10, 6);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    m_grid->setFocus();
}

void TestGrid::cleanup() { delete m_window; }

void TestGrid::titlesAreHeadersAndCells()
{
    m_grid->setColumnTwips(0, 1000);
    m_grid->setText(0, 3, "Model");
    m_grid->setText(2, 0, "A1");
    QCOMPARE(m_grid->model()->headerData(3, Qt::Horizontal).toString(), "Model");
    QCOMPARE(m_grid->model()->headerData(2, Qt::Vertical).toString(), "A1");
    const int width = m_grid->verticalHeader()->width();
    QVERIFY(support::hasLargeFont() ? width > ui::toPixels(1000) : width == ui::toPixels(1000));
    QVERIFY(m_grid->isRowHidden(0));
    QVERIFY(m_grid->isColumnHidden(0));

    QSignalSpy clicks(m_grid, &ui::Grid::cellChosen);
    const QHeaderView* across = m_grid->horizontalHeader();
    QTest::mouseClick(across->viewport(), Qt::LeftButton, {}, {across->sectionViewportPosition(3) + 20, 5});
    QCOMPARE(block(), "0,3 to 0,3");
    const QHeaderView* down = m_grid->verticalHeader();
    QTest::mouseClick(down->viewport(), Qt::LeftButton, {}, {5, down->sectionViewportPosition(2) + 5});
    QCOMPARE(block(), "2,0 to 2,0");
    QTest::mouseClick(m_grid->findChild<QAbstractButton*>(), Qt::LeftButton);
    QCOMPARE(block(), "0,0 to 0,0");
    QCOMPARE(clicks.count(), 3);
}

void TestGrid::titlesSelectTheirCells()
{
    m_grid->selectByTitles();
    const QHeaderView* across = m_grid->horizontalHeader();
    const QHeaderView* down = m_grid->verticalHeader();
    const auto title = [](const QHeaderView& header, int section) {
        const int middle = header.sectionViewportPosition(section) + header.sectionSize(section) / 2;
        return header.orientation() == Qt::Horizontal ? QPoint(middle, 5) : QPoint(5, middle);
    };
    QTest::mouseClick(down->viewport(), Qt::LeftButton, {}, title(*down, 2));
    QCOMPARE(block(), "2,1 to 2,5");
    QTest::mouseClick(m_grid->findChild<QAbstractButton*>(), Qt::LeftButton);
    QCOMPARE(block(), "1,1 to 9,5");
    QTest::mousePress(across->viewport(), Qt::LeftButton, {}, title(*across, 2));
    QCOMPARE(block(), "1,2 to 9,2");
    QMouseEvent drag(QEvent::MouseMove, title(*across, 4), across->viewport()->mapToGlobal(title(*across, 4)),
                     Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(across->viewport(), &drag);
    QTest::mouseRelease(across->viewport(), Qt::LeftButton, {}, title(*across, 4));
    QCOMPARE(block(), "1,2 to 9,4");
}

void TestGrid::arrowsStayAmongTheCells()
{
    m_grid->selectCell(1, 1);
    QSignalSpy moves(m_grid, &ui::Grid::currentCellMoved);
    QTest::keyClick(m_grid, Qt::Key_Up);
    QTest::keyClick(m_grid, Qt::Key_Left);
    QCOMPARE(moves.count(), 0);
    QTest::keyClick(m_grid, Qt::Key_Down);
    QTest::keyClick(m_grid, Qt::Key_Right);
    QCOMPARE(block(), "2,2 to 2,2");
    QCOMPARE(moves.count(), 2);
    QTest::keyClick(m_grid, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(m_grid, Qt::Key_Down);
    QCOMPARE(block(), "9,5 to 9,5");
    m_grid->setText(10, 1, "x");
    m_grid->selectCell(10, 1);
    QCOMPARE(m_grid->text(10, 1), QString()); // there are no cells outside
    QCOMPARE(m_grid->currentRow(), 9);
    m_grid->selectCell(0, 0);
    QTest::keyClick(m_grid, Qt::Key_Down);
    QCOMPARE(block(), "1,0 to 1,0");
}

void TestGrid::shiftArrowsKeepTheAnchor()
{
    m_grid->selectCell(3, 3);
    for (const int key : {Qt::Key_Up, Qt::Key_Left, Qt::Key_Left})
        QTest::keyClick(m_grid, static_cast<Qt::Key>(key), Qt::ShiftModifier);
    QCOMPARE(block(), "3,3 to 2,1");
    QCOMPARE(m_grid->selectionModel()->selectedIndexes().size(), 6);
    m_grid->selectAll();
    QCOMPARE(m_grid->selectionModel()->selectedIndexes().size(), 45);
    QCOMPARE(m_grid->currentRow(), 1);
}

void TestGrid::dragKeepsTheAnchor()
{
    QTest::mousePress(m_grid->viewport(), Qt::LeftButton, {}, centreOf(4, 4));
    QMouseEvent move(QEvent::MouseMove, centreOf(2, 3), m_grid->viewport()->mapToGlobal(centreOf(2, 3)), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_grid->viewport(), &move);
    QTest::mouseRelease(m_grid->viewport(), Qt::LeftButton, {}, centreOf(2, 3));
    QCOMPARE(block(), "4,4 to 2,3");
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, Qt::ShiftModifier, centreOf(6, 5));
    QCOMPARE(block(), "4,4 to 6,5");
}

void TestGrid::keysOfOthersAreLeftToThem()
{
    QSignalSpy typed(m_grid, &ui::Grid::textTyped);
    const auto press = [this](int key, Qt::KeyboardModifiers modifiers, const QString& text) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(m_grid, &event);
        return event.isAccepted();
    };
    QVERIFY(press(0, {}, "τ"));
    QCOMPARE(typed.takeFirst().front().toString(), "τ");
    QVERIFY(!press(Qt::Key_Space, {}, " "));
    QVERIFY(!press(Qt::Key_Return, {}, "\r"));
    QVERIFY(!press(Qt::Key_C, Qt::ControlModifier, "c"));
    QVERIFY(!press(Qt::Key_F, Qt::AltModifier, "f"));
    QTest::keyClick(m_grid, Qt::Key_F2); // nothing is edited in place
    QVERIFY(typed.isEmpty());
    QVERIFY(!m_grid->viewport()->findChild<QWidget*>());
    QTest::keyClick(m_grid, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), m_next);
    QCOMPARE(m_grid->currentColumn(), 1);
}

void TestGrid::longTextsAreCondensed()
{
    const QFont font;
    const QString title = "kq22/M-1s-1";
    const qreal room = QFontMetricsF(font).horizontalAdvance(title) * 0.8;
    QVERIFY(QFontMetricsF(ui::fittingFont(font, title, room)).horizontalAdvance(title) < room * 1.05);
    QCOMPARE(ui::fittingFont(font, "kq1", room), font);
    QCOMPARE(ui::fittingFont(font, QString(), -5), font);
    QVERIFY(ui::fittingFont(font, title, -5).stretch() >= 60);
}

void TestGrid::narrowColumnsKeepTheirTextsToThemselves()
{
    m_grid->setColumnTwips(1, 240);
    const auto nextTitle = [&] {
        const QHeaderView& header = *m_grid->horizontalHeader();
        return m_grid->horizontalHeader()->viewport()->grab(
            {header.sectionViewportPosition(2), 0, header.sectionSize(2), header.height()});
    };
    const QImage alone = nextTitle().toImage();
    m_grid->setText(0, 1, "0.04001");
    QCOMPARE(nextTitle().toImage(), alone);
    m_grid->setText(1, 1, "2.082e-7");
    m_grid->resizeColumnToContents(1);
    QVERIFY(m_grid->columnWidth(1) > m_grid->fontMetrics().horizontalAdvance("2.082e-7"));
}

void TestGrid::titlesAreAsWideAsTexts()
{
    const QFont font;
    for (const QString title : {"kq22/M-1s-1", "τ1/ns", "Φ", "0.5", "e\u0301te\u0301", "\u200f1.",
                                "\u0633\u0644\u0627\u0645", "減衰", "\U00020b9f", ""}) {
        const ui::TitleLine line = ui::titleLine(font, title);
        QVERIFY2(std::abs(line.width - QFontMetricsF(font).horizontalAdvance(title)) < 1.5, qPrintable(title));
        for (const QGlyphRun& run : line.glyphs) {
            QVERIFY2(!run.glyphIndexes().contains(0), qPrintable(title)); // not drawn as a box
            for (const QPointF& place : run.positions())
                QVERIFY(place.x() <= line.width && std::abs(place.y()) < 0.5 * QFontMetricsF(font).ascent());
        }
    }
}

void TestGrid::looksTheSameRightToLeft()
{
    for (const auto& [row, column, text] :
         {std::tuple{0, 0, "1."}, {0, 1, "0."}, {1, 0, "2.e-2"}, {1, 1, "-4."}, {1, 2, "7"}})
        m_grid->setText(row, column, text);
    m_grid->setColumnTwips(1, 1200);
    const Qt::LayoutDirection usual = QGuiApplication::layoutDirection();
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    const QImage leftToRight = m_grid->grab().toImage();
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    const QImage rightToLeft = m_grid->grab().toImage();
    QGuiApplication::setLayoutDirection(usual);
    QCOMPARE(rightToLeft, leftToRight);
}

void TestGrid::theCellThatKeysGoToIsFramed()
{
    m_grid->selectCell(2, 2);
    const QRect cell = m_grid->visualRect(m_grid->currentIndex());
    const auto edge = [&] {
        const QImage seen = m_grid->viewport()->grab().toImage();
        return seen.pixelColor((QPointF(cell.center().x(), cell.top() + 1) * seen.devicePixelRatio()).toPoint());
    };
    QCOMPARE(edge(), m_grid->palette().color(QPalette::Text));
    m_next->setFocus();
    QCOMPARE(edge(), m_grid->palette().color(QPalette::Highlight));
}

QTEST_MAIN(TestGrid)
#include "tst_grid.moc"
