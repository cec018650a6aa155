#include "app/parameterpanel.h"
#include "app/sharedstate.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

class TestParameterPanel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void startsWithItsDefaults();
    void modelRulesBoxes_data();
    void modelRulesBoxes();
    void explainsModelsAndParameters();
    void ignoresModelsThatDoNotExist();
    void arrowKeysWalkThroughTheModels();
    void allLeavesTheFitRegionMode();
    void changedFitRegionNeedsNormalizationAgain();
    void showsAState();
    void restoresResults_data();
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

void TestParameterPanel::startsWithItsDefaults()
{
    const QList<QPair<QString, QString>> defaults{{"txtkq1", "1e+7"},
                                                  {"txtkq2", "1e+6"},
                                                  {"txtK", "50"},
                                                  {"txtF", "0.5"},
                                                  {"txtS", "0.82"},
                                                  {"txtConcProbe", "50e-6"},
                                                  {"txtTolerance", "0.0001"},
                                                  {"txtIteration", "100"},
                                                  {"txtFitRegion", "1e-3"}};
    for (const auto& [name, text] : defaults)
        QCOMPARE(box(name).text(), text);
    QVERIFY(option("opnModel1").isChecked());
    QVERIFY(option("opnFitRegion0").isChecked());
    QCOMPARE(m_shared.FitRegionMode, 2);
    QCOMPARE(m_panel->panelState(), app::PanelState());
    for (auto* label : m_panel->findChildren<QLabel*>(QRegularExpression("^lbl(kq|K|F|S|Conc|Tol|Ital)")))
        QVERIFY2(qobject_cast<QLineEdit*>(label->buddy()), qPrintable(label->objectName()));
}

void TestParameterPanel::modelRulesBoxes_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("enabled");
    const QString perSecond = "kq1/s-1";
    const QString perMolarSecond = "kq1/M-1s-1";
    const QStringList enabled{"kq2",   "kq1 kq2 K", "kq2 K",     "kq1 K", "K",         "kq1 kq2 K", "kq2 K",
                              "kq1 K", "K",         "kq1 kq2 K", "kq1 K", "kq1 kq2 F", "kq1 F"};
    for (int model = 1; model <= enabled.size(); ++model)
        QTest::addRow("model %d", model) << model << (model >= 12 ? perMolarSecond : perSecond) << enabled[model - 1];
}

void TestParameterPanel::modelRulesBoxes()
{
    QFETCH(int, model);
    option("opnModel12").click();
    option(QString("opnModel%1").arg(model)).click();
    QCOMPARE(m_panel->panelState().Model, model);
    QTEST(m_panel->findChild<QLabel*>("lblkq1")->text(), "caption");
    QStringList enabled;
    for (const QString name : {"kq1", "kq2", "K", "F"})
        if (box("txt" + name).isEnabled())
            enabled << name;
    QTEST(enabled.join(' '), "enabled");
}

void TestParameterPanel::explainsModelsAndParameters()
{
    QVERIFY(option("opnModel9").toolTip().contains("Φ0/Φ = exp(K·Q/D)\nno decay law"));
    QVERIFY(option("opnModel9").accessibleDescription().startsWith("Multi-step Quenching\nModel 9"));
    option("opnModel4").click();
    QVERIFY(box("txtkq1").toolTip().endsWith("[s⁻¹]"));
    QVERIFY(box("txtkq2").toolTip().contains("not a parameter of Model 4"));
    option("opnModel12").click();
    QVERIFY(box("txtkq1").toolTip().endsWith("first site [M⁻¹s⁻¹]"));
    for (const auto* edit : m_panel->findChildren<QLineEdit*>())
        QVERIFY2(!edit->toolTip().isEmpty(), qPrintable(edit->objectName()));
}

void TestParameterPanel::ignoresModelsThatDoNotExist()
{
    m_panel->chooseModel(12);
    for (const int model : {0, 14, -1})
        m_panel->chooseModel(model);
    QCOMPARE(m_panel->panelState().Model, 12);
    QVERIFY(box("txtF").isEnabled());
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

void TestParameterPanel::changedFitRegionNeedsNormalizationAgain()
{
    m_shared.DataNormalized = true;
    option("opnModel3").click();
    box("txtK").setText("60");
    QVERIFY(m_shared.DataNormalized);
    QTest::keyClicks(&box("txtFitRegion"), "0");
    QVERIFY(!m_shared.DataNormalized);
}

void TestParameterPanel::showsAState()
{
    const app::PanelState state{.kq1 = "2e7",
                                .kq2 = "3e6",
                                .K = "",
                                .F = "x",
                                .s = "1",
                                .Cp = "2e-5",
                                .tolerance = "0",
                                .iteration = "7",
                                .fitRegion = "0.01",
                                .Model = 13,
                                .FixKq2 = 1,
                                .FixF = 1,
                                .allChosen = false};
    m_panel->setPanelState(state);
    QCOMPARE(m_panel->panelState(), state);
    QVERIFY(m_panel->findChild<QCheckBox*>("Check1")->isChecked());
    QVERIFY(m_panel->findChild<QCheckBox*>("Check2")->isChecked());
    QVERIFY(!box("txtkq2").isEnabled());
}

void TestParameterPanel::restoresResults_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QStringList>("boxes"); // kq1, kq2, K, F
    QTest::newRow("dynamic") << " 1" << QStringList{"1e+7", "c4", "50", "0.5"};
    QTest::newRow("one step") << " 2" << QStringList{"c3", "c4", "c2", "0.5"};
    QTest::newRow("kq2 never restored") << " 3" << QStringList{"1e+7", "1e+6", "c2", "0.5"};
    QTest::newRow("association only") << " 5" << QStringList{"1e+7", "1e+6", "c2", "0.5"};
    QTest::newRow("multi-step") << " 7" << QStringList{"1e+7", "c4", "c2", "0.5"};
    QTest::newRow("two sites") << " 12" << QStringList{"c4", "c5", "50", "c2"};
    QTest::newRow("one of two sites") << " 13" << QStringList{"c4", "1e+6", "50", "c2"};
    QTest::newRow("unused row") << "" << QStringList{"1e+7", "1e+6", "50", "0.5"};
    QTest::newRow("titles") << "Model" << QStringList{"1e+7", "1e+6", "50", "0.5"};
}

void TestParameterPanel::restoresResults()
{
    QFETCH(QString, model);
    m_panel->restore({"SV", model, "c2", "c3", "c4", "c5", "c6", "OK", "c8"});
    QTEST((QStringList{box("txtkq1").text(), box("txtkq2").text(), box("txtK").text(), box("txtF").text()}), "boxes");
    QCOMPARE(m_panel->panelState().Model, std::max(1, model.toInt()));
}

QTEST_MAIN(TestParameterPanel)
#include "tst_parameterpanel.moc"
