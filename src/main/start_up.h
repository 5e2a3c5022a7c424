// Start-up: resource directory, start-up frame, first activation of the main window.
#pragma once

#include <string>

// What the program's arguments ask for; "" for nothing.
struct StartArguments {
    std::string Resources;      // directory in place of the current one
    std::string Report;         // report in place of the resource table's start file
    std::string Installed = {}; // directory to fill the user's own resource directory from, which is then worked in
};

// Load of the main window. False where the program ends: the user gave up looking for the resource directory, or
// another program of his works in it and has taken the report.
bool LoadMainWindow(const StartArguments &arguments);

// First activation of the main window, once it is shown: loads the default template and the start file.
void ActivateMainWindow();

// Events of the start-up frame.
void LogoOff_Click();
void LogoQuit_Click();
void Timer1_Timer();
