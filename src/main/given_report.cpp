// Opening a report that is given to the program (given_report.h). Reading it: report/reader.h.
#include "main/given_report.h"

#include "form/main_window.h"
#include "main/template_command.h"
#include "model/field_model.h"
#include "platform/characters.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/items.h"
#include "report/load_command.h"
#include "report/records.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

#include <deque>

namespace {

// The file name of the template that the report was made on; "" where there is no such report.
std::string TemplateNamedIn(const std::string &report) {
    std::string name;
    bool isReport = false;
    FaultOf([&] {
        ItemInput input = OpenReportText(report);
        isReport = ReadReportHeader(input, &name);
    });
    return isReport ? name : "";
}

// Full paths of the reports that were handed over, in their order.
std::deque<std::string> Waiting;

void OpenOnTop(const std::string &report) {
    std::string directory;
    std::string name;
    SplitPath(report, directory, name);
    CommitPendingEdit();
    if (!IsReportName(name) || !MakeReadyToLoad()) return;
    if (DataChanged == False && FileMark == FirstLoad) LoadTemplateOfReport(directory, name);
    OpenGivenReport(directory, name);
    SetFocus(ActiveRows());
}

} // namespace

bool FindStartReport(const std::string &argument, std::string &directory, std::string &name) {
    const std::string &named = argument.empty() ? StartFile : argument;
    if (!IsReportName(named)) return false;
    SplitPath(named, directory, name);
    if (!argument.empty()) {
        if (directory.empty()) directory = CurrentDirectory();
        return true;
    }
    directory = FindDirectory(directory.starts_with('/') ? "/" : ResourceDir, directory);
    const std::string found = FindName(directory, name);
    if (!found.empty()) name = found;
    return true;
}

bool LoadTemplateOfReport(const std::string &directory, const std::string &name) {
    const std::string wanted = TemplateNamedIn(directory + name);
    const bool present = TemplateIsThere() && UpperCase(NameText(TemplateName)) == UpperCase(NameText(wanted));
    if (wanted.empty() || present) return false;
    const std::string &place = FindName(ResourceDir, wanted).empty() ? directory : ResourceDir;
    if (FindName(place, wanted).empty() || !LoadTemplateAt(place, wanted)) return false;
    CurrentField = 0;
    SetListIndex(Quintave.List1[0], 0);
    return true;
}

void OpenGivenReport(const std::string &directory, const std::string &name) {
    if (TemplateIsThere())
        LoadReport(directory, name);
    else
        MsgBox("No Fields Template was loaded, so there is nothing to load this file into!" + NL + NL +
                   "Load one with 'Field Template', then open the file with 'Add/Open File'.",
               CriticalIcon, "ERROR LOADING " + NameText(name));
}

void ReceiveReport(const std::string &report) {
    if (report.empty()) return;
    Waiting.push_back(report);
    SetEnabled(Quintave.GivenTimer, true);
}

void GivenTimer_Timer() {
    // The panel belongs to the entries as they are.
    if (Waiting.empty() || IsInterrupting() || Quintave.PrintFrame.Visible) return;
    const std::string report = Waiting.front();
    Waiting.pop_front();
    SetEnabled(Quintave.GivenTimer, !Waiting.empty());
    OpenOnTop(report);
}
