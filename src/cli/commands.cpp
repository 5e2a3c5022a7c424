// The table of commands and their options (options.h).
#include "cli/commands.h"
#include "cli/options.h"

#include <array>
#include <cstdint>

namespace {

constexpr std::size_t AnyNumber = SIZE_MAX;

constexpr std::array CheckOptions{
    Option{"template", 't', "FILE.ftf", "the template that the reports are loaded into"},
    Option{"add", 0, "", "several instances of a field are meant: do not tell of them"},
    Option{"require", 'r', "WORD", "tell of empty fields whose help line begins with WORD, such as mandatory"},
};

constexpr std::array PrintOptionTable{
    Option{"output", 'o', "OUT.txt", "write to this file instead of standard output"},
    Option{"mode", 'm', "MODE", "indents: none, titles, data or raw (none)"},
    Option{"indent", 'i', "N", "column of the data in the modes none and titles, 0 to 60 (0)"},
    Option{"separator", 's', "TEXT", "what stands between title and data ('| ')"},
    Option{"encoding", 'e', "NAME", "utf-8 or windows-1252 (windows-1252 where it suffices)"},
    Option{"below", 'b', "", "data start on the line below their title"},
    Option{"template", 't', "NAME", "template named in the header line (the report's own)"},
};

constexpr std::array MergeOptions{
    Option{"template", 't', "FILE.ftf", "the template that the reports are loaded into"},
    Option{"overwrite", 0, "", "values of a later report replace those before it"},
    Option{"add", 0, "", "values of a later report are added as further instances"},
    Option{"output", 'o', "OUT.rpx", "the report to write"},
};

constexpr std::array ExportOptions{
    Option{"format", 'f', "FORMAT", "json, csv, xml or markdown"},
    Option{"output", 'o', "OUT", "write to this file instead of standard output"},
};

constexpr std::array<CliCommand, 6> Table{{
    {"check-template",
     "FILE.ftf...",
     "Tell what is wrong with templates, by line",
     "Told is what a load would refuse, and what would surprise later: titles that are shown cut or come\n"
     "twice, fields whose values another one may take, choices that are too long or that no letter reaches.\n"
     "A file named - is standard input.\n",
     1,
     AnyNumber,
     {},
     CheckTemplate},
    {"check", "REPORT.rpx...", "Tell what loading reports would ask, refuse, cut or replace, by line",
     "The template is read once, the reports one after the other as if each were opened on an empty screen.\n"
     "--require may be given several times. A file named - is standard input.\n",
     1, AnyNumber, CheckOptions, CheckReports},
    {"print", "REPORT.rpx", "Print a report as text of 80 columns",
     "Without an output file the header line names the report, otherwise the output, as prints of the window do.\n"
     "SOURCE_DATE_EPOCH sets its date. A file named - is standard input.\n",
     1, 1, PrintOptionTable, PrintReport},
    {"merge", "REPORT.rpx...", "Merge reports into one",
     "The output is what opening the first report and adding the others would leave, saved. The first one keeps all\n"
     "its instances. A file named - is standard input.\n",
     1, AnyNumber, MergeOptions, MergeReports},
    {"export", "REPORT.rpx", "Export the values of a report, in UTF-8", "A file named - is standard input.\n", 1, 1,
     ExportOptions, ExportReport},
    {"diff",
     "A.rpx B.rpx",
     "Tell which values differ between two reports",
     "Each line is a value that was changed, added or is missing in B, by its title path and occurrence.\n"
     "A file named - is standard input.\n",
     2,
     2,
     {},
     CompareReports},
}};

} // namespace

std::span<const CliCommand> CliCommands() { return Table; }
