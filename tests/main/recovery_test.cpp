// Unsaved entries after the program was killed: the question of the next start, and what comes back.
#include "main/recovery.h"

#include "main/start_up.h"
#include "platform/files.h"
#include "support/recovery_test.h"

#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/file.h>

namespace {

using testing::IsEmpty;
namespace fs = std::filesystem;

std::string Question(const std::string &lines, const std::string &note = "") {
    return "The entries of your last session were not SAVED when Quintave ended.\r\n\r\n" + lines +
           "\r\nWould you like to bring them BACK?\r\n\r\n        YES - Bring all entries back, still to be saved.\r\n"
           "        NO - Remove them for good." +
           note;
}

constexpr int OfferStyle = YesNo + QuestionIcon;
const std::string OwnTemplate = "        Fields Template File: SITE.FTF\r\n";

class RandomWork : public Recovery {
protected:
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
    EXPECT_FALSE(folder.Has(KeptName));
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

TEST_F(Recovery, WhatALoadedReportBroughtComesBackWithTheChangesBehindIt) {
    Crash([this] {
        Enter(TitleRow, "Lakes");
        Open(GroupRow);
        Enter(0, "1 m");
        Press(Quintave.FldChange[Next]);
        Enter(0, "2 m");
        SaveAs("a.rpx");
        Press(Quintave.CommandReset);
        EXPECT_EQ(StoreOf(GroupElement), std::string(10, ' '));
        Dialogs.Texts = {folder.Path() + "a.rpx"};
        Press(Quintave.CommandAdd);
        EXPECT_EQ(DataChanged, 0);
        Enter(LastRow, "End");
        TenSecondsPass();
    });
    StartAnswering(YesAnswer);
    EXPECT_EQ(RowValue[TitleRow], "Lakes");
    EXPECT_EQ(StoreOf(GroupElement), "1 m       2 m       ");
    EXPECT_EQ(RowValue[LastRow], "End");
    EXPECT_EQ(FileMark, "a.rpx");
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
        EXPECT_TRUE(folder.Has(KeptName));
    }
}

// The stores are compared too: a report tells nothing of blank values at the end of an occurrence's cells.
TEST_F(RandomWork, ComesBackAsItWouldHaveBeenSaved) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        Crash([this, seed] {
            WorkAtRandom(seed);
            SaveAs("want.rpx");
            folder.Write("want.grp", StoreOf(GroupElement));
        });
        ASSERT_FALSE(folder.Has(KeptName));
        Crash([seed] {
            WorkAtRandom(seed);
            TenSecondsPass();
        });
        ASSERT_TRUE(folder.Has(KeptName));
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
    EXPECT_FALSE(folder.Has(KeptName));
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
    const std::string kept = folder.Read(KeptName);
    const int handle = open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(handle, LOCK_EX | LOCK_NB), 0);
    Dialogs.Answers = {NoAnswer};
    EXPECT_FALSE(LoadMainWindow({}));
    ASSERT_EQ(MessageCount(), 1U);
    EXPECT_EQ(LastMessage().Title, "BAD DRIVE/DIRECTORY INFORMATION!");
    EXPECT_EQ(folder.Read(KeptName), kept);
    close(handle);
}
