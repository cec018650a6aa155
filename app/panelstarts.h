#pragma once

#include "app/panelvalues.h"
#include "leastsquares/minimum.h"

namespace app
{

/// Writes start values into the boxes of a model's free parameters and changes nothing else.
void typeStart(PanelState& panel, int model, const leastsquares::FreeSlots& free, const fit::Parameters& values);

/// Copies the texts of the boxes that a model uses from another state.
void restoreStart(PanelState& panel, int model, const PanelState& earlier);

} // namespace app
