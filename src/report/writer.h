// Writing the entries as a report file.
#pragma once

#include "platform/runtime.h"

#include <string>

// Writes the entries to ReportFileDir & ReportFileName and clears DataChanged; a temporary report ("*.$$$") leaves that
// and the remembered name alone. After its message false: the partly written file and the earlier version, under the
// same name and "~", stay.
bool WriteReportFile();
