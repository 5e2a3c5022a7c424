// The print command and its panel (print_panel.h). What is printed: report_layout.cpp.
#include "print/print_panel.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "model/field_model.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/front.h"
#include "platform/items.h"
#include "print/printer_pages.h"
#include "print/report_layout.h"
#include "print/text_lines.h"
#include "report/load_command.h"
#include "report/records.h"
#include "report/temporary_report.h"
#include "screen/selected_field.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

#include <algorithm>
#include <array>

namespace {

constexpr int LargestIndent = 60;
constexpr std::string_view Waiting = "Waiting for PRINT command";

// What is printed: the screen (YesAnswer) or a saved report (NoAnswer); CancelAnswer for nothing.
Integer PrintSource = CancelAnswer;

// The report in use before the command, put back when the panel is left.
std::string PrintFileName;
std::string PrintFileDir;

// The captions of PrintFrameIndent in their order, each with what it means; behind the last comes the first.
struct IndentCaption {
    std::string_view Caption;
    Indents Means;
    bool TakesDataIndent; // PrintIndent counts
};

constexpr std::array<IndentCaption, 4> IndentCaptions{{
    {NoIndent, Indents::None, true},
    {"Section/Field Nested Indents", Indents::Titles, true},
    {"Section/Field && Data Nested Indents", Indents::TitlesAndData, false}, // shows one "&"
    {"Raw Sect/Field/Data Nested Indents", Indents::Raw, false},
}};

constexpr int StarsPerRow = 25;

// The caption of printLabel that the stars follow.
std::string ProgressCaption;

void ShowProgress(int record) {
    const bool begins = record % StarsPerRow == 0 || record == 1;
    std::string caption = begins ? ProgressCaption : Quintave.printLabel.Caption;
    if (record > 1) caption += '*';
    SetCaption(Quintave.printLabel, caption);
    if (record > 1) RepaintNow(Quintave.printLabel);
}

// The last caption stands for any other.
const IndentCaption *PresentIndent() {
    return std::find_if(IndentCaptions.begin(), IndentCaptions.end() - 1,
                        [](const IndentCaption &c) { return c.Caption == Quintave.PrintFrameIndent.Caption; });
}

PrintOptions ReadPrintOptions() {
    PrintOptions options;
    options.Indent = PresentIndent()->Means;
    options.DataIndent = DecimalValue(Quintave.PrintIndent.Text);
    const std::string separator = SelectedRow(Quintave.Combo2);
    if (!separator.empty()) options.Separator = separator.substr(1, separator.size() - 2);
    options.Below = Quintave.PrintFrameToggler.Caption == LineBelowTitle;
    options.Label = ReportLabel(ReportFileName);
    options.Heading = ReportHeading(TemplateName, options.Label);
    options.Progress = ShowProgress;
    return options;
}

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

// A text print may have such a name, too: the one just made stays.
void DeleteTemporaryReports(const std::string &made) {
    for (const std::string &name : MatchingNames(ResourceDir, "*.$$$"))
        if (!IsSameFile(ResourceDir + name, made)) TryToDelete(ResourceDir + name);
}

void LeavePanel() {
    if (PrintSource == NoAnswer) DeleteTemporaryReports(ReportFileDir + ReportFileName);
    RestoreReportNames();
    SetCaption(Quintave.printLabel, Waiting);
    EnablePrintButtons(true);
    SetVisible(Quintave.PrintFrame, false);
    SetVisible(Quintave.editframe, true);
    ShowSelectedField(Restart);
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

bool PickSource() {
    if (!PickReport("Pick a Quintave report (*.RPX) file to print...",
                    "You must select a `.RPX' file!\n\r\n\rPlease Try again.", ReportFileDir, ReportFileName)) {
        RestoreReportNames();
        return false;
    }
    return true;
}

void WriteTextFile(ItemInput &input, const std::string &path) {
    OutputFile output(path, OutputFile::Access::User);
    const Integer fault = FaultOf([&] { WriteTextPrint(input, output, ReadPrintOptions()); });
    // What could be read stays in the file; a fault of the file itself is the one to tell.
    const Integer endFault = FaultOf([&] { output.Close(true); });
    if (fault != 0 || endFault != 0) throw RuntimeError{endFault != 0 ? endFault : fault};
}

void PrintCopies() {
    const std::int32_t count = NumericValue(SelectedRow(Quintave.Combo1));
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
    PrintFileName = ReportFileName;
    PrintFileDir = ReportFileDir;
    PrintSource = MsgBox("YES: Print active screen display." + NL + NL +
                             "NO: Print an existing (previously saved) Quintave report file.",
                         YesNoCancel + QuestionIcon + SecondIsDefault, "PRINT CURRENT SCREEN FIELDS?");
    const bool ready = PrintSource == YesAnswer ? PrepareScreen() : PrintSource == NoAnswer && PickSource();
    if (ready)
        ShowPanel();
    else
        SetFocus(ActiveRows());
}

void PrintReportToPrinter(Integer copy) {
    ItemInput input = OpenReportText(ReportFileDir + ReportFileName);
    const BusyPointer busy;
    ProgressCaption = "   Printing Copy " + std::to_string(copy);
    PrintPages(input, ReadPrintOptions());
}

void PrintReportToFile(const std::string &source) {
    const std::string path = ReportFileDir + ReportFileName;
    if (IsSameFile(source, path)) throw RuntimeError{FileAlreadyOpen};
    ItemInput input = OpenReportText(source);
    const BusyPointer busy;
    ProgressCaption = "   Printing To File ";
    WriteTextFile(input, path);
}

void PrintFrameIndent_Click() {
    const auto *const now = PresentIndent();
    const auto *const next = now + 1 == IndentCaptions.end() ? IndentCaptions.begin() : now + 1;
    SetCaption(Quintave.PrintFrameIndent, next->Caption);
    SetEnabled(Quintave.PrintIndent, next->TakesDataIndent);
}

void PrintFrameToggler_Click() {
    SetCaption(Quintave.PrintFrameToggler,
               Quintave.PrintFrameToggler.Caption == OnTitleLine ? LineBelowTitle : OnTitleLine);
}

void PrintIndent_KeyPress(Integer /*Index*/, Integer &KeyAscii) {
    if (KeyAscii != BackspaceCode && (KeyAscii < '0' || KeyAscii > '9')) KeyAscii = 0;
}

void PrintIndent_LostFocus() {
    const double indent = DecimalValue(Quintave.PrintIndent.Text);
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
