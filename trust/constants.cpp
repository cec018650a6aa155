#include "trust/constants.h"

namespace trust
{
namespace
{

const app::ModelParameter& parameter(int model, std::size_t slot) { return app::modelRow(model).fitted()[slot - 1]; }

} // namespace

std::string constantName(int model, std::size_t slot)
{
    const std::string_view label = parameter(model, slot).label; // "kq2 :"
    return std::string(label.substr(0, label.find(' ')));
}

std::string constantUnit(int model, std::size_t slot)
{
    switch (parameter(model, slot).box) {
    case app::PanelBox::K:
        return "M-1";
    case app::PanelBox::F:
        return "";
    case app::PanelBox::kq1:
    case app::PanelBox::kq2:
        return isCollisional(model, slot) ? "M-1 s-1" : "s-1";
    }
    return "";
}

std::string constantCaption(int model, std::size_t slot)
{
    const std::string unit = constantUnit(model, slot);
    return constantName(model, slot) + (unit.empty() ? "" : " /") + unit;
}

bool isCollisional(int model, std::size_t slot)
{
    const app::PanelBox box = parameter(model, slot).box;
    return box == app::PanelBox::kq2 || (box == app::PanelBox::kq1 && app::modelRow(model).uses(app::PanelBox::F));
}

} // namespace trust
