// Running shortcuts (command_keys.h). Which there are: main/commands.cpp.
#include "screen/command_keys.h"

#include "model/field_model.h"
#include "platform/controls.h"
#include "screen/value_entry.h"

#include <algorithm>

namespace {

// Empty before ConnectShortcuts.
std::span<const Shortcut> Shortcuts;

} // namespace

void ConnectShortcuts(std::span<const Shortcut> table) { Shortcuts = table; }

void HandleCommandKey(Integer &KeyCode) {
    if (KeyCode == EnterCode) {
        CtrlHeld = EnterCode;
        return;
    }
    const Integer key = KeyCode;
    const auto shortcut =
        std::find_if(Shortcuts.begin(), Shortcuts.end(), [&](const Shortcut &s) { return s.Key == key; });
    if (shortcut == Shortcuts.end() || (shortcut->InGroupOnly && !GroupIsOpen())) return;
    KeyCode = 0;
    CommitPendingEdit();
    EndStep();
    RunEvent(*shortcut->Of, Event::Click);
}

void Command_KeyDown(Integer /*Index*/, Integer &KeyCode, Integer Shift) {
    if (Shift == CtrlMask) HandleCommandKey(KeyCode);
}
