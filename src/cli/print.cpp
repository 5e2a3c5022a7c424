// quintave-cli print: the text print of a report. The layout itself: print/report_layout.cpp.
#include "cli/commands.h"
#include "cli/files.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/rooms.h"
#include "model/text_files.h"
#include "platform/codepage.h"
#include "platform/files.h"
#include "print/report_layout.h"
#include "print/text_lines.h"
#include "report/records.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

constexpr int LargestIndent = 60; // as the panel has it

struct Mode {
    std::string_view Name;
    Indents Means;
};

constexpr std::array<Mode, 4> Modes{
    {{"none", Indents::None}, {"titles", Indents::Titles}, {"data", Indents::TitlesAndData}, {"raw", Indents::Raw}}};

Indents IndentsOf(const std::string &name) {
    const auto *const mode = std::find_if(Modes.begin(), Modes.end(), [&](const Mode &m) { return m.Name == name; });
    if (mode == Modes.end()) throw UsageError{"--mode is none, titles, data or raw, not '" + name + "'"};
    return mode->Means;
}

int DataIndentOf(const std::string &text) {
    int indent = -1;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), indent);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size() || indent < 0 || indent > LargestIndent)
        throw UsageError{"--indent is a number from 0 to 60, not '" + text + "'"};
    return indent;
}

PrintEncoding EncodingOf(const Arguments &arguments) {
    if (!arguments.Has("encoding")) return PrintEncoding::WhatSuffices;
    const std::string name = arguments.Last("encoding");
    if (name == "utf-8") return PrintEncoding::Utf8;
    if (name == "windows-1252") return PrintEncoding::CodePage;
    throw UsageError{"--encoding is utf-8 or windows-1252, not '" + name + "'"};
}

PrintOptions OptionsOf(const Arguments &arguments) {
    PrintOptions options;
    options.Indent = IndentsOf(arguments.Last("mode", "none"));
    options.DataIndent = DataIndentOf(arguments.Last("indent", "0"));
    options.Separator = NameText(arguments.Last("separator", "| "));
    options.Below = arguments.Has("below");
    options.As = EncodingOf(arguments);
    return options;
}

// The names in the header line: the template, and the output or else the report.
void SetNames(PrintOptions &options, const Arguments &arguments, ItemInput input) {
    std::string directory;
    std::string name;
    std::string output = arguments.Last("output", "-");
    if (output == "-") output = arguments.Files[0] == "-" ? "standard input" : arguments.Files[0];
    SplitPath(output, directory, name);
    std::string named;
    ReadReportHeader(input, &named);
    options.Label = ReportLabel(name);
    options.Heading = ReportHeading(arguments.Last("template", named), options.Label);
}

} // namespace

int PrintReport(const Arguments &arguments) {
    const std::string &report = arguments.Files[0];
    const std::string output = arguments.Last("output");
    PrintOptions options = OptionsOf(arguments);
    ItemInput input;
    if (const Integer fault = FaultOf([&] { input = ReportText(ReadInput(report)); }); fault != 0)
        return TellFileError(report, fault);
    SetNames(options, arguments, input);
    const bool isReport = ReadReportHeader(input);
    input.At = 0;
    bool whole = true;
    if (const long line = LineNotUtf8(input); line > 0) TellMessage(report, line, NotUtf8Here);
    const Integer fault = FaultOf([&] {
        Result result(output, arguments.Files);
        const Integer damage = FaultOf([&] { whole = WriteTextPrint(input, result.File(), options); });
        // Standard output gets what could be read; a file there keeps its place unless this is a whole report.
        if ((damage == 0 && isReport) || result.Staged().empty()) result.Close();
        if (damage != 0) throw RuntimeError{damage};
    });
    if (fault != 0) return TellFileError(IsReportFault(fault) ? report : OutputName(output), fault);
    if (!whole) TellMessage(report, 0, "Not all characters are in Windows-1252: the others were printed as '?'.");
    if (isReport) return whole ? NothingFound : SomethingFound;
    TellMessage(report, 1, HeaderFailure);
    return FileFault;
}
