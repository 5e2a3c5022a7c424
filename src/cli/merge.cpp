// quintave-cli merge: reports loaded on top of each other, and saved as one.
#include "cli/commands.h"
#include "cli/double_quotes.h"
#include "cli/files.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/rooms.h"
#include "model/field_model.h"
#include "model/text_files.h"
#include "platform/files.h"
#include "report/notices.h"
#include "report/reader.h"
#include "report/writer.h"

#include <algorithm>

namespace {

// The file being read or written, the worst that happened, and whether values of the present report are added.
std::string Merged;
int Status = NothingFound;
bool Adds = true;

// Goes on, and overwrites or adds as asked for.
Answer TellNotice(const LoadNotice &notice) {
    switch (notice.What) {
    case Notice::OverwriteFields:
    case Notice::OverwriteGroups: return Adds ? NoAnswer : YesAnswer;
    case Notice::ValueCut: return OkAnswer; // the one behind the load speaks for each
    case Notice::ValueReplaced:
        if (!Adds) return OkAnswer; // as asked for
        break;
    default: break;
    }
    TellMessage(Merged, notice.Error == 0 || IsReportFault(notice.Error) ? notice.Line : 0, notice.Text);
    Status = std::max<int>(Status, notice.Error == 0 ? SomethingFound : FileFault);
    return GoOn(notice);
}

constexpr LoadFront Messages{.Tell = TellNotice, .WantsLines = true};

void TellDoubleQuotes(const ItemInput &report) {
    for (const QuotedValue &value : FindDoubleQuotes(report)) {
        TellMessage(Merged, value.Line, DoubleQuoteText(value.Title));
        Status = std::max<int>(Status, SomethingFound);
    }
}

// False where nothing of the report was loaded.
bool LoadOne(const std::string &path) {
    Merged = path;
    SplitPath(path, ReportFileDir, ReportFileName);
    LoadResult result = LoadResult::Refused;
    const Integer fault = FaultOf([&] {
        ItemInput report = ReportText(ReadInput(path));
        result = ReadReport(report, Messages);
        TellDoubleQuotes(report);
    });
    if (fault != 0) TellFileError(path, fault);
    if (result == LoadResult::Refused) Status = FileFault;
    return result != LoadResult::Refused;
}

void Save(const Arguments &arguments) {
    const std::string output = arguments.Last("output");
    Merged = OutputName(output);
    std::vector<std::string> inputs = arguments.Files;
    inputs.push_back(arguments.Last("template"));
    Integer writeFault = FaultOf(CheckCounts);
    const Integer fault = FaultOf([&] {
        if (writeFault != 0) return;
        Result result(output, inputs);
        writeFault = FaultOf([&] { WriteReport(result.File(), TemplateName); });
        if (writeFault == 0) result.Close();
    });
    if (fault != 0) Status = TellFileError(Merged, fault);
    if (writeFault == 0) return;
    TellMessage(Merged, 0, WriteErrorText(writeFault));
    Status = FileFault;
}

} // namespace

int MergeReports(const Arguments &arguments) {
    if (!arguments.Has("output")) throw UsageError{"missing --output OUT.rpx"};
    if (arguments.Has("overwrite") == arguments.Has("add")) throw UsageError{"one of --overwrite and --add is needed"};
    if (!LoadTemplateOf(arguments)) return FileFault;
    bool any = false;
    std::size_t done = 0;
    for (const std::string &path : arguments.Files) {
        any = LoadOne(path) || any;
        if (any) Adds = arguments.Has("add"); // the first one lies on an empty screen: nothing there to overwrite
        ShowProgress(++done, arguments.Files.size());
    }
    if (any) Save(arguments);
    return Status;
}
