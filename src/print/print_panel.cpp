// The print command and its panel (print_panel.h). What is printed: report_layout.cpp.
#include "print/print_panel.h"

#include "groups/open_group.h"
#include "main/main_window.h"
#include "model/field_model.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "print/printer_pages.h"
#include "print/text_lines.h"
#include "report/save_command.h"
#include "report/temporary_report.h"
#include "report/writer.h"
#include "screen/selected_field.h"
#include "screen/value_entry.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::int32_t LargestIndent = 60;
constexpr std::string_view Waiting = "Waiting for PRINT command";

// What is printed: the screen (YesAnswer) or a saved report (NoAnswer); CancelAnswer for nothing.
Integer PrintSource = CancelAnswer;

// The report in use before the command, put back when the panel is left.
std::string PrintFileName;
std::string PrintFileDir;

struct IndentStep {
    std::string_view Now;
    std::string_view Next;
    bool TakesDataIndent;
};

// The last step stands for any other caption.
constexpr std::array<IndentStep, 4> IndentSteps{{
    {NoIndent, TitlesIndented, true},
    {TitlesIndented, DataIndented, false},
    {DataIndented, RawIndents, false},
    {RawIndents, NoIndent, true},
}};

void RestoreReportNames() {
    ReportFileName = PrintFileName;
    ReportFileDir = PrintFileDir;
}

void EnablePrintButtons(bool enabled) {
    for (Control &button : Quintave.PrintFramePrint) SetEnabled(button, enabled);
    SetEnabled(Quintave.PrintFrameCancel, enabled);
}

void ShowPanel() {
    SetVisible(Quintave.editframe, false);
    SetCaption(Quintave.PrintFrame, "Printing Screen Information...");
    SetCaption(Quintave.printLabel, Waiting);
    SetVisible(Quintave.PrintFrame, true);
    SetFocus(Quintave.PrintFrameIndent);
}

void LeavePanel() {
    RestoreReportNames();
    if (PrintSource == NoAnswer) DeleteMatching(ResourceDir, "*.$$$");
    CurrentField = LoadState;
    SetCaption(Quintave.printLabel, Waiting);
    EnablePrintButtons(true);
    SetVisible(Quintave.PrintFrame, false);
    SetVisible(Quintave.editframe, true);
    ShowSelectedField(Restart, False);
    SetFocus(ActiveRows());
}

// The screen's entries in a temporary report; false after the writer's message.
bool PrepareScreen() {
    const std::string name = TemporaryReportName();
    if (!WriteTemporaryReport(name)) return false;
    ReportFileDir = ResourceDir;
    ReportFileName = name;
    return true;
}

// A saved report that the user picks; false for none, or after the message.
bool PickReport() {
    Quintave.cmDialog = {.Title = "Pick a Quintave report (*.RPX) file to print...",
                         .InitDir = ReportFileDir,
                         .Filter = "Quintave Files(*.rpx)|*.rpx|All files(*.*)|*.*",
                         .FileName = "",
                         .Flags = 0};
    const std::string path = PickFile(Quintave.cmDialog, ShowOpen);
    if (path.empty()) return false;
    std::string directory;
    std::string name;
    SplitPath(path, directory, name);
    if (!IsReportName(name)) {
        MsgBox("You must select a `.RPX' file!\n\r\n\rPlease Try again.", OkOnly, "Quintave");
        return false;
    }
    ReportFileDir = WithSeparator(directory);
    ReportFileName = name;
    return true;
}

void PrintCopies() {
    const Control &copies = Quintave.Combo1;
    const auto count = copies.ListIndex < 0 ? 0 : NumericValue(copies.Rows[static_cast<std::size_t>(copies.ListIndex)]);
    for (std::int32_t copy = 1; copy <= count; ++copy) PrintReportToPrinter(static_cast<Integer>(copy));
}

// Prints to a text file that the user names; false where he named none.
bool PrintToFile() {
    const std::string sourceDir = ReportFileDir;
    const std::string sourceName = ReportFileName;
    Quintave.cmDialog = {.Title = "Pick an ASCII Quintave print file name...",
                         .InitDir = "",
                         .Filter = "ASCII Text|*.txt; *.asc|All files|*.*",
                         .FileName = "",
                         .Flags = OverwritePrompt};
    const std::string path = PickFile(Quintave.cmDialog, ShowSave);
    if (path.empty()) return false;
    SplitPath(path, ReportFileDir, ReportFileName);
    const Integer fault = FaultOf([&] { PrintReportToFile(sourceDir + sourceName); });
    if (fault == 0) return true;
    ReportFileDir = sourceDir;
    ReportFileName = sourceName;
    throw RuntimeError{fault};
}

void TellPrintError(Integer number) {
    MsgBox("Error: " + ErrorText(number) + NL +
               "Error printing this report! (no default printer? printer off line? full drive? file locked? wrong "
               "privileges?). Correct the problem and try again, or pick a different file name or location.",
           CriticalIcon, "PRINTING...");
}

void StayOnPanel(Integer index) {
    SetCaption(Quintave.printLabel, Waiting);
    EnablePrintButtons(true);
    SetFocus(Quintave.PrintFramePrint.at(static_cast<std::size_t>(index)));
}

} // namespace

void CommandPrint_Click() {
    if (!LeaveGroup()) return;
    CommitPendingEdit();
    LoadState = CurrentField;
    PrintFileName = ReportFileName;
    PrintFileDir = ReportFileDir;
    PrintSource = MsgBox("YES: Print active screen display." + NL + NL +
                             "NO: Print an existing (previously saved) Quintave report file.",
                         YesNoCancel + QuestionIcon + SecondIsDefault, "PRINT CURRENT SCREEN FIELDS?");
    const bool ready = PrintSource == YesAnswer ? PrepareScreen() : PrintSource == NoAnswer && PickReport();
    CurrentField = LoadState;
    if (ready)
        ShowPanel();
    else
        SetFocus(ActiveRows());
}

void PrintFrameIndent_Click() {
    const auto *const step = std::find_if(IndentSteps.begin(), IndentSteps.end() - 1, [](const IndentStep &s) {
        return s.Now == Quintave.PrintFrameIndent.Caption;
    });
    SetCaption(Quintave.PrintFrameIndent, step->Next);
    SetEnabled(Quintave.PrintIndent, step->TakesDataIndent);
}

void PrintFrameToggler_Click() {
    SetCaption(Quintave.PrintFrameToggler,
               Quintave.PrintFrameToggler.Caption == OnTitleLine ? LineBelowTitle : OnTitleLine);
}

void PrintIndent_KeyPress(Integer /*Index*/, Integer &KeyAscii) {
    if (KeyAscii != BackspaceCode && (KeyAscii < '0' || KeyAscii > '9')) KeyAscii = 0;
}

void PrintIndent_LostFocus() {
    const std::int32_t indent = NumericValue(Quintave.PrintIndent.Text);
    if (indent < 0) SetText(Quintave.PrintIndent, "0", 1);
    if (indent > LargestIndent) SetText(Quintave.PrintIndent, std::to_string(LargestIndent), 2);
}

void PrintFramePrint_Click(Integer Index) {
    EnablePrintButtons(false);
    bool printed = true;
    const Integer fault = FaultOf([&] { Index == ToPrinter ? PrintCopies() : void(printed = PrintToFile()); });
    if (fault != 0) TellPrintError(fault);
    if (fault == 0 && printed)
        LeavePanel();
    else
        StayOnPanel(Index);
}

void PrintFrameCancel_Click() { LeavePanel(); }
