#pragma once

#include <QList>
#include <QObject>
#include <QWidgetList>

class QAction;
class QMenu;

namespace app
{

/// The menu that lists the windows of the program and brings them to the front with what they show last. The item of a
/// window that was never shown is disabled.
class WindowMenu : public QObject
{
    Q_OBJECT

public:
    explicit WindowMenu(QMenu& menu);

    /// Adds a window, which keeps its item's name and caption. The caption is followed by the title of the window as
    /// soon as that differs from the present one.
    void add(QWidget& window, const char* name, const QString& caption);
    void addSeparator();
    QWidgetList windows() const;

    /// The item says so of a window that shows older data than the sheet holds.
    void markOlder(const QWidget& window, bool older);

signals:
    void windowsChanged(); // one was shown or hidden

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entry {
        QWidget* window;
        QAction* item;
        QString caption, firstTitle;
        bool older = false;
    };
    void writeCaptions();

    QMenu& m_menu;
    QList<Entry> m_entries;
};

} // namespace app
