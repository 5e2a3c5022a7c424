// A report as a text of 80 columns.
#pragma once

struct ItemInput;
struct PrintOptions; // print/report_layout.h
class OutputFile;

// False where characters are not in the encoding asked for and became "?". Errors 13 and 62 from the report, what was
// read of it having been written; those of OutputFile.
bool WriteTextPrint(ItemInput &input, OutputFile &output, const PrintOptions &options);
