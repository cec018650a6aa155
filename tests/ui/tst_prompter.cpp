#include "ui/prompter.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>

namespace
{

/// Calls `act` with the modal dialog that the next call opens, and cancels the dialog unless `act` accepts it.
template <typename Dialog>
void whenAsked(std::function<void(Dialog&)> act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        act(*dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
}

void enter(QFileDialog& dialog, const QString& name)
{
    auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
    edit->setText(name);
    QTest::keyClick(edit, Qt::Key_Return);
}

void makeFile(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

} // namespace

class TestPrompter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void messagesArePlainText();
    void filesAreFoundInAnyCaseAndTheFolderIsRemembered();
    void savingProposesANameAndAddsTheSuffix();
    void aClickTakesTheTypedPath();
    void filesAreReplacedOnlyAfterYes();
};

void TestPrompter::messagesArePlainText()
{
    QGuiApplication::setApplicationDisplayName("Title");
    QString shown, title;
    whenAsked<QMessageBox>([&](QMessageBox& box) {
        shown = box.text();
        title = box.windowTitle();
        QCOMPARE(box.textFormat(), Qt::PlainText);
        QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
    });
    ui::DialogPrompter().message("<b>one\r\ntwo");
    QCOMPARE(shown, "<b>one\ntwo");
    QVERIFY(title.startsWith("Title"));
}

void TestPrompter::filesAreFoundInAnyCaseAndTheFolderIsRemembered()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("Run.VRL");
    makeFile(path);
    makeFile(folder.filePath("notes.txt"));
    ui::DialogPrompter prompter;
    whenAsked<QFileDialog>([&](QFileDialog& dialog) {
        dialog.setDirectory(folder.path());
        auto* files = dialog.findChild<QFileSystemModel*>();
        QTRY_COMPARE(files->rowCount(files->index(folder.path())), 1);
        enter(dialog, "Run.VRL");
    });
    QCOMPARE(prompter.fileToOpen().value_or(QString()), path);
    QString next;
    const auto lookAndCancel = [&](QFileDialog& dialog) { next = dialog.directory().path(); };
    whenAsked<QFileDialog>(lookAndCancel);
    QVERIFY(!prompter.fileToSave({}));
    QCOMPARE(next, folder.path());
    whenAsked<QFileDialog>(lookAndCancel);
    QVERIFY(!prompter.fileToOpen());
}

void TestPrompter::savingProposesANameAndAddsTheSuffix()
{
    QTemporaryDir folder;
    ui::DialogPrompter prompter;
    whenAsked<QFileDialog>([&](QFileDialog& dialog) {
        dialog.setDirectory(folder.path());
        enter(dialog, "run");
    });
    QCOMPARE(prompter.fileToSave({}).value_or(QString()), folder.filePath("run.vrl"));
    QTemporaryDir other;
    QString proposed;
    whenAsked<QFileDialog>([&](QFileDialog& dialog) {
        auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
        proposed = edit->text();
        QTest::keyClick(edit, Qt::Key_Return);
    });
    QCOMPARE(prompter.fileToSave(other.filePath("open.vrl")).value_or(QString()), other.filePath("open.vrl"));
    QCOMPARE(proposed, "open.vrl");
}

void TestPrompter::aClickTakesTheTypedPath()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("run.vrl");
    makeFile(path);
    ui::DialogPrompter prompter;
    whenAsked<QFileDialog>([&](QFileDialog& dialog) {
        QCOMPARE(dialog.objectName(), "CommonDialog1");
        dialog.setDirectory(folder.path());
        auto* files = dialog.findChild<QFileSystemModel*>();
        QTRY_COMPARE(files->rowCount(files->index(folder.path())), 1);
        QTest::keyClicks(dialog.findChild<QLineEdit*>("fileNameEdit"), path);
        QVERIFY(!QApplication::activePopupWidget()); // under X11 such a list gets the next click
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open), Qt::LeftButton);
    });
    QCOMPARE(prompter.fileToOpen().value_or(QString()), path);
}

void TestPrompter::filesAreReplacedOnlyAfterYes()
{
    ui::DialogPrompter prompter;
    whenAsked<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    QVERIFY(!prompter.mayReplace("run.vrl"));
    whenAsked<QMessageBox>([](QMessageBox& box) { QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton); });
    QVERIFY(prompter.mayReplace("run.vrl"));
}

QTEST_MAIN(TestPrompter)
#include "tst_prompter.moc"
