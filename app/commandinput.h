#pragma once

#include "app/panelvalues.h"
#include "app/sharedstate.h"
#include "app/sheettext.h"
#include "ui/prompter.h"

namespace app
{

/// The objects from which all commands read what was typed, and through which they report what is wrong with it; all
/// must outlive the commands.
struct CommandInput {
    SheetText& sheet;
    const Panel& panel;
    SharedState& shared;
    ui::Prompter& prompter;
};

} // namespace app
