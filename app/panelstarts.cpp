#include "app/panelstarts.h"

#include "trust/enginestart.h"

namespace app
{
namespace
{

std::string PanelState::*textOf(models::Box box)
{
    switch (box) {
    case models::Box::K:
        return &PanelState::K;
    case models::Box::F:
        return &PanelState::F;
    case models::Box::kq1:
        return &PanelState::kq1;
    case models::Box::kq2:
        break;
    }
    return &PanelState::kq2;
}

} // namespace

void typeStart(PanelState& panel, int model, const leastsquares::FreeSlots& free, const fit::Parameters& values)
{
    for (const std::size_t slot : free)
        panel.*textOf(models::row(model).fitted()[slot - 1].box) = trust::startText(values[slot]);
}

void restoreStart(PanelState& panel, int model, const PanelState& earlier)
{
    for (const models::Parameter& parameter : models::row(model).fitted())
        panel.*textOf(parameter.box) = earlier.*textOf(parameter.box);
}

} // namespace app
