// When unsaved entries are kept, and when what was kept is removed.
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

// --- When they are kept
// -------------------------------------------------------------------------------------------------

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

// --- When they are removed
// ----------------------------------------------------------------------------------------------

TEST_F(RecoveryMoments, ASaveRemovesThem) {
    StartWithEntries();
    SaveAs("a.rpx");
    EXPECT_FALSE(folder.Has(KeptName));
}

TEST_F(RecoveryMoments, ASaveRemovesThemFromADirectoryThatBecameReadOnlyToo) {
    fs::create_directory(folder.Path() + "out");
    const AsNobody nobody(folder);
    StartWithEntries();
    fs::permissions(folder.Path(), fs::perms(0555));
    SaveAs("out/a.rpx");
    EndOnSignal();
    fs::permissions(folder.Path(), fs::perms(0755));
    EXPECT_THAT(folder.Read("out/a.rpx"), testing::HasSubstr("Wells"));
    EXPECT_EQ(folder.Read(KeptName), "");
    StartUp();
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    ExpectCleanStart();
}

TEST_F(RecoveryMoments, ASaveThatFailsDoesNot) {
    StartWithEntries();
    Dialogs.Texts = {folder.Path() + "gone/a.rpx"};
    CommandSaveAs_Click();
    EXPECT_TRUE(folder.Has(KeptName));
}

TEST_F(RecoveryMoments, ResetAndANewTemplateRemoveThem) {
    for (Control *command : {&Quintave.CommandReset, &Quintave.CommandTemplate}) {
        StartWithEntries();
        Dialogs.Answers = {NoAnswer};
        Press(*command);
        EXPECT_FALSE(folder.Has(KeptName)) << command->Name;
        UnlockDirectory();
    }
}

TEST_F(RecoveryMoments, TheEndThatTheUserWantedRemovesThem) {
    for (const auto &end : {+[] { CommandQuit_Click(); }, +[] { CloseMainWindow(); }}) {
        StartWithEntries();
        Dialogs.Answers = {NoAnswer};
        end();
        EXPECT_TRUE(ProgramEnded());
        EXPECT_FALSE(folder.Has(KeptName));
        TenSecondsPass();
        EXPECT_FALSE(folder.Has(KeptName));
    }
}

TEST_F(RecoveryMoments, AnEndThatDidNotComeAboutAfterTheAnswerNoDropsNothing) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer, NoAnswer};
    EXPECT_TRUE(OfferSave()); // the desktop's session is about to end, and goes on
    EXPECT_EQ(DataChanged, -1);
    Enter(LastRow, "more");
    EndOnSignal();
    EXPECT_TRUE(folder.Has(KeptName));
}

TEST_F(RecoveryMoments, TheAnswerNoIsForgottenWithTheEntriesItWasGivenFor) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer, NoAnswer};
    EXPECT_TRUE(OfferSave());
    Press(Quintave.CommandReset);
    ASSERT_FALSE(folder.Has(KeptName));
    Enter(TitleRow, "Wells"); // the same once more
    EndOnSignal();
    EXPECT_TRUE(folder.Has(KeptName));
}

TEST_F(RecoveryMoments, AnEndOfTheDesktopsSessionAfterTheAnswerNoRemovesThem) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer};
    EXPECT_TRUE(OfferSave());
    EndOnSignal();
    EXPECT_FALSE(folder.Has(KeptName));
}

TEST_F(RecoveryMoments, TheEndAfterASaveRemovesThem) {
    StartWithEntries();
    Dialogs.Answers = {YesAnswer};
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    CommandQuit_Click();
    EXPECT_TRUE(ProgramEnded());
    EXPECT_FALSE(folder.Has(KeptName));
}

TEST_F(RecoveryMoments, ASignalKeepsUnsavedEntriesAsTheyAreThen) {
    Crash([] {
        Enter(TitleRow, "Wells");
        TenSecondsPass();
        Open(LastRow);
        Type("En");
        EndOnSignal();
    });
    EXPECT_THAT(MatchingNames(folder.Path(), "*.XXX"), IsEmpty());
    EXPECT_THAT(MatchingNames(folder.Path(), "*.$$$"), IsEmpty());
    StartAnswering(YesAnswer);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(RowValue[LastRow], "En");
}

TEST_F(RecoveryMoments, ASignalWithoutUnsavedEntriesLeavesNothing) {
    StartWithEntries();
    SaveAs("a.rpx");
    EndOnSignal();
    EXPECT_FALSE(folder.Has(KeptName));
}

TEST_F(RecoveryMoments, ASignalInTheMiddleOfACommandKeepsWhatWasKeptBefore) {
    StartWithEntries();
    const std::string kept = folder.Read(KeptName);
    Enter(LastRow, "half");
    RunAsEvent(EndOnSignal);
    EXPECT_EQ(folder.Read(KeptName), kept);
}

TEST_F(RecoveryMoments, ASignalInTheMiddleOfTheFirstCommandKeepsWhatThereIs) {
    StartUp();
    Press(Quintave.LogoOff);
    Enter(TitleRow, "Wells");
    RunAsEvent(EndOnSignal);
    EXPECT_TRUE(folder.Has(KeptName));
}

// The report is not the one that Save would write to any more: half of it would take its place.
TEST_F(RecoveryMoments, ASignalInTheMiddleOfALoadKeepsNoNameOfTheReport) {
    const std::string report = "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"Title\",\"Lakes\"\r\n1,6,\"Last\",\"End\"\r\n";
    folder.Write("a.rpx", report);
    Crash([this] {
        Enter(TitleRow, "Wells");
        Dialogs.Texts = {folder.Path() + "a.rpx"};
        fs::create_directory("quintave.$$$"); // nothing can be kept before the load
        Dialogs.Reply = [](const ShownMessage &) {
            EXPECT_FALSE(fs::exists(KeptName));
            fs::remove("quintave.$$$");
            EXPECT_EQ(FileMark, "a.rpx");
            EndOnSignal();
            kill(getpid(), HasFailure() ? SIGABRT : SIGKILL);
            return NoAnswer;
        };
        Press(Quintave.CommandAdd);
        ADD_FAILURE() << "the load asked nothing";
    });
    ASSERT_TRUE(folder.Has(KeptName));
    StartAnswering(YesAnswer);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(FileMark, "");
    Press(Quintave.CommandSave);
    EXPECT_EQ(Dialogs.Asked.size(), 1U);
    EXPECT_EQ(folder.Read("a.rpx"), report);
}

TEST_F(RecoveryMoments, AnEndThatAsksNothingKeepsThem) {
    StartWithEntries();
    Press(Quintave.CommandPrint);
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandPrint);
    ASSERT_FALSE(Quintave.editframe.Visible);
    Dialogs.Messages.clear();
    EXPECT_TRUE(CloseMainWindow());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_TRUE(folder.Has(KeptName));
}

TEST_F(RecoveryMoments, LeavingFromTheStartUpFrameKeepsWhatCameBack) {
    CrashWithATitle();
    Dialogs.Answers = {YesAnswer};
    StartUp();
    Press(Quintave.LogoQuit);
    EXPECT_TRUE(ProgramEnded());
    EXPECT_TRUE(folder.Has(KeptName));
}

// The question is open when the end comes: its answer is still to be given.
TEST_F(RecoveryMoments, AnEndBeforeTheAnswerLeavesThemAsTheyAre) {
    CrashWithATitle();
    const std::string kept = folder.Read(KeptName);
    ASSERT_TRUE(LoadMainWindow({}));
    EndOnSignal();
    EXPECT_EQ(folder.Read(KeptName), kept);
}

TEST_F(RecoveryMoments, AQuestionThatIsGoneWithoutAnAnswerLeavesThemAndLoadsNothing) {
    CrashWithATitle();
    const std::string kept = folder.Read(KeptName);
    const std::vector<std::string> left = MatchingNames(folder.Path(), "*.XXX");
    ASSERT_TRUE(LoadMainWindow({}));
    Dialogs.Answers = {CancelAnswer};
    ActivateMainWindow();
    EXPECT_EQ(NumFields, 0);
    EXPECT_EQ(folder.Read(KeptName), kept);
    EXPECT_EQ(MatchingNames(folder.Path(), "*.XXX"), left);
}
