// A report on the pages of the default printer.
#pragma once

struct ItemInput;
struct PrintOptions; // print/report_layout.h

// Prints one copy, a job of its own. Error 482 from the printer; 13, 62 from the report, what was read of it having
// been printed.
void PrintPages(ItemInput &input, const PrintOptions &options);
