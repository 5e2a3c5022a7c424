// The commands that save the entries.
#pragma once

// Event of CommandSave: writes to the remembered report, or asks for a name where there is none. TmpStr is "Cancel"
// where the user cancelled that.
void CommandSave_Click();

// Event of CommandSaveAs.
void CommandSaveAs_Click();

// Writes the entries to ReportFileDir & ReportFileName and clears DataChanged; a temporary report ("*.$$$") leaves that
// and the remembered name alone. After its message false: the partly written file and the earlier version, under the
// same name and "~", stay.
bool WriteReportFile();
