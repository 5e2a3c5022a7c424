// Save and Save As: where they write, what they ask, what they leave on the screen.
#include "support/file_limit.h"
#include "support/report_test.h"

#include "groups/open_group.h"
#include "main/session.h"
#include "main/template_command.h"
#include "report/records.h"
#include "report/save_command.h"

#include <unistd.h>

namespace {

const std::vector<std::string> TwoFields{R"(1,60,"TEXT","Title","","")", R"(1,30,"TEXT","Place","","")"};

const ShownMessage NotAReportName{"Quintave", "You must select a `.RPX' file!\n\r\n\rPlease Try Again.", OkOnly};

class SaveCommand : public ReportTest {
protected:
    // Presses Save As and picks these paths one after the other; the dialog is cancelled after the last.
    void PickNames(const std::vector<std::string> &paths) {
        Dialogs.Texts.assign(paths.begin(), paths.end());
        Press(Quintave.CommandSaveAs);
    }

    std::string PathOf(const std::string &name) const { return folder.Path() + name; }
};

} // namespace

// --- Save As

TEST_F(SaveCommand, SaveAsShowsTheDialogWithItsTitleFilterAndOverwriteQuestion) {
    Start(TwoFields);
    PickNames({});
    ASSERT_EQ(Dialogs.Asked.size(), 1U);
    EXPECT_EQ(Dialogs.Asked[0].Title, "Name a Quintave report (*.RPX) output file...");
    EXPECT_EQ(Dialogs.Asked[0].Text, "Quintave Files(*.rpx)|*.rpx|All files(*.*)|*.*");
    EXPECT_EQ(Dialogs.Asked[0].Flags, OverwritePrompt);
    EXPECT_EQ(Dialogs.Asked[0].Directory, folder.Path());
}

TEST_F(SaveCommand, ANameThatIsNoReportIsRefusedAndAskedForAgain) {
    Start(TwoFields);
    PickNames({PathOf("a.txt"), PathOf("b.rpx")});
    EXPECT_EQ(Dialogs.Messages, std::vector{NotAReportName});
    ASSERT_EQ(Dialogs.Asked.size(), 2U);
    EXPECT_EQ(Dialogs.Asked[1].Proposal, "a.txt");
    EXPECT_EQ(Dialogs.Asked[1].Directory, folder.Path());
    EXPECT_FALSE(folder.Has("a.txt"));
    EXPECT_EQ(folder.Read("b.rpx"), ReportHeader);
}

TEST_F(SaveCommand, TheEndingCountsInAnyLetterCase) {
    Start(TwoFields);
    PickNames({PathOf("a.Rpx")});
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_EQ(folder.Read("a.Rpx"), ReportHeader);
}

TEST_F(SaveCommand, TheBareNameRpxIsAcceptedAndHasNoCaption) {
    Start(TwoFields);
    PickNames({PathOf("rpx")});
    EXPECT_TRUE(folder.Has("rpx"));
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ; ");
}

TEST_F(SaveCommand, ACaptionShowsTheNameWithoutItsLastFourCharacters) {
    EXPECT_EQ(CaptionName("wells.rpx"), "wells");
    EXPECT_EQ(CaptionName("a.rpx"), "a");
    EXPECT_EQ(CaptionName(".rpx"), "");
    EXPECT_EQ(CaptionName("xrpx"), "");
    EXPECT_EQ(CaptionName("K\u00F6ln.rpx"), "K\u00F6ln");
}

TEST_F(SaveCommand, SaveAsShowsTheNewNameAloneInTheCaption) {
    Start(TwoFields);
    folder.Write("old.rpx", ReportHeader);
    Add("old.rpx");
    PickNames({PathOf("new.rpx")});
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): new; ");
}

TEST_F(SaveCommand, CancellingEndsWithoutAMessageAndSaysSo) {
    Start(TwoFields);
    Enter(0, "Wells");
    TmpStr = "something";
    PickNames({});
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_EQ(TmpStr, "Cancel");
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(FileMark, FirstLoad);
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
}

TEST_F(SaveCommand, ASaveAfterOneThatWasCancelledSaysNothingOfIt) {
    Start(TwoFields);
    Enter(0, "Wells");
    TmpStr = "Cancel";
    PickNames({PathOf("a.rpx")});
    EXPECT_EQ(TmpStr, "");
    TmpStr = "Cancel";
    Press(Quintave.CommandSave);
    EXPECT_EQ(TmpStr, "");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(SaveCommand, AFailingDialogTellsItsErrorAndIsShownAgain) {
    Start(TwoFields);
    Dialogs.DialogErrors = {PathNotFound, 0};
    PickNames({PathOf("a.rpx")});
    EXPECT_EQ(
        Dialogs.Messages,
        std::vector{(ShownMessage{
            "Quintave",
            "Error: 76 - Path not found\r\nError accessing this file! (read only file or drive? file locked? wrong "
            "privileges?). 'SaveAs' to a different file name or location.",
            CriticalIcon})});
    EXPECT_EQ(Dialogs.Asked.size(), 2U);
    EXPECT_TRUE(folder.Has("a.rpx"));
}

TEST_F(SaveCommand, SaveAsWithinAGroupLeavesItFirst) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(2,5,"TEXT","Depth","","")", R"(1,1,"GROUP END","","","")"});
    Open(0);
    Press(Quintave.CommandSaveAs); // cancelled
    EXPECT_FALSE(Quintave.GrpExit.Visible);
    Open(0);
    Enter(0, "12 ft");
    EXPECT_THAT(SaveAs("a.rpx"), testing::HasSubstr("2,1,\"Depth\",\"12 ft\"\r\n"));
    EXPECT_FALSE(Quintave.GrpExit.Visible);
}

// --- Save

TEST_F(SaveCommand, SaveWithoutARememberedNameAsksForOne) {
    Start(TwoFields);
    for (const std::string_view mark : {FirstLoad, std::string_view()}) {
        FileMark = mark;
        Forget();
        Dialogs.Texts = {PathOf("a.rpx")};
        Press(Quintave.CommandSave);
        ASSERT_EQ(Dialogs.Asked.size(), 1U);
        EXPECT_EQ(Dialogs.Asked[0].Title, "Name a Quintave report (*.RPX) output file...");
        EXPECT_EQ(FileMark, "a.rpx");
    }
}

TEST_F(SaveCommand, SaveWritesToTheNameOfSaveAsWithoutAsking) {
    Start(TwoFields);
    Enter(0, "Wells");
    SaveAs("a.rpx");
    Enter(0, " of 1904");
    EXPECT_EQ(DataChanged, True);
    Press(Quintave.CommandSave);
    EXPECT_EQ(folder.Read("a.rpx"), ReportText({R"(1,1,"Title","Wells of 1904")"}));
    EXPECT_EQ(Dialogs.Asked.size(), 1U);
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(SaveCommand, SaveWritesToTheFileLoadedFirst) {
    Start(TwoFields);
    Load({R"(1,1,"Title","Wells")"});
    Enter(1, "Bern");
    Press(Quintave.CommandSave);
    EXPECT_EQ(folder.Read("A.rpx"), ReportText({R"(1,1,"Title","Wells")", R"(1,1,"Place","Bern")"}));
}

TEST_F(SaveCommand, SaveKeepsToItsFileWhateverNamesWerePickedSince) {
    Start(TwoFields);
    Enter(0, "Wells");
    std::filesystem::create_directory(folder.Path() + "there");
    PickNames({PathOf("there/a.rpx")});
    ReportFileDir = folder.Path(); // as after a print of another file
    ReportFileName = "printed.rpx";
    folder.Write("printed.rpx", "kept");
    Enter(1, "Bern");
    Press(Quintave.CommandSave);
    EXPECT_EQ(folder.Read("printed.rpx"), "kept");
    EXPECT_EQ(folder.Read("there/a.rpx"), ReportText({R"(1,1,"Title","Wells")", R"(1,1,"Place","Bern")"}));
}

TEST_F(SaveCommand, AnAddThatWasCancelledOrRefusedLeavesTheFileSaveWritesTo) {
    Start(TwoFields);
    Enter(0, "Wells");
    SaveAs("a.rpx");
    folder.Write("foreign.rpx", "1,2,3\r\n");
    Press(Quintave.CommandAdd); // cancelled
    Add("foreign.rpx");
    Enter(1, "Bern");
    Press(Quintave.CommandSave);
    EXPECT_EQ(folder.Read("a.rpx"), ReportText({R"(1,1,"Title","Wells")", R"(1,1,"Place","Bern")"}));
    EXPECT_EQ(folder.Read("foreign.rpx"), "1,2,3\r\n");
}

TEST_F(SaveCommand, ATemplateDialogThatWasCancelledLeavesNothingToOverwrite) {
    Start(TwoFields);
    Enter(0, "Wells");
    SaveAs("a.rpx");
    const std::string saved = folder.Read("a.rpx");
    folder.Write("OTHER.FTF", "no template");
    Dialogs.Texts = {PathOf("OTHER.FTF")};
    Press(Quintave.CommandTemplate);
    Forget();
    Press(Quintave.CommandSave); // the entries were emptied: a name is asked for
    EXPECT_EQ(Dialogs.Asked.size(), 1U);
    EXPECT_EQ(folder.Read("a.rpx"), saved);
    EXPECT_EQ(folder.Read("OTHER.FTF"), "no template");
}

TEST_F(SaveCommand, ALongerFileIsReplacedWithoutAQuestionBesideTheDialogs) {
    Start(TwoFields);
    folder.Write("a.rpx", std::string(5000, 'x'));
    EXPECT_EQ(SaveAs("a.rpx"), ReportHeader);
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(SaveCommand, SaveWithinAGroupLeavesItAndWritesTheOccurrence) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(2,5,"TEXT","Depth","","")", R"(1,1,"GROUP END","","","")"});
    SaveAs("a.rpx");
    Open(0);
    Open(0);
    Type("12 ft");
    PressCtrl('S');
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("2,1,\"Depth\",\"12 ft\"\r\n"));
    EXPECT_FALSE(Quintave.GrpExit.Visible);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(SaveCommand, SaveFromTheBoxWritesWhatWasJustTyped) {
    Start(TwoFields);
    SaveAs("a.rpx");
    Open(0);
    Type("Wells");
    PressCtrl('S');
    EXPECT_EQ(folder.Read("a.rpx"), ReportText({R"(1,1,"Title","Wells")"}));
    EXPECT_EQ(DataChanged, False);
}

TEST_F(SaveCommand, ATemporaryReportLeavesTheChangesMarkedAndTheRememberedName) {
    Start(TwoFields);
    Enter(0, "Wells");
    ReportFileName = "!quin!02.$$$";
    ReportFileDir = folder.Path();
    EXPECT_TRUE(WriteReportFile());
    EXPECT_EQ(folder.Read("!quin!02.$$$"), ReportText({R"(1,1,"Title","Wells")"}));
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(FileMark, FirstLoad);
}

// --- Failures

TEST_F(SaveCommand, AFailedSaveAsAsksAgainAndKeepsTheEntries) {
    Start(TwoFields);
    Enter(0, "Wells");
    std::filesystem::create_directory(folder.Path() + "dir.rpx");
    PickNames({PathOf("none/a.rpx"), PathOf("dir.rpx")});
    EXPECT_EQ(Dialogs.Messages,
              (std::vector{WriteMessage("76 - Path not found"), WriteMessage("75 - Path/File access error")}));
    EXPECT_EQ(Dialogs.Asked.size(), 3U);
    EXPECT_EQ(TmpStr, "Cancel");
    EXPECT_EQ(RowValue[0], "Wells");
    EXPECT_EQ(Row(0), " Title                     | Wells");
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
}

TEST_F(SaveCommand, ANameThatCouldNotBeWrittenIsTriedAgainByTheNextSave) {
    Start(TwoFields);
    Enter(0, "Wells");
    PickNames({PathOf("none/a.rpx")});
    std::filesystem::create_directory(folder.Path() + "none");
    Press(Quintave.CommandSave);
    EXPECT_EQ(folder.Read("none/a.rpx"), ReportText({R"(1,1,"Title","Wells")"}));
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): a; ");
}

TEST_F(SaveCommand, TheCaptionNamesTheReportThatASaveRepeatedAfterAFailedSaveAs) {
    Start(TwoFields);
    PickNames({PathOf("a.rpx")});
    PickNames({PathOf("none/b.rpx")});
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): a; ");
    std::filesystem::create_directory(folder.Path() + "none");
    Press(Quintave.CommandSave);
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): b; ");
}

TEST_F(SaveCommand, AFailedSaveEndsAfterItsMessage) {
    Start(TwoFields);
    Enter(0, "Wells");
    SaveAs("a.rpx");
    Enter(1, "Bern");
    std::filesystem::remove(folder.Path() + "a.rpx");
    std::filesystem::create_directory(folder.Path() + "a.rpx");
    Forget();
    Press(Quintave.CommandSave);
    EXPECT_EQ(Dialogs.Messages, std::vector{WriteMessage("75 - Path/File access error")});
    EXPECT_TRUE(Dialogs.Asked.empty());
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(RowValue[1], "Bern");
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): a; ");
}

TEST_F(SaveCommand, AFailedSaveLeavesTheQuotesOfAMemo) {
    Start({R"(1,999,"MEMO","Notes","","")"});
    SaveAs("a.rpx");
    std::filesystem::remove(folder.Path() + "a.rpx");
    std::filesystem::create_directory(folder.Path() + "a.rpx");
    RowValue[0] = "a \"quoted\" word";
    Press(Quintave.CommandSave);
    EXPECT_EQ(RowValue[0], "a \"quoted\" word");
    std::filesystem::remove(folder.Path() + "a.rpx");
    Press(Quintave.CommandSave);
    EXPECT_EQ(RowValue[0], "a 'quoted' word");
}

TEST_F(SaveCommand, AFailedSaveLeavesTheFocusWhereItWas) {
    Start(TwoFields);
    Enter(0, "Wells");
    SaveAs("a.rpx");
    std::filesystem::remove(folder.Path() + "a.rpx");
    std::filesystem::create_directory(folder.Path() + "a.rpx");
    Open(1);
    Type("Bern");
    const Control *const box = Focused();
    PressCtrl('S');
    EXPECT_EQ(Focused(), box);
    EXPECT_NE(Focused(), &Quintave.List1[0]);
    EXPECT_EQ(DataChanged, True);
    Type("e"); // what is typed on goes to the same value
    PressEnter();
    EXPECT_EQ(RowValue[1], "Berne");
}

TEST_F(SaveCommand, AFullDiskThatShowsAtTheEndIsTold) {
    Start(TwoFields);
    Enter(0, "Wells");
    ASSERT_EQ(symlink("/dev/full", PathOf("a.rpx").c_str()), 0);
    PickNames({PathOf("a.rpx")});
    EXPECT_EQ(Dialogs.Messages, std::vector{WriteMessage("61 - Disk full")});
    EXPECT_EQ(DataChanged, True);
}

TEST_F(SaveCommand, APartlyWrittenFileStays) {
    Start(TwoFields);
    Enter(0, "Wells of 1904");
    {
        const FileSizeLimit limit(40);
        PickNames({PathOf("a.rpx")});
    }
    EXPECT_EQ(Dialogs.Messages, std::vector{WriteMessage("61 - Disk full")});
    EXPECT_EQ(folder.Read("a.rpx"), ReportText({R"(1,1,"Title","Wells of 1904")"}).substr(0, 40));
    EXPECT_EQ(RowValue[0], "Wells of 1904");
    EXPECT_EQ(DataChanged, True);
}

// --- Commands that save on the way

TEST_F(SaveCommand, ResetAfterACancelledSaveEmptiesNothing) {
    Start(TwoFields);
    Enter(0, "Wells");
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandReset);
    EXPECT_EQ(TmpStr, "CANCELLED");
    EXPECT_EQ(RowValue[0], "Wells");
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(QuitSave, False);
}

TEST_F(SaveCommand, QuittingAfterASaveThatWasCancelledOrFailedStaysOpen) {
    Start(TwoFields);
    Enter(0, "Wells");
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandQuit);
    EXPECT_FALSE(ProgramEnded());
    FileMark = "a.rpx";
    FileMarkDir = folder.Path() + "none/";
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandQuit);
    EXPECT_EQ(LastMessage(), WriteMessage("76 - Path not found"));
    EXPECT_FALSE(ProgramEnded());
}

TEST_F(SaveCommand, ClosingAfterASaveThatWasCancelledOrFailedIsRefused) {
    Start(TwoFields);
    Enter(0, "Wells");
    Dialogs.Answers = {YesAnswer};
    EXPECT_FALSE(CloseMainWindow());
    FileMark = "a.rpx";
    FileMarkDir = folder.Path() + "none/";
    Dialogs.Answers = {YesAnswer};
    EXPECT_FALSE(CloseMainWindow());
    EXPECT_EQ(LastMessage(), WriteMessage("76 - Path not found"));
    EXPECT_EQ(RowValue[0], "Wells");
}
