#include "ui/clipboard.h"
#include "ui/textbox.h"

#include <QApplication>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>

namespace
{

using Way = void (*)(ui::TextBox&, const QString&);

void pasteByKey(ui::TextBox& box, const QString& text)
{
    ui::copyText(text);
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
}

void pasteByMenu(ui::TextBox& box, const QString& text)
{
    ui::copyText(text);
    const std::unique_ptr<QMenu> menu(box.createStandardContextMenu());
    for (QAction* action : menu->actions())
        if (action->text().startsWith("&Paste"))
            action->trigger();
}

void drop(ui::TextBox& box, const QString& text)
{
    QMimeData dragged;
    dragged.setText(text);
    int x = 0;
    while (box.cursorPositionAt({x, 5}) < box.cursorPosition())
        ++x;
    QDragEnterEvent enter({x, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&box, &enter);
    QDropEvent event(QPointF(x, 5), Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, Qt::ShiftModifier);
    QApplication::sendEvent(&box, &event);
    QVERIFY(event.isAccepted());
    // Who moves a text removes all of it.
    QVERIFY(ui::oneLine(text) == text || event.dropAction() == Qt::CopyAction);
}

void commit(ui::TextBox& box, const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&box, &event);
}

const std::pair<const char*, Way> kWays[]{
    {"Ctrl+V", pasteByKey}, {"context menu", pasteByMenu}, {"drop", drop}, {"input method", commit}};

} // namespace

class TestTextBox : public QObject
{
    Q_OBJECT

private slots:
    void takesOneLineByEveryWay();
    void offersWhatIsNotOneLine();
};

void TestTextBox::takesOneLineByEveryWay()
{
    const std::pair<QString, QString> cases[]{// a text inserted between the letters of "ab", and the result
                                              {"1e7", "a1e7b"},       {"1e7\r\n", "a1e7b"}, {"1\n2\n", "a1b"},
                                              {"1\r2", "a1b"},        {"1\t2", "a1 2b"},    {"\n2", "ab"},
                                              {"\t1\t\r\n2", "a 1 b"}};
    for (const auto& [way, send] : kWays)
        for (const auto& [text, expected] : cases) {
            ui::TextBox box;
            box.show();
            box.setText("ab");
            box.setCursorPosition(1);
            send(box, text);
            QVERIFY2(box.text() == expected, qPrintable(QString("%1: %2").arg(way, box.text())));
            box.undo();
            QCOMPARE(box.text(), QString("ab"));
        }
}

void TestTextBox::offersWhatIsNotOneLine()
{
    for (const auto& [way, send] : kWays) {
        QStringList offered;
        ui::TextBox box;
        box.show();
        box.takenElsewhere = [&offered](const QString& text) {
            offered << text;
            return text.contains('\t');
        };
        for (const char* text : {"5", "6\n", "7\t8"})
            send(box, text);
        QVERIFY2(offered == QStringList({"6\n", "7\t8"}), way);
        QVERIFY2(box.text() == "56" || box.text() == "65", qPrintable(box.text()));
    }
}

QTEST_MAIN(TestTextBox)
#include "tst_textbox.moc"
