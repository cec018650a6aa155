#include "tests/support/application.h"
#include "ui/clipboard.h"
#include "ui/grid.h"

#include <QAbstractButton>
#include <QAction>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <iterator>
#include <random>

namespace
{

constexpr int kEvents = 20000;
constexpr int kDeepest = 6; // commands inside each other

const char* const kTexts[] = {"0",      "1e7", "5e-5", "50", "-3",   "1e400", "abc", "0.4", "1e30", "12.5",
                              "1e-300", "",    "3",    "2",  "1000", "nan",   "Φ",   "1",   "0.01", "24000"};
// Rare, because during a search only one event comes in 10 ms, and details take a second after each stopped fit.
const QRegularExpression kSlow("^mnu(Find|Compare|(Window)?FitDetails|Lifetimes)");

} // namespace

/// Presses, clicks, types, pastes, opens and runs at random in the real windows, while fits and searches run, too.
/// VORLO_MONKEY_SEED and VORLO_MONKEY_EVENTS set another seed and number of events.
class TestMonkey : public QObject
{
    Q_OBJECT

private slots:
    void leavesAWorkingProgram();

private:
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(m_random); }
    template <class List>
    auto pick(const List& list)
    {
        return list[static_cast<decltype(std::size(list))>(upTo(static_cast<int>(std::size(list)) - 1))];
    }
    QWidget* anyWidget();
    QString anyBlock();
    QString anyFile();
    void next();
    void act();
    void click(QWidget& widget);
    void press(QWidget& widget);
    void window(QWidget& widget);
    void stopRuns();

    std::mt19937 m_random;
    QTemporaryDir m_folder;
    QStringList m_items, m_slowItems; // of the menus
    std::unique_ptr<support::Application> m_vorlo;
    int m_left = 0;
    int m_depth = 0;
    int m_runs = 0;   // fits and searches
    int m_during = 0; // events while one ran
};

void TestMonkey::leavesAWorkingProgram()
{
    const uint seed = qEnvironmentVariableIsSet("VORLO_MONKEY_SEED")
                          ? qEnvironmentVariable("VORLO_MONKEY_SEED").toUInt()
                          : std::random_device{}();
    const int events = qEnvironmentVariableIsSet("VORLO_MONKEY_EVENTS")
                           ? qEnvironmentVariableIntValue("VORLO_MONKEY_EVENTS")
                           : kEvents;
    qInfo() << "seed" << seed << "events" << events;
    m_random.seed(seed);
    m_vorlo = std::make_unique<support::Application>();
    m_vorlo->control<QAction>("mnuQuit").setEnabled(false); // until the end
    for (const auto* item : m_vorlo->program.MainWindow.findChildren<QAction*>(QRegularExpression("^mnu")))
        (item->objectName().contains(kSlow) ? m_slowItems : m_items) << item->objectName();
    m_left = events;
    next();
    QTRY_VERIFY_WITH_TIMEOUT(m_left == 0 && m_depth == 0, 600'000);
    qInfo() << m_runs << "fits and searches," << m_during << "events while one ran," << m_vorlo->prompter.shown.size()
            << "messages";
    QVERIFY(m_runs > events / 1000);
    QVERIFY(m_during > events / 100);

    const QString path = m_folder.filePath("after.vrl");
    m_vorlo->prompter.shown.clear();
    m_vorlo->save(path);
    QCOMPARE(m_vorlo->prompter.shown, QStringList());
    QVERIFY(QFileInfo(path).size() > 100);
    QSignalSpy ended(&m_vorlo->program, &app::VorloMain::ended);
    m_vorlo->control<QAction>("mnuQuit").setEnabled(true);
    m_vorlo->run("mnuQuit");
    QCOMPARE(ended.count(), 1);
}

/// Sends one event after the other from the event loop that is running, also from that of a fit or search. An event
/// that starts a command returns when the command has ended; other events come in the meantime.
void TestMonkey::next()
{
    if (m_left == 0)
        return stopRuns();
    --m_left;
    QMetaObject::invokeMethod(this, &TestMonkey::next, Qt::QueuedConnection);
    ++m_depth;
    m_during += m_depth > 1;
    if (m_depth > kDeepest)
        stopRuns();
    else
        act();
    --m_depth;
}

void TestMonkey::stopRuns()
{
    static const QRegularExpression stops("^cmd(STOP|CancelSearch|CancelComparison)$");
    for (const QWidget* window : QApplication::topLevelWidgets())
        for (auto* button : window->findChildren<QAbstractButton*>(stops))
            button->click();
    m_vorlo->program.fitDetails.close();
    if (m_left == 0 && m_depth > 0)
        QMetaObject::invokeMethod(this, &TestMonkey::next, Qt::QueuedConnection);
}

QWidget* TestMonkey::anyWidget()
{
    m_vorlo->program.MainWindow.show(); // a click in its menu may have hit Quit
    QWidgetList shown;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        shown << window;
        for (QWidget* child : window->findChildren<QWidget*>())
            if (child->isVisible() && child->objectName() != "cmdSysInfo") // starts a program of the desktop
                shown << child;
    }
    return pick(shown);
}

QString TestMonkey::anyBlock()
{
    QString text;
    for (int cells = upTo(40); cells > 0; --cells)
        text += QString(pick(kTexts)) + pick(QStringList{"\t", "\t", "\r\n", "\n", "\r", ""});
    return text;
}

QString TestMonkey::anyFile()
{
    const QString path = m_folder.filePath(QString::number(upTo(3)) + ".vrl");
    QFile file(path);
    if (upTo(2) == 0 && file.open(QIODevice::ReadWrite)) {
        if (upTo(1) == 0)
            file.resize(upTo(static_cast<int>(file.size())));
        else
            file.write(("Vorlo File\nModel=" + QString::number(upTo(15)) + "\nTable\n" + anyBlock()).toUtf8());
    }
    return path;
}

void TestMonkey::act()
{
    support::Application& vorlo = *m_vorlo;
    switch (upTo(12)) {
    case 0:
    case 1: {
        const QString item = pick(upTo(79) == 0 ? m_slowItems : m_items);
        vorlo.prompter.nextFile = anyFile();
        m_runs += item.contains(QRegularExpression("^mnu(?!Window).*(Analysis|Start$|Compare|FindAndFit)"));
        return vorlo.run(qPrintable(item));
    }
    case 2: // data whose analysis takes a long time
        vorlo.fill({{"0", "2", "0.4", "24000", "0.6", "57000", "", "", "100"},
                    {"0.005", "2", "0.5", "19800", "0.5", "45100", "", "", "75.1"},
                    {"0.02", "1", "1", "28600", "", "", "", "", "42.9"}});
        for (const auto& [box, text] : {std::pair{"txtK", "20"},
                                        {"txtkq1", "3e5"},
                                        {"txtkq2", "8e5"},
                                        {"txtTolerance", "0"},
                                        {"txtIteration", "1e30"}})
            vorlo.type(box, text);
        vorlo.run("mnuNormalization");
        ++m_runs;
        return vorlo.run(pick(QList<const char*>{"mnuSternVolmerAnalysis", "mnuDecayCurveAnalysis"}));
    case 3:
        return vorlo.choose(1 + upTo(12));
    case 4:
        return vorlo.type(pick(QStringList{"txtkq1", "txtkq2", "txtK", "txtF", "txtS", "txtIteration", "txtTolerance",
                                           "txtFitRegion", "txtConcProbe"}),
                          pick(kTexts));
    case 5:
        return ui::copyText(anyBlock());
    case 6:
        return stopRuns();
    case 7:
        return window(*anyWidget());
    case 8:
    case 9:
        return press(*anyWidget());
    default:
        return click(*anyWidget());
    }
}

void TestMonkey::click(QWidget& widget)
{
    const QPoint at(upTo(qMax(0, widget.width() - 1)), upTo(qMax(0, widget.height() - 1)));
    const auto button = upTo(5) == 0 ? Qt::RightButton : Qt::LeftButton;
    const auto modifier = pick(QList<Qt::KeyboardModifier>{Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier});
    if (upTo(5) == 0)
        QTest::mouseDClick(&widget, button, modifier, at);
    else
        QTest::mouseClick(&widget, button, modifier, at);
}

void TestMonkey::press(QWidget& widget)
{
    static const QList<Qt::Key> keys{Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Up,     Qt::Key_Down, Qt::Key_Delete,
                                     Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,    Qt::Key_Home, Qt::Key_End,
                                     Qt::Key_PageUp, Qt::Key_Space,  Qt::Key_Insert, Qt::Key_F10,  Qt::Key_Backspace};
    static const QList<Qt::Key> letters{Qt::Key_A, Qt::Key_C, Qt::Key_D, Qt::Key_N, Qt::Key_O,
                                        Qt::Key_S, Qt::Key_T, Qt::Key_V, Qt::Key_X, Qt::Key_Z};
    switch (upTo(3)) {
    case 0:
        return QTest::keyClick(&widget, pick(letters), Qt::ControlModifier);
    case 1:
        return QTest::keyClicks(&widget, pick(QStringList{"1", "e-3", "-", "2.5", "x"}));
    default:
        return QTest::keyClick(&widget, pick(keys), upTo(3) == 0 ? Qt::ShiftModifier : Qt::NoModifier);
    }
}

void TestMonkey::window(QWidget& widget)
{
    QWidget& window = *widget.window();
    if (window.windowType() == Qt::Popup)
        window.close();
    else if (upTo(1) == 0)
        window.resize(1 + upTo(1200), 1 + upTo(900));
    else if (&window != &m_vorlo->program.MainWindow) // that would end the program
        window.close();
}

QTEST_MAIN(TestMonkey)
#include "tst_monkey.moc"
