// Start-up (start_up.h). The template it loads: main/template_command.cpp.
#include "main/start_up.h"

#include "form/main_window.h"
#include "main/given_report.h"
#include "main/recovery.h"
#include "main/session.h"
#include "main/template_command.h"
#include "main/user_resources.h"
#include "model/field_model.h"
#include "model/resource_table.h"
#include "platform/characters.h"
#include "platform/clock.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/hand_over.h"
#include "report/records.h"
#include "screen/selection.h"

namespace {

constexpr Integer TemplateToLoad = -2; // in LoadState, until the first activation
constexpr int LargestCopies = 9;

// The report named on the command line; "" for none.
std::string ReportArgument;

bool HasResources() {
    ResourceTable table;
    return ReadResourceTable(ResourceDir, table);
}

bool AskAgain(std::string_view problem, std::string_view advice) {
    return MsgBox("WARNING! " + std::string(problem) + " in the directory you specified (" + NameText(ResourceDir) +
                      ").  " + std::string(advice) + "  Try Again?",
                  YesNo + CriticalIcon, "BAD DRIVE/DIRECTORY INFORMATION!") == YesAnswer;
}

void AskForResources() {
    ResourceDir =
        WithSeparator(InputBox("What is the Resource Directory for Quintave?" + NL + NL +
                                   "(i.e., where is Quintave.Tbl located?)" + NL + NL + "(e.g., 'd:\\quintave\\')",
                               "Quintave.Tbl Location?", ReportFileDir));
}

// The report named on the command line, so that another program finds it too; "" for none.
std::string GivenPath() {
    if (!IsReportName(ReportArgument)) return "";
    return ReportArgument.starts_with('/') ? ReportArgument : CurrentDirectory() + ReportArgument;
}

enum class Lock { Taken, HandedOver, Refused };

// The one program that works on the directory, or what was asked of this one handed over to it. That one may be about
// to start, and not listening yet, or about to end.
Lock LockOrHandOver() {
    constexpr int Moment = 500; // milliseconds
    Lock lock = Lock::Refused;
    ComesOffWithin(Moment, [&] {
        if (LockDirectory(ResourceDir))
            lock = Lock::Taken;
        else if (HandOver(ResourceDir, GivenPath()))
            lock = Lock::HandedOver;
        return lock != Lock::Refused;
    });
    return lock;
}

// Finds the resource directory and takes its lock, before anything in it is touched.
bool FindResources() {
    if (!HasResources()) AskForResources();
    while (true) {
        if (!HasResources()) {
            if (!AskAgain("Quintave resources were not found", "The Quintave.Tbl file must be loaded!")) return false;
        } else {
            const Lock lock = LockOrHandOver();
            if (lock != Lock::Refused) return lock == Lock::Taken;
            if (!AskAgain("Another Quintave is working", "Each needs a resource directory of its own!")) return false;
        }
        AskForResources();
    }
}

void FillPrintLists() {
    for (int copies = 1; copies <= LargestCopies; ++copies) AddRow(Quintave.Combo1, std::to_string(copies));
    SetListIndex(Quintave.Combo1, 0);
    for (const std::string_view separator : {"' '", "'| '", "': '", "'> '", "' - '", "' = '"})
        AddRow(Quintave.Combo2, separator);
    SetListIndex(Quintave.Combo2, 1);
}

void ColourFrames(Colour colour) {
    if (colour == DesignColour) return;
    for (Control *control : {&Quintave.editframe, &Quintave.SectionLabel, &Quintave.MultiInstanceFrame})
        SetBackColor(*control, colour);
}

// A path of the table, below a directory, in the letter case that it is known by, which names are looked up in
// case-blind; or as it is written where a file has that very name, and the other one would mean another file.
std::string KnownAs(const std::string &base, const std::string &written, std::string (*toCase)(std::string_view)) {
    std::string folder;
    std::string name;
    SplitPath(written, folder, name);
    const std::string directory = FindDirectory(base, folder);
    const bool exact = FindName(directory, name) == name;
    return exact && FindName(directory, toCase(name)) != name ? written : toCase(written);
}

void ReadTable() {
    ResourceTable table;
    if (!ReadResourceTable(ResourceDir, table)) table = {};
    TemplateName = KnownAs(ResourceDir, table.Template, UpperCase);
    TmpStr = KnownAs(table.Start.starts_with('/') ? "/" : ResourceDir, table.Start, LowerCase);
    ColourFrames(table.Back);
}

// Divides the path of the template that the table names.
void LocateTemplate() {
    const std::string path = TemplateName;
    std::string folder;
    SplitPath(path, folder, TemplateName);
    TemplateDir = FindDirectory(ResourceDir, folder);
}

} // namespace

bool LoadMainWindow(const StartArguments &arguments) {
    Quintave.Dir1.Tag = CurrentDirectory();
    ReportFileDir = Quintave.Dir1.Tag;
    const std::string resources =
        arguments.Installed.empty() ? arguments.Resources : UserResources(WithSeparator(arguments.Installed));
    ResourceDir = resources.empty() ? ReportFileDir : WithSeparator(resources);
    ReportArgument = arguments.Report;
    FillPrintLists();
    FileMark = FirstLoad;
    if (!FindResources()) return false;
    LoadState = TemplateToLoad;
    SetCaption(Quintave.DateLabel, " " + ShortDate() + " ");
    ReadTable();
    SetEnabled(Quintave.Timer1, true);
    return true;
}

void ActivateMainWindow() {
    if (LoadState != TemplateToLoad) return;
    StartFile = TmpStr;
    ReportFilePattern = "*.rpx";
    FileFilter = {"Quintave Files (*.rpx)", "*.rpx", "All Files (*.*)", "*.*", "-1", "0"};
    LocateTemplate();
    if (OfferRecovery(ReportArgument.empty() ? StartFile : ReportArgument)) return;
    std::string directory;
    std::string name;
    const bool given = FindStartReport(ReportArgument, directory, name);
    if (!(given && LoadTemplateOfReport(directory, name)) && !LoadFirstTemplate()) return;
    if (given) OpenGivenReport(directory, name);
}

void LogoOff_Click() {
    SetVisible(Quintave.Frame5, false);
    if (GroupIsOpen()) SetVisible(Quintave.TableFrame, true);
    SetVisible(Quintave.editframe, true);
    SetFocus(ActiveRows());
}

void LogoQuit_Click() { EndSession(); }

void Timer1_Timer() {
    SetCaption(Quintave.Label1, "Quintave");
    SetCaption(Quintave.Label6, "Version 2.0");
    SetCaption(Quintave.Label7, "Write down what your data are.");
    SetCaption(Quintave.Label9, "The Quintave developers, MIT licence");
    SetEnabled(Quintave.Timer1, false);
}
