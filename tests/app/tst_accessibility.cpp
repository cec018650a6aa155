#include "tests/support/application.h"
#include "ui/remark.h"

#include <QAccessible>
#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QProgressBar>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace
{

// WCAG 2.1, success criterion 1.4.3.
constexpr double kLeastContrast = 4.5;

QList<QWidget*> windows()
{
    QList<QWidget*> found;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (!window->windowTitle().isEmpty())
            found << window;
    return found;
}

QString nameOf(const QWidget& widget)
{
    return QString("%1 '%2' in %3")
        .arg(widget.metaObject()->className(), widget.objectName(), widget.window()->windowTitle());
}

/// Roles of controls that a user operates or reads; frames, panes and scroll bars are skipped.
bool needsName(QAccessible::Role role)
{
    static const QSet<QAccessible::Role> roles{
        QAccessible::PushButton, QAccessible::RadioButton, QAccessible::CheckBox, QAccessible::EditableText,
        QAccessible::ComboBox,   QAccessible::Table,       QAccessible::Graphic,  QAccessible::ProgressBar,
        QAccessible::MenuItem,   QAccessible::Grouping,    QAccessible::List,     QAccessible::Window};
    return roles.contains(role);
}

void collectNameless(QAccessibleInterface& node, QStringList& nameless, int& named)
{
    const auto* object = node.object();
    const bool own = !object || !object->objectName().startsWith("qt_");
    if (own && needsName(node.role()) && !node.state().invisible) {
        if (node.text(QAccessible::Name).isEmpty())
            nameless << QString("%1 '%2'").arg(object ? object->metaObject()->className() : "item",
                                               object ? object->objectName() : "");
        else
            ++named;
    }
    if (node.role() == QAccessible::Table)
        return; // cells speak for themselves
    for (int i = 0; i < node.childCount(); ++i)
        if (QAccessibleInterface* child = node.child(i))
            collectNameless(*child, nameless, named);
}

/// Buttons, boxes and frames of our own; no parts of the toolkit's controls.
bool isOperated(const QWidget& control)
{
    if (control.objectName().isEmpty() ? !qobject_cast<const QGroupBox*>(&control)
                                       : control.objectName().startsWith("qt_"))
        return false;
    if (qobject_cast<const QTabBar*>(control.parentWidget()))
        return false;
    return qobject_cast<const QAbstractButton*>(&control) || qobject_cast<const QLineEdit*>(&control) ||
           qobject_cast<const QComboBox*>(&control) || qobject_cast<const QGroupBox*>(&control);
}

/// The titles of a table at which pointing shows nothing but the title itself.
QStringList silentTitles(QHeaderView& header)
{
    const QString kNone = "none";
    QStringList silent;
    for (int section = 0; section < header.count(); ++section) {
        const QString title = header.model()->headerData(section, header.orientation()).toString();
        if (header.isSectionHidden(section) || title.isEmpty() || title.toInt() != 0) // a sample's number
            continue;
        const int place = header.sectionViewportPosition(section) + 1;
        const QPoint at = header.orientation() == Qt::Horizontal ? QPoint(place, 1) : QPoint(1, place);
        QToolTip::showText({}, kNone);
        QHelpEvent pointedAt(QEvent::ToolTip, at, header.viewport()->mapToGlobal(at));
        QApplication::sendEvent(header.viewport(), &pointedAt);
        if (QToolTip::text() == kNone || QToolTip::text() == title)
            silent << title;
    }
    return silent;
}

/// The place at which Tab stops: a control, or the group of an option.
const QObject* tabStop(QWidget* widget)
{
    const auto* option = qobject_cast<QRadioButton*>(widget);
    return option && option->group() ? static_cast<QObject*>(option->group()) : widget;
}

QSet<const QObject*> tabStops(const QWidget& window)
{
    QSet<const QObject*> stops;
    for (auto* widget : window.findChildren<QWidget*>())
        if (widget->focusPolicy() & Qt::TabFocus && widget->isVisible() && widget->isEnabled() &&
            widget->window() == &window && !widget->focusProxy())
            stops << tabStop(widget);
    return stops;
}

double luminance(const QColor& color)
{
    const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b)
{
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

} // namespace

class TestAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void everyControlHasAName();
    void everyControlSaysWhatItDoes();
    void tabReachesEveryControl();
    void followsADarkDesktop();
    void tablesReadFromTheLeftEverywhere();
};

void TestAccessibility::everyControlHasAName()
{
    const support::Application vorlo;
    int named = 0;
    for (QWidget* window : windows()) {
        QStringList nameless;
        QAccessibleInterface* top = QAccessible::queryAccessibleInterface(window);
        QVERIFY(top);
        window->show();
        collectNameless(*top, nameless, named);
        QVERIFY2(nameless.isEmpty(), qPrintable(window->windowTitle() + ": " + nameless.join(", ")));
    }
    QVERIFY(named > 60); // roughly the number in the main window alone
}

void TestAccessibility::everyControlSaysWhatItDoes()
{
    support::Application vorlo;
    QList<support::Column> samples{{"0", "1", "1", "20", "", "", "", "", "100"}};
    for (const auto& [Q, lifetime, intensity] :
         {std::tuple{"0.01", "17.4", "80"}, {"0.02", "15.4", "65"}, {"0.04", "12.5", "47"}, {"0.08", "9.1", "28"}})
        samples << support::Column{Q, "1", "1", lifetime, "", "", "", "", intensity};
    vorlo.fill(samples);
    vorlo.choose(3);
    for (const char* item : {"mnuFitDetails", "mnuFindAndFitSternVolmer", "mnuCompareModels", "mnuLifetimes"})
        vorlo.run(item);
    QStringList silent;
    for (const QWidget* window : windows()) {
        for (auto* header : window->findChildren<QHeaderView*>())
            if (!window->inherits("plot::SpreadSheet"))
                silent << silentTitles(*header);
        for (const auto* control : window->findChildren<QWidget*>())
            if (isOperated(*control) && control->toolTip().isEmpty())
                silent << nameOf(*control);
        for (const auto* tabs : window->findChildren<QTabWidget*>())
            for (int tab = 0; tab < tabs->count(); ++tab)
                if (tabs->tabToolTip(tab).isEmpty())
                    silent << tabs->tabText(tab);
        for (const auto* bar : window->findChildren<QProgressBar*>())
            QVERIFY(!bar->isTextVisible());
    }
    QVERIFY2(silent.isEmpty(), qPrintable(silent.join('\n')));
}

void TestAccessibility::tabReachesEveryControl()
{
    const support::Application vorlo;
    for (QWidget* window : windows()) {
        window->show();
        window->activateWindow();
        QTRY_VERIFY2(window->isActiveWindow(), qPrintable(window->windowTitle()));
        QVERIFY2(QApplication::focusWidget(), qPrintable(window->windowTitle())); // keys work from the first moment
        QSet<const QObject*> missed = tabStops(*window);
        for (qsizetype presses = 2 * missed.size() + 2; presses > 0 && !missed.isEmpty(); --presses) {
            missed.remove(tabStop(QApplication::focusWidget()));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        for (const QObject* stop : missed)
            QFAIL(qPrintable("Tab does not reach " + stop->objectName() + " in " + window->windowTitle()));
        window->hide();
    }
}

// Texts must have enough contrast with their background, with any colours of the desktop.
void TestAccessibility::followsADarkDesktop()
{
    const QPalette usual = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(53, 53, 53), QColor(35, 35, 35)));
    const support::Application vorlo;
    for (QWidget* window : windows())
        for (const auto* widget : window->findChildren<QWidget*>()) {
            if (!widget->isEnabled())
                continue; // faded on purpose
            const QPalette& palette = widget->palette();
            for (const auto& [text, ground] :
                 {std::pair{QPalette::WindowText, QPalette::Window}, std::pair{QPalette::Text, QPalette::Base},
                  std::pair{QPalette::ButtonText, QPalette::Button}})
                QVERIFY2(contrast(palette.color(text), palette.color(ground)) >= kLeastContrast,
                         qPrintable(nameOf(*widget)));
            QVERIFY(contrast(palette.color(QPalette::Text), ui::remarkGround(palette.color(QPalette::Base))) >=
                    kLeastContrast);
        }
    const QImage plot = vorlo.program.GraphWindow1.findChild<QWidget*>("Picture1")->grab().toImage();
    QCOMPARE(plot.pixelColor(plot.rect().center()), QColor(Qt::white));
    QApplication::setPalette(usual);
}

// In right-to-left layout "-4.1" would appear as "4.1-".
void TestAccessibility::tablesReadFromTheLeftEverywhere()
{
    const Qt::LayoutDirection usual = QGuiApplication::layoutDirection();
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    const support::Application vorlo;
    int tables = 0;
    for (const QWidget* window : windows())
        for (const auto* table : window->findChildren<QTableView*>()) {
            QVERIFY2(table->layoutDirection() == Qt::LeftToRight, qPrintable(nameOf(*table)));
            ++tables;
        }
    QCOMPARE(tables, 22); // main window 2, import 1, plots 2, fit 8, models 1, readings 1, lifetimes 7
    QGuiApplication::setLayoutDirection(usual);
}

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
