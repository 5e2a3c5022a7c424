// When what was kept of unsaved entries is removed, and what each end of the program leaves.
#include "main/recovery.h"

#include "main/session.h"
#include "main/start_up.h"
#include "platform/files.h"
#include "support/recovery_test.h"

#include <filesystem>

namespace {

using testing::IsEmpty;
namespace fs = std::filesystem;

class RecoveryEnds : public Recovery {};

} // namespace

TEST_F(RecoveryEnds, ASaveRemovesThem) {
    StartWithEntries();
    SaveAs("a.rpx");
    EXPECT_FALSE(folder.Has(KeptName));
}

TEST_F(RecoveryEnds, ASaveRemovesThemFromADirectoryThatBecameReadOnlyToo) {
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

TEST_F(RecoveryEnds, ASaveThatFailsDoesNot) {
    StartWithEntries();
    Dialogs.Texts = {folder.Path() + "gone/a.rpx"};
    CommandSaveAs_Click();
    EXPECT_TRUE(folder.Has(KeptName));
}

TEST_F(RecoveryEnds, ResetAndANewTemplateRemoveThem) {
    for (Control *command : {&Quintave.CommandReset, &Quintave.CommandTemplate}) {
        StartWithEntries();
        Dialogs.Answers = {NoAnswer};
        Press(*command);
        EXPECT_FALSE(folder.Has(KeptName)) << command->Name;
        UnlockDirectory();
    }
}

TEST_F(RecoveryEnds, TheEndThatTheUserWantedRemovesThem) {
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

TEST_F(RecoveryEnds, AnEndThatDidNotComeAboutAfterTheAnswerNoDropsNothing) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer, NoAnswer};
    EXPECT_TRUE(OfferSave()); // the desktop's session is about to end, and goes on
    EXPECT_EQ(DataChanged, -1);
    Enter(LastRow, "more");
    EndOnSignal();
    EXPECT_TRUE(folder.Has(KeptName));
}

TEST_F(RecoveryEnds, TheAnswerNoIsForgottenWithTheEntriesItWasGivenFor) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer, NoAnswer};
    EXPECT_TRUE(OfferSave());
    Press(Quintave.CommandReset);
    ASSERT_FALSE(folder.Has(KeptName));
    Enter(TitleRow, "Wells"); // the same once more
    EndOnSignal();
    EXPECT_TRUE(folder.Has(KeptName));
}

TEST_F(RecoveryEnds, AnEndOfTheDesktopsSessionAfterTheAnswerNoRemovesThem) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer};
    EXPECT_TRUE(OfferSave());
    EndOnSignal();
    EXPECT_FALSE(folder.Has(KeptName));
}

TEST_F(RecoveryEnds, TheEndAfterASaveRemovesThem) {
    StartWithEntries();
    Dialogs.Answers = {YesAnswer};
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    CommandQuit_Click();
    EXPECT_TRUE(ProgramEnded());
    EXPECT_FALSE(folder.Has(KeptName));
}

TEST_F(RecoveryEnds, ASignalKeepsUnsavedEntriesAsTheyAreThen) {
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

TEST_F(RecoveryEnds, ASignalWithoutUnsavedEntriesLeavesNothing) {
    StartWithEntries();
    SaveAs("a.rpx");
    EndOnSignal();
    EXPECT_FALSE(folder.Has(KeptName));
}

TEST_F(RecoveryEnds, ASignalInTheMiddleOfACommandKeepsWhatWasKeptBefore) {
    StartWithEntries();
    const std::string kept = folder.Read(KeptName);
    Enter(LastRow, "half");
    RunAsEvent(EndOnSignal);
    EXPECT_EQ(folder.Read(KeptName), kept);
}

TEST_F(RecoveryEnds, ASignalInTheMiddleOfTheFirstCommandKeepsWhatThereIs) {
    StartUp();
    Press(Quintave.LogoOff);
    Enter(TitleRow, "Wells");
    RunAsEvent(EndOnSignal);
    EXPECT_TRUE(folder.Has(KeptName));
}

// The report is not the one that Save would write to any more: half of it would take its place.
TEST_F(RecoveryEnds, ASignalInTheMiddleOfALoadKeepsNoNameOfTheReport) {
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

TEST_F(RecoveryEnds, AnEndThatAsksNothingKeepsThem) {
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

TEST_F(RecoveryEnds, LeavingFromTheStartUpFrameKeepsWhatCameBack) {
    CrashWithATitle();
    Dialogs.Answers = {YesAnswer};
    StartUp();
    Press(Quintave.LogoQuit);
    EXPECT_TRUE(ProgramEnded());
    EXPECT_TRUE(folder.Has(KeptName));
}

// The question is open when the end comes: its answer is still to be given.
TEST_F(RecoveryEnds, AnEndBeforeTheAnswerLeavesThemAsTheyAre) {
    CrashWithATitle();
    const std::string kept = folder.Read(KeptName);
    ASSERT_TRUE(LoadMainWindow({}));
    EndOnSignal();
    EXPECT_EQ(folder.Read(KeptName), kept);
}

TEST_F(RecoveryEnds, AQuestionThatIsGoneWithoutAnAnswerLeavesThemAndLoadsNothing) {
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
