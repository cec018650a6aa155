#include "app/datasheet.h"

#include "ui/clipboard.h"
#include "ui/grid.h"

#include <QInputMethodEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <functional>

class TestDataSheet : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void startsWithTitlesAndAllRowsInView();
    void typingGoesIntoTheEditorAndEnterStores();
    void inputMethodTextStartsAnEditAndEscapeEndsIt();
    void thePresentTextIsEdited();
    void remarksAreShown();
    void titleCellsAreNotEdited();
    void editorMirrorsTheCurrentCell();
    void leavingTheLineStoresWhatWasTyped();
    void pastedBlocksGoIntoTheSheet();
    void deleteEmptiesTheSelectedBlock();

private:
    std::unique_ptr<app::DataSheet> m_sheet;
    ui::Grid* m_grid = nullptr;
    QLineEdit* m_editor = nullptr;
};

void TestDataSheet::init()
{
    m_sheet.reset();
    m_sheet = std::make_unique<app::DataSheet>();
    m_grid = m_sheet->findChild<ui::Grid*>("MSHFlexGrid1");
    m_editor = m_sheet->findChild<QLineEdit*>("txtEdit");
    QVERIFY(m_grid);
    QVERIFY(m_editor);
    m_sheet->show();
    m_sheet->activateWindow();
    m_grid->setFocus();
    QTRY_VERIFY(m_grid->hasFocus());
}

void TestDataSheet::startsWithTitlesAndAllRowsInView()
{
    const QStringList titles{"", "Qtotal/ M", "Component", "A1", "τ1/ns", "A2", "τ2/ns", "A3", "τ3/ns", "Φ"};
    const auto showsAllTitles = [&] {
        for (int row = 0; row < titles.size(); ++row)
            if (m_sheet->GetSheetText(row, 0) != titles[row])
                return false;
        return true;
    };
    QCOMPARE(m_sheet->rowCount(), 10);
    QCOMPARE(m_sheet->columnCount(), 21);
    QVERIFY(showsAllTitles());
    QCOMPARE(m_grid->currentRow(), 1);
    QCOMPARE(m_grid->currentColumn(), 1);
    QCOMPARE(m_grid->verticalScrollBar()->maximum(), 0);
    m_sheet->setCounts(2, 2); // as an opened session may ask
    m_sheet->setCounts(12, 30);
    QCOMPARE(m_sheet->columnCount(), 30);
    QVERIFY(showsAllTitles());
}

void TestDataSheet::typingGoesIntoTheEditorAndEnterStores()
{
    QSignalSpy edited(m_sheet.get(), &app::DataSheet::edited);
    QTest::keyClick(m_grid, '0');
    QVERIFY(m_editor->hasFocus());
    QTest::keyClicks(m_editor, ".002");
    QCOMPARE(m_editor->text(), QString("0.002"));
    QCOMPARE(m_sheet->GetSheetText(1, 1), QString());
    QTest::keyClick(m_editor, Qt::Key_Return);
    QCOMPARE(m_sheet->GetSheetText(1, 1), QString("0.002"));
    QCOMPARE(m_grid->currentRow(), 2);
    QCOMPARE(m_editor->text(), QString());
    QVERIFY(m_grid->hasFocus());
    QCOMPARE(edited.count(), 5); // four keys of the number and Enter
    for (const Qt::Key key : {Qt::Key_Control, Qt::Key_Shift, Qt::Key_Alt, Qt::Key_CapsLock})
        QTest::keyClick(m_editor, key);
    QCOMPARE(edited.count(), 5); // they are held for a command, too

    m_sheet->SelectSheetCell(9, 3);
    QTest::keyClick(m_grid, '7');
    QTest::keyClick(m_editor, Qt::Key_Enter);
    QCOMPARE(m_sheet->GetSheetText(9, 3), QString("7"));
    QCOMPARE(m_grid->currentRow(), 9);
    QCOMPARE(m_grid->currentColumn(), 3); // nothing below the last row
}

void TestDataSheet::inputMethodTextStartsAnEditAndEscapeEndsIt()
{
    m_sheet->SetSheetText(1, 1, "old");
    QInputMethodEvent commit;
    commit.setCommitString("試料");
    QCoreApplication::sendEvent(m_grid, &commit);
    QCOMPARE(m_editor->text(), QString("試料"));
    QVERIFY(m_editor->hasFocus());
    QTest::keyClick(m_editor, Qt::Key_Escape);
    QCOMPARE(m_editor->text(), QString("old"));
    QCOMPARE(m_sheet->GetSheetText(1, 1), QString("old"));
    QVERIFY(m_grid->hasFocus());
}

void TestDataSheet::thePresentTextIsEdited()
{
    m_sheet->SetSheetText(1, 2, "0.05");
    const QPoint at = m_grid->visualRect(m_grid->model()->index(1, 2)).center();
    const std::function<void()> ways[]{[&] { QTest::keyClick(m_grid, Qt::Key_F2); },
                                       [&] { QTest::keyClick(m_grid, Qt::Key_Backspace); },
                                       [&] { QTest::mouseDClick(m_grid->viewport(), Qt::LeftButton, {}, at); }};
    for (const auto& start : ways) {
        m_sheet->SelectSheetCell(1, 2);
        m_grid->setFocus();
        start();
        QVERIFY(m_editor->hasFocus());
        QTest::keyClick(m_editor, '1');
        QCOMPARE(m_editor->text(), QString("0.051"));
        QTest::keyClick(m_editor, Qt::Key_Escape);
        QCOMPARE(m_sheet->GetSheetText(1, 2), QString("0.05"));
    }
    m_sheet->SelectSheetCell(0, 2);
    QTest::keyClick(m_grid, Qt::Key_F2);
    QVERIFY(m_grid->hasFocus());
    QCOMPARE(m_grid->model()->headerData(2, Qt::Horizontal).toString(), QString("2")); // drawn, but not the cell's text
    QCOMPARE(m_sheet->GetSheetText(0, 2), QString());
}

void TestDataSheet::remarksAreShown()
{
    const QModelIndex cell = m_grid->model()->index(1, 1);
    m_sheet->SelectSheetCell(5, 1);
    const auto ground = [&] {
        return m_grid->grab(m_grid->visualRect(cell).translated(m_grid->viewport()->pos())).toImage();
    };
    m_sheet->SetSheetText(1, 1, "50 mM");
    m_sheet->showRemarks(1);
    QCOMPARE(m_grid->remark(1, 1), QString("\"50 mM\" is read as 50"));
    QCOMPARE(cell.data(Qt::AccessibleDescriptionRole).toString(), m_grid->remark(1, 1));
    const QColor tinted = ground().pixelColor(2, 2), corner = ground().pixelColor(ground().width() - 2, 0);
    m_sheet->SetSheetText(1, 1, "50");
    m_sheet->showRemarks(1);
    QVERIFY(m_grid->remark(1, 1).isEmpty());
    QVERIFY(ground().pixelColor(2, 2) != tinted);
    QVERIFY(corner != tinted);
}

void TestDataSheet::titleCellsAreNotEdited()
{
    for (const QPoint title : {QPoint(0, 1), QPoint(1, 0), QPoint(0, 0)}) { // column, row
        m_sheet->SelectSheetCell(title.y(), title.x());
        const QString text = m_sheet->GetSheetText(title.y(), title.x());
        QTest::keyClick(m_grid, '5');
        QVERIFY(m_grid->hasFocus());
        QCOMPARE(m_editor->text(), text);
        m_editor->setFocus();
        m_editor->setText("lost");
        QTest::keyClick(m_editor, Qt::Key_Return);
        QVERIFY(m_grid->hasFocus());
        QCOMPARE(m_sheet->GetSheetText(title.y(), title.x()), text);
    }
}

void TestDataSheet::editorMirrorsTheCurrentCell()
{
    m_sheet->SetSheetText(1, 1, "a");
    QCOMPARE(m_editor->text(), QString("a"));
    m_sheet->SetSheetText(2, 1, "b");
    m_sheet->SetSheetText(2, 2, "c");
    QTest::keyClick(m_grid, Qt::Key_Down);
    QCOMPARE(m_editor->text(), QString("b"));
    QTest::keyClick(m_grid, Qt::Key_Right);
    QCOMPARE(m_editor->text(), QString("c"));
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {},
                      m_grid->visualRect(m_grid->model()->index(1, 1)).center());
    QCOMPARE(m_editor->text(), QString("a"));
    QCOMPARE(m_sheet->GetSheetText(2, 2), QString("c"));
    QCOMPARE(m_grid->currentColumn(), 1); // reading does not move the user's cell
    m_grid->setText(1, 1, "d");
    QTest::keyClick(m_grid, Qt::Key_Up); // there is no cell above
    QCOMPARE(m_editor->text(), QString("d"));
}

void TestDataSheet::leavingTheLineStoresWhatWasTyped()
{
    QLineEdit other(m_sheet.get());
    other.show();
    const auto clickOn = [this](int row) {
        QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {},
                          m_grid->visualRect(m_grid->model()->index(row, 1)).center());
    };
    const std::function<void()> ways[]{[&] { other.setFocus(); }, [&] { clickOn(1); }, [&] { clickOn(3); },
                                       [&] { m_sheet->SelectSheetCell(3, 3); }, [&] { m_sheet->storeTyped(); }};
    int number = 0;
    for (const auto& leave : ways) {
        const QString text = QString::number(++number);
        m_sheet->SelectSheetCell(1, 1);
        m_editor->setFocus();
        m_editor->setText(text); // as by assistive technology, without a key
        QSignalSpy edited(m_sheet.get(), &app::DataSheet::edited);
        leave();
        QCOMPARE(m_sheet->GetSheetText(1, 1), text);
        QVERIFY(edited.count() >= 1);
        m_grid->setFocus();
        edited.clear();
        leave(); // nothing was typed since
        QCOMPARE(edited.count(), 0);
    }
    m_sheet->SelectSheetCell(2, 0);
    m_editor->setFocus();
    m_editor->setText("lost");
    other.setFocus();
    QVERIFY(m_sheet->GetSheetText(2, 0) == "Component");
    QVERIFY(m_editor->text() == "Component");
}

void TestDataSheet::pastedBlocksGoIntoTheSheet()
{
    const std::tuple<QString, QString, QString> cases[]{
        // text, what the line then holds, and cells 1,1 1,2 2,1 2,2
        {"12\r\n", "a12", "a - - -"},        {"12\n\n", "a12", "a - - -"}, {"12\t34", "12", "12 34 - -"},
        {"1\n2\n", "1", "1 - 2 -"},          {"12\t", "12", "12  - -"},    {"\r\n5", "", " - 5 -"},
        {"1\t2\r\n3\t4\r\n", "1", "1 2 3 4"}};
    for (const auto& [text, line, cells] : cases) {
        for (const auto& [row, column] : {std::pair{1, 1}, {1, 2}, {2, 1}, {2, 2}})
            m_sheet->SetSheetText(row, column, row + column == 2 ? "a" : "-");
        m_sheet->SelectSheetCell(1, 1);
        m_editor->setFocus();
        ui::copyText(text);
        QSignalSpy edited(m_sheet.get(), &app::DataSheet::edited);
        QTest::keyClick(m_editor, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(m_editor->text(), line);
        QStringList shown;
        for (const auto& [row, column] : {std::pair{1, 1}, {1, 2}, {2, 1}, {2, 2}})
            shown << m_sheet->GetSheetText(row, column);
        QCOMPARE(shown.join(' '), cells);
        QVERIFY(edited.count() >= 1);
        QTest::keyClick(m_editor, Qt::Key_Escape);
    }
}

void TestDataSheet::deleteEmptiesTheSelectedBlock()
{
    for (int row = 1; row <= 4; ++row)
        for (int column = 1; column <= 4; ++column)
            m_sheet->SetSheetText(row, column, "1");
    QSignalSpy edited(m_sheet.get(), &app::DataSheet::edited);
    m_grid->selectBlock(3, 3, 2, 0); // backwards and over the titles
    QTest::keyClick(m_grid, Qt::Key_Delete);
    for (int row = 1; row <= 4; ++row)
        for (int column = 1; column <= 4; ++column)
            QCOMPARE(m_sheet->GetSheetText(row, column), QString(row >= 2 && row <= 3 && column <= 3 ? "" : "1"));
    QCOMPARE(m_sheet->GetSheetText(2, 0), QString());
    QCOMPARE(m_grid->currentRow(), 3);
    QCOMPARE(m_grid->farColumn(), 0);
    QCOMPARE(m_editor->text(), QString());
    QCOMPARE(edited.count(), 0);
}

QTEST_MAIN(TestDataSheet)
#include "tst_datasheet.moc"
