#include "app/datedwindows.h"

#include "app/dataage.h"
#include "app/windowmenu.h"
#include "plot/outputwindow.h"
#include "ui/oldernote.h"

#include <QCoreApplication>

namespace app
{

void DatedWindows::fill(const QWidgetList& windows, const analysis::Request& request)
{
    const auto shared = std::make_shared<const analysis::Request>(request);
    for (QWidget* window : windows)
        m_filledWith[window] = shared;
}

QString DatedWindows::mark()
{
    bool anyOlder = false;
    for (const auto& [window, request] : m_filledWith) {
        const bool older = isOlder(*request, m_sheet, m_shared);
        m_menu.markOlder(*window, older);
        ui::showOlderNote(*window, older);
        anyOlder = anyOlder || (older && window->isVisible() && qobject_cast<plot::OutputWindow*>(window));
    }
    return anyOlder ? QCoreApplication::translate("app::DatedWindows", "older data in view") : QString();
}

} // namespace app
