// The temporary report that the entries are written to before a merge and for a print of the screen.
#pragma once

#include <string>

// The first free name of "!quin!02.$$$" ... "!quin!99.$$$", "!quin!00.$$$", "!quin!01.$$$" in the resource directory;
// the last but two where all are taken.
std::string TemporaryReportName();

// Writes the entries there; the names of the report in use are put back afterwards. False after the writer's message.
bool WriteTemporaryReport(const std::string &name);
