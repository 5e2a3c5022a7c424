// Lines of a text file (text_lines.h).
#include "print/text_lines.h"

#include "model/field_model.h"
#include "platform/files.h"
#include "platform/front.h"
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

void WriteTextPrint(ItemInput &input, OutputFile &output) {
    Output = &output;
    Line.clear();
    const PrintOptions options = ReadPrintOptions();
    const PrintSink sink{0, LineLength, NoPageBreak, WriteTitle, EndLine, WritePiece, WriteCentred};
    if (!options.Raw) {
        WriteTitle(ReportHeading(), 0);
        EndLine();
        Line = " ";
        EndLine();
    }
    if (ReadReportHeader(input)) {
        PlaceReport(input, options, sink, "   Printing To File ");
    } else {
        WriteTitle(HeaderFailure, 0);
        EndLine();
    }
}

namespace {

void WriteFile(ItemInput &input, const std::string &path) {
    OutputFile output(path, OutputFile::Access::User);
    const Integer fault = FaultOf([&] { WriteTextPrint(input, output); });
    // What could be read stays in the file; a fault of the file itself is the one to tell.
    const Integer endFault = FaultOf([&] { output.Close(fault == 0); });
    if (fault != 0 || endFault != 0) throw RuntimeError{endFault != 0 ? endFault : fault};
}

} // namespace

void PrintReportToFile(const std::string &source) {
    const std::string path = ReportFileDir + ReportFileName;
    if (IsSameFile(source, path)) throw RuntimeError{FileAlreadyOpen};
    ItemInput input = OpenItems(source);
    const BusyPointer busy;
    WriteFile(input, path);
}
