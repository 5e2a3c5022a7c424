// Lines of a text file (text_lines.h).
#include "print/text_lines.h"

#include "model/field_model.h"
#include "platform/files.h"
#include "platform/items.h"
#include "print/report_layout.h"
#include "report/records.h"

#include <algorithm>

namespace {

constexpr std::size_t LineLength = 80;

// The file being written, and its line so far; none outside a print.
OutputFile *Output = nullptr;
std::string Line;

void EndLine() {
    Line += NL;
    Output->Write(Line);
    Line.clear();
}

void WriteAt(std::string_view text, double column) {
    const auto wanted = static_cast<std::size_t>(std::max(column, 0.0));
    if (!text.empty() && Line.size() < wanted) Line.resize(wanted, ' ');
    Line += text;
}

double WriteTitle(std::string_view text, double column) {
    WriteAt(text, column);
    return static_cast<double>(Line.size());
}

void WritePiece(std::string_view text, double column, bool /*last*/, std::string_view /*title*/) {
    WriteAt(text, column);
    EndLine();
}

void WriteCentred(std::string_view text, Integer style) {
    const std::size_t before = text.size() >= LineLength ? 0 : (LineLength - text.size()) / 2;
    for (Integer line = 0; line < style; ++line) EndLine();
    WriteAt(text, static_cast<double>(before));
    EndLine();
    if (style == HeadingStyle) EndLine();
}

void NoPageBreak() {}

} // namespace

void WriteTextPrint(ItemInput &input, OutputFile &output, const PrintOptions &options) {
    Output = &output;
    Line.clear();
    const PrintSink sink{0, LineLength, NoPageBreak, WriteTitle, EndLine, WritePiece, WriteCentred};
    if (options.Indent != Indents::Raw) {
        WriteTitle(options.Heading, 0);
        EndLine();
        Line = " ";
        EndLine();
    }
    if (ReadReportHeader(input)) {
        PlaceReport(input, options, sink);
    } else {
        WriteTitle(HeaderFailure, 0);
        EndLine();
    }
}
