// The commands that end or restart the work: reset, quit, closing the window.
#pragma once

#include "platform/runtime.h"

#include <string>

// Event of CommandReset: offers to save and empties all entries. TmpStr is "CANCELLED" where the user cancelled, or
// where the save did not come about.
void CommandReset_Click();

// Event of CommandQuit.
void CommandQuit_Click();

// The main window's title: the report that Save writes to, the template, the program.
std::string WindowTitle();

// The main window is to be closed. False where the user refused.
bool CloseMainWindow();

// Asks, as on closing, whether unsaved entries are to be saved. False where the user refused to go on.
bool OfferSave();

// Ends the program at once: nothing is asked or saved, work files are deleted and the directory's lock is free again.
void EndSession();

// The same on a signal, which may come in the middle of a command.
void EndOnSignal();
