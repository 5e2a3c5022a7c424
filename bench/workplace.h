// The program at work on a folder of its own, for a measurement.
#pragma once

#include <string>
#include <string_view>

// The folder, ending in "/"; it is removed at the end of the process.
const std::string &Folder();

// Makes the folder a resource directory with this template (its records, without the header).
void WriteTemplateIn(std::string_view records);

// Templates and reports of any size: sections of a hundred fields each, every field with a title of its own, and two
// records for each of the fields, one after the other.
std::string ManyFields(int count);
std::string ManyRecords(int fields);

// Copies a file by plain reads and writes of 64 kB, which is what a copy costs; with a flush it is on the disk.
enum class Flush { No, Yes };
void CopyPlainly(const std::string &from, const std::string &to, Flush flush);

// Writes a file in the folder.
void WriteIn(const std::string &name, std::string_view bytes);

// The program without a window, from here on.

// Starts the program on a template; a second start does the same anew.
void StartOn(std::string_view records);

// Loads a report of the folder into the screen, as Add does with this file picked and every question answered No.
void LoadReportIn(const std::string &name);
