#include "app/parameterpanel.h"
#include "fit/numbertext.h"
#include "tests/support/acridonecolumns.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <cmath>

namespace
{

constexpr int kConcentration = 1, kLifetime = 4, kIntensity = 9; // rows of the sheet

struct Program : support::Application {
    Program() { fill(support::kAcridone); }
    QWidget& window = program.lifetimesWindow;

    template <class Control>
    Control& of(const char* name)
    {
        return *window.findChild<Control*>(name);
    }
    QString label(const char* name) { return of<QLabel>(name).text(); }
    QString cell(const char* table, int row, int column) { return of<QTableWidget>(table).item(row, column)->text(); }
    void press(const char* button) { of<QPushButton>(button).click(); }
    void chooseTogether(int row)
    {
        of<QComboBox>("cboTogetherModel").setCurrentIndex(row);
        emit of<QComboBox>("cboTogetherModel").activated(row);
    }
    void typeRatio(const char* text)
    {
        auto& box = of<QLineEdit>("txtErrorRatio");
        box.setText(text);
        emit box.editingFinished();
    }
    void set(int row, int column, const char* text) { program.MainWindow.sheet().SetSheetText(row, column, text); }
    void empty(int row, int firstColumn)
    {
        for (int column = firstColumn; column <= support::kAcridone.size(); ++column)
            set(row, column, "");
    }
    app::PanelState panel() { return program.MainWindow.panel().panelState(); }
};

} // namespace

class TestLifetimesCommands : public QObject
{
    Q_OBJECT

private slots:
    void showsWhatBothKindsTell();
    void changesNothingButTypedValues();
    void saysWhenTheSheetHasChanged();
    void takesAnotherRatioOfErrors();
    void showsWhatWasMeasured_data();
    void showsWhatWasMeasured();
};

// Values of an independent program: K 1.235 with an error of 0.065, and a correlation of -0.47.
void TestLifetimesCommands::showsWhatBothKindsTell()
{
    Program p;
    p.run("mnuLifetimes");
    QVERIFY(p.window.isVisible());
    QVERIFY(p.label("lblFinding").contains("a complex describes this better"));
    QCOMPARE(p.of<QComboBox>("cboTogetherModel").currentText(), QString("Model 3: a dark complex, and collisions"));
    QCOMPARE(p.cell("grdTogetherConstants", 0, 1), QString("1.2348"));
    QCOMPARE(p.cell("grdTogetherCorrelations", 0, 2).left(5), QString("-0.46"));
    QCOMPARE(p.of<QTableWidget>("grdStaticFactor").rowCount(), 6);
    QCOMPARE(p.of<QTableWidget>("grdRanking").rowCount(), 13);
    p.press("cmdCopyTogetherSentence");
    QVERIFY(QGuiApplication::clipboard()->text().contains("Model 3"));

    p.of<QTableWidget>("grdRanking").setCurrentCell(12, 0); // a model without a law for lifetimes
    QVERIFY(p.label("lblTogetherVerdict").startsWith("not fitted: "));
    for (const char* button : {"cmdTypeTogether", "cmdCopyTogetherSentence"})
        QVERIFY2(!p.of<QPushButton>(button).isEnabled(), button);
    p.press("cmdCopyTogether");
    QVERIFY(QGuiApplication::clipboard()->text().startsWith(p.label("lblFinding")));
    p.press("cmdCloseTogether");
    QVERIFY(!p.window.isVisible());
    p.run("mnuLifetimes");
    QCOMPARE(p.of<QComboBox>("cboTogetherModel").currentIndex(), 0); // the best again
}

void TestLifetimesCommands::changesNothingButTypedValues()
{
    Program p;
    const app::PanelState before = p.panel();
    p.run("mnuLifetimes");
    QCOMPARE(p.panel(), before);
    QCOMPARE(p.program.shared.results.ResultCursor, 1);
    p.press("cmdTypeTogether");
    const app::PanelState typed = p.panel();
    QCOMPARE(typed.Model, 3);
    QVERIFY(std::abs(fit::numberFrom(typed.K) / 1.2348 - 1) < 1e-3); // the digits shown
    QVERIFY(std::abs(fit::numberFrom(typed.kq2) / 4.9145e9 - 1) < 1e-3);
    p.run("mnuUndo");
    QCOMPARE(p.panel(), before);
}

void TestLifetimesCommands::saysWhenTheSheetHasChanged()
{
    Program p;
    p.run("mnuLifetimes");
    const QString finding = p.label("lblFinding");
    p.chooseTogether(1);
    QVERIFY(!p.of<QPushButton>("cmdReadAgain").isEnabled());
    p.set(kIntensity, 7, "60");
    QTRY_COMPARE(p.label("lblFinding"), "of data changed since: " + finding);
    QCOMPARE(p.cell("grdSamples", 6, 2), QString("137.02")); // what was read before
    for (const char* button : {"cmdCopyTogether", "cmdCopyTogetherSentence"}) {
        p.press(button);
        QVERIFY2(QGuiApplication::clipboard()->text().startsWith("of data changed since: "), button);
    }
    p.press("cmdReadAgain");
    QCOMPARE(p.cell("grdSamples", 6, 2), QString("276.33"));
    QVERIFY(!p.label("lblFinding").startsWith("of data"));
    p.type("txtConcProbe", "1e-3");
    QTRY_VERIFY(p.label("lblFinding").startsWith("of data"));
    p.type("txtConcProbe", "50e-6");
    QTRY_VERIFY(!p.label("lblFinding").startsWith("of data"));

    p.set(kConcentration, 1, "0.01");
    QTRY_VERIFY(p.of<QPushButton>("cmdReadAgain").isEnabled());
    p.press("cmdReadAgain");
    QVERIFY(p.prompter.shown.join(' ').contains("reference"));
    QCOMPARE(p.cell("grdSamples", 6, 2), QString("276.33")); // nothing is lost
}

void TestLifetimesCommands::takesAnotherRatioOfErrors()
{
    Program p;
    p.run("mnuLifetimes");
    const QString equal = p.cell("grdTogetherConstants", 0, 2);
    p.typeRatio("3");
    QVERIFY(p.label("lblErrorRatio").contains("3 times"));
    QVERIFY(p.cell("grdTogetherConstants", 0, 2) != equal);
    p.typeRatio("abc");
    QVERIFY(p.label("lblErrorRatio").contains("a number from"));
    QCOMPARE(p.of<QLineEdit>("txtErrorRatio").text(), QString("abc"));
    QCOMPARE(p.cell("grdTogetherConstants", 0, 2), equal);
    p.of<QCheckBox>("chkEachEstimated").click();
    QVERIFY(p.label("lblErrorRatio").contains("both are estimated"));
    p.empty(kLifetime, 6); // leaves five lifetimes
    p.run("mnuLifetimes");
    QVERIFY(p.label("lblErrorRatio").contains("six"));
    p.typeRatio("1");
    p.of<QCheckBox>("chkEachEstimated").click(); // can be taken back
    QVERIFY(!p.label("lblErrorRatio").contains("six"));
}

void TestLifetimesCommands::showsWhatWasMeasured_data()
{
    QTest::addColumn<int>("missing"); // row of the sheet; 0: none
    QTest::addColumn<QString>("remark");
    QTest::addColumn<int>("factors");
    QTest::newRow("both") << 0 << "" << 6;
    QTest::newRow("no lifetimes") << kLifetime << "only the intensities are fitted" << 0;
    QTest::newRow("no intensities") << kIntensity << "only the lifetimes are fitted" << 0;
}

void TestLifetimesCommands::showsWhatWasMeasured()
{
    QFETCH(int, missing);
    QFETCH(QString, remark);
    Program p;
    if (missing != 0)
        p.empty(missing, 2);
    p.run("mnuLifetimes");
    QVERIFY2(p.label("lblDataRemarks").contains(remark), qPrintable(p.label("lblDataRemarks")));
    QTEST(p.of<QTableWidget>("grdStaticFactor").rowCount(), "factors");
    const auto isDrawn = [&](QColor color) {
        const QImage image = p.of<QWidget>("picRatios").grab().toImage();
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) == color)
                    return true;
        return false;
    };
    const QColor intensities(255, 0, 0), lifetimes(40, 130, 220), byIntensity(0, 145, 70);
    QCOMPARE(isDrawn(intensities), missing != kIntensity);
    QCOMPARE(isDrawn(lifetimes), missing != kLifetime);
    QVERIFY(!isDrawn(byIntensity));
    p.of<QCheckBox>("chkByIntensity").click();
    QCOMPARE(isDrawn(byIntensity), missing != kLifetime);
}

QTEST_MAIN(TestLifetimesCommands)
#include "tst_lifetimescommands.moc"
