// Save and Save As (save_command.h).
#include "report/save_command.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "main/recovery.h"
#include "model/field_model.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/front.h"
#include "report/earlier_version.h"
#include "report/records.h"
#include "report/writer.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

namespace {

void WriteTemporary(const std::string &path) {
    OutputFile file(path, OutputFile::Access::Own);
    WriteReport(file, TemplateName);
    file.Close(false);
}

// Gives the path of the earlier version where it stays.
std::string Replace(const std::string &path) {
    EarlierVersion earlier(path);
    OutputFile file(path, OutputFile::Access::User);
    earlier.Begin();
    const long values = WriteReport(file, TemplateName);
    file.Close(true);
    return earlier.End(values);
}

// The same; a temporary report has no earlier version.
std::string WriteTo(const std::string &path, bool temporary) {
    const BusyPointer busy;
    CheckCounts();
    if (!temporary) return Replace(path);
    WriteTemporary(path);
    return "";
}

// The entries are what the report holds now: in a MEMO apostrophes for double quotes.
void TakeWrittenTexts() {
    for (const Integer e : Elements())
        if (HasRow(e) && FieldInfo[e][TypeCode] == Memo) ValueOf(e) = WrittenText(e, ValueOf(e));
}

void TellKept(const std::string &path) {
    MsgBox("The earlier version of this report is kept under the name" + NL + NL + NameText(path) + NL + NL +
               "Not all of it had been loaded, or it held more values than the report saved now.",
           InformationIcon, "Quintave");
}

void ShowSavedName() {
    SetCaption(Quintave.editframe,
               "[Template: " + NameText(TemplateName) + "] - RPX File(s): " + CaptionName(ReportFileName) + "; ");
}

// Proposes the path that was picked before, if any. False where the dialog itself failed and is to be shown again.
bool AskForName(std::string &path) {
    KeepBeforeAsking();
    std::string directory = ReportFileDir;
    std::string name = HasRememberedName() ? FileMark : "";
    if (!path.empty()) SplitPath(path, directory, name);
    Quintave.cmDialog = {.Title = "Name a Quintave report (*.RPX) output file...",
                         .InitDir = directory,
                         .Filter = "Quintave Files(*.rpx)|*.rpx|All files(*.*)|*.*",
                         .FileName = name,
                         .Flags = OverwritePrompt};
    try {
        ShowSave(Quintave.cmDialog);
        path = Quintave.cmDialog.FileName;
        return true;
    } catch (const RuntimeError &error) {
        MsgBox(
            "Error: " + ErrorText(error.Number) + NL +
                "Error accessing this file! (read only file or drive? file locked? wrong privileges?). 'SaveAs' to a "
                "different file name or location.",
            CriticalIcon, "Quintave");
        return false;
    }
}

// Writes under the name picked; false where the user is to be asked again.
bool SaveUnder(const std::string &path) {
    std::string directory;
    std::string name;
    SplitPath(path, directory, name);
    if (!IsReportName(name)) {
        MsgBox("You must select a `.RPX' file!\n\r\n\rPlease Try Again.", OkOnly, "Quintave");
        return false;
    }
    ReportFileDir = directory;
    ReportFileName = name;
    return WriteReportFile();
}

} // namespace

bool WriteReportFile() {
    if (!LeaveGroup()) return false;
    CommitPendingEdit();
    EndStep();
    for (std::string &value : RowValue) value = RTrim(value);
    const bool temporary = ReportFileName.ends_with(".$$$");
    if (!temporary) {
        FileMark = ReportFileName;
        FileMarkDir = ReportFileDir;
    }
    std::string kept;
    const Integer fault = FaultOf([&] { kept = WriteTo(ReportFileDir + ReportFileName, temporary); });
    if (fault != 0) {
        MsgBox(WriteErrorText(fault), CriticalIcon, "Quintave");
        return false;
    }
    TakeWrittenTexts();
    if (temporary) return true;
    DataChanged = False;
    ShowSavedName();
    ++TheFiles.Saves;
    EndStep();
    SettleRecovery();
    if (!kept.empty()) TellKept(kept);
    return true;
}

void CommandSave_Click() {
    TmpStr.clear();
    if (!LeaveGroup()) return;
    if (!HasRememberedName()) {
        CommandSaveAs_Click();
        return;
    }
    ReportFileName = FileMark;
    ReportFileDir = FileMarkDir;
    WriteReportFile();
    if (DataChanged == False) SetFocus(ActiveRows());
}

void CommandSaveAs_Click() {
    TmpStr.clear();
    if (!LeaveGroup()) return;
    std::string path;
    while (true) {
        if (!AskForName(path)) continue;
        if (path.empty()) {
            TmpStr = "Cancel";
            return;
        }
        if (SaveUnder(path)) break;
    }
    SetFocus(ActiveRows());
}
