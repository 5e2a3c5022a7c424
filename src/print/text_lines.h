// A report as a text file of 80 columns.
#pragma once

#include "platform/items.h"

#include <string>

class OutputFile;

// Writes a report as text, under ReportFileName as its label. Errors 13 and 62 from the report, what was read of it
// having been written; those of OutputFile.
void WriteTextPrint(ItemInput &input, OutputFile &output);

// Writes the report at a path to ReportFileDir & ReportFileName, replacing what is there. Error 55 where both are the
// same file; 53, 13, 62 from the report, what was read of it having been written; 75, 76, 61 and others from the
// output.
void PrintReportToFile(const std::string &source);
