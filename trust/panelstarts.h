#pragma once

#include "leastsquares/minimum.h"

#include "app/panelvalues.h"

namespace trust
{

/// Writes start values into the boxes of a model's free parameters; all else stays.
void typeStart(app::PanelState& panel, int model, const leastsquares::FreeSlots& free, const fit::Parameters& values);

/// Gives the boxes that a model uses the texts of another state.
void restoreStart(app::PanelState& panel, int model, const app::PanelState& earlier);

} // namespace trust
