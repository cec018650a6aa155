#pragma once

#include "analysis/request.h"

#include <QWidgetList>

#include <map>
#include <memory>

class QString;

namespace app
{

struct SharedState;
class SheetText;
class WindowMenu;

/// Knows the data with which windows were filled, and marks the windows that show older data than the sheet gives: in
/// the menu of windows, and inside windows that have a line for it.
class DatedWindows
{
public:
    DatedWindows(const SheetText& sheet, const SharedState& shared, WindowMenu& menu)
        : m_sheet(sheet), m_shared(shared), m_menu(menu)
    {
    }

    /// The windows were filled with the data of a request.
    void fill(const QWidgetList& windows, const analysis::Request& request);
    /// Called after the sheet or the windows in view have changed. Returns a remark for the status line on plots and
    /// tables in view; empty if all are up to date.
    QString mark();

private:
    const SheetText& m_sheet;
    const SharedState& m_shared;
    WindowMenu& m_menu;
    std::map<QWidget*, std::shared_ptr<const analysis::Request>> m_filledWith;
};

} // namespace app
