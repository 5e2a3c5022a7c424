// quintave-cli print: the text print of a report. The layout itself: print/report_layout.cpp.
#include "cli/commands.h"
#include "cli/files.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/rooms.h"
#include "main/main_window.h"
#include "model/field_model.h"
#include "platform/codepage.h"
#include "print/print_panel.h"
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
    std::string_view Caption;
};

constexpr std::array<Mode, 4> Modes{
    {{"none", NoIndent}, {"titles", TitlesIndented}, {"data", DataIndented}, {"raw", RawIndents}}};

void SetMode(const std::string &name) {
    const auto *const mode = std::find_if(Modes.begin(), Modes.end(), [&](const Mode &m) { return m.Name == name; });
    if (mode == Modes.end()) throw UsageError{"--mode is none, titles, data or raw, not '" + name + "'"};
    SetCaption(Quintave.PrintFrameIndent, mode->Caption);
}

void SetIndent(const std::string &text) {
    int indent = -1;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), indent);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size() || indent < 0 || indent > LargestIndent)
        throw UsageError{"--indent is a number from 0 to 60, not '" + text + "'"};
    SetText(Quintave.PrintIndent, text, 0);
}

// The panel as its user would leave it.
void SetPanel(const Arguments &arguments) {
    SetMode(arguments.Last("mode", "none"));
    SetIndent(arguments.Last("indent", "0"));
    SetCaption(Quintave.PrintFrameToggler, arguments.Has("below") ? LineBelowTitle : OnTitleLine);
    AddRow(Quintave.Combo2, "'" + FromUtf8(arguments.Last("separator", "| ")) + "'");
    SetListIndex(Quintave.Combo2, 0);
}

// The names in the header line: the template, and the output or else the report.
void SetNames(const Arguments &arguments, ItemInput input) {
    std::string directory;
    std::string output = arguments.Last("output", "-");
    if (output == "-") output = arguments.Files[0] == "-" ? "standard input" : arguments.Files[0];
    SplitPath(output, directory, ReportFileName);
    std::string named;
    ReadReportHeader(input, &named);
    TemplateName = arguments.Last("template", ToUtf8(named));
}

} // namespace

int PrintReport(const Arguments &arguments) {
    const std::string &report = arguments.Files[0];
    const std::string output = arguments.Last("output");
    SetPanel(arguments);
    ItemInput input;
    if (const Integer fault = FaultOf([&] { input = ItemsOf(ReadInput(report)); }); fault != 0)
        return TellFileError(report, fault);
    SetNames(arguments, input);
    const bool isReport = ReadReportHeader(input);
    input.At = 0;
    const Integer fault = FaultOf([&] {
        Result result(output, arguments.Files);
        const Integer damage = FaultOf([&] { WriteTextPrint(input, result.File()); });
        // Standard output gets what could be read; a file there keeps its place unless this is a whole report.
        if ((damage == 0 && isReport) || result.Staged().empty()) result.Close();
        if (damage != 0) throw RuntimeError{damage};
    });
    if (fault != 0) return TellFileError(IsReportFault(fault) ? report : OutputName(output), fault);
    if (isReport) return NothingFound;
    TellMessage(report, 1, HeaderFailure);
    return FileFault;
}
