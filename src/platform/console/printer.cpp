// A printer that keeps what it is given (console/printer.h).
#include "platform/printer.h"

#include "platform/characters.h"
#include "platform/console/printer.h"
#include "platform/runtime.h"

ConsolePrinter Printer;

namespace {

// The present job.
int Page = 0;
double Column = 0;
double Line = 0;
bool Bold = false;
int Points = 0;

void StartPage() {
    ++Page;
    Column = 0;
    Line = 0;
    if (Page == Printer.FailsAtPage) throw RuntimeError{PrinterError};
}

} // namespace

void OpenPrinter(std::string_view /*document*/) {
    if (!Printer.Exists) throw RuntimeError{PrinterError};
    Printer.Jobs.emplace_back();
    Page = 0;
    StartPage();
}

double PrinterWidth() { return Printer.Width; }
double PrinterHeight() { return Printer.Height; }
double PrinterColumn() { return Column; }
double PrinterLine() { return Line; }
void SetPrinterColumn(double column) { Column = column; }
void SetPrinterLine(double line) { Line = line; }

void SetPrinterFont(bool bold, int points) {
    Bold = bold;
    Points = points;
}

void PrintText(std::string_view text) {
    Printer.Jobs.back().push_back({Page, Line, Column, std::string(text), Bold, Points});
    Column += static_cast<double>(Columns(text));
}

void EndPrinterLine() {
    Line += 1;
    Column = 0;
}

void NewPrinterPage() { StartPage(); }
int PrinterPage() { return Page; }
void ClosePrinter() { ++Printer.Closed; }
