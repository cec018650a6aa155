#pragma once

#include "app/commandinput.h"
#include "lifetimes/lifetimeswindow.h"

namespace app
{

/// Analyses the sheet's intensities and lifetimes together. Changes nothing but the panel, and that only when values
/// are typed into it.
class LifetimesCommands
{
public:
    LifetimesCommands(const CommandInput& input, PanelEditor& panel, lifetimes::LifetimesWindow& window);

    /// Reads the sheet and shows the window. A message says why the sheet cannot be used.
    void showTogether();
    /// Called after anything was typed. Returns whether the window shows older data than the sheet holds; it says so.
    bool look();

private:
    lifetimes::Measurements read() const;
    void analyse();
    void typeValues(int model, const fit::Parameters& values);

    CommandInput m_input;
    PanelEditor& m_panel;
    lifetimes::LifetimesWindow& m_window;
    lifetimes::Measurements m_shown;
};

} // namespace app
