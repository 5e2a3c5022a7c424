// quintave-cli export: the values of a report in a format that other programs read.
#include "cli/commands.h"
#include "cli/export_formats.h"
#include "cli/files.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/report_events.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t DeepestIndent = 40;

struct Format {
    std::string_view Name;
    std::string (*Write)(const ReportEvents &report);
};

constexpr std::array<Format, 4> Formats{
    {{"json", ExportJson}, {"csv", ExportCsv}, {"xml", ExportXml}, {"markdown", ExportMarkdown}}};

} // namespace

std::string ExportedText(std::string_view text) {
    std::string lines(text);
    std::erase(lines, '\r'); // every line break is a pair
    return lines;
}

std::string Indented(std::size_t depth) { return std::string(std::min(2 * depth, DeepestIndent), ' '); }

int ExportReport(const Arguments &arguments) {
    const std::string name = arguments.Last("format");
    const auto *const format =
        std::find_if(Formats.begin(), Formats.end(), [&](const Format &f) { return f.Name == name; });
    if (name.empty()) throw UsageError{"missing --format FORMAT"};
    if (format == Formats.end()) throw UsageError{"--format is json, csv, xml or markdown, not '" + name + "'"};
    ReportEvents report;
    if (!ReadReportEvents(arguments.Files[0], report)) return FileFault;
    const std::string output = arguments.Last("output");
    const Integer fault = FaultOf([&] {
        Result result(output, arguments.Files);
        result.File().Write(format->Write(report));
        result.Close();
    });
    return fault == 0 ? static_cast<int>(NothingFound) : TellFileError(OutputName(output), fault);
}
