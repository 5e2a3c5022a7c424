// Add/Open and Add/Merge (load_command.h).
#include "report/load_command.h"

#include "groups/open_group.h"
#include "main/main_window.h"
#include "main/recovery.h"
#include "model/field_model.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "report/reader.h"
#include "report/save_command.h"
#include "report/temporary_report.h"
#include "screen/selected_field.h"
#include "screen/value_entry.h"

namespace {

// CurrentField during a load, when no row is being edited; the other asks for the load a second time.
constexpr Integer Loading = 777;
constexpr Integer LoadAgain = 778;

// Loads the file at a path and shows what it brought.
void LoadReport(const std::string &directory, const std::string &name) {
    const std::string formerDir = ReportFileDir;
    const std::string formerName = ReportFileName;
    const std::string formerMark = FileMark;
    const std::string formerMarkDir = FileMarkDir;
    ReportFileDir = directory;
    ReportFileName = name;
    ShowSelectedField(Restart, PutAwayOnly);
    CurrentField = Loading;
    LoadResult result = LoadReportFile();
    if (CurrentField == LoadAgain) {
        FileMark = formerMark;
        FileMarkDir = formerMarkDir;
        result = LoadReportFile();
    }
    if (result == LoadResult::Refused) {
        ReportFileDir = formerDir;
        ReportFileName = formerName;
    } else {
        SetCaption(Quintave.editframe, Quintave.editframe.Caption + CaptionName(name) + "; ");
        SetCaption(Quintave.CommandAdd, "^Add/Merge File");
    }
    CurrentField = ActiveRows().ListIndex;
    ShowSelectedField(Restart, False);
}

// The full path of the report that the user picks; "" for none.
std::string AskForReport() {
    KeepBeforeAsking();
    Quintave.cmDialog = {.Title = "Pick a '*.RPX' file to add...",
                         .InitDir = ReportFileDir,
                         .Filter = "Quintave Files(*.rpx)|*.rpx|All files(*.*)|*.*",
                         .FileName = "",
                         .Flags = 0};
    return PickFile(Quintave.cmDialog, ShowOpen);
}

} // namespace

void CommandAdd_Click() {
    if (!LeaveGroup()) return;
    WriteTemporaryReport(TemporaryReportName());
    const std::string path = AskForReport();
    std::string directory;
    std::string name;
    SplitPath(path, directory, name);
    if (!path.empty() && !IsReportName(name))
        MsgBox("You must select a `*.RPX' file!\n\r\n\rPlease Try Again.", OkOnly, "Quintave");
    else if (!path.empty())
        LoadReport(directory, name);
    SetFocus(ActiveRows());
}

void LoadStartFile(const std::string &argument) {
    const std::string &named = argument.empty() ? StartFile : argument;
    if (named.empty() || named == "-1" || !IsReportName(named)) return;
    std::string directory;
    std::string name;
    SplitPath(named, directory, name);
    if (argument.empty()) directory = FindDirectory(directory.starts_with('/') ? "/" : ResourceDir, directory);
    if (directory.empty()) directory = CurrentDirectory();
    if (argument.empty()) {
        const std::string found = FindName(directory, name);
        if (!found.empty()) name = found;
    }
    LoadReport(directory, name);
}
