// quintave-cli merge: reports loaded on top of each other, and saved as one.
#include "report/merge.h"
#include "cli/commands.h"
#include "cli/double_quotes.h"
#include "cli/files.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/rooms.h"
#include "cli/work_folder.h"
#include "model/field_model.h"
#include "platform/console/answers.h"
#include "report/reader.h"
#include "report/writer.h"

#include <algorithm>

namespace {

// The file being read or written, the worst that happened, and whether values of the present report are added.
std::string Present;
int Status = NothingFound;
bool Adds = true;

// The answers of a user who wants all that can be had: go on, and overwrite or add as asked for.
Answer AnswerMerge(const ShownMessage &message) {
    if (message.Title == OverwriteTitle) return Adds ? NoAnswer : YesAnswer;
    const Integer error = ToldError(message);
    TellMessage(Present, error == 0 || IsReportFault(error) ? RecordLine() : 0, message.Text);
    Status = std::max<int>(Status, error == 0 ? SomethingFound : FileFault);
    return DefaultAnswer(message.Style);
}

void TellDoubleQuotes(const ItemInput &report) {
    for (const QuotedValue &value : FindDoubleQuotes(report)) {
        TellMessage(Present, value.Line, DoubleQuoteText(value.Title));
        Status = std::max<int>(Status, SomethingFound);
    }
}

// False where nothing of the report was loaded.
bool LoadOne(const std::string &path) {
    Present = path;
    SplitPath(path, ReportFileDir, ReportFileName);
    LoadResult result = LoadResult::Refused;
    const Integer fault = FaultOf([&] {
        const ItemInput report = ItemsOf(ReadInput(path));
        result = LoadReport(report);
        TellDoubleQuotes(report);
    });
    if (fault != 0) TellFileError(path, fault);
    if (result == LoadResult::Refused) Status = FileFault;
    return result != LoadResult::Refused;
}

void Save(const Arguments &arguments) {
    const std::string output = arguments.Last("output");
    Present = OutputName(output);
    std::vector<std::string> inputs = arguments.Files;
    inputs.push_back(arguments.Last("template"));
    const Integer fault = FaultOf([&] {
        Result result(output, inputs);
        const std::string path = result.Staged().empty() ? WorkFolder() + "merged.rpx" : result.Staged();
        SplitPath(path, ReportFileDir, ReportFileName);
        if (!WriteReportFile()) return; // the message has been told
        if (result.Staged().empty()) result.File().Write(ReadFile(path));
        result.Close();
    });
    if (fault != 0) Status = TellFileError(Present, fault);
}

} // namespace

int MergeReports(const Arguments &arguments) {
    if (!arguments.Has("output")) throw UsageError{"missing --output OUT.rpx"};
    if (arguments.Has("overwrite") == arguments.Has("add")) throw UsageError{"one of --overwrite and --add is needed"};
    if (!LoadTemplateOf(arguments)) return FileFault;
    Dialogs.Reply = AnswerMerge;
    FileMark = FirstLoad;
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
