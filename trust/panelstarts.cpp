#include "trust/panelstarts.h"

#include "trust/enginestart.h"

namespace trust
{
namespace
{

std::string app::PanelState::*textOf(app::PanelBox box)
{
    switch (box) {
    case app::PanelBox::K:
        return &app::PanelState::K;
    case app::PanelBox::F:
        return &app::PanelState::F;
    case app::PanelBox::kq1:
        return &app::PanelState::kq1;
    case app::PanelBox::kq2:
        break;
    }
    return &app::PanelState::kq2;
}

} // namespace

void typeStart(app::PanelState& panel, int model, const FreeSlots& free, const fit::Parameters& values)
{
    for (const std::size_t slot : free)
        panel.*textOf(app::modelRow(model).fitted()[slot - 1].box) = startText(values[slot]);
}

void restoreStart(app::PanelState& panel, int model, const app::PanelState& earlier)
{
    for (const app::ModelParameter& parameter : app::modelRow(model).fitted())
        panel.*textOf(parameter.box) = earlier.*textOf(parameter.box);
}

} // namespace trust
