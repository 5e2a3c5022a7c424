// What the console front's printer was given, and how it behaves, for tests.
#pragma once

#include <string>
#include <vector>

// A text as it was printed.
struct PrintedText {
    int Page = 0;
    double Line = 0;
    double Column = 0;
    std::string Text;
    bool Bold = false;
    int Points = 0;
};

struct ConsolePrinter {
    bool Exists = true;
    double Width = 102; // letter paper
    double Height = 66;
    int FailsAtPage = 0; // starting this page fails; 0 for never

    std::vector<std::vector<PrintedText>> Jobs; // by job
    int Closed = 0;                             // jobs handed over
};

extern ConsolePrinter Printer;
