// Save and Save As (save_command.h).
#include "report/save_command.h"

#include "groups/open_group.h"
#include "main/main_window.h"
#include "main/recovery.h"
#include "model/field_model.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "report/writer.h"

namespace {

// False where the dialog itself failed and is to be shown again.
bool AskForName(std::string &path) {
    KeepBeforeAsking();
    Quintave.cmDialog = {.Title = "Name a Quintave report (*.RPX) output file...",
                         .InitDir = ReportFileDir,
                         .Filter = "Quintave Files(*.rpx)|*.rpx|All files(*.*)|*.*",
                         .FileName = HasRememberedName() ? FileMark : "",
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
    if (!WriteReportFile()) return false;
    SetCaption(Quintave.editframe,
               "[Template: " + NameText(TemplateName) + "] - RPX File(s): " + CaptionName(ReportFileName) + "; ");
    return true;
}

} // namespace

bool HasRememberedName() { return !FileMark.empty() && FileMark != FirstLoad; }

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
    while (true) {
        std::string path;
        if (!AskForName(path)) continue;
        if (path.empty()) {
            TmpStr = "Cancel";
            return;
        }
        if (SaveUnder(path)) break;
    }
    SetFocus(ActiveRows());
}

std::string CaptionName(const std::string &name) {
    return NameText(name.substr(0, name.size() < 5 ? 0 : name.size() - 4));
}

bool IsReportName(const std::string &name) { return UpperCase(Right(name, 3)) == "RPX"; }
