#include "app/lifetimescommands.h"

#include "app/panelstarts.h"
#include "app/windowplaces.h"
#include "models/catalogue.h"

namespace app
{

LifetimesCommands::LifetimesCommands(const CommandInput& input, PanelEditor& panel, lifetimes::LifetimesWindow& window)
    : m_input(input), m_panel(panel), m_window(window)
{
    using Window = lifetimes::LifetimesWindow;
    QObject::connect(&window, &Window::ratioChanged, &window, [this] { analyse(); });
    QObject::connect(&window, &Window::readAgainChosen, &window, [this] { showTogether(); });
    QObject::connect(&window, &Window::valuesChosen, &window,
                     [this](int model, const fit::Parameters& values) { typeValues(model, values); });
}

lifetimes::Measurements LifetimesCommands::read() const
{
    return lifetimes::readMeasurements(cellsOf(m_input.sheet), panelValues(m_input.panel.panelState()).Cp);
}

void LifetimesCommands::showTogether()
{
    const lifetimes::Measurements measurements = read();
    if (const auto complaint = lifetimes::complaint(measurements))
        return m_input.prompter.message(QString::fromStdString(*complaint));
    m_shown = measurements;
    analyse();
    showInFront(m_window, kLifetimesPlace);
}

void LifetimesCommands::analyse()
{
    if (m_shown.samples.empty()) // nothing was read yet
        return;
    const lifetimes::ErrorRatio ratio = m_window.ratio();
    const auto complaint = lifetimes::complaint(ratio, m_shown);
    m_window.showOverview(lifetimes::overviewOf(m_shown, complaint ? lifetimes::ErrorRatio{} : ratio),
                          QString::fromStdString(complaint.value_or("")));
    look();
}

bool LifetimesCommands::look()
{
    const bool isOlder = !m_shown.samples.empty() && read() != m_shown;
    m_window.showChanged(isOlder);
    return isOlder;
}

void LifetimesCommands::typeValues(int model, const fit::Parameters& values)
{
    PanelState panel = m_panel.panelState();
    panel.Model = model;
    typeStart(panel, model, leastsquares::freeSlots(models::row(model).parameterCount(), {}), values);
    m_panel.setPanelState(panel);
}

} // namespace app
