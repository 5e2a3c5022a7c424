// The command that opens a report or merges it into the entries, and loading a report that is known.
#pragma once

#include <string>
#include <string_view>

enum class LoadResult; // report/reader.h

// Event of CommandAdd.
void CommandAdd_Click();

// What goes before a load on top of entries: an open group is left, a temporary report written. False where the group
// cannot be left.
bool MakeReadyToLoad();

// Asks for a saved report; false where the user picks none, or after a message a file that is none by its name.
bool PickReport(const std::string &title, std::string_view refusal, std::string &directory, std::string &name);

// Loads a report on top of what is on screen, and shows what it brought. One that is refused changes nothing there.
void LoadReport(const std::string &directory, const std::string &name);

// Reads ReportFileDir & ReportFileName on top of what is on screen. CurrentField must name no row that the load could
// rewrite.
LoadResult LoadReportFile();
