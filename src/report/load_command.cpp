// Add/Open and Add/Merge (load_command.h).
#include "report/load_command.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "main/recovery.h"
#include "model/field_model.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/front.h"
#include "platform/items.h"
#include "report/choice_matching.h"
#include "report/earlier_version.h"
#include "report/notices.h"
#include "report/reader.h"
#include "report/records.h"
#include "report/temporary_report.h"
#include "screen/selected_field.h"
#include "screen/selection.h"

#include <utility>

namespace {

// CurrentField during a load, when no row is being edited; the other asks for the load a second time.
constexpr Integer Loading = 777;
constexpr Integer LoadAgain = 778;

Answer TellInBox(const LoadNotice &notice) {
    // The one behind the load speaks for each value that was cut; a field of one value shows the last.
    if (notice.What == Notice::ValueCut || notice.What == Notice::ValueReplaced) return OkAnswer;
    return MsgBox(notice.Text, notice.Style, notice.Title);
}

void ShowRow(Integer row) { ShowValueInRow(row, RowValue[row]); }

void Breathe(std::size_t /*bytes*/) {
    constexpr int RecordsPerBreath = 200;
    static int records = 0;
    if (++records % RecordsPerBreath == 0) KeepWindowAlive();
}

constexpr LoadFront Window{.Tell = TellInBox, .Placed = ShowRow, .Progress = Breathe};

// Neither a merge nor a part of a file is what the file holds: it must not be saved over it unasked.
void ForgetFile() {
    FileMark.clear();
    DataChanged = True;
}

// The first file after a start, a reset or a new template is the one Save writes to; after a second one no file is.
void RememberFile() {
    if (FileMark != FirstLoad) {
        ForgetFile();
        return;
    }
    FileMark = ReportFileName;
    FileMarkDir = ReportFileDir;
}

// The report's bytes; false after the message where it cannot be read or is none.
bool OpenReport(ItemInput &input) {
    const Integer fault = FaultOf([&] { input = OpenReportText(ReportFileDir + ReportFileName); });
    BeginNotices(Window, input);
    if (fault != 0) {
        TellDamaged(fault);
        return false;
    }
    const bool isReport = ReadReportHeader(input);
    if (!isReport) TellNotAReport();
    input.At = 0;
    return isReport;
}

LoadResult LoadOpened(ItemInput &input) {
    const BusyPointer busy;
    ForgetChoices(); // somebody may have changed a file since
    RememberFile();
    const LoadResult result = ReadReport(input, Window);
    NoteLoaded(ReportFileDir + ReportFileName, result == LoadResult::Whole);
    if (result == LoadResult::Stopped) ForgetFile();
    return result;
}

} // namespace

LoadResult LoadReportFile() {
    ItemInput input;
    return OpenReport(input) ? LoadOpened(input) : LoadResult::Refused;
}

namespace {

// Loads what was opened and shows what it brought.
void LoadAndShow(ItemInput &input) {
    const std::string formerMark = FileMark;
    const std::string formerMarkDir = FileMarkDir;
    ShowSelectedField(Restart, PutAwayOnly);
    CurrentField = Loading;
    LoadOpened(input);
    if (CurrentField == LoadAgain) {
        FileMark = formerMark;
        FileMarkDir = formerMarkDir;
        LoadReportFile();
    }
    SetCaption(Quintave.editframe, Quintave.editframe.Caption + CaptionName(ReportFileName) + "; ");
    OfferMerge(true);
    CurrentField = ActiveRows().ListIndex;
    ShowSelectedField(Restart);
}

} // namespace

void LoadReport(const std::string &directory, const std::string &name) {
    const std::string formerDir = std::exchange(ReportFileDir, directory);
    const std::string formerName = std::exchange(ReportFileName, name);
    ItemInput input;
    if (OpenReport(input)) {
        LoadAndShow(input);
        return;
    }
    ReportFileDir = formerDir;
    ReportFileName = formerName;
}

bool PickReport(const std::string &title, std::string_view refusal, std::string &directory, std::string &name) {
    Quintave.cmDialog = {.Title = title,
                         .InitDir = ReportFileDir,
                         .Filter = "Quintave Files(*.rpx)|*.rpx|All files(*.*)|*.*",
                         .FileName = "",
                         .Flags = 0};
    SplitPath(PickFile(Quintave.cmDialog, ShowOpen), directory, name);
    if (name.empty() || IsReportName(name)) return !name.empty();
    MsgBox(refusal, OkOnly, "Quintave");
    return false;
}

bool MakeReadyToLoad() {
    if (!LeaveGroup()) return false;
    WriteTemporaryReport(TemporaryReportName());
    KeepBeforeAsking();
    return true;
}

void CommandAdd_Click() {
    if (!MakeReadyToLoad()) return;
    std::string directory;
    std::string name;
    if (PickReport("Pick a '*.RPX' file to add...", "You must select a `*.RPX' file!\n\r\n\rPlease Try Again.",
                   directory, name))
        LoadReport(directory, name);
    SetFocus(ActiveRows());
}
