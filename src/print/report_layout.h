// One layout for printer and text file: it reads a report record by record and places titles and values. Where they go
// is a sink's business: printer_pages.cpp and text_lines.cpp.
#pragma once

#include "platform/items.h"
#include "platform/runtime.h"

#include <string>
#include <string_view>

// What a layout places its texts on.
struct PrintSink {
    double Left = 0;                 // column of titles
    double RightLimit = 0;           // column that no value reaches
    void (*BeginRecord)() = nullptr; // before each record
    double (*PrintTitle)(std::string_view text,
                         double column) = nullptr; // bold; the line goes on at the column returned
    void (*EndLine)() = nullptr;
    // A piece of a value at a column, and the end of its line. Before a piece that is not the last one there may be a
    // new page, which repeats the title.
    void (*PrintPiece)(std::string_view text, double column, bool last, std::string_view title) = nullptr;
    void (*PrintCentred)(std::string_view text, Integer style) = nullptr; // style 2: a heading
};

inline constexpr Integer PlainStyle = 0;
inline constexpr Integer HeadingStyle = 2;
inline constexpr std::string_view HeaderFailure = "File Header Failure -- This is not a Valid QuintaveV2 File!";

// What is indented by its level.
enum class Indents : unsigned char { None, Titles, TitlesAndData, Raw }; // Raw: without header and group ends, too

// Of a text file: Windows-1252 where it has all the characters, else UTF-8; or as asked for.
enum class PrintEncoding : unsigned char { WhatSuffices, CodePage, Utf8 };

// All that the layout of a copy needs beside the report.
struct PrintOptions {
    Indents Indent = Indents::None;
    double DataIndent = 0;   // characters; of the two modes whose data do not go by their level
    std::string Separator{}; // behind each title
    bool Below = false;      // data start on the line below their title
    std::string Heading{};   // of each page
    std::string Label{};     // names the report
    PrintEncoding As = PrintEncoding::WhatSuffices;
    void (*Progress)(int record) = nullptr; // told of each record before it is placed, from 1, the header; or null
};

// How prints name what they show: the report's file name, or the screen.
std::string ReportLabel(const std::string &fileName);

// "mm-dd-yyyy [template]; Quintave Report for label".
std::string ReportHeading(const std::string &templateName, const std::string &label);

// Places all records; the input stands behind the header. Errors 13 and 62 where the report is damaged; what stood
// before that was placed.
void PlaceReport(ItemInput &input, const PrintOptions &options, const PrintSink &sink);

// Wraps a value at its last blank that fits, at its line breaks, or where a word is longer than the column. The first
// line has its own column and width.
void WrapValue(std::string_view value, double firstColumn, double firstWidth, double column, double width,
               const PrintSink &sink, std::string_view title);
