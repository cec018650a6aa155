#include "app/aboutbox.h"
#include "app/helpviewer.h"
#include "tests/support/recordingprompter.h"

#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>

class TestHelpWindows : public QObject
{
    Q_OBJECT

private slots:
    void helpIsFoundBesideTheProgram();
    void helpShowsTheIndexPageOrSaysThatItIsMissing();
    void helpFindsWords();
    void aboutStartsTheFirstToolOrTellsWhatIsKnown();

private:
    static bool write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
               file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }

    QTemporaryDir m_folder;
};

void TestHelpWindows::helpIsFoundBesideTheProgram()
{
    QCOMPARE(app::helpFilePath("/opt/Vorlo", '/', false), "/opt/Vorlo/VORLOG4HELP.HLP");
    QCOMPARE(app::helpFilePath("/", '/', false), "/VORLOG4HELP.HLP");
    QCOMPARE(app::helpFilePath("C:\\Vorlo", '\\', true), "c:\\vorlo\\VORLOG4HELP.HLP");
    QCOMPARE(app::helpFilePath("C:\\", '\\', true), "c:\\VORLOG4HELP.HLP");
}

void TestHelpWindows::helpShowsTheIndexPageOrSaysThatItIsMissing()
{
    const QString page = m_folder.filePath("VORLOG4HELP.HLP");
    QVERIFY(write(page, "<html><head><meta charset=\"utf-8\"></head><body><h1>Index Φ</h1></body></html>"));
    app::HelpViewer viewer;
    const auto* shown = viewer.findChild<QTextBrowser*>("txtHelp");
    viewer.openIndex(page);
    QCOMPARE(shown->toPlainText(), QString("Index Φ"));
    viewer.openIndex("/nowhere/VORLOG4HELP.HLP");
    QVERIFY(shown->toPlainText().contains("cannot be found"));
    QVERIFY(shown->toPlainText().contains("/nowhere/VORLOG4HELP.HLP"));
}

void TestHelpWindows::helpFindsWords()
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
    for (const auto& [key, block] : {std::pair{Qt::Key_Return, 0}, {Qt::Key_Return, 1}, {Qt::Key_F3, 0}}) { // round
        QTest::keyClick(&find, key);
        QCOMPARE(text.textCursor().blockNumber(), block);
    }
    QCOMPARE(text.textCursor().selectedText(), "lifetime");
}

void TestHelpWindows::aboutStartsTheFirstToolOrTellsWhatIsKnown()
{
    const QByteArray path = qgetenv("PATH");
    const auto restored = qScopeGuard([&path] { qputenv("PATH", path); });
    const QTemporaryDir tools; // the only folder in which programs are found
    qputenv("PATH", QFile::encodeName(tools.path()));
    support::RecordingPrompter prompter;
    app::frmVorloAbout about(prompter);
    QVERIFY(!about.isModal());
    auto* button = about.findChild<QPushButton*>("cmdSysInfo");
    button->click();
    QCOMPARE(prompter.shown.size(), 1);
    QVERIFY(prompter.shown.first().contains(QSysInfo::prettyProductName()));

    QFile trace(tools.filePath("started"));
    for (const QString name : {"hardinfo", "kinfocenter"})
        QVERIFY(write(tools.filePath(name),
                      "#!/bin/sh\necho " + name.toUtf8() + " > '" + QFile::encodeName(trace.fileName()) + "'\n"));
    button->click();
    QTRY_VERIFY(trace.size() > 0);
    QVERIFY(trace.open(QIODevice::ReadOnly));
    QCOMPARE(trace.readAll().trimmed(), QByteArray("hardinfo"));
    QCOMPARE(prompter.shown.size(), 1);
}

QTEST_MAIN(TestHelpWindows)
#include "tst_helpwindows.moc"
