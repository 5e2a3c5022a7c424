// Heavy work for measurements (operations.h).
#include "operations.h"

#include "workplace.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "main/template_command.h"
#include "model/field_model.h"
#include "model/work_files.h"
#include "platform/console/answers.h"
#include "platform/controls.h"
#include "print/print_panel.h"
#include "report/save_command.h"

#include <array>
#include <stdexcept>
#include <string>

namespace {

constexpr const char *ReportName = "BENCH.RPX";

void Need(bool done) {
    if (!done) throw std::runtime_error("the work was not done");
}

// A group of one LIST member with this many choices.
std::string GroupWithList(int choices) {
    std::string text = "1,2,\"GROUP START\",\"Samples\",\"\",\"\"\r\n2,12,\"LIST\",\"Rock\",\"\",\"\"\r\n";
    for (int i = 0; i < choices; ++i) text += "\"Rock " + std::to_string(i) + "\"\r\n";
    return text + "\"XXX-1XXX\"\r\n1,0,\"GROUP END\",\"\",\"\",\"\"\r\n";
}

// As many occurrences, each with another choice.
std::string Rocks(int occurrences) {
    std::string text = "0,\"QuintaveV2\",\"BENCH.FTF\"\r\n";
    for (int i = 0; i < occurrences; ++i)
        text += "1,-9,\"Samples\",\"REPEATING GROUP, Occurrence #" + std::to_string(i + 1) +
                "\"\r\n2,1,\"Rock\",\"Rock " + std::to_string(occurrences - 1 - i) + "\"\r\n";
    return text + "1,-99,\"END REPEATING GROUP\",\"\"\r\n";
}

void StartOnFields(int count) { StartOn(ManyFields(count)); }

void StartOnLists(int count) {
    std::string text;
    for (int i = 0; i < count / 4; ++i)
        text +=
            "1,20,\"LIST\",\"Field " + std::to_string(i) + "\",\"\",\"\"\r\n\"Red\"\r\n\"Blue\"\r\n\"XXX-1XXX\"\r\n";
    StartOn(text);
}

void StartOnReport(int fields) {
    StartOnFields(fields);
    WriteIn(ReportName, ManyRecords(fields));
}

// Behind a load its step has ended: what comes then does not pay for it.
void Load() {
    LoadReportIn(ReportName);
    EndStep();
}

void StartOnLoaded(int fields) {
    StartOnReport(fields);
    Load();
}

void StartOnRocks(int occurrences) {
    StartOn(GroupWithList(occurrences));
    WriteIn(ReportName, Rocks(occurrences));
}

void StartOnLoadedRocks(int occurrences) {
    StartOnRocks(occurrences);
    Load();
}

void LoadTheTemplate() { Need(LoadTemplateFile()); }

void LoadTheReport() { LoadReportIn(ReportName); }

void Save() {
    ReportFileDir = Folder();
    ReportFileName = "SAVED.RPX";
    Need(WriteReportFile());
}

void PrintToText() {
    ReportFileDir = Folder();
    ReportFileName = "printed.txt";
    PrintReportToFile(Folder() + ReportName);
}

void EnterTheGroup() {
    OpenGroup(1);
    Need(ActiveList == GroupList);
}

constexpr std::array<Operation, 9> All{{
    {"template load", StartOnFields, LoadTheTemplate},
    {"template load, lists", StartOnLists, LoadTheTemplate},
    {"report load", StartOnReport, LoadTheReport},
    {"report load, choices", StartOnRocks, LoadTheReport},
    {"merge", StartOnLoaded, LoadTheReport},
    {"save", StartOnLoaded, Save},
    {"save, occurrences", StartOnLoadedRocks, Save},
    {"text print", StartOnReport, PrintToText},
    {"entering a group", StartOnLoadedRocks, EnterTheGroup},
}};

} // namespace

std::span<const Operation> Operations() { return All; }
