// Pages with their headers and margins (printer_pages.h).
#include "print/printer_pages.h"

#include "platform/characters.h"
#include "platform/items.h"
#include "platform/printer.h"
#include "print/report_layout.h"
#include "report/records.h"

namespace {

// The paper counts as 8.5 by 11 inches, whatever it is: its margins grow with it.
constexpr double InchesAcross = 8.5;
constexpr double InchesDown = 11;
constexpr int TextPoints = 10;
constexpr int HeadingPoints = 14;
constexpr double CentredLines = 6; // that a centred line needs above the bottom; a heading needs its style more

// The page in units, while a job runs.
double LeftMargin = 0;
double TopMargin = 0;
double BottomLimit = 0;

// The first line of each page, but for its number.
std::string Heading;

void PrintPageHeader() {
    SetPrinterFont(true, TextPoints);
    SetPrinterLine(TopMargin);
    SetPrinterColumn(LeftMargin);
    PrintText(Heading + "      Page " + std::to_string(PrinterPage()));
    EndPrinterLine();
    SetPrinterFont(false, TextPoints);
    EndPrinterLine();
}

void StartPage() {
    NewPrinterPage();
    PrintPageHeader();
}

void BeginRecord() {
    if (PrinterLine() > BottomLimit) StartPage();
}

double PrintBoldTitle(std::string_view text, double column) {
    SetPrinterFont(true, TextPoints);
    SetPrinterColumn(column);
    PrintText(text);
    SetPrinterFont(false, TextPoints);
    return PrinterColumn();
}

void PrintPiece(std::string_view text, double column, bool last, std::string_view title) {
    if (!last && PrinterLine() > BottomLimit) {
        StartPage();
        PrintBoldTitle(std::string(title) + "   (continued)...", LeftMargin);
        EndPrinterLine();
    }
    SetPrinterColumn(column);
    PrintText(text);
    EndPrinterLine();
}

void PrintLine(std::string_view text, Integer style) {
    if (PrinterLine() + CentredLines + style > BottomLimit) StartPage();
    if (style == HeadingStyle) {
        EndPrinterLine();
        EndPrinterLine();
        SetPrinterFont(true, HeadingPoints);
    }
    // Half a unit for each character whatever the font's size, so a heading stands a little right of the centre.
    SetPrinterColumn(PrinterWidth() / 2 - static_cast<double>(Columns(text)) * 0.5);
    PrintText(text);
    EndPrinterLine();
    SetPrinterFont(false, TextPoints);
    if (style == HeadingStyle) EndPrinterLine();
}

PrintSink OpenPages(const PrintOptions &options) {
    OpenPrinter(options.Label);
    LeftMargin = PrinterWidth() / InchesAcross;
    TopMargin = PrinterHeight() / InchesDown;
    BottomLimit = PrinterHeight() - 2 * TopMargin;
    Heading = options.Heading;
    PrintPageHeader();
    return {LeftMargin, PrinterWidth() - LeftMargin, BeginRecord, PrintBoldTitle, EndPrinterLine, PrintPiece,
            PrintLine};
}

} // namespace

void PrintPages(ItemInput &input, const PrintOptions &options) {
    const PrintSink sink = OpenPages(options);
    const Integer fault = FaultOf([&] {
        if (ReadReportHeader(input)) {
            PlaceReport(input, options, sink);
        } else {
            SetPrinterColumn(LeftMargin);
            PrintText(HeaderFailure);
            EndPrinterLine();
        }
    });
    if (fault != PrinterError) ClosePrinter(); // what could be read is printed
    if (fault != 0) throw RuntimeError{fault};
}
