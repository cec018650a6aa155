#include "app/windowmenu.h"

#include "ui/twips.h"

#include <QEvent>
#include <QMenu>

namespace app
{

WindowMenu::WindowMenu(QMenu& menu) : m_menu(menu)
{
    connect(&menu, &QMenu::aboutToShow, this, &WindowMenu::writeCaptions);
}

void WindowMenu::add(QWidget& window, const char* name, const QString& caption)
{
    QAction* item = m_menu.addAction(caption, &window, [&window] { ui::bringToFront(window); });
    item->setObjectName(name);
    item->setEnabled(window.isVisible());
    m_entries.append({&window, item, caption, window.windowTitle()});
    window.installEventFilter(this);
}

void WindowMenu::addSeparator() { m_menu.addSeparator(); }

QWidgetList WindowMenu::windows() const
{
    QWidgetList all;
    for (const Entry& entry : m_entries)
        all << entry.window;
    return all;
}

void WindowMenu::markOlder(const QWidget& window, bool older)
{
    for (Entry& entry : m_entries)
        if (entry.window == &window)
            entry.older = older;
}

void WindowMenu::writeCaptions()
{
    for (const Entry& entry : m_entries) {
        const QString title = entry.window->windowTitle();
        QString text = entry.caption;
        if (title != entry.firstTitle)
            text += ": " + QString(title).replace('&', "&&");
        entry.item->setText(entry.older ? tr("%1 (older data)").arg(text) : text);
    }
}

bool WindowMenu::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide) {
        for (const Entry& entry : m_entries)
            if (entry.window == watched)
                entry.item->setEnabled(true);
        emit windowsChanged();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace app
