#include "app/helpviewer.h"

#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>

class TestHelpViewer : public QObject
{
    Q_OBJECT

private slots:
    void buildsThePath_data();
    void buildsThePath();
    void showsTheIndexPage();
    void findsWords();
    void saysThatTheFileIsMissing();
};

void TestHelpViewer::buildsThePath_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QChar>("separator");
    QTest::addColumn<bool>("caseIgnored");
    QTest::addColumn<QString>("path");
    QTest::newRow("folder") << "/opt/Vorlo" << QChar('/') << false << "/opt/Vorlo/VORLOG4HELP.HLP";
    QTest::newRow("root") << "/" << QChar('/') << false << "/VORLOG4HELP.HLP";
    QTest::newRow("case ignored") << "C:\\Vorlo" << QChar('\\') << true << "c:\\vorlo\\VORLOG4HELP.HLP";
    QTest::newRow("drive root") << "C:\\" << QChar('\\') << true << "c:\\VORLOG4HELP.HLP";
}

void TestHelpViewer::buildsThePath()
{
    QFETCH(QString, folder);
    QFETCH(QChar, separator);
    QFETCH(bool, caseIgnored);
    QTEST(app::helpFilePath(folder, separator, caseIgnored), "path");
}

void TestHelpViewer::showsTheIndexPage()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("VORLOG4HELP.HLP"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<html><head><meta charset=\"utf-8\"></head><body><h1>Index Φ</h1></body></html>");
    file.close();
    app::HelpViewer viewer;
    viewer.openIndex(file.fileName());
    QCOMPARE(viewer.findChild<QTextBrowser*>("txtHelp")->toPlainText(), QString("Index Φ"));
}

void TestHelpViewer::findsWords()
{
    app::HelpViewer viewer;
    auto& text = *viewer.findChild<QTextBrowser*>("txtHelp");
    auto& find = *viewer.findChild<QLineEdit*>("txtFind");
    text.setHtml("<p>one lifetime</p><p>two lifetimes</p>");
    viewer.show();
    viewer.activateWindow();
    QTRY_VERIFY(viewer.isActiveWindow());
    QTest::keyClick(&text, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(find.hasFocus());
    QTest::keyClicks(&find, "lifetime");
    QTest::keyClick(&find, Qt::Key_Return);
    QCOMPARE(text.textCursor().blockNumber(), 0);
    QTest::keyClick(&find, Qt::Key_Return);
    QCOMPARE(text.textCursor().blockNumber(), 1);
    QTest::keyClick(&find, Qt::Key_F3); // round to the start
    QCOMPARE(text.textCursor().blockNumber(), 0);
    QCOMPARE(text.textCursor().selectedText(), "lifetime");
}

void TestHelpViewer::saysThatTheFileIsMissing()
{
    app::HelpViewer viewer;
    viewer.openIndex("/nowhere/VORLOG4HELP.HLP");
    const QString text = viewer.findChild<QTextBrowser*>("txtHelp")->toPlainText();
    QVERIFY(text.contains("cannot be found") && text.contains("/nowhere/VORLOG4HELP.HLP"));
}

QTEST_MAIN(TestHelpViewer)
#include "tst_helpviewer.moc"
