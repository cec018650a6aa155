#include "trust/panelstarts.h"

#include "trust/enginestart.h"

namespace trust
{
namespace
{

std::string app::PanelState::*textOf(models::Box box)
{
    switch (box) {
    case models::Box::K:
        return &app::PanelState::K;
    case models::Box::F:
        return &app::PanelState::F;
    case models::Box::kq1:
        return &app::PanelState::kq1;
    case models::Box::kq2:
        break;
    }
    return &app::PanelState::kq2;
}

} // namespace

void typeStart(app::PanelState& panel, int model, const leastsquares::FreeSlots& free, const fit::Parameters& values)
{
    for (const std::size_t slot : free)
        panel.*textOf(models::row(model).fitted()[slot - 1].box) = startText(values[slot]);
}

void restoreStart(app::PanelState& panel, int model, const app::PanelState& earlier)
{
    for (const models::Parameter& parameter : models::row(model).fitted())
        panel.*textOf(parameter.box) = earlier.*textOf(parameter.box);
}

} // namespace trust
