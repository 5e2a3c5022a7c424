// The program is killed: before each of its file calls, in the middle of each write, and at moments that only chance
// knows. Afterwards the earlier or the new report is whole, and the program starts in that directory.
#include "reliability/trial.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono;

// What a session leaves in a.rpx: before the operation, and behind it where it comes to its end.
struct Versions {
    std::string Earlier;
    std::string Later;
};

// Starts the program where another one was killed. "" where all is well.
std::string StartsAgain(const std::string &path) {
    return InProcess([&]() -> std::string {
        if (chdir(path.c_str()) != 0) return "no directory";
        ConnectSession();
        return StartProgram() ? "well" : "a message, or no template";
    });
}

void ExpectGoodRemains(const Site &site, const Versions &versions) {
    const std::string report = site.Read("a.rpx");
    EXPECT_TRUE(report == versions.Earlier || report == versions.Later || !site.CopyWith(versions.Earlier).empty() ||
                !site.CopyWith(versions.Later).empty()) // the report was being saved a second time
        << "a.rpx has " << report.size() << " bytes";
    EXPECT_EQ(StartsAgain(site.Path()), "well");
}

Versions VersionsOf(const Operation &operation, bool large) {
    const Site site;
    const std::string earlier = InProcess([&] {
        StartSession(site.Path(), large);
        const std::string report = site.Read("a.rpx");
        operation.Prepare();
        std::vector<MadeCall> calls;
        Perform(operation, {}, calls);
        return report;
    });
    return {earlier, site.Read("a.rpx")};
}

class KilledAtCalls : public testing::TestWithParam<Operation> {};

// How long the operation takes.
microseconds DurationOf(const Operation &operation) {
    const Site site;
    return microseconds(std::stol(InProcess([&] {
        StartSession(site.Path(), true);
        operation.Prepare();
        const auto begin = steady_clock::now();
        operation.Act();
        return std::to_string(duration_cast<microseconds>(steady_clock::now() - begin).count());
    })));
}

// Kills a program that does the operation over and over again, some time after it has begun.
void KillAfter(const Site &site, const Operation &operation, microseconds delay) {
    std::array<int, 2> ready{};
    if (pipe(ready.data()) != 0) throw std::runtime_error("pipe");
    const pid_t child = fork();
    if (child == 0) {
        try {
            StartSession(site.Path(), true);
            operation.Prepare();
            if (write(ready[1], "r", 1) == 1)
                while (true) operation.Act();
        } catch (...) { // the status tells that it was not killed
        }
        _exit(1);
    }
    close(ready[1]);
    char byte = 0;
    EXPECT_EQ(read(ready[0], &byte, 1), 1);
    close(ready[0]);
    std::this_thread::sleep_for(delay);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
}

class KilledAtRandom : public testing::TestWithParam<const char *> {};

std::string NameOf(std::string text) {
    std::replace(text.begin(), text.end(), ' ', '_');
    return text;
}

} // namespace

TEST_P(KilledAtCalls, LeavesAWholeReportAndADirectoryToStartIn) {
    const Versions versions = VersionsOf(GetParam(), false);
    const Outcome undisturbed = Try(GetParam(), true);
    int kills = 0;
    for (std::size_t kind = 0; kind < FileCallKinds; ++kind) {
        const auto call = static_cast<FileCall>(kind);
        const auto calls = std::count(undisturbed.Calls.begin(), undisturbed.Calls.end(), ::NameOf(call));
        for (int number = 1; number <= calls; ++number) {
            SCOPED_TRACE(testing::Message() << ::NameOf(call) << " " << number << " of " << calls);
            const Site site;
            const std::string end = InProcess([&]() -> std::string {
                StartSession(site.Path());
                GetParam().Prepare();
                std::vector<MadeCall> made;
                Perform(GetParam(), {call, number, FileFault::Kill}, made);
                return "came to its end";
            });
            ASSERT_EQ(end, "killed by 9");
            ExpectGoodRemains(site, versions);
            ++kills;
        }
    }
    std::printf("%s: killed at %d file calls\n", GetParam().Name, kills);
}

INSTANTIATE_TEST_SUITE_P(Operation, KilledAtCalls, testing::ValuesIn(Operations()),
                         [](const auto &parameter) { return NameOf(parameter.param.Name); });

TEST_P(KilledAtRandom, LeavesAWholeReportAndADirectoryToStartIn) {
    constexpr int ShortKills = 10;
    constexpr int LongKills = 200;
    const Operation &operation = OperationNamed(GetParam());
    const Versions versions = VersionsOf(operation, true);
    const microseconds duration = DurationOf(operation);
    std::mt19937 random(20190303); // the same moments, as far as the system gives the same speed
    std::uniform_int_distribution<long> moment(1, std::max<long>(duration.count() * 3, 2));
    int torn = 0;
    const int kills = LongRun() ? LongKills : ShortKills;
    for (int n = 0; n < kills; ++n) {
        const microseconds delay(moment(random));
        SCOPED_TRACE(testing::Message() << "kill " << n << " after " << delay.count() << " microseconds");
        const Site site;
        KillAfter(site, operation, delay);
        const std::string report = site.Read("a.rpx");
        if (report != versions.Earlier && report != versions.Later) ++torn;
        ExpectGoodRemains(site, versions);
    }
    std::printf(
        "%s: %d kills, one operation takes %ld microseconds, %d reports cut short beside their earlier version\n",
        GetParam(), kills, static_cast<long>(duration.count()), torn);
}

INSTANTIATE_TEST_SUITE_P(Operation, KilledAtRandom,
                         testing::Values("save", "insert an occurrence", "delete an occurrence", "new occurrence",
                                         "add", "load a template"),
                         [](const auto &parameter) { return NameOf(parameter.param); });
