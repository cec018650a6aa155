#pragma once

#include "app/startup.h"
#include "tests/support/recordingprompter.h"

namespace support
{

/// The whole program as a person has it in front of them, with a recorder in place of message boxes and dialogs.
struct Application {
    RecordingPrompter prompter;
    app::VorloMain program{prompter};

    /// A control or menu item of the main window by its name.
    template <class Control>
    Control& control(const QString& name)
    {
        auto* found = program.MainWindow.findChild<Control*>(name);
        Q_ASSERT(found);
        return *found;
    }
};

} // namespace support
