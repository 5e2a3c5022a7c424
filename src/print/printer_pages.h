// A report on the pages of the default printer.
#pragma once

#include "platform/runtime.h"

// Prints ReportFileDir & ReportFileName as copy number `copy`, a job of its own. Error 482 from the printer; 53, 13, 62
// from the report, what was read of it having been printed.
void PrintReportToPrinter(Integer copy);
