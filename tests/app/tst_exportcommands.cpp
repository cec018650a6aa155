#include "tests/support/application.h"

#include <QComboBox>
#include <QDir>
#include <QLocale>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using support::contents;

namespace
{

struct Program : support::Application {
    Program()
    {
        QList<support::Column> samples{{"0", "1", "1", "20", "", "", "", "", "100"}};
        for (const auto& [Q, intensity] : {std::pair{"0.01", "80"}, {"0.02", "65"}, {"0.04", "47"}, {"0.08", "28"}})
            samples << support::Column{Q, "", "", "", "", "", "", "", intensity};
        fill(samples);
        run("mnuExport");
    }
    void press(const char* button, const QString& answer)
    {
        prompter.nextFile = answer;
        program.exportWindow.findChild<QPushButton*>(button)->click();
    }
    void choose(const char* list, int index)
    {
        program.exportWindow.findChild<QComboBox*>(list)->setCurrentIndex(index);
    }
};

QList<QStringList> linesOf(const QString& path, QChar separator)
{
    QList<QStringList> lines;
    for (const QString& line : QString::fromUtf8(contents(path)).split("\r\n"))
        lines << line.split(separator);
    return lines;
}

} // namespace

class TestExportCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale("de_DE")); } // with a decimal comma
    void everyTableReadsBackToTheSameDigits();
    void nothingIsReplacedUnasked();
    void tellsWhatIsMissing();
};

void TestExportCommands::everyTableReadsBackToTheSameDigits()
{
    Program vorlo;
    const QTemporaryDir folder;
    vorlo.run("mnuSternVolmerAnalysis");
    vorlo.run("mnuCompareModels");
    vorlo.choose("cboExportSeparator", 1);
    vorlo.press("cmdSaveAll", folder.path());
    const QStringList names{"comparison.csv", "curves.csv", "details.csv", "residuals.csv", "results.csv", "sheet.csv"};
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name), names);
    for (const QString& name : names)
        QVERIFY2(contents(folder.filePath(name)).startsWith("Program;Vorlo "), qPrintable(name));
    const double kq2 = vorlo.program.shared.results.ResultData[1].Kq2;
    QCOMPARE(linesOf(folder.filePath("results.csv"), ';')[3][4].toDouble(), kq2); // to the last bit
    bool isInDetails = false;
    for (const QStringList& line : linesOf(folder.filePath("details.csv"), ';'))
        isInDetails = isInDetails || (line[0].startsWith("kq2") && line[1].toDouble() == kq2);
    QVERIFY(isInDetails);
    const QByteArray residuals = contents(folder.filePath("residuals.csv"));
    for (const char* said : {"\r\nAnalysis;Stern-Volmer Analysis, Model 1;", "\r\ntau0 /s;2e-08;", "\r\nCp /M;5e-05;",
                             "\r\nAssumption about errors;All intensities"})
        QVERIFY2(residuals.contains(said), said);
    QVERIFY(contents(folder.filePath("sheet.csv")).contains("\r\nΦ;100;80;65;47;28\r\n"));
    QVERIFY(vorlo.prompter.shown.isEmpty());
}

void TestExportCommands::nothingIsReplacedUnasked()
{
    Program vorlo;
    const QTemporaryDir folder;
    const QString path = folder.filePath("sheet.csv");
    vorlo.press("cmdSaveTable", folder.filePath("sheet"));
    QCOMPARE(vorlo.prompter.proposed, "sheet.csv");
    const QByteArray before = contents(path);
    QVERIFY(before.startsWith("Program,Vorlo "));
    vorlo.program.MainWindow.sheet().SetSheetText(9, 1, "101");
    vorlo.press("cmdSaveTable", folder.filePath("sheet"));
    vorlo.press("cmdSaveAll", folder.path());
    QCOMPARE(vorlo.prompter.askedToReplace, (QStringList{path, "sheet.csv"}));
    QCOMPARE(contents(path), before);
    vorlo.prompter.replaces = true;
    vorlo.press("cmdSaveAll", folder.path());
    QVERIFY(contents(path).contains(",101,"));
    vorlo.save(folder.filePath("acridone.vrl"));
    vorlo.press("cmdSaveTable", folder.filePath("other.csv"));
    QCOMPARE(vorlo.prompter.proposed, "acridone-sheet.csv");
}

void TestExportCommands::tellsWhatIsMissing()
{
    Program vorlo;
    vorlo.choose("cboExportTable", 5);
    vorlo.press("cmdSaveTable", "never.csv");
    vorlo.run("mnuNew");
    vorlo.press("cmdSaveAll", ".");
    QCOMPARE(vorlo.prompter.shown,
             (QStringList{"No models have been compared yet.", "There is nothing to export yet."}));
    QVERIFY(!QFile::exists("never.csv"));
}

QTEST_MAIN(TestExportCommands)
#include "tst_exportcommands.moc"
