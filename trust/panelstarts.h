#pragma once

#include "leastsquares/minimum.h"

#include "app/panelvalues.h"

namespace trust
{

/// Writes start values into the boxes of a model's free parameters and changes nothing else.
void typeStart(app::PanelState& panel, int model, const leastsquares::FreeSlots& free, const fit::Parameters& values);

/// Copies the texts of the boxes that a model uses from another state.
void restoreStart(app::PanelState& panel, int model, const app::PanelState& earlier);

} // namespace trust
