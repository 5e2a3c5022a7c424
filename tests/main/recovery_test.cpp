// Unsaved entries after the program was killed: what is kept, when, what the next start offers, and what it refuses.
#include "main/recovery.h"

#include "groups/store.h"
#include "main/recovery_entries.h"
#include "main/session.h"
#include "main/start_up.h"
#include "model/recovery_file.h"
#include "platform/console/progress.h"
#include "platform/files.h"
#include "report/save_command.h"
#include "support/file_limit.h"
#include "support/messages.h"
#include "support/screen_test.h"

#include <csignal>
#include <filesystem>
#include <functional>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

constexpr const char *Name = "quintave.rec";
constexpr const char *MessageTitle = "UNSAVED ENTRIES";
constexpr int RefusalStyle = CriticalIcon;
constexpr int OfferStyle = YesNo + QuestionIcon;

const std::vector<std::string> Fields{R"(1,30,"TEXT","Title","","")",
                                      R"(1,30,"LIST","Colour","","")",
                                      "Red",
                                      "Blue",
                                      "OTHER...",
                                      "XXX-1XXX",
                                      R"(1,20,"MEMO","Notes","","")",
                                      R"(1,-1,"","Samples","","")",
                                      R"(2,2,"GROUP START","Sample","","")",
                                      R"(3,5,"TEXT","Depth","","")",
                                      R"(3,5,"TEXT","Place","","")",
                                      R"(2,0,"GROUP END","","","")",
                                      R"(2,30,"TEXT","Last","","")"};
constexpr Integer TitleRow = 0;
constexpr Integer ColourRow = 1;
constexpr Integer NotesRow = 2;
constexpr Integer GroupRow = 4;
constexpr Integer LastRow = 5;
constexpr Integer ColourElement = 2;
constexpr Integer GroupElement = 5;

std::string Question(const std::string &lines, const std::string &note = "") {
    return "The entries of your last session were not SAVED when Quintave ended.\r\n\r\n" + lines +
           "\r\nWould you like to bring them BACK?\r\n\r\n        YES - Bring all entries back, still to be saved.\r\n"
           "        NO - Remove them for good." +
           note;
}

const std::string OwnTemplate = "        Fields Template File: SITE.FTF\r\n";

// Lets the time go by until the entries may be kept again, and the timer tick.
void TenSecondsPass() {
    Progress.ClockAhead += 10000;
    UserTicks(Quintave.RecoveryTimer);
}

std::string StoreOf(Integer head) {
    std::string occurrences;
    ReadStore(head, occurrences);
    return occurrences;
}

class Recovery : public ScreenTest {
protected:
    Recovery() {
        folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
        folder.Write("SITE.FTF", TemplateText(Fields));
    }

    // Runs a session in a process of its own and ends that as an unexpected end does.
    void Crash(const std::function<void()> &session) {
        const pid_t child = fork();
        if (child == 0) {
            StartUp();
            Press(Quintave.LogoOff);
            session();
            if (HasFailure()) _exit(1);
            kill(getpid(), SIGKILL);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "the session itself failed";
    }

    // One that left a title unsaved.
    void CrashWithATitle() {
        Crash([] {
            Enter(TitleRow, "Wells");
            TenSecondsPass();
        });
        ASSERT_TRUE(folder.Has(Name));
    }

    void StartAnswering(Answer answer) {
        Dialogs.Answers = {answer};
        StartUp();
        Press(Quintave.LogoOff);
    }

    void StartWithEntries() {
        StartUp();
        Press(Quintave.LogoOff);
        Enter(TitleRow, "Wells");
        TenSecondsPass();
        ASSERT_TRUE(folder.Has(Name));
    }

    ino_t Inode() const {
        struct stat status {};
        return stat((folder.Path() + Name).c_str(), &status) == 0 ? status.st_ino : 0;
    }

    void ExpectRefused(const std::string &reason, const std::string &kept = "quintave-kept1.rec") {
        ExpectOneMessage(MessageTitle,
                         reason +
                             "\r\n\r\nYour unsaved entries are NOT being loaded into Quintave!\r\n\r\n"
                             "They are kept in the file " +
                             folder.Path() + kept + ".",
                         RefusalStyle);
        EXPECT_FALSE(folder.Has(Name));
        EXPECT_TRUE(folder.Has(kept));
        ExpectCleanStart();
    }

    static void ExpectCleanStart() {
        EXPECT_EQ(TemplateName, "SITE.FTF");
        EXPECT_EQ(NumFields, 9);
        for (const auto &value : RowValue) EXPECT_EQ(value, "");
        EXPECT_EQ(StoreOf(GroupElement), std::string(10, ' '));
        EXPECT_EQ(DataChanged, 0);
        EXPECT_EQ(FileMark, "FirstLoad");
    }

    // What a user might do, by chance but the same for the same number.
    static void WorkAtRandom(unsigned seed) {
        std::mt19937 random(seed);
        const auto below = [&](unsigned n) { return static_cast<Integer>(random() % n); };
        for (int step = 0; step < 40; ++step) {
            const std::string text(static_cast<std::size_t>(below(7)), static_cast<char>('a' + below(26)));
            const Integer last = ToInteger(ActiveRows().Rows.size() - 1);
            switch (below(9)) {
            case 0:
            case 1: Enter(ActiveList == 0 ? TitleRow : below(2), text); break;
            case 2: Open(below(static_cast<unsigned>(last) + 1U)); break;
            case 3: Type(text); break;
            case 4: Press(Quintave.FIAdd); break;
            case 5:
                if (ActiveList == GroupList) Press(Quintave.FldChange.at(static_cast<std::size_t>(below(4))));
                break;
            case 6:
                if (ActiveList == GroupList) Press(Quintave.TblFldInsert);
                break;
            case 7:
                if (ActiveList == GroupList && below(3) == 0) Press(Quintave.TblFldDelete);
                break;
            default:
                if (ActiveList == GroupList && below(3) == 0) Press(Quintave.GrpExit);
            }
            if (below(5) == 0) TenSecondsPass();
        }
        Enter(ActiveList == 0 ? LastRow : 0, "x"); // something is unsaved in any case
        Open(ActiveList == 0 ? NotesRow : 1);
        Type("y");
    }

    // Items as a whole file with the checksum it should have.
    void WriteItems(const std::string &items) {
        ResourceDir = folder.Path();
        RecoveryWriter file;
        file.Write(items);
        file.Close();
    }
};

} // namespace

// --- What comes back
// ----------------------------------------------------------------------------------------------------

TEST_F(Recovery, YesBringsBackEveryValueInstanceAndOccurrence) {
    Crash([] {
        Enter(TitleRow, "Wells");
        Press(Quintave.FIAdd);
        Select(TitleRow);
        Open(TitleRow);
        Press(Quintave.FIAdd);
        Type("Springs");
        PressEnter();
        Open(ColourRow);
        UserSelects(Quintave.List2[0], 2);
        PressEnter();
        Type("Ochre");
        PressEnter();
        Open(NotesRow);
        Type("a");
        PressEnter();
        Type("b");
        Open(GroupRow);
        Enter(0, "1 m");
        Press(Quintave.FldChange[Next]);
        Press(Quintave.FldChange[Next]); // the second occurrence stays blank
        Enter(0, "3 m");
        Type("East"); // the edit stays open
        TenSecondsPass();
        EXPECT_EQ(ActiveList, GroupList);
        EXPECT_EQ(Focused(), &Quintave.Text1[4]);
    });
    StartAnswering(YesAnswer);
    ExpectOneMessage(MessageTitle, Question(OwnTemplate), OfferStyle);
    EXPECT_EQ(RowValue[TitleRow], "Wells|Springs");
    EXPECT_EQ(Row(TitleRow), " Title                     | Wells|Springs");
    EXPECT_EQ(RowValue[ColourRow], "Ochre");
    EXPECT_EQ(FieldInfo[ColourElement][Choice], 2);
    EXPECT_EQ(RowValue[NotesRow], "a\r\nb");
    EXPECT_EQ(StoreOf(GroupElement), "1 m                 3 m  East ");
    EXPECT_EQ(DataChanged, -1);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_EQ(FileMark, "FirstLoad");
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(CurrentField, 0);
    Open(GroupRow);
    EXPECT_EQ(GroupLoadedOccurrence, 2);
    EXPECT_EQ(Row(1), " Place                     | East");
}

TEST_F(Recovery, AnEditThatIsOpenInALaterInstanceComesBackInItsPlace) {
    Crash([] {
        Enter(TitleRow, "Wells");
        Select(TitleRow);
        Open(TitleRow);
        Press(Quintave.FIAdd);
        Type("Springs  ");
        TenSecondsPass();
        EXPECT_EQ(RowValue[TitleRow], "Wells");
    });
    StartAnswering(YesAnswer);
    EXPECT_EQ(RowValue[TitleRow], "Wells|Springs");
}

TEST_F(Recovery, TheReportThatSaveWritesToIsKnownAgain) {
    Crash([this] {
        Enter(TitleRow, "Wells");
        SaveAs("a.rpx");
        Enter(LastRow, "End");
        TenSecondsPass();
    });
    StartAnswering(YesAnswer);
    ExpectOneMessage(MessageTitle, Question(OwnTemplate + "        RPX File: a.rpx\r\n"), OfferStyle);
    EXPECT_EQ(FileMark, "a.rpx");
    EXPECT_EQ(FileMarkDir, folder.Path());
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): a; ");
    Press(Quintave.CommandSave);
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("\"End\""));
    EXPECT_FALSE(folder.Has(Name));
}

TEST_F(Recovery, EntriesOfAnotherTemplateComeBackWithThatTemplate) {
    fs::create_directory(folder.Path() + "more");
    folder.Write("more/wide.ftf", TemplateText({R"(1,30,"TEXT","Width","","")"}, "QuintaveV2-"));
    Crash([this] {
        Dialogs.Texts = {folder.Path() + "more/wide.ftf"};
        Press(Quintave.CommandTemplate);
        Enter(0, "9 m");
        TenSecondsPass();
    });
    StartAnswering(YesAnswer);
    ExpectOneMessage(MessageTitle, Question("        Fields Template File: wide.ftf\r\n"), OfferStyle);
    EXPECT_EQ(TemplateDir, folder.Path() + "more/");
    EXPECT_EQ(TemplateName, "wide.ftf");
    EXPECT_EQ(AllowInstances, 0);
    EXPECT_EQ(Row(0), " Width                     | 9 m");
}

TEST_F(Recovery, WhatIsBackIsStillUnsavedAndOutlivesAnotherCrash) {
    CrashWithATitle();
    for (int crash = 0; crash < 2; ++crash) {
        const pid_t child = fork();
        if (child == 0) {
            StartAnswering(YesAnswer);
            _exit(RowValue[TitleRow] == "Wells" ? 0 : 1);
        }
        int status = 1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        EXPECT_TRUE(folder.Has(Name));
    }
}

// The stores are compared too: a report tells nothing of blank values at the end of an occurrence's cells.
TEST_F(Recovery, AfterAnyWorkTheSameIsThereAsWithoutTheCrash) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        Crash([this, seed] {
            WorkAtRandom(seed);
            SaveAs("want.rpx");
            folder.Write("want.grp", StoreOf(GroupElement));
        });
        ASSERT_FALSE(folder.Has(Name));
        Crash([seed] {
            WorkAtRandom(seed);
            TenSecondsPass();
        });
        ASSERT_TRUE(folder.Has(Name));
        Crash([] {}); // asked, and answered with Yes, the default
        Crash([this] {
            SaveAs("have.rpx");
            folder.Write("have.grp", StoreOf(GroupElement));
        });
        EXPECT_EQ(folder.Read("have.rpx"), folder.Read("want.rpx"));
        EXPECT_EQ(folder.Read("have.grp"), folder.Read("want.grp"));
        if (HasFailure()) break;
    }
}

// --- The question
// -------------------------------------------------------------------------------------------------------

TEST_F(Recovery, NoRemovesTheEntriesAndStartsClean) {
    CrashWithATitle();
    StartAnswering(NoAnswer);
    ExpectOneMessage(MessageTitle, Question(OwnTemplate), OfferStyle);
    EXPECT_FALSE(folder.Has(Name));
    ExpectCleanStart();
}

TEST_F(Recovery, WithoutUnsavedEntriesNothingIsAsked) {
    StartUp();
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_TRUE(Quintave.RecoveryTimer.Enabled);
}

TEST_F(Recovery, TheReportToOpenIsOpenedAfterNoAndNamedInTheQuestion) {
    CrashWithATitle();
    folder.Write("b.rpx", "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"Title\",\"Lakes\"\r\n");
    ASSERT_TRUE(LoadMainWindow({.Resources = "", .Report = "b.rpx"}));
    Dialogs.Answers = {NoAnswer};
    ActivateMainWindow();
    ExpectOneMessage(MessageTitle,
                     Question(OwnTemplate, "\r\n\r\nNote that after a YES answer the file b.rpx is not opened!"),
                     OfferStyle);
    EXPECT_EQ(RowValue[TitleRow], "Lakes");
}

TEST_F(Recovery, TheReportToOpenStaysUnopenedAfterYes) {
    CrashWithATitle();
    folder.Write("b.rpx", "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"Title\",\"Lakes\"\r\n");
    ASSERT_TRUE(LoadMainWindow({.Resources = "", .Report = "b.rpx"}));
    Dialogs.Answers = {YesAnswer};
    ActivateMainWindow();
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
}

TEST_F(Recovery, TheResourceDirectoryMayBeGivenInAnotherWay) {
    CrashWithATitle();
    fs::create_directory(folder.Path() + "elsewhere");
    ASSERT_EQ(chdir((folder.Path() + "elsewhere").c_str()), 0);
    ASSERT_TRUE(LoadMainWindow({.Resources = "..", .Report = ""}));
    Dialogs.Answers = {YesAnswer};
    ActivateMainWindow();
    EXPECT_EQ(TemplateDir, "../");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(Recovery, NothingIsAskedOrTouchedInADirectoryThatAnotherProgramHas) {
    CrashWithATitle();
    const std::string kept = folder.Read(Name);
    const int handle = open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(handle, LOCK_EX | LOCK_NB), 0);
    Dialogs.Answers = {NoAnswer};
    EXPECT_FALSE(LoadMainWindow({}));
    ASSERT_EQ(MessageCount(), 1U);
    EXPECT_EQ(LastMessage().Title, "BAD DRIVE/DIRECTORY INFORMATION!");
    EXPECT_EQ(folder.Read(Name), kept);
    close(handle);
}

// --- When they are kept
// -------------------------------------------------------------------------------------------------

TEST_F(Recovery, NothingIsKeptWhileNothingIsUnsaved) {
    StartUp();
    Press(Quintave.LogoOff);
    TenSecondsPass();
    EXPECT_FALSE(folder.Has(Name));
    folder.Write("a.rpx", "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"Title\",\"Lakes\"\r\n");
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    Press(Quintave.CommandAdd);
    ASSERT_EQ(RowValue[TitleRow], "Lakes");
    TenSecondsPass();
    EXPECT_FALSE(folder.Has(Name));
}

TEST_F(Recovery, EntriesAreKeptAtMostEveryTenSeconds) {
    StartWithEntries();
    const ino_t first = Inode();
    Enter(LastRow, "a");
    Progress.ClockAhead += 9000;
    UserTicks(Quintave.RecoveryTimer);
    EXPECT_EQ(Inode(), first);
    Progress.ClockAhead += 1000;
    UserTicks(Quintave.RecoveryTimer);
    EXPECT_NE(Inode(), first);
}

TEST_F(Recovery, WhatHasNotChangedIsNotWrittenAgain) {
    StartWithEntries();
    const ino_t first = Inode();
    TenSecondsPass();
    Open(GroupRow);
    Press(Quintave.GrpExit);
    Select(LastRow);
    TenSecondsPass();
    EXPECT_EQ(Inode(), first);
}

TEST_F(Recovery, AnOccurrenceThatWasOnlyAddedIsAChange) {
    StartWithEntries();
    Open(GroupRow);
    TenSecondsPass();
    const ino_t first = Inode();
    Press(Quintave.FldChange[Next]);
    TenSecondsPass();
    EXPECT_NE(Inode(), first);
}

TEST_F(Recovery, TheTickTouchesNoControl) {
    StartUp();
    Press(Quintave.LogoOff);
    Open(GroupRow);
    Type("1 m");
    TakeChanges();
    TenSecondsPass();
    ASSERT_TRUE(folder.Has(Name));
    EXPECT_THAT(TakeChanges(), IsEmpty());
    EXPECT_EQ(Focused(), &Quintave.Text1[4]);
    EXPECT_EQ(Quintave.Text1[4].Text, "1 m");
    EXPECT_EQ(ActiveList, GroupList);
    EXPECT_EQ(StoreOf(GroupElement), std::string(10, ' '));
    EXPECT_EQ(Row(0), " Depth                     | ");
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(Recovery, TheTickWaitsForTheCommandInWhoseMiddleItCame) {
    StartUp();
    Press(Quintave.LogoOff);
    Enter(TitleRow, "Wells");
    RunAsEvent(TenSecondsPass);
    EXPECT_FALSE(folder.Has(Name));
    TenSecondsPass();
    EXPECT_TRUE(folder.Has(Name));
}

TEST_F(Recovery, TheFileIsTheUsersAloneAndNoWorkFile) {
    StartWithEntries();
    struct stat status {};
    ASSERT_EQ(stat((folder.Path() + Name).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    EXPECT_EQ(MatchingNames(folder.Path(), "*.$$$"), std::vector<std::string>{});
    for (const char *pattern : {"*.XXX", "*.$$$"})
        EXPECT_THAT(MatchingNames(folder.Path(), pattern), testing::Not(testing::Contains(Name)));
}

TEST_F(Recovery, NoLinkIsFollowed) {
    folder.Write("precious", "mine");
    for (const char *name : {Name, "quintave.$$$"}) fs::create_symlink("precious", folder.Path() + name);
    StartWithEntries();
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(folder.Read("precious"), "mine");
    EXPECT_FALSE(fs::is_symlink(folder.Path() + Name));
}

TEST_F(Recovery, AFullDiskIsNoMessageAndLeavesWhatWasKeptBefore) {
    StartWithEntries();
    const std::string kept = folder.Read(Name);
    Enter(LastRow, "a");
    {
        const FileSizeLimit limit(10);
        TenSecondsPass();
        TenSecondsPass();
    }
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(folder.Read(Name), kept);
    EXPECT_FALSE(folder.Has("quintave.$$$"));
    TenSecondsPass();
    EXPECT_NE(folder.Read(Name), kept);
}

TEST_F(Recovery, AStoreThatIsGoneIsNoMessageEither) {
    StartWithEntries();
    Open(GroupRow);
    Enter(0, "1 m");
    Press(Quintave.FldChange[Next]);
    const std::string kept = folder.Read(Name);
    fs::remove(folder.Path() + "GRP00005.XXX");
    TenSecondsPass();
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(folder.Read(Name), kept);
}

// --- When they are removed
// ----------------------------------------------------------------------------------------------

TEST_F(Recovery, ASaveRemovesThem) {
    StartWithEntries();
    SaveAs("a.rpx");
    EXPECT_FALSE(folder.Has(Name));
}

TEST_F(Recovery, ASaveThatFailsDoesNot) {
    StartWithEntries();
    Dialogs.Texts = {folder.Path() + "gone/a.rpx"};
    CommandSaveAs_Click();
    EXPECT_TRUE(folder.Has(Name));
}

TEST_F(Recovery, ResetAndANewTemplateRemoveThem) {
    for (Control *command : {&Quintave.CommandReset, &Quintave.CommandTemplate}) {
        StartWithEntries();
        Dialogs.Answers = {NoAnswer};
        Press(*command);
        EXPECT_FALSE(folder.Has(Name)) << command->Name;
        UnlockDirectory();
    }
}

TEST_F(Recovery, TheEndThatTheUserWantedRemovesThem) {
    for (const auto &end : {+[] { CommandQuit_Click(); }, +[] { CloseMainWindow(); }}) {
        StartWithEntries();
        Dialogs.Answers = {NoAnswer};
        end();
        EXPECT_TRUE(ProgramEnded());
        EXPECT_FALSE(folder.Has(Name));
        TenSecondsPass();
        EXPECT_FALSE(folder.Has(Name));
    }
}

TEST_F(Recovery, AnEndThatDidNotComeAboutAfterTheAnswerNoDropsNothing) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer, NoAnswer};
    EXPECT_TRUE(OfferSave()); // the desktop's session is about to end, and goes on
    EXPECT_EQ(DataChanged, -1);
    Enter(LastRow, "more");
    EndOnSignal();
    EXPECT_TRUE(folder.Has(Name));
}

TEST_F(Recovery, AnEndOfTheDesktopsSessionAfterTheAnswerNoRemovesThem) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer};
    EXPECT_TRUE(OfferSave());
    EndOnSignal();
    EXPECT_FALSE(folder.Has(Name));
}

TEST_F(Recovery, TheEndAfterASaveRemovesThem) {
    StartWithEntries();
    Dialogs.Answers = {YesAnswer};
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    CommandQuit_Click();
    EXPECT_TRUE(ProgramEnded());
    EXPECT_FALSE(folder.Has(Name));
}

TEST_F(Recovery, ASignalKeepsUnsavedEntriesAsTheyAreThen) {
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

TEST_F(Recovery, ASignalWithoutUnsavedEntriesLeavesNothing) {
    StartWithEntries();
    SaveAs("a.rpx");
    EndOnSignal();
    EXPECT_FALSE(folder.Has(Name));
}

TEST_F(Recovery, ASignalInTheMiddleOfACommandKeepsWhatWasKeptBefore) {
    StartWithEntries();
    const std::string kept = folder.Read(Name);
    Enter(LastRow, "half");
    RunAsEvent(EndOnSignal);
    EXPECT_EQ(folder.Read(Name), kept);
}

TEST_F(Recovery, ASignalInTheMiddleOfTheFirstCommandKeepsWhatThereIs) {
    StartUp();
    Press(Quintave.LogoOff);
    Enter(TitleRow, "Wells");
    RunAsEvent(EndOnSignal);
    EXPECT_TRUE(folder.Has(Name));
}

TEST_F(Recovery, AnEndThatAsksNothingKeepsThem) {
    StartWithEntries();
    Press(Quintave.CommandPrint);
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandPrint);
    ASSERT_FALSE(Quintave.editframe.Visible);
    Dialogs.Messages.clear();
    EXPECT_TRUE(CloseMainWindow());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_TRUE(folder.Has(Name));
}

TEST_F(Recovery, LeavingFromTheStartUpFrameKeepsWhatCameBack) {
    CrashWithATitle();
    Dialogs.Answers = {YesAnswer};
    StartUp();
    Press(Quintave.LogoQuit);
    EXPECT_TRUE(ProgramEnded());
    EXPECT_TRUE(folder.Has(Name));
}

// The question is open when the end comes: its answer is still to be given.
TEST_F(Recovery, AnEndBeforeTheAnswerLeavesThemAsTheyAre) {
    CrashWithATitle();
    const std::string kept = folder.Read(Name);
    ASSERT_TRUE(LoadMainWindow({}));
    EndOnSignal();
    EXPECT_EQ(folder.Read(Name), kept);
}

TEST_F(Recovery, AQuestionThatIsGoneWithoutAnAnswerLeavesThemAndLoadsNothing) {
    CrashWithATitle();
    const std::string kept = folder.Read(Name);
    const std::vector<std::string> left = MatchingNames(folder.Path(), "*.XXX");
    ASSERT_TRUE(LoadMainWindow({}));
    Dialogs.Answers = {CancelAnswer};
    ActivateMainWindow();
    EXPECT_EQ(NumFields, 0);
    EXPECT_EQ(folder.Read(Name), kept);
    EXPECT_EQ(MatchingNames(folder.Path(), "*.XXX"), left);
}

// --- What is refused
// ----------------------------------------------------------------------------------------------------

TEST_F(Recovery, ADamagedFileIsRefusedWholeAndKeptAside) {
    CrashWithATitle();
    std::string bytes = folder.Read(Name);
    bytes[bytes.size() / 2] ^= 1;
    folder.Write(Name, bytes);
    folder.Write("quintave-kept1.rec", "earlier");
    StartUp();
    ExpectRefused("The file with the unsaved entries of your last session is damaged!", "quintave-kept2.rec");
    EXPECT_EQ(folder.Read("quintave-kept1.rec"), "earlier");
    EXPECT_EQ(folder.Read("quintave-kept2.rec"), bytes);
    Press(Quintave.LogoOff);
    Enter(TitleRow, "Lakes");
    TenSecondsPass();
    EXPECT_TRUE(folder.Has(Name));
}

TEST_F(Recovery, EveryDamageIsFound) {
    CrashWithATitle();
    ResourceDir = folder.Path();
    const std::string whole = folder.Read(Name);
    std::string bytes;
    std::vector<RecoveryItem> items;
    ASSERT_TRUE(ReadRecoveryFile(bytes, items));
    const auto expectDamaged = [&](const std::string &damaged) {
        folder.Write(Name, damaged);
        items.clear();
        EXPECT_FALSE(ReadRecoveryFile(bytes, items));
    };
    for (std::size_t length = 0; length < whole.size(); ++length) expectDamaged(whole.substr(0, length));
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const char bit : {'\x01', '\x80'}) {
            std::string damaged = whole;
            damaged[at] = static_cast<char>(damaged[at] ^ bit);
            expectDamaged(damaged);
        }
    for (std::size_t at = 0; at + 16 < whole.size(); at += 8) { // blocks of a disk that changed their places
        std::string damaged = whole;
        std::swap_ranges(damaged.begin() + static_cast<long>(at), damaged.begin() + static_cast<long>(at + 8),
                         damaged.begin() + static_cast<long>(at + 8));
        if (damaged != whole) expectDamaged(damaged);
    }
    expectDamaged(whole + '\n');
    expectDamaged(std::string(whole.size(), '\0'));
}

TEST_F(Recovery, ATemplateThatIsGoneIsTold) {
    fs::create_directory(folder.Path() + "more");
    folder.Write("more/wide.ftf", TemplateText({R"(1,30,"TEXT","Width","","")"}));
    Crash([this] {
        Dialogs.Texts = {folder.Path() + "more/wide.ftf"};
        Press(Quintave.CommandTemplate);
        Enter(0, "9 m");
        TenSecondsPass();
    });
    fs::remove(folder.Path() + "more/wide.ftf");
    Dialogs.Answers = {YesAnswer};
    StartUp();
    ASSERT_EQ(MessageCount(), 2U);
    Dialogs.Messages.erase(Dialogs.Messages.begin());
    ExpectRefused("The Fields Template File wide.ftf of the unsaved entries of your last session was not found!");
}

TEST_F(Recovery, ATemplateThatHasChangedIsTold) {
    CrashWithATitle();
    std::vector<std::string> changed = Fields;
    std::swap(changed[0], changed[6]);
    folder.Write("SITE.FTF", TemplateText(changed));
    Dialogs.Answers = {YesAnswer};
    StartUp();
    ASSERT_EQ(MessageCount(), 2U);
    Dialogs.Messages.erase(Dialogs.Messages.begin());
    ExpectRefused(
        "The Fields Template File SITE.FTF has changed since the unsaved entries of your last session were made!");
}

TEST_F(Recovery, OtherHelpTextsAndChoicesAreNoOtherTemplate) {
    CrashWithATitle();
    std::vector<std::string> changed = Fields;
    changed[0] = R"(1,30,"TEXT","Title","What it is called","help.txt")";
    changed[2] = "Crimson";
    folder.Write("SITE.FTF", TemplateText(changed));
    StartAnswering(YesAnswer);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(Recovery, AGroupThatCannotBeWrittenIsToldAndNothingOfTheEntriesStays) {
    Crash([] {
        Enter(TitleRow, "Wells");
        Open(GroupRow);
        for (int i = 0; i < 500; ++i) Press(Quintave.FldChange[Next]);
        TenSecondsPass();
    });
    Dialogs.Answers = {YesAnswer};
    {
        const FileSizeLimit limit(4096);
        StartUp();
    }
    ASSERT_EQ(MessageCount(), 2U);
    Dialogs.Messages.erase(Dialogs.Messages.begin());
    ExpectRefused("Error: 61 - Disk full\r\nError bringing back the unsaved entries of your last session! (full drive? "
                  "file locked? wrong privileges?).");
}

TEST_F(Recovery, AFileThatCannotBeReadIsTold) {
    CrashWithATitle();
    ASSERT_TRUE(LoadMainWindow({}));
    rlimit former{};
    getrlimit(RLIMIT_NOFILE, &former);
    const int next = dup(STDERR_FILENO);
    close(next);
    const rlimit noMore{static_cast<rlim_t>(next), former.rlim_max};
    setrlimit(RLIMIT_NOFILE, &noMore);
    ActivateMainWindow(); // it cannot read its template either
    setrlimit(RLIMIT_NOFILE, &former);
    ASSERT_FALSE(Dialogs.Messages.empty());
    EXPECT_EQ(
        Dialogs.Messages[0].Text,
        "Error: 67 - Too many files\r\nError bringing back the unsaved entries of your last session! (full drive? "
        "file locked? wrong privileges?).\r\n\r\nYour unsaved entries are NOT being loaded into Quintave!\r\n\r\n"
        "They are kept in the file " +
            folder.Path() + "quintave-kept1.rec.");
    EXPECT_TRUE(folder.Has("quintave-kept1.rec"));
}

// A whole file of items that nobody would have written.
TEST_F(Recovery, ItemsWithoutAPlaceAreRefused) {
    CrashWithATitle();
    ResourceDir = folder.Path();
    std::string bytes;
    std::vector<RecoveryItem> items;
    ASSERT_TRUE(ReadRecoveryFile(bytes, items));
    std::string good;
    for (const RecoveryItem &item : items) AddItem(good, item.Kind, item.Number, item.Bytes);
    const auto with = [&](const std::string &kind, Integer number, const std::string &text) {
        std::string all = good;
        AddItem(all, kind, number, text);
        return all;
    };
    const std::vector<std::string> bad{
        with("value", -1, "a"),
        with("value", 6, "a"),
        with("value", 32767, "a"),
        with("value", 3, "a"), // a section
        with("value", GroupRow, "a"),
        with("choice", 0, "1"),
        with("choice", 1, "1"),
        with("choice", 10, "1"),
        with("choice", -32768, "1"),
        with("choice", ColourElement, "-2"),
        with("choice", GroupElement, "-1"),
        with("group", 1, "1234567890"),
        with("group", GroupElement, ""),
        with("group", GroupElement, "123456789"),
        with("group", GroupElement, std::string(327680, ' ')),
        with("group", -5, "1234567890"),
        with("open", GroupElement, "123456789"),
        with("open", 8, "1234567890"),
        with("choice", GroupElement, "7") + "open 5 10\n1234567890\n",
        with("report", 0, ".profile"),
    };
    for (std::size_t number = 0; number < bad.size(); ++number) {
        SCOPED_TRACE(number);
        WriteItems(bad[number]);
        Dialogs.Answers = {YesAnswer};
        StartUp();
        ASSERT_EQ(MessageCount(), 2U);
        EXPECT_EQ(Dialogs.Messages[1].Title, MessageTitle);
        Dialogs.Messages.clear();
        EXPECT_TRUE(folder.Has("quintave-kept" + std::to_string(number + 1) + ".rec"));
        ExpectCleanStart();
        UnlockDirectory();
    }
    WriteItems(good);
    StartAnswering(YesAnswer);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(Recovery, WholeFilesOfNonsenseItemsAreDamaged) {
    ResourceDir = folder.Path();
    std::string bytes;
    for (const char *text : {"x", "value 0", "value 0 5", "value 0 5\n", "value 0 5\nabc", "value 0 1\nab", " \n",
                             "value 99999 1\na\n", "value 0 -1\na\n", "value 0 99999999999999999999\na\n",
                             "value 0 18446744073709551615\na\n", "value x 1\na\n"}) {
        WriteItems(text);
        std::vector<RecoveryItem> items;
        EXPECT_FALSE(ReadRecoveryFile(bytes, items)) << text;
    }
}
