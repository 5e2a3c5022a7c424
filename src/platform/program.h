// The program's frame: what main() asks of a front with a window (qt/program.cpp). The console front has no window and
// needs none of this.
#pragma once

#include "platform/layout.h"

// Connects to the window system and takes its own options out of the arguments.
void StartProgram(int &argc, char **argv);

// Shows the main window. mayClose is asked when the user, or the end of the desktop's session, closes it; end is run,
// without any question, when a signal ends the program.
void ShowMainWindow(const Place &layout, bool (*mayClose)(), void (*end)());

// Handles events until EndProgram; the exit status.
int RunProgram();
