// Prints a report on the default printer without showing a window: print_pages DIRECTORY/ NAME. What it costs is
// measured from outside (compare.py).
#include "form/main_window.h"
#include "model/field_model.h"
#include "platform/program.h"
#include "platform/runtime.h"
#include "print/print_panel.h"

#include <cstdio>

int main(int argc, char **argv) {
    if (argc != 3) return 2;
    StartProgram(argc, argv);
    ReportFileDir = argv[1];
    ReportFileName = argv[2];
    try {
        PrintReportToPrinter(1);
    } catch (const RuntimeError &error) {
        std::fprintf(stderr, "%s\n", ErrorText(error.Number).c_str());
        return 1;
    }
    return 0;
}
