// Add/Open and Add/Merge, and the report loaded at the start.
#include "support/report_test.h"

#include "groups/open_group.h"
#include "main/start_up.h"
#include "model/store.h"
#include "report/temporary_report.h"

namespace {

const std::vector<std::string> TwoFields{R"(1,60,"TEXT","Title","","")", R"(1,30,"TEXT","Place","","")"};

class AddCommand : public ReportTest {};

} // namespace

TEST_F(AddCommand, TheDialogHasItsTitleAndFilter) {
    Start(TwoFields);
    Press(Quintave.CommandAdd);
    ASSERT_EQ(Dialogs.Asked.size(), 1U);
    EXPECT_EQ(Dialogs.Asked[0].Title, "Pick a '*.RPX' file to add...");
    EXPECT_EQ(Dialogs.Asked[0].Text, "Quintave Files(*.rpx)|*.rpx|All files(*.*)|*.*");
    EXPECT_EQ(Dialogs.Asked[0].Directory, folder.Path());
}

TEST_F(AddCommand, CancellingChangesNothingAndReturnsToTheFieldList) {
    Start(TwoFields);
    Enter(0, "Wells");
    const std::string dir = ReportFileDir;
    Press(Quintave.CommandAdd);
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_EQ(RowValue[0], "Wells");
    EXPECT_EQ(FileMark, FirstLoad);
    EXPECT_EQ(ReportFileName, "");
    EXPECT_EQ(ReportFileDir, dir);
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
}

TEST_F(AddCommand, ANameThatIsNoReportIsRefusedAndTheCommandEnds) {
    Start(TwoFields);
    folder.Write("A.txt", ReportText({R"(1,1,"Title","x")"}));
    Add("A.txt");
    EXPECT_EQ(
        Dialogs.Messages,
        std::vector{(ShownMessage{"Quintave", "You must select a `*.RPX' file!\n\r\n\rPlease Try Again.", OkOnly})});
    EXPECT_EQ(Dialogs.Asked.size(), 1U);
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(FileMark, FirstLoad);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(AddCommand, ALoadNamesTheFileInTheCaptionAndTurnsTheButtonToMerge) {
    Start(TwoFields);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Open File");
    Load({R"(1,1,"Title","x")"});
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): A; ");
    EXPECT_EQ(FileMark, "A.rpx");
    EXPECT_EQ(FileMarkDir, folder.Path());
    EXPECT_EQ(DataChanged, False);
}

TEST_F(AddCommand, TheEntriesAreFirstWrittenToATemporaryReport) {
    Start(TwoFields);
    Enter(0, "Wells");
    Press(Quintave.CommandAdd);
    EXPECT_EQ(folder.Read("!quin!02.$$$"), ReportText({R"(1,1,"Title","Wells")"}));
    EXPECT_EQ(DataChanged, True);
    Press(Quintave.CommandAdd);
    EXPECT_TRUE(folder.Has("!quin!03.$$$"));
}

TEST_F(AddCommand, ATextJustTypedIsInTheTemporaryReport) {
    Start(TwoFields);
    Open(0);
    Type("Wells");
    PressCtrl('A');
    EXPECT_EQ(folder.Read("!quin!02.$$$"), ReportText({R"(1,1,"Title","Wells")"}));
}

TEST_F(AddCommand, TemporaryReportsTakeTheFirstFreeNameAndInTheEndReplaceTheOneOf99) {
    Start(TwoFields);
    EXPECT_EQ(TemporaryReportName(), "!quin!02.$$$");
    for (int n = 2; n <= 99; ++n) {
        const std::string digits = n < 10 ? "0" + std::to_string(n) : std::to_string(n);
        folder.Write("!quin!" + digits + ".$$$", "");
    }
    EXPECT_EQ(TemporaryReportName(), "!quin!00.$$$");
    folder.Write("!quin!00.$$$", "");
    EXPECT_EQ(TemporaryReportName(), "!quin!01.$$$");
    folder.Write("!quin!01.$$$", "");
    EXPECT_EQ(TemporaryReportName(), "!quin!99.$$$");
    Press(Quintave.CommandAdd);
    EXPECT_EQ(folder.Read("!quin!99.$$$"), ReportHeader);
}

TEST_F(AddCommand, TheTemporaryReportLiesInTheResourceDirectoryWhereverReportsGo) {
    Start(TwoFields);
    std::filesystem::create_directory(folder.Path() + "there");
    SaveAs("there/a.rpx");
    Press(Quintave.CommandAdd);
    EXPECT_TRUE(folder.Has("!quin!02.$$$"));
    EXPECT_EQ(ReportFileName, "a.rpx");
    EXPECT_EQ(ReportFileDir, folder.Path() + "there/");
    EXPECT_EQ(FileMark, "a.rpx");
}

TEST_F(AddCommand, ATemporaryReportThatCannotBeWrittenIsToldAndTheCommandGoesOn) {
    Start(TwoFields);
    for (int n = 0; n <= 99; ++n)
        std::filesystem::create_directory(folder.Path() + "!quin!" + std::to_string(n + 100).substr(1) + ".$$$");
    Load({R"(1,1,"Title","x")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{WriteMessage("75 - Path/File access error")});
    EXPECT_EQ(RowValue[0], "x");
}

TEST_F(AddCommand, AnOpenGroupIsLeftFirst) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(2,5,"TEXT","Depth","","")", R"(1,1,"GROUP END","","","")"});
    Open(0);
    Enter(0, "a");
    ASSERT_EQ(ActiveList, GroupList);
    Press(Quintave.CommandAdd);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_FALSE(Quintave.GrpExit.Visible);
    EXPECT_THAT(folder.Read("!quin!02.$$$"), testing::HasSubstr("2,1,\"Depth\",\"a\"\r\n"));
}

TEST_F(AddCommand, AfterALoadTheSelectedRowShowsItsLoadedValue) {
    Start(TwoFields);
    Select(1);
    Load({R"(1,1,"Title","x")", R"(1,1,"Place","Bern")"});
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(Quintave.List1[0].ListIndex, 1);
    EXPECT_EQ(Quintave.Text1[1].Text, "Bern");
    EXPECT_TRUE(Quintave.Text1[1].Visible);
    EXPECT_FALSE(Quintave.Text1[2].Visible);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(AddCommand, AfterALoadTheInstanceControlsCountTheLoadedInstances) {
    Start(TwoFields);
    Dialogs.Answers = {NoAnswer};
    Load({R"(1,1,"Title","x")", R"(1,1,"Title","y")"});
    EXPECT_EQ(Quintave.FILabel[0].Caption, "2");
    EXPECT_EQ(Quintave.FIScroll.Max, 2);
    EXPECT_EQ(Quintave.Text1[2].Text, "x");
}

TEST_F(AddCommand, AfterARefusedOrStoppedLoadTheSelectedRowIsARowAgain) {
    Start(TwoFields);
    Select(1);
    folder.Write("A.rpx", "");
    Add("A.rpx");
    EXPECT_EQ(CurrentField, 1);
    Load({R"(1,1,"Place","Bern")", "broken"});
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(Quintave.Text1[1].Text, "Bern");
}

// Neither the instance shown nor a choice that is marked, but not taken yet.
TEST_F(AddCommand, ARefusedFileLeavesTheInstanceShown) {
    Start(TwoFields);
    folder.Write("foreign.rpx", "name,age\r\nAnn,7\r\n");
    RowValue[0] = "a|b|c";
    Select(0);
    SetValue(Quintave.FIScroll, 2);
    ASSERT_EQ(Quintave.Text1[2].Text, "b");
    for (const char *name : {"foreign.rpx", "none.rpx"}) {
        SCOPED_TRACE(name);
        Add(name);
        EXPECT_EQ(Quintave.Text1[2].Text, "b");
        EXPECT_EQ(Quintave.FIScroll.Value, 2);
        EXPECT_EQ(Quintave.FILabel[1].Caption, "2");
        EXPECT_EQ(CurrentField, 0);
    }
    EXPECT_EQ(Dialogs.Messages, (std::vector{InvalidFormatMessage(), LoadMessage("none.rpx", "53 - File not found")}));
}

TEST_F(AddCommand, ARefusedFileLeavesTheMarkedChoice) {
    Start({R"(1,9,"LIST","Colour","","")", "Red", "Green", "Blue", "XXX-1XXX"});
    folder.Write("foreign.rpx", "");
    Open(0);
    ClickRow(Quintave.List2[0], 2);
    ASSERT_EQ(RowValue[0], "");
    Add("foreign.rpx");
    EXPECT_EQ(Quintave.List2[0].ListIndex, 2);
    EXPECT_TRUE(Quintave.List2[0].Visible);
    EXPECT_EQ(RowValue[0], "");
}

// --- CurrentField while a report is read

namespace {

Integer FieldDuringLoad = 0;

// Asks for a second load in the first one's message.
Answer AskAgain(const ShownMessage &message) {
    FieldDuringLoad = CurrentField;
    static bool asked = false;
    if (!asked) CurrentField = 778;
    asked = true;
    return DefaultAnswer(message.Style);
}

} // namespace

TEST_F(AddCommand, NoRowIsTheSelectedOneWhileAReportIsRead) {
    Start(TwoFields);
    Select(1);
    Dialogs.Reply = [](const ShownMessage &message) {
        FieldDuringLoad = CurrentField;
        return DefaultAnswer(message.Style);
    };
    Load({R"(1,1,"Colour","red")"});
    EXPECT_EQ(FieldDuringLoad, 777);
    EXPECT_EQ(CurrentField, 1);
}

TEST_F(AddCommand, ALoadThatIsAskedForAgainIsMadeTwiceAndCountsOnce) {
    Start(TwoFields);
    Dialogs.Reply = AskAgain;
    Load({R"(1,1,"Title","x")", R"(1,1,"Colour","red")"});
    EXPECT_EQ(RowValue[0], "x|x");
    EXPECT_EQ(FileMark, "A.rpx");
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): A; ");
    EXPECT_EQ(CurrentField, 0);
}

// The dialog would otherwise stand before entries that a crash could still take.
TEST_F(AddCommand, TheTemporaryReportIsWrittenBeforeTheDialog) {
    Start(TwoFields);
    Enter(0, "Wells");
    static std::string path;
    static bool there = false;
    path = folder.Path() + "!quin!02.$$$";
    // A dialog that fails shows its message where it stands.
    Dialogs.DialogErrors = {PathNotFound};
    Dialogs.Reply = [](const ShownMessage &message) {
        there = std::filesystem::exists(path);
        return DefaultAnswer(message.Style);
    };
    Press(Quintave.CommandAdd);
    EXPECT_TRUE(there);
}

TEST_F(AddCommand, AnEditIsCommittedToItsRowBeforeTheLoad) {
    Start(TwoFields);
    Open(0);
    Type("Wells");
    Dialogs.Answers = {NoAnswer};
    folder.Write("A.rpx", ReportText({R"(1,1,"Title","x")"}));
    Dialogs.Texts = {folder.Path() + "A.rpx"};
    PressCtrl('A');
    EXPECT_EQ(RowValue[0], "Wells|x");
}

TEST_F(AddCommand, ADialogThatFailsIsToldAndEndsTheCommand) {
    Start(TwoFields);
    Dialogs.DialogErrors = {PathNotFound};
    Press(Quintave.CommandAdd);
    EXPECT_EQ(Dialogs.Messages, std::vector{(ShownMessage{"Quintave", "Error: 76 - Path not found", CriticalIcon})});
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(AddCommand, AReportOfAnotherTemplateLoadsWhatMatches) {
    Start(TwoFields);
    Dialogs.Answers = {YesAnswer};
    folder.Write("A.rpx",
                 "0,\"QuintaveV2\",\"OTHER.FTF\"\r\n" + Lines({R"(1,1,"Colour","red")", R"(1,1,"Place","Bern")"}));
    Add("A.rpx");
    EXPECT_EQ(Dialogs.Messages, std::vector{NotFoundMessage("Colour")});
    EXPECT_EQ(RowValue[1], "Bern");
}

// --- The report loaded at the start

namespace {

class StartReport : public ReportTest {
protected:
    void StartWith(const std::string &startFile, const std::string &argument = "") {
        folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"" + startFile + "\"\r\n");
        folder.Write("SITE.FTF", TemplateText(TwoFields));
        folder.Write("First.rpx", ReportText({R"(1,1,"Title","first")"}));
        folder.Write("second.rpx", ReportText({R"(1,1,"Title","second")"}));
        ASSERT_TRUE(LoadMainWindow({.Resources = "", .Report = argument}));
        ActivateMainWindow();
        Press(Quintave.LogoOff);
    }
};

} // namespace

TEST_F(StartReport, TheTablesStartFileIsLoadedWithoutADialogOrATemporaryReport) {
    StartWith("FIRST.RPX");
    EXPECT_EQ(RowValue[0], "first");
    EXPECT_EQ(FileMark, "First.rpx");
    EXPECT_TRUE(Dialogs.Asked.empty());
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_FALSE(folder.Has("!quin!02.$$$"));
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): First; ");
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
}

TEST_F(StartReport, TheProgramsArgumentTakesThePlaceOfTheStartFile) {
    StartWith("first.rpx", folder.Path() + "second.rpx");
    EXPECT_EQ(RowValue[0], "second");
}

TEST_F(StartReport, AnyOtherTextIsIgnored) {
    StartWith("first.txt");
    EXPECT_EQ(RowValue[0], "");
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_EQ(FileMark, FirstLoad);
}

TEST_F(StartReport, AMissingStartFileIsTold) {
    StartWith("none.rpx");
    EXPECT_EQ(Dialogs.Messages, std::vector{LoadMessage("none.rpx", "53 - File not found")});
    EXPECT_EQ(FileMark, FirstLoad);
}
