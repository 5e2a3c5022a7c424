// The sample session and the operations tried in it (trial.h).
#include "reliability/trial.h"

#include "form/main_window.h"
#include "main/commands.h"
#include "main/layout.h"
#include "main/start_up.h"
#include "model/field_model.h"
#include "model/store.h"
#include "platform/console/answers.h"
#include "platform/console/progress.h"
#include "platform/files.h"
#include "support/open_files.h"
#include "support/stores.h"
#include "support/user.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr Integer KindRow = 2; // rows of the field list
constexpr Integer GroupRow = 4;
constexpr Integer GroupElement = 5;

const std::string TemplateHeader = "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n";

const std::string SiteTemplate = TemplateHeader +
                                 "1,60,\"TEXT\",\"Title\",\"\",\"\"\r\n"
                                 "1,999,\"MEMO\",\"Notes\",\"\",\"\"\r\n"
                                 "1,9,\"LIST\",\"Kind\",\"\",\"\"\r\n\"Map\"\r\n\"Table\"\r\nXXX-1XXX\r\n"
                                 "1,30,\"TEXT\",\"Place\",\"\",\"\"\r\n"
                                 "1,2,\"GROUP START\",\"Samples\",\"\",\"\"\r\n"
                                 "2,5,\"TEXT\",\"Depth\",\"\",\"\"\r\n"
                                 "2,9,\"LIST\",\"Colour\",\"\",\"\"\r\n\"Red\"\r\n\"Blue\"\r\nXXX-1XXX\r\n"
                                 "1,1,\"GROUP END\",\"\",\"\",\"\"\r\n";

const std::string OtherTemplate = TemplateHeader + "1,9,\"LIST\",\"Sort\",\"\",\"\"\r\n\"A\"\r\n\"B\"\r\nXXX-1XXX\r\n"
                                                   "1,2,\"GROUP START\",\"Parts\",\"\",\"\"\r\n"
                                                   "2,5,\"TEXT\",\"Size\",\"\",\"\"\r\n"
                                                   "1,1,\"GROUP END\",\"\",\"\",\"\"\r\n"
                                                   "1,9,\"LIST\",\"Class\",\"\",\"\"\r\n\"C\"\r\nXXX-1XXX\r\n";

const std::string OtherReport = "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"Title\",\"Lakes\"\r\n1,1,\"Kind\",\"Table\"\r\n"
                                "1,-9,\"Samples\",\"REPEATING GROUP, Occurrence #1\"\r\n2,1,\"Depth\",\"99\"\r\n"
                                "2,1,\"Colour\",\"Blue\"\r\n1,-99,\"END REPEATING GROUP\",\"\"\r\n";

std::string Here(const char *name) { return CurrentDirectory() + name; }

void EnterValue(Control &rows, Integer row, const std::string &text) {
    DoubleClickRow(rows, row);
    Type(text);
    PressEnter();
}

void EnterGroup() { DoubleClickRow(Quintave.List1[0], GroupRow); }

void EnterLastOccurrence() {
    EnterGroup();
    Press(Quintave.FldChange[Bottom]);
}

void SaveUnder(const char *name) {
    Dialogs.Texts = {Here(name)};
    Press(Quintave.CommandSaveAs);
}

void ChangeGroupValue() {
    EnterGroup();
    EnterValue(Quintave.List1[3], 0, "5");
}

void Nothing() {}

// Thousands of notes and occurrences, so that a save or a rewritten group takes a while.
void AddMuch() {
    constexpr int Many = 4000;
    for (int n = 0; n < Many; ++n) RowValue[1] += "|note " + std::to_string(n) + std::string(200, '.');
    PutStore(GroupElement, std::string(static_cast<std::size_t>(LengthOf(GroupElement)) * Many, 'x'));
}

void LoadOtherTemplate() {
    Dialogs.Answers = {NoAnswer};
    Dialogs.Texts = {Here("OTHER.FTF")};
    Press(Quintave.CommandTemplate);
}

void AddOther() {
    Dialogs.Texts = {Here("other.rpx")};
    Press(Quintave.CommandAdd);
}

void PrintScreen() {
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandPrint);
    Dialogs.Texts = {Here("print.txt")};
    if (Quintave.PrintFrame.Visible) Press(Quintave.PrintFramePrint[ToFile]);
}

void PrintReport() {
    Dialogs.Answers = {NoAnswer};
    Dialogs.Texts = {Here("other.rpx"), Here("print.txt")};
    Press(Quintave.CommandPrint);
    if (Quintave.PrintFrame.Visible) Press(Quintave.PrintFramePrint[ToFile]);
}

void ResetWithoutSaving() {
    Dialogs.Answers = {NoAnswer};
    Press(Quintave.CommandReset);
}

void QuitWithSaving() {
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandQuit);
}

void ChangeValueAndWait() {
    constexpr long long Longest = 60'000; // milliseconds until entries may be kept again
    EnterValue(Quintave.List1[0], 0, "Lakes");
    Progress.Clock += Longest;
}

void JumpToFirst() {
    UserEnters(Quintave.TblFldNum);
    UserSelects(Quintave.TblFldNum, 0);
}

void DeleteOne() { Press(Quintave.TblFldDelete); }

void EnterAndDelete() {
    EnterGroup();
    DeleteOne();
}

void Undo() { PressCtrl('Z'); }
void Redo() { PressCtrl('Y'); }

void DeleteAndUndo() {
    EnterAndDelete();
    Undo();
}

void LeaveOneOccurrence() {
    EnterLastOccurrence();
    DeleteOne();
}

// The rows of the lists that are shown.
std::string ShownRows() {
    std::string text;
    for (const std::size_t list : {std::size_t{0}, std::size_t{3}})
        if (list == 0 || Quintave.GrpExit.Visible)
            for (const auto &row : Quintave.List1.at(list).Rows) text += row + "\n";
    return text;
}

constexpr char Divider = '\0';

std::string Joined(const std::vector<std::string> &parts) {
    std::string text;
    for (const auto &part : parts) text += part + Divider;
    return text;
}

std::vector<std::string> Divided(const std::string &text) {
    std::vector<std::string> parts;
    for (std::size_t first = 0; first < text.size();) {
        const auto end = text.find(Divider, first);
        parts.push_back(text.substr(first, end - first));
        first = end == std::string::npos ? text.size() : end + 1;
    }
    return parts;
}

// The program goes on: what was open is left, then the entries are saved under another name. Says what does not work.
std::string GoOn(std::ptrdiff_t descriptors) {
    Dialogs = {};
    if (ProgramEnded() && !StartProgram()) return "does not start again";
    if (Quintave.PrintFrame.Visible) Press(Quintave.PrintFrameCancel);
    if (Quintave.GrpExit.Visible) Press(Quintave.GrpExit);
    SaveUnder("next.rpx");
    if (!Dialogs.Messages.empty()) return "the next command says: " + Dialogs.Messages[0].Text;
    if (OpenFileCount() != descriptors) return "a file is still open";
    return "";
}

std::string Answered(const Site &site, const Operation &operation, bool withAct, const FileFault &fault) {
    StartSession(site.Path());
    const auto descriptors = OpenFileCount();
    const std::string before = site.Read("a.rpx");
    operation.Prepare();
    Dialogs = {};
    std::vector<MadeCall> calls;
    if (withAct) Perform(operation, fault, calls);
    std::vector<std::string> messages;
    for (const auto &message : Dialogs.Messages) messages.push_back(message.Title + ": " + message.Text);
    const std::string screen = ShownRows();
    const std::string report = site.Read("a.rpx");
    const std::string copy = site.CopyWith(before).empty() ? "" : before;
    std::vector<std::string> parts{
        GoOn(descriptors), screen, site.Read("next.rpx"), report, copy, std::to_string(messages.size())};
    parts.insert(parts.end(), messages.begin(), messages.end());
    for (const auto &call : calls) parts.emplace_back(NameOf(call.Kind));
    return Joined(parts);
}

} // namespace

std::vector<Operation> Operations() {
    return {
        {"load a template", Nothing, LoadOtherTemplate, true},
        {"enter a group", Nothing, EnterGroup},
        {"leave a group", ChangeGroupValue, [] { Press(Quintave.GrpExit); }},
        {"previous occurrence", EnterLastOccurrence, [] { Press(Quintave.FldChange[Previous]); }},
        {"first occurrence", EnterLastOccurrence, [] { Press(Quintave.FldChange[Top]); }},
        {"next occurrence", ChangeGroupValue, [] { Press(Quintave.FldChange[Next]); }},
        {"last occurrence", ChangeGroupValue, [] { Press(Quintave.FldChange[Bottom]); }},
        {"new occurrence", EnterLastOccurrence, [] { Press(Quintave.FldChange[Next]); }},
        {"jump to an occurrence", EnterLastOccurrence, JumpToFirst},
        {"insert an occurrence", EnterLastOccurrence, [] { Press(Quintave.TblFldInsert); }},
        {"delete an occurrence", EnterGroup, DeleteOne},
        {"delete the last occurrence", EnterLastOccurrence, DeleteOne},
        {"delete the only occurrence", LeaveOneOccurrence, DeleteOne},
        {"save", Nothing, [] { Press(Quintave.CommandSave); }},
        {"save in a group", ChangeGroupValue, [] { Press(Quintave.CommandSave); }},
        {"save under a new name", Nothing, [] { SaveUnder("new.rpx"); }},
        {"add", Nothing, AddOther, true},
        {"print the screen to a file", Nothing, PrintScreen},
        {"print a report to a file", Nothing, PrintReport},
        {"keep unsaved entries", ChangeValueAndWait, [] { UserTicks(Quintave.RecoveryTimer); }},
        {"reset", Nothing, ResetWithoutSaving, true},
        {"undo a deletion", EnterAndDelete, Undo, false, true},
        {"redo a deletion", DeleteAndUndo, Redo, false, true},
        {"undo a reset", ResetWithoutSaving, Undo},
        {"undo another template", LoadOtherTemplate, Undo, true},
        {"quit", Nothing, QuitWithSaving},
    };
}

const Operation &OperationNamed(const std::string &name) {
    static const std::vector<Operation> All = Operations();
    return *std::find_if(All.begin(), All.end(), [&](const Operation &operation) { return operation.Name == name; });
}

Site::Site() {
    Write("quintave.tbl", "\"\",\"SITE.FTF\",\"-1\"\r\n");
    Write("SITE.FTF", SiteTemplate);
    Write("OTHER.FTF", OtherTemplate);
    Write("other.rpx", OtherReport);
}

bool Site::Has(const std::string &name) const { return access((Path() + name).c_str(), F_OK) == 0; }

std::string Site::Read(const std::string &name) const { return Has(name) ? ReadFile(Path() + name) : ""; }

std::string Site::CopyWith(const std::string &bytes) const {
    for (std::string name = "a.rpx~"; Has(name); name += "~")
        if (Read(name) == bytes) return name;
    return "";
}

bool StartProgram() {
    ClearRows(Quintave.Combo1); // a second start fills them a second time
    ClearRows(Quintave.Combo2);
    Dialogs = {};
    Dialogs.Answers = {NoAnswer};
    if (!LoadMainWindow({})) return false;
    UserTicks(Quintave.Timer1);
    ActivateMainWindow();
    Press(Quintave.LogoOff);
    const bool good = std::all_of(Dialogs.Messages.begin(), Dialogs.Messages.end(), [](const ShownMessage &message) {
        return message.Text.starts_with("The entries of your last session were not SAVED");
    });
    Dialogs = {};
    return good && NumFields > 0;
}

void ConnectSession() {
    ConnectMainWindow();
    SetContainers(MainLayout());
}

void StartSession(const std::string &path, bool large) {
    if (chdir(path.c_str()) != 0) throw std::runtime_error("chdir");
    ConnectSession();
    if (!StartProgram()) throw std::runtime_error("start");
    EnterValue(Quintave.List1[0], 0, "Wells");
    DoubleClickRow(Quintave.List1[0], KindRow);
    Type("M");
    EnterGroup();
    EnterValue(Quintave.List1[3], 0, "12");
    Press(Quintave.FldChange[Next]);
    EnterValue(Quintave.List1[3], 0, "34");
    Press(Quintave.GrpExit);
    if (large) AddMuch();
    SaveUnder("a.rpx");
    EnterValue(Quintave.List1[0], KindRow + 1, "Utrecht");
    UserTicks(Quintave.RecoveryTimer);
    if (!Dialogs.Messages.empty()) throw std::runtime_error(Dialogs.Messages[0].Text);
}

void Perform(const Operation &operation, const FileFault &fault, std::vector<MadeCall> &calls) {
    calls = WatchCalls(operation.Act, fault);
}

Outcome Try(const Operation &operation, bool withAct, const FileFault &fault) {
    const Site site;
    const std::string answer = InProcess([&] { return Answered(site, operation, withAct, fault); });
    std::vector<std::string> parts = Divided(answer);
    constexpr std::size_t Fixed = 6;
    if (parts.size() < Fixed) parts = {answer, "", "", "", "", "0"}; // it did not come to its end
    const auto messages = parts.begin() + Fixed;
    const auto calls = messages + std::stol(parts[5]);
    return {parts[0], parts[1], parts[2], parts[3], parts[4], {messages, calls}, {calls, parts.end()}};
}

std::string InProcess(const std::function<std::string()> &act) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("pipe");
    const pid_t child = fork();
    if (child == 0) {
        constexpr unsigned Longest = 60; // seconds
        alarm(Longest);
        std::string text;
        try {
            text = act();
        } catch (const std::exception &error) {
            text = error.what();
        } catch (const RuntimeError &error) {
            text = "untrapped error " + std::to_string(error.Number);
        }
        for (std::size_t at = 0; at < text.size();) {
            const ssize_t written = write(ends[1], text.data() + at, text.size() - at);
            if (written <= 0) break;
            at += static_cast<std::size_t>(written);
        }
        _exit(0);
    }
    close(ends[1]);
    std::string text;
    std::array<char, 1 << 16> bytes{};
    for (ssize_t count = 0; (count = read(ends[0], bytes.data(), bytes.size())) > 0;)
        text.append(bytes.data(), static_cast<std::size_t>(count));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? "killed by " + std::to_string(WTERMSIG(status)) : text;
}

bool LongRun() { return std::getenv("QUINTAVE_LONG") != nullptr; }
