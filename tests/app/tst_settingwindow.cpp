#include "app/resultstable.h"
#include "app/settingwindow.h"
#include "app/sharedstate.h"
#include "ui/twips.h"

#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStyle>
#include <QtTest>

using app::frmSettingWindow;
using app::Settings;

Q_DECLARE_METATYPE(int Settings::*)

class TestSettingWindow : public QObject
{
    Q_OBJECT

private slots:
    void eachOptionStoresItsIndexAtOnce_data();
    void eachOptionStoresItsIndexAtOnce();
    void showsTheSettingsInForce();
    void assessmentRefillsTheResultsAtOnce();
    void fitsItsSquareWithAllCaptions();
    void okAndEscapeHideIt();
};

void TestSettingWindow::eachOptionStoresItsIndexAtOnce_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<int Settings::*>("setting");
    QTest::newRow("time") << "opnTime" << &Settings::TimeScale;
    QTest::newRow("intensity") << "opnIscale" << &Settings::IntensityScale;
    QTest::newRow("method") << "opnMethod" << &Settings::LogMode;
    QTest::newRow("assessment") << "opnAssessment" << &Settings::AssessmentMode;
}

void TestSettingWindow::eachOptionStoresItsIndexAtOnce()
{
    QFETCH(const QString, group);
    QFETCH(int Settings::*const, setting);
    app::SharedState shared;
    frmSettingWindow window(shared);
    auto* first = window.findChild<QRadioButton*>(group + "0");
    auto* second = window.findChild<QRadioButton*>(group + "1");
    QVERIFY(shared.settings.*setting == 1 ? second->isChecked() : first->isChecked());
    first->click();
    first->click();
    QCOMPARE(shared.settings.*setting, 0);
    second->click();
    QCOMPARE(shared.settings.*setting, 1);
}

void TestSettingWindow::showsTheSettingsInForce()
{
    app::SharedState shared;
    frmSettingWindow window(shared);
    window.show();
    window.hide();
    shared.settings = {.TimeScale = 0, .IntensityScale = 1, .LogMode = 0, .AssessmentMode = 0};
    window.show();
    for (const char* option : {"opnTime0", "opnIscale1", "opnMethod0", "opnAssessment0"})
        QVERIFY2(window.findChild<QRadioButton*>(option)->isChecked(), option);
}

void TestSettingWindow::assessmentRefillsTheResultsAtOnce()
{
    app::SharedState shared;
    app::ResultsTable table(shared);
    frmSettingWindow window(shared);
    connect(&window, &frmSettingWindow::assessmentChanged, &table, &app::ResultsTable::RedrawResult);
    table.storeResult({.Method = "SV", .Model = 1, .R2 = 0.5, .Error = "OK", .Se = 2}, app::Kq2);
    window.findChild<QRadioButton*>("opnAssessment0")->click();
    QCOMPARE(table.GetResultText(0, 6), "R2");
    QCOMPARE(table.GetResultText(1, 6), ".5");
    window.findChild<QRadioButton*>("opnAssessment1")->click();
    QCOMPARE(table.GetResultText(0, 6), "Se");
    QCOMPARE(table.GetResultText(1, 6), "2.");
}

void TestSettingWindow::fitsItsSquareWithAllCaptions()
{
    constexpr int kSideTwips = 3645;
    app::SharedState shared;
    frmSettingWindow window(shared);
    window.SetSize(1000, 5000, kSideTwips, kSideTwips);
    QVERIFY(window.isVisible());
    QCOMPARE(window.size(), QSize(ui::toPixels(kSideTwips), ui::toPixels(kSideTwips)));
    for (const QRadioButton* option : window.findChildren<QRadioButton*>()) {
        QVERIFY2(option->width() >= option->sizeHint().width(), qPrintable(option->text()));
        QVERIFY2(option->height() >= option->fontMetrics().height(), qPrintable(option->text()));
    }
}

void TestSettingWindow::okAndEscapeHideIt()
{
    app::SharedState shared;
    frmSettingWindow window(shared);
    QCOMPARE(window.windowTitle(), "Output Settings");
    window.show();
    window.findChild<QPushButton*>("cmdOK")->click();
    QVERIFY(!window.isVisible());
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    QVERIFY(!window.isVisible());
}

QTEST_MAIN(TestSettingWindow)
#include "tst_settingwindow.moc"
