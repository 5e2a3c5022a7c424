// Writing the entries as a report.
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>

class OutputFile;

// Error 6 where a value has more lines, or a group more occurrences, than the 32,767 that a report can count and give
// back. To be called before a report is replaced.
void CheckCounts();

// Writes the entries, made on a template of that name. Changes nothing of them. Returns how many values it wrote, each
// instance and each member of an occurrence counted. The errors of the file and of the
// groups' stores; what was written before one stays.
long WriteReport(OutputFile &file, std::string_view templateName);

// A value as a report holds it: without the blanks at its end, in a MEMO with an apostrophe for each double quote.
std::string WrittenText(Integer element, std::string_view value);

// What the user is told of such an error.
std::string WriteErrorText(Integer error);
