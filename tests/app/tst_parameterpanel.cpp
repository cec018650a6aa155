#include "app/parameterpanel.h"
#include "app/sharedstate.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

class TestParameterPanel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void modelRulesBoxes();
    void explainsModelsAndParameters();
    void tellsHowTextsAreRead();
    void arrowKeysWalkThroughTheModels();
    void allLeavesTheFitRegionMode();
    void assistiveTechnologyChoosesToo();
    void changedFitRegionNeedsNormalizationAgain();
    void restoresResults();

private:
    QLineEdit& box(const QString& name) { return *m_panel->findChild<QLineEdit*>(name); }
    QRadioButton& option(const QString& name) { return *m_panel->findChild<QRadioButton*>(name); }

    app::SharedState m_shared;
    std::unique_ptr<app::ParameterPanel> m_panel;
};

void TestParameterPanel::init()
{
    m_shared = {};
    m_panel = std::make_unique<app::ParameterPanel>(m_shared);
}

void TestParameterPanel::modelRulesBoxes()
{
    const QStringList enabledOf{"kq2",   "kq1 kq2 K", "kq2 K",     "kq1 K", "K",         "kq1 kq2 K", "kq2 K",
                                "kq1 K", "K",         "kq1 kq2 K", "kq1 K", "kq1 kq2 F", "kq1 F"};
    for (int model = 1; model <= enabledOf.size(); ++model) {
        option(QString("opnModel%1").arg(model)).click();
        QCOMPARE(m_panel->panelState().Model, model);
        QCOMPARE(m_panel->findChild<QLabel*>("lblkq1")->text(), model >= 12 ? "kq1/M-1s-1" : "kq1/s-1");
        QStringList enabled;
        for (const QString name : {"kq1", "kq2", "K", "F"})
            if (box("txt" + name).isEnabled())
                enabled << name;
        QCOMPARE(enabled.join(' '), enabledOf[model - 1]);
    }
    for (const int none : {0, 14, -1})
        m_panel->chooseModel(none);
    QCOMPARE(m_panel->panelState().Model, 13);
    QVERIFY(box("txtF").isEnabled());
}

void TestParameterPanel::explainsModelsAndParameters()
{
    QVERIFY(option("opnModel9").toolTip().contains("Φ0/Φ = exp(K·Q/D)\nno decay law"));
    QVERIFY(option("opnModel9").accessibleDescription().startsWith("Multi-step Quenching\nModel 9"));
    option("opnModel4").click();
    QVERIFY(box("txtkq1").toolTip().endsWith("[s-1]"));
    QVERIFY(box("txtkq2").toolTip().contains("not a parameter of Model 4"));
    for (const auto* edit : m_panel->findChildren<QLineEdit*>())
        QVERIFY2(!edit->toolTip().isEmpty(), qPrintable(edit->objectName()));
}

void TestParameterPanel::tellsHowTextsAreRead()
{
    for (const char* name : {"txtK", "txtFitRegion"}) {
        const QString guide = box(name).toolTip();
        const QColor ground = box(name).palette().color(QPalette::Base);
        box(name).setText("5×10⁻²");
        option("opnModel3").click(); // explains the boxes anew
        QVERIFY2(box(name).toolTip().endsWith("\n\"5×10⁻²\" is read as 5"), qPrintable(box(name).toolTip()));
        QCOMPARE(box(name).accessibleDescription(), box(name).toolTip());
        QVERIFY(box(name).palette().color(QPalette::Base) != ground);
        box(name).setText("5e-2");
        option("opnModel1").click();
        QCOMPARE(box(name).toolTip(), guide);
        QCOMPARE(box(name).palette().color(QPalette::Base), ground);
    }
}

void TestParameterPanel::arrowKeysWalkThroughTheModels()
{
    m_panel->show();
    m_panel->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    option("opnModel1").setFocus();
    for (int model = 2; model <= 13; ++model) {
        QTest::keyClick(m_panel->focusWidget(), Qt::Key_Right);
        QCOMPARE(m_panel->panelState().Model, model);
    }
    QTest::keyClick(m_panel->focusWidget(), Qt::Key_Up);
    QCOMPARE(m_panel->panelState().Model, 12);
    QVERIFY(box("txtF").isEnabled());
}

void TestParameterPanel::allLeavesTheFitRegionMode()
{
    option("opnFitRegion1").click();
    QCOMPARE(m_shared.FitRegionMode, 1);
    option("opnFitRegion0").click();
    QCOMPARE(m_shared.FitRegionMode, 1);
}

void TestParameterPanel::assistiveTechnologyChoosesToo()
{
    for (const char* name : {"opnModel13", "opnFitRegion1"})
        QAccessible::queryAccessibleInterface(&option(name))->actionInterface()->doAction("Toggle");
    QVERIFY(box("txtF").isEnabled());
    QVERIFY(!box("txtkq2").isEnabled());
    QCOMPARE(m_panel->findChild<QLabel*>("lblkq1")->text(), "kq1/M-1s-1");
    QCOMPARE(m_shared.FitRegionMode, 1);
}

void TestParameterPanel::changedFitRegionNeedsNormalizationAgain()
{
    m_shared.DataNormalized = true;
    option("opnModel3").click();
    box("txtK").setText("60");
    QVERIFY(m_shared.DataNormalized);
    QTest::keyClicks(&box("txtFitRegion"), "0");
    QVERIFY(!m_shared.DataNormalized);
}

void TestParameterPanel::restoresResults()
{
    const std::pair<QString, QString> cases[]{
        // model column of the row; then kq1, kq2, K, F
        {" 1", "1e+7 c4 50 0.5"},   {" 2", "c3 c4 c2 0.5"},   {" 3", "1e+7 1e+6 c2 0.5"}, // its kq2 is never restored
        {" 5", "1e+7 1e+6 c2 0.5"}, {" 7", "1e+7 c4 c2 0.5"}, {" 12", "c4 c5 50 c2"},
        {" 13", "c4 1e+6 50 c2"},   {"", "1e+7 1e+6 50 0.5"}, {"Model", "1e+7 1e+6 50 0.5"}};
    for (const auto& [model, boxes] : cases) {
        init();
        m_panel->restore({"SV", model, "c2", "c3", "c4", "c5", "c6", "OK", "c8"});
        const QStringList shown{box("txtkq1").text(), box("txtkq2").text(), box("txtK").text(), box("txtF").text()};
        QCOMPARE(shown.join(' '), boxes);
        QCOMPARE(m_panel->panelState().Model, std::max(1, model.toInt()));
    }
}

QTEST_MAIN(TestParameterPanel)
#include "tst_parameterpanel.moc"
