// When unsaved entries are kept; when that is removed: recovery_ends_test.cpp.
#include "main/recovery.h"

#include "main/session.h"
#include "main/start_up.h"
#include "platform/files.h"
#include "support/file_limit.h"
#include "support/recovery_test.h"

#include <filesystem>
#include <sys/stat.h>

namespace {

using testing::IsEmpty;
namespace fs = std::filesystem;

class RecoveryMoments : public Recovery {
protected:
    ino_t Inode() const {
        struct stat status {};
        return stat((folder.Path() + KeptName).c_str(), &status) == 0 ? status.st_ino : 0;
    }
};

} // namespace

TEST_F(RecoveryMoments, NothingIsKeptWhileNothingIsUnsaved) {
    StartUp();
    Press(Quintave.LogoOff);
    TenSecondsPass();
    EXPECT_FALSE(folder.Has(KeptName));
    folder.Write("a.rpx", "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"Title\",\"Lakes\"\r\n");
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    Press(Quintave.CommandAdd);
    ASSERT_EQ(RowValue[TitleRow], "Lakes");
    TenSecondsPass();
    EXPECT_FALSE(folder.Has(KeptName));
}

TEST_F(RecoveryMoments, EntriesAreKeptAtMostEveryTenSeconds) {
    StartWithEntries();
    const ino_t first = Inode();
    Enter(LastRow, "a");
    Progress.Clock += 9000;
    UserTicks(Quintave.RecoveryTimer);
    EXPECT_EQ(Inode(), first);
    Progress.Clock += 1000;
    UserTicks(Quintave.RecoveryTimer);
    EXPECT_NE(Inode(), first);
}

TEST_F(RecoveryMoments, WhereTheDiskIsSlowTheyAreKeptLessOften) {
    Progress.ClockStep = 1000; // a write takes as long
    StartWithEntries();
    Progress.ClockStep = 0;
    const ino_t first = Inode();
    Enter(LastRow, "a");
    TenSecondsPass();
    EXPECT_EQ(Inode(), first);
    TenSecondsPass();
    EXPECT_NE(Inode(), first);
}

TEST_F(RecoveryMoments, OneVerySlowWriteDelaysTheNextByAMinuteAtMost) {
    Progress.ClockStep = 30000; // a write takes as long
    StartWithEntries();
    Progress.ClockStep = 0;
    const ino_t first = Inode();
    Enter(LastRow, "a");
    Progress.Clock += 59000;
    UserTicks(Quintave.RecoveryTimer);
    EXPECT_EQ(Inode(), first);
    Progress.Clock += 1000;
    UserTicks(Quintave.RecoveryTimer);
    EXPECT_NE(Inode(), first);
}

TEST_F(RecoveryMoments, WhatHasNotChangedIsNotWrittenAgain) {
    StartWithEntries();
    const ino_t first = Inode();
    TenSecondsPass();
    Open(GroupRow);
    Press(Quintave.GrpExit);
    Select(LastRow);
    TenSecondsPass();
    EXPECT_EQ(Inode(), first);
}

TEST_F(RecoveryMoments, AnOccurrenceThatWasOnlyAddedIsAChange) {
    StartWithEntries();
    Open(GroupRow);
    TenSecondsPass();
    const ino_t first = Inode();
    Press(Quintave.FldChange[Next]);
    TenSecondsPass();
    EXPECT_NE(Inode(), first);
}

TEST_F(RecoveryMoments, TheTickTouchesNoControl) {
    StartUp();
    Press(Quintave.LogoOff);
    Open(GroupRow);
    Type("1 m");
    TakeChanges();
    TenSecondsPass();
    ASSERT_TRUE(folder.Has(KeptName));
    EXPECT_THAT(TakeChanges(), IsEmpty());
    EXPECT_EQ(Focused(), &Quintave.Text1[4]);
    EXPECT_EQ(Quintave.Text1[4].Text, "1 m");
    EXPECT_EQ(ActiveList, GroupList);
    EXPECT_EQ(StoreOf(GroupElement), std::string(10, ' '));
    EXPECT_EQ(Row(0), " Depth                     | ");
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(RecoveryMoments, TheTickWaitsForTheCommandInWhoseMiddleItCame) {
    StartUp();
    Press(Quintave.LogoOff);
    Enter(TitleRow, "Wells");
    RunAsEvent(TenSecondsPass);
    EXPECT_FALSE(folder.Has(KeptName));
    TenSecondsPass();
    EXPECT_TRUE(folder.Has(KeptName));
}

// No tick keeps anything while the question is open.
TEST_F(RecoveryMoments, ASignalOverAQuestionFindsTheNewestEntriesKept) {
    const auto end = [](const ShownMessage &) {
        EndOnSignal();
        kill(getpid(), SIGKILL);
        return NoAnswer;
    };
    for (const auto &command : {+[] { RunAsEvent([] { CloseMainWindow(); }); }, +[] { Press(Quintave.CommandQuit); },
                                +[] { Press(Quintave.CommandReset); }}) {
        Crash([&] {
            Enter(TitleRow, "Wells");
            TenSecondsPass();
            Enter(LastRow, "newest");
            Dialogs.Reply = end;
            command();
        });
        Crash([this] {
            EXPECT_EQ(RowValue[LastRow], "newest");
            SaveAs("a.rpx");
        });
    }
}

TEST_F(RecoveryMoments, AFileDialogueFindsTheNewestEntriesKept) {
    for (Control *command : {&Quintave.CommandSave, &Quintave.CommandAdd}) {
        SCOPED_TRACE(command->Name);
        StartWithEntries();
        Enter(LastRow, "newest");
        Press(*command); // cancelled
        EXPECT_THAT(folder.Read(KeptName), testing::HasSubstr("newest"));
        UnlockDirectory();
        fs::remove(folder.Path() + KeptName);
    }
}

TEST_F(RecoveryMoments, TheFileIsTheUsersAloneAndNoWorkFile) {
    StartWithEntries();
    struct stat status {};
    ASSERT_EQ(stat((folder.Path() + KeptName).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    EXPECT_EQ(MatchingNames(folder.Path(), "*.$$$"), std::vector<std::string>{});
    for (const char *pattern : {"*.XXX", "*.$$$"})
        EXPECT_THAT(MatchingNames(folder.Path(), pattern), testing::Not(testing::Contains(KeptName)));
}

TEST_F(RecoveryMoments, NoLinkIsFollowed) {
    folder.Write("precious", "mine");
    for (const char *name : {KeptName, "quintave.$$$"}) fs::create_symlink("precious", folder.Path() + name);
    StartWithEntries();
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(folder.Read("precious"), "mine");
    EXPECT_FALSE(fs::is_symlink(folder.Path() + KeptName));
}

TEST_F(RecoveryMoments, AFullDiskIsNoMessageAndLeavesWhatWasKeptBefore) {
    StartWithEntries();
    const std::string kept = folder.Read(KeptName);
    Enter(LastRow, "a");
    {
        const FileSizeLimit limit(10);
        TenSecondsPass();
        TenSecondsPass();
    }
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(folder.Read(KeptName), kept);
    EXPECT_FALSE(folder.Has("quintave.$$$"));
    TenSecondsPass();
    EXPECT_NE(folder.Read(KeptName), kept);
}

TEST_F(RecoveryMoments, AStoreThatIsGoneIsNoMessageEither) {
    StartWithEntries();
    Open(GroupRow);
    Enter(0, "1 m");
    Press(Quintave.FldChange[Next]);
    const std::string kept = folder.Read(KeptName);
    fs::remove(folder.Path() + "GRP00005.XXX");
    TenSecondsPass();
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(folder.Read(KeptName), kept);
}
