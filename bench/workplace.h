// The program at work on the console front, on a folder of its own, for a measurement.
#pragma once

#include <string>
#include <string_view>

// Starts the program on a template (its records, without the header) in a fresh folder; a second start does the same
// anew.
void StartOn(std::string_view records);

// The folder, ending in "/".
const std::string &Folder();

// Writes a file in the folder.
void WriteIn(const std::string &name, std::string_view bytes);

// Loads a report of the folder into the screen, as Add does with this file picked and every question answered No.
void LoadReportIn(const std::string &name);
