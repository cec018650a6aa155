#include "tests/support/application.h"
#include "tests/support/waitlimit.h"
#include "ui/clipboard.h"
#include "ui/grid.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

namespace
{

/// The program and its import window, as a user operates them.
struct Import : support::Application {
    app::ImportWindow& window = program.importWindow;

    template <class Control>
    Control& of(const char* name)
    {
        auto* found = window.findChild<Control*>(name);
        Q_ASSERT(found);
        return *found;
    }
    void paste(const QString& text)
    {
        ui::copyText(text);
        run("mnuPasteSamples");
    }
    QString state() { return of<QLabel>("lblImport").text(); }
    QString preview(int row, int column) { return of<ui::Grid>("grdImport").text(row, column); }
    bool ready() { return of<QPushButton>("cmdImportOK").isEnabled(); }
    void accept() { of<QPushButton>("cmdImportOK").click(); }
    /// Concentrations and intensities in the sheet.
    QString sheet()
    {
        QStringList samples;
        const app::DataSheet& cells = program.MainWindow.sheet();
        for (int column = 1; column < cells.columnCount(); ++column)
            samples << cells.GetSheetText(1, column) + ' ' + cells.GetSheetText(9, column);
        return samples.join(", ").replace(QRegularExpression("(,  )+$"), "");
    }
};

/// A table with so many samples: concentrations 1, 2, ... mM.
QString manySamples(int count)
{
    QString text = "c / mM\tF\n";
    for (int i = 1; i <= count; ++i)
        text += QString("%1\t%2\n").arg(i).arg(100 + i);
    return text;
}

} // namespace

class TestImportWindow : public QObject
{
    Q_OBJECT

private slots:
    void keysAloneBringATableIntoTheSheet();
    void waitsForTheDecimalSign();
    void addsAndChoosesSamples();
    void showsAndObeysChoices();
    void keepsChoicesForTablesOfTheSameForm();
    void addedVolumesGoToThePreparation();
    void readsFilesOrSaysWhyNot();
};

void TestImportWindow::keysAloneBringATableIntoTheSheet()
{
    Import vorlo;
    vorlo.fill({{"9", "1", "1", "5", "", "", "", "", "9"}});
    vorlo.program.shared.DataNormalized = true;
    vorlo.paste("Quencher / mM\tFluoreszenz\n0\t100,5\n50,1\t80\n");
    QTRY_VERIFY(vorlo.window.isActiveWindow());
    QCOMPARE(vorlo.preview(1, 2) + ' ' + vorlo.preview(9, 2), "0.0501 80");
    QCOMPARE(vorlo.sheet(), "9 9"); // nothing changes before
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(!vorlo.window.isVisible());
    QCOMPARE(vorlo.sheet(), "0 100.5, 0.0501 80");
    QCOMPARE(vorlo.program.MainWindow.sheet().GetSheetText(4, 1), ""); // the old sample's lifetime
    QVERIFY(!vorlo.program.shared.DataNormalized);
    QCOMPARE(vorlo.control<QAction>("mnuUndo").text(), "&Undo Import");
    vorlo.run("mnuUndo");
    QCOMPARE(vorlo.sheet(), "9 9");
    QCOMPARE(vorlo.program.MainWindow.sheet().GetSheetText(4, 1), "5");
}

void TestImportWindow::waitsForTheDecimalSign()
{
    Import vorlo;
    vorlo.paste("0\t1,000\n1\t2,500\n");
    QVERIFY(!vorlo.ready());
    QVERIFY(vorlo.state().startsWith("Choose the decimal sign"));
    QCOMPARE(vorlo.preview(9, 2), "2,500");
    QCOMPARE(vorlo.of<ui::Grid>("grdImport").remark(9, 2),
             "\"2,500\" is 2500 with a decimal point and 2.5 with a decimal comma");
    auto& sign = vorlo.of<QComboBox>("cboDecimalSign");
    QTRY_VERIFY(sign.hasFocus());
    QCOMPARE(sign.currentIndex(), -1);
    QTest::keyClick(&sign, Qt::Key_Down);
    QTest::keyClick(&sign, Qt::Key_Down);
    QCOMPARE(sign.currentText(), "comma");
    QVERIFY(vorlo.ready());
    vorlo.accept();
    QCOMPARE(vorlo.sheet(), "0 1, 1 2.5");
    vorlo.paste("0\t1,000\n1\t2,500\n");
    QVERIFY(!vorlo.ready()); // another table may have the other sign
}

void TestImportWindow::addsAndChoosesSamples()
{
    Import vorlo;
    vorlo.paste(manySamples(25));
    QCOMPARE(vorlo.state(), "Clipboard: 20 of 25 samples");
    auto& samples = vorlo.of<QLineEdit>("txtImportSamples");
    const struct {
        const char *text, *state;
    } cases[] = {{"25, 2-3", "Clipboard: 3 of 25 samples"},
                 {"1-21", "The sheet has room for 20 more samples. Choose fewer."},
                 {"26", "Type which of the 25 samples you want, such as 1-25."},
                 {"3-2", "Type which of the 25 samples you want, such as 1-25."},
                 {"1-3, 2", "Type which of the 25 samples you want, such as 1-25."},
                 {"", "Type which of the 25 samples you want, such as 1-25."}};
    for (const auto& one : cases) {
        samples.clear();
        QTest::keyClicks(&samples, one.text);
        QCOMPARE(vorlo.state(), one.state);
        QCOMPARE(vorlo.ready(), vorlo.state().startsWith("Clipboard"));
    }
    samples.setText("25, 2-3");
    vorlo.accept();
    QCOMPARE(vorlo.sheet(), "0.025 125, 0.002 102, 0.003 103");

    vorlo.paste(manySamples(18));
    vorlo.of<QRadioButton>("opnAdd").click();
    QCOMPARE(samples.text(), "1-17");
    QCOMPARE(vorlo.preview(1, 3) + ' ' + vorlo.preview(1, 4), "0.003 0.001");
    samples.setText("18");
    vorlo.program.MainWindow.sheet().SetSheetText(1, 6, "7"); // while the window is open
    QTRY_COMPARE(vorlo.preview(1, 7), "0.018");
    vorlo.accept();
    QCOMPARE(vorlo.sheet(), "0.025 125, 0.002 102, 0.003 103,  ,  , 7 , 0.018 118");
}

void TestImportWindow::showsAndObeysChoices()
{
    Import vorlo;
    vorlo.paste("Probe;3\n;;\n7;0;1;5\n% 7;8;9;5\n7;2;3;5\n");
    QCOMPARE(vorlo.of<QComboBox>("cboSeparator").currentText(), "semicolon");
    QCOMPARE(vorlo.of<QSpinBox>("spnFirstRow").value(), 3);
    vorlo.of<QLineEdit>("txtComment").setText("%");
    vorlo.of<QComboBox>("cboColumn0").setCurrentIndex(2);
    vorlo.of<QComboBox>("cboUnit0").setCurrentText("µM");
    vorlo.of<QComboBox>("cboColumn1").setCurrentIndex(0);
    vorlo.of<QComboBox>("cboColumn3").setCurrentIndex(3);
    vorlo.of<QComboBox>("cboUnit3").setCurrentText("ps");
    QStringList cells;
    for (int row = 1; row <= 9; ++row)
        cells << vorlo.preview(row, 2);
    QCOMPARE(cells.join(';'), "0.000002;1;1;0.003;;;;;");
    vorlo.of<QComboBox>("cboColumn0").setCurrentIndex(0);
    QCOMPARE(vorlo.state(), "Choose the column of the concentrations, or of the added volumes.");
    vorlo.of<QComboBox>("cboColumn8").setCurrentIndex(2);
    QVERIFY(vorlo.ready());
    vorlo.of<QComboBox>("cboColumn0").setCurrentIndex(1);
    QCOMPARE(vorlo.state(), "Choose concentrations or added volumes, not both.");
    vorlo.of<QComboBox>("cboSeparator").setCurrentText("blanks");
    vorlo.of<QComboBox>("cboColumn0").setCurrentIndex(1);
    QCOMPARE(vorlo.state(), "No sample has a concentration that can be read.");
    vorlo.of<QPushButton>("cmdImportCancel").click();
    QCOMPARE(vorlo.sheet().trimmed(), "");
}

void TestImportWindow::keepsChoicesForTablesOfTheSameForm()
{
    Import vorlo;
    vorlo.paste("c\tF\n0\t1\n5\t2\n");
    vorlo.of<QComboBox>("cboUnit0").setCurrentText("mM");
    vorlo.accept();
    vorlo.paste("c\tF\n0\t1\n7\t2\n");
    QCOMPARE(vorlo.preview(1, 2), "0.007");
    vorlo.paste("c\tI\n0\t1\n7\t2\n");
    QCOMPARE(vorlo.preview(1, 2), "7");
}

// F = 5000 / (1 + 50 Q), diluted from 2 mL with a stock of 0.1 M: Q = 0.1 x 500 / 2500 M after the second addition.
void TestImportWindow::addedVolumesGoToThePreparation()
{
    Import vorlo;
    vorlo.paste("Volumen / µL\tIntensität\n0,0\t5000,0\n250,0\t2857,142857\n250,0\t2000,0\n");
    QVERIFY(vorlo.ready());
    vorlo.accept();
    QCOMPARE(vorlo.sheet(), " 5000,  2857.142857,  2000");
    QWidget& preparation = vorlo.program.preparationWindow;
    QVERIFY(preparation.isVisible());
    preparation.findChild<QLineEdit*>("txtV0")->setText("2000");
    preparation.findChild<QLineEdit*>("txtStock")->setText("0.1");
    preparation.findChild<QPushButton*>("cmdApplyPreparation")->click();
    QCOMPARE(vorlo.sheet(), "0 5000, 0.0111111 3214.29, 0.02 2500");
    vorlo.run("mnuUndo");
    vorlo.run("mnuUndo");
    QCOMPARE(vorlo.sheet().trimmed(), "");
}

void TestImportWindow::readsFilesOrSaysWhyNot()
{
    Import vorlo;
    const QTemporaryDir folder;
    const auto import = [&](const QString& name, const QByteArray& bytes) {
        const QString path = folder.filePath(name);
        if (!bytes.isEmpty()) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(bytes);
        }
        vorlo.prompter.nextFile = path;
        vorlo.run("mnuImportTable");
    };
    import("table.csv", "0;5\n1;4\n");
    QCOMPARE(vorlo.state(), "table.csv: 2 of 2 samples");
    vorlo.window.reject();
    QElapsedTimer clock;
    clock.start();
    for (const auto& [name, bytes, reason] :
         {std::tuple{"none.csv", QByteArray(), "No such file"}, std::tuple{".", QByteArray(), "Not a regular file"},
          std::tuple{"book.xlsx", QByteArray("PK\x03\x04\0\0", 6), "It is not a text."},
          std::tuple{"line.csv", QByteArray(100'000'000, '1'), "more than 256 KiB"},
          std::tuple{"rows.csv", QByteArray("1,2\n").repeated(100'000), "The text has more than"}}) {
        import(name, bytes);
        QVERIFY2(vorlo.prompter.shown.takeLast().contains(reason), name);
        QVERIFY(!vorlo.window.isVisible());
    }
    ui::copyText(QString("1\t2\n").repeated(100'000));
    vorlo.run("mnuPasteSamples");
    QVERIFY(vorlo.prompter.shown.takeLast().contains("more than"));
    ui::copyText("");
    vorlo.run("mnuPasteSamples");
    QVERIFY(vorlo.prompter.shown.takeLast().contains("The clipboard holds no text."));
    QVERIFY2(clock.elapsed() < support::kWaitLimit, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(vorlo.prompter.shown, QStringList());
}

QTEST_MAIN(TestImportWindow)
#include "tst_importwindow.moc"
