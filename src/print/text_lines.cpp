// Lines of a text file (text_lines.h).
#include "print/text_lines.h"

#include "model/field_model.h"
#include "platform/characters.h"
#include "platform/codepage.h"
#include "platform/files.h"
#include "platform/items.h"
#include "print/report_layout.h"
#include "report/records.h"

#include <algorithm>

namespace {

constexpr std::size_t LineLength = 80;

// The file being written, none outside a print and where it is only looked which characters there are; its encoding,
// and its line so far.
OutputFile *Output = nullptr;
bool Utf8 = false;
bool Foreign = false;  // a character was not in the code page
bool Replaced = false; // one had to be written as "?"
std::string Line;
std::size_t Width = 0; // its columns: as many as it has bytes where it is ASCII

void EndLine() {
    Line += NL;
    Width += NL.size();
    if (Output == nullptr)
        Foreign = Foreign || !FitsCodePage(Composed(Line));
    else if (Utf8 || Width == Line.size())
        Output->Write(Line);
    else
        Output->Write(FromUtf8(Composed(Line), &Replaced));
    Line.clear();
    Width = 0;
}

void WriteAt(std::string_view text, double column) {
    const auto wanted = static_cast<std::size_t>(std::max(column, 0.0));
    if (!text.empty() && Width < wanted) {
        Line.append(wanted - Width, ' ');
        Width = wanted;
    }
    Line += text;
    Width += Columns(text);
}

double WriteTitle(std::string_view text, double column) {
    WriteAt(text, column);
    return static_cast<double>(Width);
}

void WritePiece(std::string_view text, double column, bool /*last*/, std::string_view /*title*/) {
    WriteAt(text, column);
    EndLine();
}

void WriteCentred(std::string_view text, Integer style) {
    const std::size_t columns = Columns(text);
    const std::size_t before = columns >= LineLength ? 0 : (LineLength - columns) / 2;
    for (Integer line = 0; line < style; ++line) EndLine();
    WriteAt(text, static_cast<double>(before));
    EndLine();
    if (style == HeadingStyle) EndLine();
}

void NoPageBreak() {}

void WriteLines(ItemInput &input, OutputFile *output, const PrintOptions &options) {
    Output = output;
    Line.clear();
    Width = 0;
    const PrintSink sink{0, LineLength, NoPageBreak, WriteTitle, EndLine, WritePiece, WriteCentred};
    if (options.Indent != Indents::Raw) {
        WriteTitle(options.Heading, 0);
        EndLine();
        WriteAt(" ", 0);
        EndLine();
    }
    if (ReadReportHeader(input)) {
        PlaceReport(input, options, sink);
    } else {
        WriteTitle(HeaderFailure, 0);
        EndLine();
    }
}

// Something that is printed is not in the code page.
bool PrintsForeign(ItemInput input, PrintOptions options) {
    const bool plain = FitsCodePage(input.Bytes) && FitsCodePage(options.Heading) && FitsCodePage(options.Separator);
    if (plain) return false;
    options.Progress = nullptr;
    Foreign = false;
    FaultOf([&] { WriteLines(input, nullptr, options); });
    return Foreign;
}

} // namespace

bool WriteTextPrint(ItemInput &input, OutputFile &output, const PrintOptions &options) {
    Utf8 = options.As == PrintEncoding::Utf8 ||
           (options.As == PrintEncoding::WhatSuffices && PrintsForeign(input, options));
    Replaced = false;
    WriteLines(input, &output, options);
    return !Replaced;
}
