// Starting the program for a target, and judging what an input did (workplace.h).
#include "fuzz/workplace.h"

#include "form/main_window.h"
#include "main/commands.h"
#include "main/layout.h"
#include "main/start_up.h"
#include "model/work_files.h"
#include "platform/console/answers.h"
#include "platform/console/printer.h"
#include "platform/files.h"
#include "support/file_calls.h"
#include "support/open_files.h"
#include "support/user.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace {

[[noreturn]] void Refuse(const std::string &what) {
    std::fprintf(stderr, "REFUSED: %s\n", what.c_str());
    std::abort();
}

// The edge of all events tells an error that no command trapped by its number alone.
bool IsUntrapped(const ShownMessage &message) {
    return message.Text.starts_with("Error: ") && message.Text.find('\r') == std::string::npos;
}

std::string Joined(const std::vector<std::string> &lines) {
    std::string text;
    for (const auto &line : lines) text += line + "\r\n";
    return text;
}

} // namespace

Workplace::Workplace(const std::vector<std::string> &templateLines) {
    if (chdir(folder.Path().c_str()) != 0) Refuse("chdir");
    Write("quintave.tbl", "\"\",\"SITE.FTF\",\"-1\"\r\n");
    Write("SITE.FTF",
          "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n" + Joined(templateLines));
    ConnectMainWindow();
    SetContainers(MainLayout());
    if (!LoadMainWindow({})) Refuse("start");
    UserTicks(Quintave.Timer1);
    ActivateMainWindow();
    Press(Quintave.LogoOff);
}

void Workplace::Run(const std::function<void()> &act) const {
    Dialogs = {};
    Printer.Jobs.clear();
    const auto descriptors = OpenFileCount();
    const std::vector<MadeCall> calls = WatchCalls(act);
    if (Quintave.GrpExit.Visible) Refuse("the group is still open");
    if (OpenFileCount() != descriptors) Refuse("a descriptor is still open");
    const auto untrapped = std::find_if(Dialogs.Messages.begin(), Dialogs.Messages.end(), IsUntrapped);
    if (untrapped != Dialogs.Messages.end()) Refuse("untrapped: " + untrapped->Text);
    const std::vector<std::string> outside = CallsOutside(calls, {folder.Path()});
    if (!outside.empty()) Refuse("touched: " + outside.front());
}

void Workplace::Empty() const {
    if (Quintave.GrpExit.Visible) Press(Quintave.GrpExit);
    Dialogs.Answers = {NoAnswer};
    Press(Quintave.CommandReset);
    DeleteMatching(folder.Path(), "*.$$$");
}

void Workplace::SaveAs(const std::string &name) const {
    Dialogs.Answers.clear();
    Dialogs.Texts = {PathOf(name)};
    Press(Quintave.CommandSaveAs);
}

void Workplace::Add(const std::string &name) const {
    Dialogs.Texts = {PathOf(name)};
    Press(Quintave.CommandAdd);
}

std::vector<std::string> SampleTemplate() {
    return {R"(1,-1,"","Citation","","")",
            R"(2,60,"TEXT","Title","","")",
            R"(2,9,"LIST","Kind","","")",
            "\"Map\"",
            "\"Table\"",
            "\"OTHER...\"",
            "XXX-1XXX",
            R"(2,999,"MEMO","Notes","","")",
            R"(1,2,"GROUP START","Samples","","")",
            R"(2,5,"TEXT","Depth","","")",
            R"(3,-1,"","Site","","")",
            R"(4,9,"LIST","Colour","","")",
            "\"Red\"",
            "\"Blue\"",
            "XXX-1XXX",
            R"(2,20,"MEMO","Log","","")",
            R"(1,1,"GROUP END","","","")",
            R"(-2,30,"TEXT","Once","","")",
            R"(1,60,"TEXT","Last","","")"};
}

void DivideInput(const std::string &input, std::string &firstLine, std::string &file) {
    const auto end = input.find('\n');
    firstLine = input.substr(0, end);
    file = end == std::string::npos ? "" : input.substr(end + 1);
}

std::string_view FirstActs(std::string_view acts) {
    constexpr std::size_t Most = 24;
    return acts.substr(0, Most);
}
