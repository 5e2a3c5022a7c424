// Each file call of each operation fails in turn: the message is the stated one, what is on the screen stays, the next
// command works, no file stays open, and the report's earlier version is there.
#include "reliability/trial.h"

#include "form/main_window.h"
#include "main/user_resources.h"
#include "platform/console/answers.h"
#include "platform/runtime.h"
#include "support/user.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <set>

namespace {

struct Error {
    int Number;
    Integer Told; // 0: it must not be noticed at all
};

constexpr Error Interrupted{EINTR, 0};
constexpr Error Partial{FileFault::Short, 0};
constexpr Error NoSpace{ENOSPC, DiskFull};
constexpr Error NoAccess{EACCES, PermissionDenied};
constexpr Error ReadOnly{EROFS, PathAccessError};
constexpr Error Broken{EIO, DeviceError};
constexpr Error NoHandle{EMFILE, TooManyFiles};

std::vector<Error> ErrorsOf(FileCall kind) {
    switch (kind) {
    case FileCall::Open: return {NoSpace, NoAccess, ReadOnly, Broken, NoHandle, Interrupted};
    case FileCall::Read: return {Broken, Interrupted, Partial};
    case FileCall::Write: return {NoSpace, Broken, Interrupted, Partial};
    case FileCall::Sync:
    case FileCall::Close: return {NoSpace, Broken, Interrupted};
    case FileCall::Rename: return {NoSpace, NoAccess, ReadOnly, Broken, Interrupted};
    case FileCall::Unlink: return {NoAccess, ReadOnly, Broken, Interrupted};
    case FileCall::MakeDirectory: return {NoSpace, NoAccess, ReadOnly, Broken};
    case FileCall::ChangeMode: return {NoAccess, Broken, Interrupted};
    default: return {NoAccess, NoHandle, Broken};
    }
}

bool Contains(const std::string &text, std::string_view part) { return text.find(part) != std::string::npos; }

// One of the messages that the commands have for a failing file, with this error.
bool IsStated(const std::string &message, Integer number) {
    struct Stated {
        std::string_view Title;
        std::string_view Advice;
    };
    constexpr Stated All[] = {{"Quintave: Error: ", "Error using a work file in the resource directory!"},
                              {"Quintave: Error: ", "Error writing to this file!"},
                              {"ERROR LOADING OTHER.FTF: Error: ", "Error reading this Fields Template File!"},
                              {"ERROR LOADING SITE.FTF: Error: ", "Error reading this Fields Template File!"},
                              {"ERROR LOADING other.rpx: Error: ", "Quintave Data Fields may have been corrupted!"},
                              {"PRINTING...: Error: ", "Error printing this report!"}};
    return Contains(message, ErrorText(number)) && std::any_of(std::begin(All), std::end(All), [&](const Stated &s) {
               return message.starts_with(s.Title) && Contains(message, s.Advice);
           });
}

std::vector<std::string> LinesOf(const std::string &text) {
    std::vector<std::string> lines;
    for (std::size_t first = 0; first < text.size();) {
        const auto end = std::min(text.find('\n', first), text.size());
        lines.push_back(text.substr(first, end - first));
        first = end + 1;
    }
    return lines;
}

// Every line of a text is one of either of the others.
bool IsMadeOf(const std::string &text, const std::string &before, const std::string &after) {
    std::set<std::string> known;
    for (const auto &line : LinesOf(before)) known.insert(line);
    for (const auto &line : LinesOf(after)) known.insert(line);
    const auto lines = LinesOf(text);
    return !lines.empty() &&
           std::all_of(lines.begin(), lines.end(), [&](const auto &line) { return known.contains(line); });
}

class FailingCalls : public testing::TestWithParam<Operation> {
protected:
    void SetUp() override {
        before = Try(GetParam(), false);
        after = Try(GetParam(), true);
        ASSERT_EQ(before.Problem, "");
        ASSERT_EQ(after.Problem, "");
        ASSERT_FALSE(after.Calls.empty());
    }

    void ExpectUnnoticed(const Outcome &outcome) const {
        EXPECT_EQ(outcome.Messages, after.Messages);
        EXPECT_EQ(outcome.Screen, after.Screen);
        EXPECT_EQ(outcome.Entries, after.Entries);
        EXPECT_EQ(outcome.Report, after.Report);
    }

    void ExpectStated(const Outcome &outcome, Integer number) const {
        std::size_t told = 0;
        for (const auto &message : outcome.Messages) {
            if (std::find(after.Messages.begin(), after.Messages.end(), message) != after.Messages.end()) continue;
            ++told;
            EXPECT_TRUE(IsStated(message, number)) << message;
        }
        EXPECT_LE(told, 2U);
        if (told == 0) {
            EXPECT_EQ(outcome.Entries, after.Entries) << "and no message";
        }
    }

    void ExpectNothingLost(const Outcome &outcome) const {
        if (GetParam().Gradual) {
            EXPECT_TRUE(IsMadeOf(outcome.Entries, before.Entries, after.Entries)) << outcome.Entries;
        } else {
            EXPECT_TRUE(outcome.Entries == before.Entries || outcome.Entries == after.Entries) << outcome.Entries;
            EXPECT_TRUE(GetParam().OpensGroup || outcome.Screen == before.Screen || outcome.Screen == after.Screen)
                << outcome.Screen;
        }
        EXPECT_TRUE(outcome.Report == before.Report || outcome.Report == after.Report || outcome.Copy == before.Report)
            << outcome.Report;
    }

    void ExpectGoodEnd(const FileFault &fault, const Error &error) {
        const Outcome outcome = Try(GetParam(), true, fault);
        ++tried;
        EXPECT_EQ(outcome.Problem, "");
        if (!outcome.Problem.empty()) return;
        if (error.Told == 0) return ExpectUnnoticed(outcome);
        ExpectStated(outcome, error.Told);
        ExpectNothingLost(outcome);
    }

    int CallsOf(FileCall kind) const {
        return static_cast<int>(std::count(after.Calls.begin(), after.Calls.end(), NameOf(kind)));
    }

    void FailEach(FileCall kind, bool lasting) {
        const int calls = CallsOf(kind);
        for (int number = 1; number <= calls; ++number)
            for (const Error &error : ErrorsOf(kind)) {
                if (lasting && error.Told == 0) continue; // an interruption does not last
                SCOPED_TRACE(testing::Message() << NameOf(kind) << " " << number << " of " << calls << ": "
                                                << (error.Number > 0 ? std::strerror(error.Number) : "short")
                                                << (lasting ? ", lasts" : ""));
                ExpectGoodEnd({kind, number, error.Number, lasting}, error);
            }
    }

    Outcome before;
    Outcome after;
    int tried = 0;
};

std::string NameOfOperation(const testing::TestParamInfo<Operation> &info) {
    std::string name = info.param.Name;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

} // namespace

TEST_P(FailingCalls, OnceOrFromThenOnLoseNothing) {
    for (std::size_t kind = 0; kind < FileCallKinds; ++kind)
        for (const bool lasting : {false, true}) FailEach(static_cast<FileCall>(kind), lasting);
    RecordProperty("tried", tried);
    std::printf("%s: %zu file calls, %d faults\n", GetParam().Name, after.Calls.size(), tried);
}

INSTANTIATE_TEST_SUITE_P(Operation, FailingCalls, testing::ValuesIn(Operations()), NameOfOperation);

// Where only the opening fails nothing has happened to the report, and nothing is to lie beside it.
TEST(Save, ThatCannotOpenItsReportLeavesNothingBesideIt) {
    const Site site;
    const std::string before = InProcess([&]() -> std::string {
        StartSession(site.Path());
        const std::string saved = site.Read("a.rpx");
        const auto save = [] { Press(Quintave.CommandSave); };
        int opens = 0;
        int opening = 0; // the call that opens the report for writing
        for (const MadeCall &call : WatchCalls(save)) {
            if (call.Kind != FileCall::Open) continue;
            ++opens;
            if (call.Path.ends_with("a.rpx") && (call.Flags & O_ACCMODE) == O_WRONLY) opening = opens;
        }
        const std::string again = site.Read("a.rpx");
        WatchCalls(save, {FileCall::Open, opening, EACCES});
        if (opening == 0 || saved == again || Dialogs.Messages.size() != 1) return "nothing was tried";
        if (!Contains(Dialogs.Messages[0].Text, ErrorText(PermissionDenied))) return Dialogs.Messages[0].Text;
        if (site.Has("a.rpx~")) return "a copy is left";
        return site.Read("a.rpx") == again ? "" : "the report has changed";
    });
    EXPECT_EQ(before, "");
}

// Whoever is told nothing takes the print for done, and may switch off.
TEST(TextPrint, IsPutOnTheDisk) {
    const Site site;
    const std::string missed = InProcess([&]() -> std::string {
        StartSession(site.Path());
        bool opened = false;
        bool synced = false;
        for (const MadeCall &call : WatchCalls(OperationNamed("print the screen to a file").Act)) {
            opened = opened || (call.Kind == FileCall::Open && call.Path.ends_with("print.txt"));
            synced = synced || (opened && call.Kind == FileCall::Sync);
        }
        if (!opened || Dialogs.Messages.size() != 1) return "not only asked what to print";
        return synced ? "" : "it was not";
    });
    EXPECT_EQ(missed, "");
}

// The user's own resource directory, filled at the first start: the fault is told, and the next start brings the rest.
TEST(FirstStart, FillsTheUsersDirectoryInTheEndWhateverFailsAtFirst) {
    const auto fill = [](const Site &site, const FileFault &fault) {
        return InProcess([&] {
            setenv("XDG_DATA_HOME", (site.Path() + "data/home").c_str(), 1);
            Dialogs = {};
            const auto calls = WatchCalls([&] { UserResources(site.Path()); }, fault);
            std::string text = Dialogs.Messages.empty() ? "" : Dialogs.Messages[0].Text;
            if (Dialogs.Messages.size() > 1) text = "more than one message";
            if (fault.Kind == FileCall::Count)
                for (const auto &call : calls) text += NameOf(call.Kind) + std::string(" ");
            return text;
        });
    };
    const std::string calls = [&] {
        const Site site;
        return fill(site, {});
    }();
    int tried = 0;
    for (std::size_t kind = 0; kind < FileCallKinds; ++kind) {
        const auto call = static_cast<FileCall>(kind);
        const std::string name = NameOf(call) + std::string(" ");
        int count = 0;
        for (auto at = calls.find(name); at != std::string::npos; at = calls.find(name, at + 1)) ++count;
        for (int number = 1; number <= count; ++number)
            for (const Error &error : ErrorsOf(call)) {
                SCOPED_TRACE(testing::Message() << name << number << " of " << count << ": " << error.Number);
                const Site site;
                const std::string told = fill(site, {call, number, error.Number, false});
                if (!told.empty()) {
                    EXPECT_TRUE(error.Told != 0 && told.starts_with("Error: " + ErrorText(error.Told) +
                                                                    "\r\nError filling your own resource directory"))
                        << told;
                }
                fill(site, {});
                for (const std::string file : {"quintave.tbl", "SITE.FTF", "OTHER.FTF", "other.rpx"})
                    EXPECT_EQ(site.Read("data/home/quintave/" + file), site.Read(file)) << file;
                ++tried;
            }
    }
    std::printf("first start: %d faults\n", tried);
    EXPECT_GT(tried, 100);
}
