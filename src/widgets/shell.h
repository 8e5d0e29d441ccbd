// What a window may ask of the program as a whole.
#pragma once

#include "platform/settingsstore.h"
#include "widgets/messageboxes.h"

namespace packwise {

enum class FormId {
    Main,
    Connect,
    Server,
    Client,
    Message,
    Card,
    DeckBuild,
    Save,
    Security,
    FixSeats,
    Info
};

class Shell {
public:
    virtual ~Shell() = default;

    virtual SettingsStore& settings() = 0;
    virtual MessageBoxes& boxes() = 0;

    // The folder in which the user started the program; the current one holds the card sets.
    virtual QString startFolder() const = 0;

    // Whether a window is on the screen. Asking does not make it.
    virtual bool isVisible(FormId form) const = 0;

    // Stores the places of all windows that have one.
    virtual void saveForms() = 0;

    // Ends the program: nothing of it is on the screen, no timer and no socket of it serves any
    // more, and the process leaves its event loop. The caller returns without doing more.
    virtual void end() = 0;

    // True from end() on. Handlers that have shown a message box look at it before they go on.
    virtual bool ended() const = 0;
};

}  // namespace packwise
