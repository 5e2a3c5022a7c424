// The command that opens a report or merges it into the entries, and the report loaded at the start.
#pragma once

#include <string>
#include <string_view>

enum class LoadResult; // report/reader.h

// Event of CommandAdd.
void CommandAdd_Click();

// Asks for a saved report; false where the user picks none, or after a message a file that is none by its name.
bool PickReport(const std::string &title, std::string_view refusal, std::string &directory, std::string &name);

// Loads the report named as the program's argument, else the one the resource table names, else none.
void LoadStartFile(const std::string &argument);

// Reads ReportFileDir & ReportFileName on top of what is on screen. CurrentField must name no row that the load could
// rewrite.
LoadResult LoadReportFile();
