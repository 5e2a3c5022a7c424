// The program's frame: what main() asks of a front with a window (qt/program.cpp). The console front has no window and
// needs none of this.
#pragma once

#include "platform/layout.h"

#include <string>

// Connects to the window system and takes its own options out of the arguments.
void StartProgram(int &argc, char **argv);

// Shows the main window. title is its title as it is now, with the names of files in it. mayClose closes it for the
// user, unless he refuses. When the desktop's session is about to end, maySave asks what is to become of the entries,
// and ends nothing: false holds the session. end is run, without any question, when a signal or the session's end ends
// the program.
void ShowMainWindow(const Place &layout, std::string (*title)(), bool (*mayClose)(), bool (*maySave)(), void (*end)());

// From now on a request that arrives at the descriptor (hand_over.h) brings the window to the front, and its report is
// handed on, in the middle of whatever goes on. -1 for no descriptor.
void ServeRequests(int listener, void (*take)(const std::string &report));

// Handles events until EndProgram; the exit status.
int RunProgram();
