// A report as a text file of 80 columns.
#pragma once

#include <string>

// Writes the report at a path to ReportFileDir & ReportFileName, replacing what is there. Error 55 where both are the
// same file; 53, 13, 62 from the report, what was read of it having been written; 75, 76, 61 and others from the
// output.
void PrintReportToFile(const std::string &source);
