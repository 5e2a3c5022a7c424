// Reports handed from one program to another, which works on a directory.
#include "platform/hand_over.h"

#include "support/folder.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class HandOverTest : public testing::Test {
protected:
    HandOverTest() { unsetenv("XDG_ACTIVATION_TOKEN"); }
    ~HandOverTest() override { StopListening(); }

    // What the program at work on a directory takes while another one does this.
    static std::optional<Request> TakenWhile(const std::string &directory, const std::function<void()> &act) {
        const int listener = ListenForRequests(directory);
        EXPECT_GE(listener, 0);
        std::thread other(act);
        std::optional<Request> request;
        pollfd arrival{listener, POLLIN, 0};
        if (poll(&arrival, 1, LongestWait) == 1) request = TakeRequest(listener);
        other.join();
        return request;
    }

    // The report that arrives where another program hands this one over.
    static std::string Arrives(const std::string &directory, const std::string &report) {
        bool taken = false;
        const auto request = TakenWhile(directory, [&] { taken = HandOver(directory, report); });
        EXPECT_TRUE(taken);
        return request ? request->Report : "none";
    }

    Folder folder;

private:
    static constexpr int LongestWait = 5000; // milliseconds
};

// A connection to a listening program, which sends whatever it likes.
class RawPeer {
public:
    explicit RawPeer(int listener) : handle(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0)) {
        sockaddr_un name{};
        socklen_t length = sizeof name;
        getsockname(listener, reinterpret_cast<sockaddr *>(&name), &length);
        EXPECT_EQ(connect(handle, reinterpret_cast<sockaddr *>(&name), length), 0);
    }
    ~RawPeer() { close(handle); }
    RawPeer(const RawPeer &) = delete;
    RawPeer &operator=(const RawPeer &) = delete;

    void Send(const std::string &bytes) const {
        EXPECT_EQ(send(handle, bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
    }

private:
    int handle;
};

} // namespace

TEST_F(HandOverTest, TheReportsPathArrivesAsItIs) {
    for (const std::string &report :
         {std::string("/a b/M\xC3\xBChle \xFF\n.rpx"), std::string(), "/" + std::string(4090, 'x') + ".rpx"})
        EXPECT_EQ(Arrives(folder.Path(), report), report);
}

TEST_F(HandOverTest, TheDesktopsLeaveGoesWithIt) {
    setenv("XDG_ACTIVATION_TOKEN", "token-1", 1);
    const auto request = TakenWhile(folder.Path(), [&] { HandOver(folder.Path(), "/a.rpx"); });
    ASSERT_TRUE(request);
    EXPECT_EQ(request->Activation, "token-1");
    EXPECT_EQ(request->Report, "/a.rpx");
}

TEST_F(HandOverTest, TheDirectoryIsTheSameByWhateverPath) {
    fs::create_directory_symlink(folder.Path(), folder.Path() + "link");
    bool taken = false;
    TakenWhile(folder.Path(), [&] { taken = HandOver(folder.Path() + "./link", "/a.rpx"); });
    EXPECT_TRUE(taken);
}

TEST_F(HandOverTest, ADirectoryOfALongPathHasItsProgramToo) {
    std::string path = folder.Path();
    for (int i = 0; i < 4; ++i) path += std::string(100, 'd') + "/"; // longer than a socket's file could be named
    fs::create_directories(path);
    EXPECT_EQ(Arrives(path, "/a.rpx"), "/a.rpx");
    EXPECT_FALSE(HandOver(folder.Path(), "/a.rpx")); // that one works on another directory
}

TEST_F(HandOverTest, NobodyTakesItWhereNobodyListens) {
    EXPECT_FALSE(HandOver(folder.Path(), "/a.rpx"));
    EXPECT_FALSE(HandOver(folder.Path() + "none/", "/a.rpx"));
    EXPECT_EQ(ListenForRequests(folder.Path() + "none/"), -1);
    ASSERT_GE(ListenForRequests(folder.Path()), 0);
    StopListening();
    EXPECT_FALSE(HandOver(folder.Path(), "/a.rpx"));
}

TEST_F(HandOverTest, AProgramThatEndsBeforeItTakesItIsNotWaitedFor) {
    ASSERT_GE(ListenForRequests(folder.Path()), 0);
    std::thread end([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        StopListening();
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(HandOver(folder.Path(), "/a.rpx"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    end.join();
}

TEST_F(HandOverTest, NothingLeavesATraceInTheDirectory) {
    EXPECT_EQ(Arrives(folder.Path(), "/a.rpx"), "/a.rpx");
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST_F(HandOverTest, WhatIsNoRequestIsDropped) {
    const int listener = ListenForRequests(folder.Path());
    for (const std::string &bytes : {std::string("/a.rpx"), std::string(1, '\0'), std::string(100000, '\0')}) {
        const RawPeer peer(listener);
        peer.Send(bytes);
        EXPECT_FALSE(TakeRequest(listener)) << bytes.size();
    }
    EXPECT_FALSE(TakeRequest(listener)); // there is none
    const RawPeer last(listener);
    last.Send(std::string("/a.rpx\0\0", 8));
    const auto request = TakeRequest(listener);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->Report, "/a.rpx");
}

TEST_F(HandOverTest, APeerThatSaysNothingHoldsNobodyUp) {
    const int listener = ListenForRequests(folder.Path());
    const RawPeer silent(listener);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(TakeRequest(listener));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST_F(HandOverTest, WhoHasGoneBeforeTheAnswerIsNotServed) {
    const int listener = ListenForRequests(folder.Path());
    RawPeer(listener).Send(std::string("/a.rpx\0\0", 8));
    EXPECT_FALSE(TakeRequest(listener));
}

TEST_F(HandOverTest, AnotherUserIsNotHeard) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can become another user";
    constexpr uid_t Another = 65534;
    fs::permissions(folder.Path(), fs::perms::all);
    bool taken = true;
    const auto request = TakenWhile(folder.Path(), [&] {
        const pid_t child = fork();
        if (child == 0) _exit(setuid(Another) == 0 && !HandOver(folder.Path(), "/a.rpx") ? 0 : 1);
        int status = 1;
        waitpid(child, &status, 0);
        taken = status != 0;
    });
    EXPECT_FALSE(request);
    EXPECT_FALSE(taken);
}

TEST_F(HandOverTest, NothingIsToldToAnotherUsersProgram) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can become another user";
    constexpr uid_t Another = 65534;
    fs::permissions(folder.Path(), fs::perms::all);
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t child = fork();
    if (child == 0) { // listens, and ends with 1 if it is told anything
        const int listener = setuid(Another) == 0 ? ListenForRequests(folder.Path()) : -1;
        if (write(ready[1], "r", 1) != 1) _exit(1);
        pollfd arrival{listener, POLLIN, 0};
        poll(&arrival, 1, 5000);
        const int peer = accept(listener, nullptr, nullptr);
        char byte = 0;
        _exit(peer >= 0 && recv(peer, &byte, 1, 0) == 0 ? 0 : 1);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_FALSE(HandOver(folder.Path(), "/a.rpx"));
    int status = 1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}
