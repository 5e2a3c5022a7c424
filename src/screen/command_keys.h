// The Ctrl shortcuts.
#pragma once

#include "platform/runtime.h"

#include <span>

struct Control;

// A letter that runs a command, as its control would.
struct Shortcut {
    Integer Key = 0;
    bool InGroupOnly = false;
    Control *Of = nullptr;
};

// The table of shortcuts; it must live as long as the program.
void ConnectShortcuts(std::span<const Shortcut> table);

// Runs the command of a key that went down with Ctrl alone; sets the key code to 0 where the toolkit must not see the
// key again.
void HandleCommandKey(Integer &KeyCode);

// Event of every control whose only use of keys is the shortcuts.
void Command_KeyDown(Integer Index, Integer &KeyCode, Integer Shift);
