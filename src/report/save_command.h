// The commands that save the entries.
#pragma once

#include <string>

// Event of CommandSave: writes to the remembered report, or asks for a name where there is none. TmpStr is "Cancel"
// where the user cancelled that.
void CommandSave_Click();

// Event of CommandSaveAs.
void CommandSaveAs_Click();

// Save writes without asking for a name, to FileMark.
bool HasRememberedName();

// The name without its last four characters, as captions show it.
std::string CaptionName(const std::string &name);

// The last three characters of the name are RPX, letters in either case.
bool IsReportName(const std::string &name);
