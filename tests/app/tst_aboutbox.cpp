#include "app/aboutbox.h"
#include "tests/support/recordingprompter.h"

#include <QFile>
#include <QPushButton>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

class TestAboutBox : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { qputenv("PATH", m_path); }
    void startsTheFirstToolFound();
    void tellsWhatIsKnownWithoutATool();

private:
    QByteArray m_path = qgetenv("PATH");
    std::unique_ptr<QTemporaryDir> m_tools; // the only folder with programs
    support::RecordingPrompter m_prompter;
};

void TestAboutBox::init()
{
    m_tools = std::make_unique<QTemporaryDir>();
    qputenv("PATH", QFile::encodeName(m_tools->path()));
    m_prompter.shown.clear();
}

void TestAboutBox::startsTheFirstToolFound()
{
    const QString trace = m_tools->filePath("started");
    for (const QString name : {"hardinfo", "kinfocenter"}) {
        QFile tool(m_tools->filePath(name));
        QVERIFY(tool.open(QIODevice::WriteOnly));
        tool.write("#!/bin/sh\necho " + name.toUtf8() + " > '" + QFile::encodeName(trace) + "'\n");
        tool.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }
    app::frmVorloAbout about(m_prompter);
    about.findChild<QPushButton*>("cmdSysInfo")->click();
    QFile written(trace);
    QTRY_VERIFY(written.size() > 0);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll().trimmed(), QByteArray("hardinfo"));
    QVERIFY(m_prompter.shown.isEmpty());
}

void TestAboutBox::tellsWhatIsKnownWithoutATool()
{
    app::frmVorloAbout about(m_prompter);
    about.findChild<QPushButton*>("cmdSysInfo")->click();
    QCOMPARE(m_prompter.shown.size(), 1);
    QVERIFY(m_prompter.shown.first().contains(QSysInfo::prettyProductName()));
    QVERIFY(!about.isModal());
}

QTEST_MAIN(TestAboutBox)
#include "tst_aboutbox.moc"
