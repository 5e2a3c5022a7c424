// The default printer in character units: columns of 1/12 inch from the left edge of the paper, lines of 1/6 inch from
// the top, whatever the size of the font. The fronts: qt/printer.cpp and console/printer.cpp.
#pragma once

#include <string_view>

// Starts a job. Error 482 where there is no default printer or it takes no job; so for the other procedures.
void OpenPrinter(std::string_view document);

// Size of the paper in units.
double PrinterWidth();
double PrinterHeight();

// Where the next text is printed.
double PrinterColumn();
double PrinterLine();
void SetPrinterColumn(double column);
void SetPrinterLine(double line);

void SetPrinterFont(bool bold, int points);

// Prints at the present place; the column moves on by one for each character.
void PrintText(std::string_view text);

// To the first column of the next line.
void EndPrinterLine();

void NewPrinterPage();
int PrinterPage(); // from 1

// Ends the job and hands it over.
void ClosePrinter();
