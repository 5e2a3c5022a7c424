// The world around the program: another one in its directory, a directory that takes no more files, a share that goes
// away, a clock that jumps.
#include "reliability/trial.h"

#include "form/main_window.h"
#include "main/start_up.h"
#include "platform/console/answers.h"
#include "support/user.h"

#include <gtest/gtest.h>

#include <csignal>
#include <ctime>
#include <filesystem>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr uid_t Nobody = 65534;

// Seconds that the clock is wrong by; it grows and shrinks with every look at it while it jumps.
long Jump = 0;
bool Jumping = false;

long NextJump() {
    constexpr long Century = 3155760000;
    if (Jumping) Jump = Jump > 0 ? -Century : Century;
    return Jumping ? Jump : 0;
}

std::string FirstMessage() { return Dialogs.Messages.empty() ? "" : Dialogs.Messages[0].Text; }

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec *moment) noexcept {
    const auto status = static_cast<int>(syscall(SYS_clock_gettime, clock, moment));
    if (clock == CLOCK_REALTIME) moment->tv_sec += NextJump();
    return status;
}

time_t time(time_t *moment) noexcept {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    if (moment != nullptr) *moment = now.tv_sec;
    return now.tv_sec;
}

} // extern "C"

TEST(Neighbours, ASecondProgramTouchesNothingUntilTheFirstHasEnded) {
    const Site site;
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t first = fork();
    if (first == 0) {
        StartSession(site.Path());
        if (write(ready[1], "r", 1) != 1) _exit(1);
        while (true) pause();
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    const auto second = [&]() -> std::string {
        if (chdir(site.Path().c_str()) != 0) return "chdir";
        ConnectSession();
        Dialogs.Answers = {NoAnswer};
        bool started = true;
        const auto calls = WatchCalls([&] { started = LoadMainWindow({}); });
        const bool reads = std::all_of(calls.begin(), calls.end(), [](const MadeCall &call) {
            return call.Kind != FileCall::Write && call.Kind != FileCall::Unlink && call.Kind != FileCall::Rename;
        });
        return (started ? "started" : "refused: " + FirstMessage().substr(0, 36)) + (reads ? "" : ", and wrote");
    };
    EXPECT_EQ(InProcess(second), "refused: WARNING! Another Quintave is working");
    EXPECT_TRUE(site.Has("GRP00005.XXX"));
    kill(first, SIGKILL);
    int status = 0;
    waitpid(first, &status, 0);
    EXPECT_EQ(InProcess(second), "started");
}

// As somebody whom modes stop, unlike root.
TEST(Neighbours, ADirectoryThatBecomesReadOnlyLosesNothing) {
    const Site site;
    if (geteuid() == 0) {
        fs::permissions(site.Path(), fs::perms(0777));
        for (const auto &entry : fs::directory_iterator(site.Path())) fs::permissions(entry, fs::perms(0666));
    }
    EXPECT_EQ(InProcess([&]() -> std::string {
                  if (geteuid() == 0 && (chown(site.Path().c_str(), Nobody, Nobody) != 0 || setuid(Nobody) != 0))
                      return "setuid";
                  StartSession(site.Path());
                  OperationNamed("leave a group").Prepare();
                  fs::permissions(site.Path(), fs::perms(0555));
                  Dialogs = {};
                  Press(Quintave.TblFldInsert);
                  if (FirstMessage().find("Error: 70 - Permission denied\r\nError using a work file") != 0)
                      return "insert: " + FirstMessage();
                  if (Quintave.TblFldNum.Rows.size() != 2) return "the occurrences changed";
                  Dialogs = {};
                  Press(Quintave.GrpExit); // the store itself may still be written
                  if (!FirstMessage().empty()) return "exit: " + FirstMessage();
                  Dialogs.Texts = {site.Path() + "new.rpx", ""};
                  Press(Quintave.CommandSaveAs);
                  if (FirstMessage().find("Error: 70 - Permission denied\r\nError writing to this file!") != 0)
                      return "save: " + FirstMessage();
                  fs::permissions(site.Path(), fs::perms(0755));
                  Dialogs = {};
                  Dialogs.Texts = {site.Path() + "new.rpx"};
                  Press(Quintave.CommandSaveAs);
                  if (!FirstMessage().empty()) return "later: " + FirstMessage();
                  return site.Read("new.rpx").find("Utrecht") == std::string::npos ? "not saved" : "";
              }),
              "");
}

TEST(Neighbours, AShareThatGoesAwayAndComesBackLosesNothing) {
    const Site site;
    const std::string end = InProcess([&]() -> std::string {
        if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return "no";
        const std::string share = site.Path() + "share";
        const std::string server = site.Path() + "server";
        fs::create_directory(share);
        fs::create_directory(server);
        for (const std::string name : {"quintave.tbl", "SITE.FTF", "OTHER.FTF", "other.rpx"})
            fs::copy(site.Path() + name, server);
        if (mount(server.c_str(), share.c_str(), nullptr, MS_BIND, nullptr) != 0) return "mount";
        StartSession(share + "/");
        if (umount2(share.c_str(), MNT_DETACH) != 0) return "umount";
        fs::remove(share);
        const std::string rows = Quintave.List1[0].Rows[3];
        Dialogs = {};
        Press(Quintave.CommandSave);
        if (FirstMessage().find("Error: 76 - Path not found\r\nError writing to this file!") != 0)
            return "save: " + FirstMessage();
        Dialogs = {};
        DoubleClickRow(Quintave.List1[0], 4);
        if (FirstMessage().find("Error: 76 - Path not found\r\nError using a work file") != 0)
            return "group: " + FirstMessage();
        if (Quintave.GrpExit.Visible || Quintave.List1[0].Rows[3] != rows) return "the screen changed";
        fs::create_directory(share);
        if (mount(server.c_str(), share.c_str(), nullptr, MS_BIND, nullptr) != 0) return "mount";
        Dialogs = {};
        Press(Quintave.CommandSave);
        return FirstMessage();
    });
    if (end == "no") GTEST_SKIP() << "this process may not mount";
    EXPECT_EQ(end, "");
    EXPECT_NE(site.Read("server/a.rpx").find("Utrecht"), std::string::npos);
    EXPECT_NE(site.Read("server/a.rpx").find("\"34\""), std::string::npos);
}

TEST(Neighbours, AClockThatJumpsAHundredYearsAtEachLookChangesNothing) {
    for (const Operation &operation : Operations()) {
        SCOPED_TRACE(operation.Name);
        Jumping = false;
        const Outcome steady = Try(operation, true);
        Jumping = true;
        const Outcome jumping = Try(operation, true);
        Jumping = false;
        EXPECT_EQ(jumping.Problem, "");
        EXPECT_EQ(jumping.Screen, steady.Screen);
        EXPECT_EQ(jumping.Entries, steady.Entries);
        EXPECT_EQ(jumping.Messages, steady.Messages);
        EXPECT_EQ(jumping.Calls, steady.Calls);
    }
}
