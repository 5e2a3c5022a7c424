// The file system: paths, look-up of names, patterns, whole files, positioned reads and writes, the directory lock.
#include "platform/files.h"

#include "support/folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

template <class Act> Integer ErrorIn(Act act) {
    try {
        act();
    } catch (const RuntimeError &error) {
        return error.Number;
    }
    return 0;
}

class Files : public testing::Test {
protected:
    std::string At(const std::string &name) const { return folder.Path() + name; }

    Folder folder;
};

void WriteWhole(const std::string &path, const std::string &bytes, OutputFile::Access access) {
    OutputFile file(path, access);
    file.Write(bytes);
    file.Close(true);
}

// Files may not grow past this many bytes until the test ends.
void LimitFileSize(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, RLIM_INFINITY};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

} // namespace

TEST(Paths, AreDividedAtTheLastSeparatorOfEitherKind) {
    struct {
        const char *Path, *Directory, *Name;
    } constexpr Expected[] = {{"/data/x.rpx", "/data/", "x.rpx"},
                              {"d:\\a\\x.rpx", "d:\\a\\", "x.rpx"},
                              {"/a\\b/c", "/a\\b/", "c"},
                              {"/a/b\\c", "/a/b\\", "c"},
                              {"x.rpx", "", "x.rpx"},
                              {"/data/", "/data/", ""},
                              {"", "", ""}};
    for (const auto &[path, directory, name] : Expected) {
        std::string gotDirectory = "old";
        std::string gotName = "old";
        SplitPath(path, gotDirectory, gotName);
        EXPECT_EQ(gotDirectory, directory) << path;
        EXPECT_EQ(gotName, name) << path;
    }
}

TEST(Paths, AResultMayBeThePathItself) {
    std::string path = "a/b";
    std::string directory;
    SplitPath(path, directory, path);
    EXPECT_EQ(directory, "a/");
    EXPECT_EQ(path, "b");
}

TEST(Paths, ADirectoryEndsInOneSeparator) {
    EXPECT_EQ(WithSeparator("/data"), "/data/");
    EXPECT_EQ(WithSeparator("/data/"), "/data/");
    EXPECT_EQ(WithSeparator("/data\\"), "/data/");
    EXPECT_EQ(WithSeparator(""), "/");
    EXPECT_EQ(WithSeparator("\\"), "/");
    EXPECT_EQ(WithSeparator("/"), "/");
}

TEST_F(Files, TheCurrentDirectoryEndsInASeparator) {
    const fs::path former = fs::current_path();
    fs::current_path(folder.Path());
    EXPECT_EQ(CurrentDirectory(), fs::current_path().string() + "/");
    fs::current_path(former);
}

TEST_F(Files, OnlyARegularFileExists) {
    folder.Write("a", "");
    fs::create_directory(At("d"));
    fs::create_symlink(At("a"), At("link"));
    fs::create_symlink(At("nowhere"), At("broken"));
    EXPECT_TRUE(FileExists(At("a")));
    EXPECT_TRUE(FileExists(At("link")));
    EXPECT_FALSE(FileExists(At("d")));
    EXPECT_FALSE(FileExists(At("broken")));
    EXPECT_FALSE(FileExists(At("nothing")));
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists(At("a") + std::string("\0b", 2)));
    EXPECT_TRUE(DirectoryExists(At("d")));
    EXPECT_FALSE(DirectoryExists(At("a")));
    EXPECT_FALSE(DirectoryExists(At("nothing")));
}

TEST_F(Files, ANameMeansTheExactFileFirst) {
    folder.Write("SITE.FTF", "");
    folder.Write("site.ftf", "");
    EXPECT_EQ(FindName(folder.Path(), "site.ftf"), "site.ftf");
    EXPECT_EQ(FindName(folder.Path(), "SITE.FTF"), "SITE.FTF");
}

TEST_F(Files, ElseTheFirstInSortedOrderThatDiffersInCaseOnly) {
    folder.Write("site.FTF", "");
    folder.Write("Site.ftf", "");
    folder.Write("sitf.ftf", "");
    EXPECT_EQ(FindName(folder.Path(), "SITE.FTF"), "Site.ftf");
}

TEST_F(Files, ADirectoryOfThatNameIsPassedOver) {
    fs::create_directory(At("SITE.FTF"));
    folder.Write("site.ftf", "");
    EXPECT_EQ(FindName(folder.Path(), "SITE.FTF"), "site.ftf");
}

TEST_F(Files, TheLettersOfTheCodePageFoldTooInBothWritings) {
    folder.Write("m\xC3\xA4rz.ftf", ""); // a with dots in UTF-8
    EXPECT_EQ(FindName(folder.Path(), "M\xC4RZ.FTF"), "m\xC3\xA4rz.ftf");
    folder.Write("\xE9t\xE9.ftf", ""); // e with accents as bytes of the code page
    EXPECT_EQ(FindName(folder.Path(), "\xC9T\xC9.FTF"), "\xE9t\xE9.ftf");
}

TEST_F(Files, ANameWithoutAFileMeansNone) {
    fs::create_directory(At("sub"));
    folder.Write("sub/a", "");
    folder.Write("a", "");
    for (const std::string name : {"", "b", "sub", "sub/a", "sub\\a", "*", "?", ".", ".."})
        EXPECT_EQ(FindName(folder.Path(), name), "") << name;
    EXPECT_EQ(FindName(folder.Path(), std::string_view("a\0b", 3)), "");
    EXPECT_EQ(FindName(At("missing/"), "a"), "");
}

TEST_F(Files, APathFromATableMeansADirectoryInAnyLetterCase) {
    fs::create_directories(At("Sub/deep"));
    EXPECT_EQ(FindDirectory(folder.Path(), "Sub/"), At("Sub/"));
    EXPECT_EQ(FindDirectory(folder.Path(), "SUB\\DEEP\\"), At("Sub/deep/"));
    EXPECT_EQ(FindDirectory(folder.Path(), "sub//Deep"), At("Sub/deep/"));
    EXPECT_EQ(FindDirectory(folder.Path(), "none\\deep\\"), At("none/deep/"));
    EXPECT_EQ(FindDirectory(folder.Path(), ""), folder.Path());
}

TEST_F(Files, PatternsMatchLettersInEitherCase) {
    for (const std::string name : {"LST00001.XXX", "grp00002.xxx", "!quin!02.$$$", "a.XXXX", "XXX", "b.txt"})
        folder.Write(name, "");
    EXPECT_THAT(MatchingNames(folder.Path(), "*.XXX"), ElementsAre("LST00001.XXX", "grp00002.xxx"));
    EXPECT_THAT(MatchingNames(folder.Path(), "*.$$$"), ElementsAre("!quin!02.$$$"));
    EXPECT_THAT(MatchingNames(At("missing/"), "*"), IsEmpty());
}

TEST_F(Files, OnlyRegularFilesOfTheDirectoryItselfMatch) {
    fs::create_directory(At("d.XXX"));
    folder.Write("kept", "bytes");
    fs::create_symlink(At("kept"), At("link.XXX"));
    EXPECT_THAT(MatchingNames(folder.Path(), "*.XXX"), IsEmpty());
}

TEST_F(Files, MatchingFilesAreDeletedAndNothingElse) {
    for (const std::string name : {"a.XXX", "b.xxx", "c.txt"}) folder.Write(name, "");
    fs::create_directory(At("d.XXX"));
    DeleteMatching(folder.Path(), "*.XXX");
    DeleteMatching(At("missing/"), "*.XXX");
    EXPECT_FALSE(folder.Has("a.XXX"));
    EXPECT_FALSE(folder.Has("b.xxx"));
    EXPECT_TRUE(folder.Has("c.txt"));
    EXPECT_TRUE(folder.Has("d.XXX"));
}

TEST_F(Files, AFileIsReadWhole) {
    std::string bytes;
    for (int i = 0; i < 200000; ++i) bytes += static_cast<char>(i);
    folder.Write("a", bytes);
    EXPECT_EQ(ReadFile(At("a")), bytes);
    folder.Write("empty", "");
    EXPECT_EQ(ReadFile(At("empty")), "");
}

TEST_F(Files, AFileThatGrowsUnseenIsReadWholeToo) {
    EXPECT_NE(ReadFile("/proc/self/status"), ""); // its size is told as 0
}

TEST_F(Files, RefusedReadsHaveTheirErrors) {
    folder.Write("a", "");
    fs::create_directory(At("d"));
    fs::create_symlink(At("loop"), At("loop"));
    fs::create_symlink("/proc/self/mem", At("mem")); // nothing is mapped where it begins
    const std::string tooLong(300, 'n');
    EXPECT_EQ(ErrorIn([&] { ReadFile(At("b")); }), FileNotFound);
    EXPECT_EQ(ErrorIn([&] { ReadFile(At("none/b")); }), PathNotFound);
    EXPECT_EQ(ErrorIn([&] { ReadFile(At("a/b")); }), PathNotFound);
    EXPECT_EQ(ErrorIn([&] { ReadFile(At("d")); }), PathAccessError);
    EXPECT_EQ(ErrorIn([&] { ReadFile(At("loop")); }), PathAccessError);
    EXPECT_EQ(ErrorIn([&] { ReadFile(""); }), BadFileName);
    EXPECT_EQ(ErrorIn([&] { ReadFile(At(tooLong)); }), BadFileName);
    EXPECT_EQ(ErrorIn([&] { ReadFile(At("a") + std::string("\0b", 2)); }), BadFileName);
    EXPECT_EQ(ErrorIn([&] { ReadFile(At("mem")); }), DeviceError);
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &former), 0);
    const rlimit none{0, former.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    EXPECT_EQ(ErrorIn([&] { ReadFile(At("a")); }), TooManyFiles);
    setrlimit(RLIMIT_NOFILE, &former);
}

TEST_F(Files, OutputReplacesAFileAtOnce) {
    folder.Write("a", "long former text");
    OutputFile file(At("a"), OutputFile::Access::User);
    EXPECT_EQ(folder.Read("a"), "");
    file.Write("new");
    file.Close(true);
    EXPECT_EQ(folder.Read("a"), "new");
}

TEST_F(Files, LongOutputArrivesWhole) {
    std::string bytes;
    OutputFile file(At("a"), OutputFile::Access::User);
    for (int i = 0; i < 30000; ++i) {
        const std::string line = std::to_string(i) + "\r\n";
        bytes += line;
        file.Write(line);
    }
    file.Close(false);
    EXPECT_EQ(folder.Read("a"), bytes);
}

TEST_F(Files, OutputThatIsGivenUpHoldsWhatWasWrittenToIt) {
    {
        OutputFile file(At("a"), OutputFile::Access::User);
        file.Write("part");
    }
    EXPECT_EQ(folder.Read("a"), "part");
}

TEST_F(Files, RefusedOutputHasItsErrors) {
    fs::create_directory(At("d"));
    folder.Write("a", "");
    const auto user = OutputFile::Access::User;
    EXPECT_EQ(ErrorIn([&] { WriteWhole(At("d"), "x", user); }), PathAccessError);
    EXPECT_EQ(ErrorIn([&] { WriteWhole(At("none/x"), "x", user); }), PathNotFound);
    EXPECT_EQ(ErrorIn([&] { WriteWhole(At("a/x"), "x", user); }), PathNotFound);
    EXPECT_EQ(ErrorIn([&] { WriteWhole("", "x", user); }), BadFileName);
}

TEST_F(Files, AFullDiskShowsAtTheLatestWhenTheFileIsClosed) {
    OutputFile file("/dev/full", OutputFile::Access::User);
    file.Write("held back");
    EXPECT_EQ(ErrorIn([&] { file.Close(false); }), DiskFull);
}

TEST_F(Files, WhatWasWrittenBeforeAnErrorStays) {
    LimitFileSize(70000);
    EXPECT_EQ(ErrorIn([&] { WriteWhole(At("a"), std::string(100000, 'x'), OutputFile::Access::User); }), DiskFull);
    EXPECT_EQ(folder.Read("a"), std::string(70000, 'x'));
}

TEST_F(Files, AWorkFileIsANewOneThatFollowsNoLinkAndIsReadByNobodyElse) {
    folder.Write("kept", "bytes");
    fs::create_symlink(At("kept"), At("link"));
    fs::create_hard_link(At("kept"), At("same"));
    for (const char *const name : {"link", "same"}) {
        WriteWhole(At(name), "x", OutputFile::Access::Own);
        EXPECT_EQ(folder.Read(name), "x");
    }
    EXPECT_FALSE(fs::is_symlink(At("link")));
    EXPECT_EQ(folder.Read("kept"), "bytes");
    WriteWhole(At("own"), "x", OutputFile::Access::Own);
    EXPECT_EQ(fs::status(At("own")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Files, AUsersFileFollowsHisLinksAndUmask) {
    folder.Write("target", "bytes");
    fs::create_symlink(At("target"), At("link"));
    WriteWhole(At("link"), "x", OutputFile::Access::User);
    EXPECT_EQ(folder.Read("target"), "x");
    umask(027);
    WriteWhole(At("new"), "x", OutputFile::Access::User);
    EXPECT_EQ(static_cast<unsigned>(fs::status(At("new")).permissions()), 0640U);
}

TEST_F(Files, APipeNeedsNoSynchronising) { EXPECT_NO_THROW(WriteWhole("/dev/null", "x", OutputFile::Access::User)); }

TEST_F(Files, AreDeletedAndRenamed) {
    folder.Write("a", "1");
    folder.Write("b", "2");
    fs::create_directory(At("d"));
    RenameFile(At("a"), At("b"));
    EXPECT_EQ(folder.Read("b"), "1");
    EXPECT_FALSE(folder.Has("a"));
    DeleteFile(At("b"));
    EXPECT_FALSE(folder.Has("b"));
    EXPECT_NO_THROW(DeleteFile(At("b")));
    EXPECT_EQ(ErrorIn([&] { DeleteFile(At("d")); }), PathAccessError);
    EXPECT_EQ(ErrorIn([&] { RenameFile(At("a"), At("b")); }), FileNotFound);
    folder.Write("a", "1");
    EXPECT_EQ(ErrorIn([&] { RenameFile(At("a"), At("d")); }), PathAccessError);
    EXPECT_EQ(ErrorIn([&] { RenameFile(At("a"), At("none/b")); }), PathNotFound);
}

TEST_F(Files, ACopyHasTheBytesAndTheMode) {
    folder.Write("a", "bytes");
    fs::permissions(At("a"), fs::perms::owner_read | fs::perms::group_read);
    CopyFile(At("a"), At("b"));
    EXPECT_EQ(folder.Read("b"), "bytes");
    EXPECT_EQ(static_cast<unsigned>(fs::status(At("b")).permissions()), 0440U);
    EXPECT_EQ(ErrorIn([&] { CopyFile(At("none"), At("c")); }), FileNotFound);
}

TEST_F(Files, BinaryPositionsCountFromOne) {
    folder.Write("a", "abcdef");
    BinaryFile file;
    EXPECT_FALSE(file.IsOpen());
    file.Open(At("a"));
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(file.Read(1, 2), "ab");
    file.Write(3, "XY");
    EXPECT_EQ(file.Read(1, 6), "abXYef");
    EXPECT_EQ(file.Size(), 6);
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(folder.Read("a"), "abXYef");
}

TEST_F(Files, PastTheEndThereAreBlanksAndWritingGrowsTheFile) {
    folder.Write("a", "ab");
    BinaryFile file;
    file.Open(At("a"));
    EXPECT_EQ(file.Read(2, 4), "b   ");
    EXPECT_EQ(file.Read(10, 2), "  ");
    file.Write(3, "cd");
    EXPECT_EQ(folder.Read("a"), "abcd");
}

TEST_F(Files, RefusedBinaryAccessHasItsErrors) {
    folder.Write("a", "ab");
    fs::create_symlink(At("a"), At("link"));
    fs::create_directory(At("d"));
    BinaryFile file;
    EXPECT_EQ(ErrorIn([&] { file.Open(At("none")); }), FileNotFound);
    EXPECT_EQ(ErrorIn([&] { file.Open(At("link")); }), PathAccessError);
    EXPECT_EQ(ErrorIn([&] { file.Open(At("d")); }), PathAccessError);
    EXPECT_FALSE(file.IsOpen());
    file.Open(At("a"));
    EXPECT_EQ(ErrorIn([&] { file.Read(0, 1); }), InvalidCall);
    EXPECT_EQ(ErrorIn([&] { file.Read(1, -1); }), InvalidCall);
    EXPECT_EQ(ErrorIn([&] { file.Write(0, "x"); }), InvalidCall);
    LimitFileSize(4);
    EXPECT_EQ(ErrorIn([&] { file.Write(5, "x"); }), DiskFull);
}

TEST_F(Files, ADirectoryIsLockedWithoutAFile) {
    EXPECT_TRUE(LockDirectory(folder.Path()));
    EXPECT_TRUE(fs::is_empty(folder.Path()));
    const int other = open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY);
    EXPECT_NE(flock(other, LOCK_EX | LOCK_NB), 0);
    UnlockDirectory();
    EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
    close(other);
}

TEST_F(Files, AnotherProgramsLockIsRespectedAndTheOwnKept) {
    fs::create_directory(At("mine"));
    fs::create_directory(At("taken"));
    const int other = open(At("taken").c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
    ASSERT_TRUE(LockDirectory(At("mine")));
    EXPECT_FALSE(LockDirectory(At("taken")));
    const int mine = open(At("mine").c_str(), O_RDONLY | O_DIRECTORY);
    EXPECT_NE(flock(mine, LOCK_EX | LOCK_NB), 0);
    close(other);
    EXPECT_TRUE(LockDirectory(At("taken")));
    EXPECT_EQ(flock(mine, LOCK_EX | LOCK_NB), 0);
    close(mine);
    UnlockDirectory();
}

TEST_F(Files, AMissingDirectoryIsLockedByNobody) { EXPECT_TRUE(LockDirectory(At("none"))); }
