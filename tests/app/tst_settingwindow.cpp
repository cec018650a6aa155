#include "app/settingwindow.h"
#include "app/sharedstate.h"
#include "tests/support/windowsize.h"
#include "ui/twips.h"

#include <QAccessible>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

using app::frmSettingWindow;
using app::Settings;

Q_DECLARE_METATYPE(int Settings::*)

class TestSettingWindow : public QObject
{
    Q_OBJECT

private slots:
    void eachOptionStoresItsIndexAtOnce();
    void fitsItsSquareAndHides();
};

void TestSettingWindow::eachOptionStoresItsIndexAtOnce()
{
    const std::pair<QString, int Settings::*> groups[]{{"opnTime", &Settings::TimeScale},
                                                       {"opnIscale", &Settings::IntensityScale},
                                                       {"opnMethod", &Settings::LogMode},
                                                       {"opnAssessment", &Settings::AssessmentMode}};
    app::SharedState shared;
    frmSettingWindow window(shared);
    for (const auto& [group, setting] : groups)
        for (const int index : {0, 0, 1}) {
            auto* option = window.findChild<QRadioButton*>(group + QString::number(index));
            option->click();
            QCOMPARE(shared.settings.*setting, index);
            window.hide();
            shared.settings.*setting = 1 - index; // as an opened session does
            window.show();
            QVERIFY2(!option->isChecked(), qPrintable(option->objectName()));
            option->click();
            QCOMPARE(shared.settings.*setting, index);
        }
    QSignalSpy announced(&window, &frmSettingWindow::assessmentChanged);
    for (const auto& [group, setting] : groups) {
        QRadioButton* option = window.findChild<QRadioButton*>(group + "0");
        QAccessible::queryAccessibleInterface(option)->actionInterface()->doAction("Toggle");
        QCOMPARE(shared.settings.*setting, 0);
    }
    QCOMPARE(announced.count(), 1);
    window.findChild<QRadioButton*>("opnAssessment0")->click(); // already checked: the results are drawn again
    QCOMPARE(announced.count(), 2);
}

void TestSettingWindow::fitsItsSquareAndHides()
{
    constexpr int kSideTwips = 3645;
    app::SharedState shared;
    frmSettingWindow window(shared);
    QCOMPARE(window.windowTitle(), "Output Settings");
    window.SetSize(1000, 5000, kSideTwips, kSideTwips);
    QVERIFY(window.isVisible());
    const QSize square(ui::toPixels(kSideTwips), ui::toPixels(kSideTwips));
    QCOMPARE(window.size(), support::expectedSize(window, square));
    for (const QRadioButton* option : window.findChildren<QRadioButton*>()) {
        QVERIFY2(option->width() >= option->sizeHint().width(), qPrintable(option->text()));
        QVERIFY2(option->height() >= option->fontMetrics().height(), qPrintable(option->text()));
    }
    window.findChild<QPushButton*>("cmdOK")->click();
    QVERIFY(!window.isVisible());
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    QVERIFY(!window.isVisible());
}

QTEST_MAIN(TestSettingWindow)
#include "tst_settingwindow.moc"
