// Reset, quit, closing the window, and the template command around them.
#include "main/session.h"

#include "groups/open_group.h"
#include "main/template_command.h"
#include "platform/files.h"
#include "support/messages.h"
#include "support/screen_test.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

constexpr int Question = YesNoCancel;
constexpr const char *TitleRow = " Title                     | ";
constexpr const char *Caption = "[Template: SITE.FTF] - RPX File(s): ";

const std::vector<std::string> Fields{R"(1,30,"TEXT","Title","","")",
                                      R"(1,30,"LIST","Colour","","")",
                                      "Red",
                                      "Blue",
                                      "OTHER...",
                                      "XXX-1XXX",
                                      R"(1,-1,"","Samples","","")",
                                      R"(2,2,"GROUP START","Sample","","")",
                                      R"(3,5,"TEXT","Depth","","")",
                                      R"(3,5,"TEXT","Place","","")",
                                      R"(2,0,"GROUP END","","","")",
                                      R"(2,30,"TEXT","Last","","")"};
constexpr Integer GroupRow = 3;

std::string BlankStore() { return std::string("\x0A\0\1\0", 4) + std::string(10, ' '); }

class Session : public ScreenTest {
protected:
    void StartWithEntries() {
        Start(Fields);
        Enter(0, "Wells");
        ASSERT_EQ(DataChanged, -1);
    }

    // Enters a depth in the first occurrence and stays in the group, on its second row.
    void EnterGroup() {
        Open(GroupRow);
        Enter(0, "12");
        ASSERT_EQ(ActiveList, 3);
        ASSERT_EQ(CurrentField, 1);
    }

    void ExpectWorkFilesDeleted() const {
        EXPECT_THAT(MatchingNames(folder.Path(), "*.XXX"), IsEmpty());
        EXPECT_THAT(MatchingNames(folder.Path(), "*.$$$"), IsEmpty());
    }

    void ExpectWorkFilesKept() const { EXPECT_THAT(MatchingNames(folder.Path(), "*.XXX"), SizeIs(2)); }

    void ExpectEmptied() {
        EXPECT_THAT(Quintave.List1[0].Rows.at(0), TitleRow);
        for (const auto &value : RowValue) EXPECT_EQ(value, "");
        EXPECT_EQ(DataChanged, 0);
        EXPECT_EQ(FileMark, "FirstLoad");
        EXPECT_EQ(CurrentField, 0);
        EXPECT_EQ(Quintave.List1[0].ListIndex, 0);
        EXPECT_EQ(LoadState, 0);
        EXPECT_EQ(Quintave.editframe.Caption, Caption);
        EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Open File");
        EXPECT_EQ(folder.Read("GRP00004.XXX"), BlankStore());
    }

    // The commit of a pending edit finds the row that is selected on the screen.
    static void ExpectRowsInStep() { EXPECT_EQ(CurrentField, ActiveRows().ListIndex); }
};

void ExpectResetQuestion() {
    ExpectOneMessage("CLEAR ALL FIELDS (Reset)", "Do you want to SAVE these field settings before you RESET?",
                     Question + SecondIsDefault);
}

void ExpectQuitQuestion() {
    ExpectOneMessage("Quit Quintave", "Do you want to SAVE this field information before you QUIT?", Question);
}

void ExpectClosingQuestion() {
    ExpectOneMessage("Done with SESSION", "Do you want to SAVE THE CHANGES you made?", Question);
}

} // namespace

// --- Reset
// --------------------------------------------------------------------------------------------------------------

TEST_F(Session, ResetWithoutUnsavedEntriesAsksNothingAndEmptiesTheScreen) {
    StartWithEntries();
    SaveAs("a.rpx");
    ASSERT_EQ(DataChanged, 0);
    Press(Quintave.CommandReset);
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    ExpectEmptied();
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_TRUE(Quintave.editframe.Enabled);
}

TEST_F(Session, ResetAnsweredCancelLeavesEverything) {
    StartWithEntries();
    SaveAs("a.rpx");
    Enter(0, "2");
    Select(4);
    Dialogs.Answers = {CancelAnswer};
    Press(Quintave.CommandReset);
    ExpectResetQuestion();
    EXPECT_EQ(TmpStr, "CANCELLED");
    EXPECT_EQ(RowValue[0], "Wells2");
    EXPECT_EQ(CurrentField, 4);
    EXPECT_EQ(Quintave.List1[0].ListIndex, 4);
    EXPECT_EQ(DataChanged, -1);
    EXPECT_EQ(FileMark, "a.rpx");
    EXPECT_EQ(QuitSave, 0);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(Session, ResetAnsweredCancelLeavesAnOpenGroupOpen) {
    StartWithEntries();
    EnterGroup();
    Dialogs.Answers = {CancelAnswer};
    Press(Quintave.CommandReset);
    ExpectResetQuestion();
    EXPECT_EQ(ActiveList, 3);
    EXPECT_TRUE(Quintave.TableFrame.Visible);
    EXPECT_TRUE(Quintave.GrpExit.Visible);
    EXPECT_EQ(Row(0), " Depth                     | 12");
    EXPECT_EQ(CurrentField, 1);
    ExpectRowsInStep();
    EXPECT_EQ(Focused(), &Quintave.List1[3]);
}

TEST_F(Session, TheDefaultOfTheResetQuestionIsNotToSave) {
    StartWithEntries();
    Press(Quintave.CommandReset);
    ExpectResetQuestion();
    ExpectEmptied();
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
}

TEST_F(Session, ResetAnsweredYesSavesFirst) {
    StartWithEntries();
    Dialogs.Answers = {YesAnswer};
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    Press(Quintave.CommandReset);
    ExpectResetQuestion();
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("\"Wells\""));
    ExpectEmptied();
    EXPECT_EQ(QuitSave, 0);
    EXPECT_NE(TmpStr, "CANCELLED");
}

TEST_F(Session, ResetAnsweredYesSavesToTheRememberedReport) {
    StartWithEntries();
    SaveAs("a.rpx");
    Enter(0, "2");
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandReset);
    ExpectResetQuestion();
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("\"Wells2\""));
    ExpectEmptied();
}

TEST_F(Session, ResetWhoseSaveIsCancelledEmptiesNothing) {
    StartWithEntries();
    Dialogs.Answers = {YesAnswer};
    Dialogs.Texts = {""};
    Press(Quintave.CommandReset);
    ExpectResetQuestion();
    EXPECT_EQ(TmpStr, "CANCELLED");
    EXPECT_EQ(RowValue[0], "Wells");
    EXPECT_EQ(DataChanged, -1);
    EXPECT_EQ(QuitSave, 0);
}

TEST_F(Session, ResetWhoseSaveFailsEmptiesNothing) {
    StartWithEntries();
    SaveAs("a.rpx");
    fs::remove(folder.Path() + "a.rpx");
    fs::create_directory(folder.Path() + "a.rpx");
    Enter(0, "2");
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandReset);
    EXPECT_THAT(Dialogs.Messages, SizeIs(2)); // the question and the save's own message
    EXPECT_EQ(TmpStr, "CANCELLED");
    EXPECT_EQ(RowValue[0], "Wells2");
    EXPECT_EQ(DataChanged, -1);
}

TEST_F(Session, ResetFromAGroupWhoseSaveIsCancelledStaysOnARowOfTheListInUse) {
    StartWithEntries();
    EnterGroup();
    Dialogs.Answers = {YesAnswer};
    Dialogs.Texts = {""};
    Press(Quintave.CommandReset);
    EXPECT_EQ(TmpStr, "CANCELLED");
    ExpectRowsInStep();
    EXPECT_THAT(folder.Read("GRP00004.XXX"), testing::HasSubstr("12"));
    EXPECT_EQ(RowValue[0], "Wells");
}

TEST_F(Session, ResetCommitsAnEditFirst) {
    StartWithEntries();
    Select(4);
    Type("typed");
    Dialogs.Answers = {YesAnswer};
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    CommandReset_Click();
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("\"typed\""));
    ExpectEmptied();
}

TEST_F(Session, ResetEmptiesValuesRowsAndChosenEntries) {
    StartWithEntries();
    Open(1);
    Type("B");
    Enter(4, "end");
    EnterGroup();
    Press(Quintave.GrpExit);
    const std::vector<std::string> headings{Row(2), Row(3)};
    ASSERT_EQ(FieldInfo[2][Choice], 1);
    Press(Quintave.FldChange[Next]);
    Press(Quintave.CommandReset);
    ExpectEmptied();
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre(TitleRow, " Colour                    | ", headings[0], headings[1],
                                                    " Last                      | "));
    EXPECT_EQ(headings[0].size(), 63U);
    EXPECT_EQ(headings[1], " Sample                    | -- REPEATABLE GROUP --");
    EXPECT_EQ(FieldInfo[2][Choice], -1);
    EXPECT_EQ(FieldInfo[4][Choice], 0);
    Select(1);
    EXPECT_EQ(Quintave.List2[0].ListIndex, -1);
}

TEST_F(Session, ResetMakesEveryGroupStoreBlank) {
    StartWithEntries();
    EnterGroup();
    Press(Quintave.FldChange[Next]);
    Enter(0, "34");
    ASSERT_EQ(folder.Read("GRP00004.XXX").substr(0, 4), std::string("\x0A\0\2\0", 4));
    Press(Quintave.CommandReset);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_FALSE(Quintave.TableFrame.Visible);
    ExpectEmptied();
    Open(GroupRow);
    EXPECT_EQ(Row(0), " Depth                     | ");
    EXPECT_THAT(Quintave.TblFldNum.Rows, ElementsAre("1"));
}

TEST_F(Session, ResetMakesAMissingGroupStoreAnew) {
    StartWithEntries();
    fs::remove(folder.Path() + "GRP00004.XXX");
    Press(Quintave.CommandReset);
    ExpectResetQuestion();
    ExpectEmptied();
}

TEST_F(Session, AGroupStoreThatResetCannotWriteIsTold) {
    StartWithEntries();
    fs::remove(folder.Path() + "GRP00004.XXX");
    fs::create_directory(folder.Path() + "GRP00004.XXX");
    SaveAs("a.rpx");
    Dialogs.Messages.clear();
    DataChanged = False;
    Press(Quintave.CommandReset);
    ExpectWorkFileError("75 - Path/File access error");
    EXPECT_EQ(RowValue[0], "");
}

// --- Quit
// ---------------------------------------------------------------------------------------------------------------

TEST_F(Session, QuitWithoutUnsavedEntriesEndsAtOnce) {
    StartWithEntries();
    SaveAs("a.rpx");
    folder.Write("!quin!02.$$$", "");
    Press(Quintave.CommandQuit);
    EXPECT_TRUE(ProgramEnded());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    ExpectWorkFilesDeleted();
}

TEST_F(Session, QuitAnsweredCancelStays) {
    StartWithEntries();
    Dialogs.Answers = {CancelAnswer};
    Press(Quintave.CommandQuit);
    ExpectQuitQuestion();
    EXPECT_FALSE(ProgramEnded());
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_EQ(RowValue[0], "Wells");
    ExpectWorkFilesKept();
}

TEST_F(Session, QuitAnsweredNoEndsWithoutSaving) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer};
    Press(Quintave.CommandQuit);
    ExpectQuitQuestion();
    EXPECT_TRUE(ProgramEnded());
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
    ExpectWorkFilesDeleted();
}

TEST_F(Session, QuitAnsweredYesWhichIsTheDefaultSavesFirst) {
    StartWithEntries();
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    Press(Quintave.CommandQuit);
    ExpectQuitQuestion();
    EXPECT_TRUE(ProgramEnded());
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("\"Wells\""));
    EXPECT_EQ(QuitSave, 0);
    ExpectWorkFilesDeleted();
}

TEST_F(Session, QuitWhoseSaveIsCancelledStays) {
    StartWithEntries();
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandQuit);
    ExpectQuitQuestion();
    EXPECT_FALSE(ProgramEnded());
    EXPECT_EQ(QuitSave, 0);
    EXPECT_EQ(DataChanged, -1);
    ExpectWorkFilesKept();
}

TEST_F(Session, QuitWhoseSaveFailsStays) {
    StartWithEntries();
    SaveAs("a.rpx");
    fs::remove(folder.Path() + "a.rpx");
    fs::create_directory(folder.Path() + "a.rpx");
    Enter(0, "2");
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandQuit);
    EXPECT_THAT(Dialogs.Messages, SizeIs(2));
    EXPECT_FALSE(ProgramEnded());
    ExpectWorkFilesKept();
}

TEST_F(Session, ASaveCancelledEarlierDoesNotKeepTheProgramOpen) {
    StartWithEntries();
    Dialogs.Texts = {""};
    Press(Quintave.CommandSaveAs);
    ASSERT_EQ(TmpStr, "Cancel");
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    Press(Quintave.CommandQuit);
    EXPECT_TRUE(ProgramEnded());
}

TEST_F(Session, AnInstanceThatReadsCancelDoesNotKeepTheProgramOpen) {
    StartWithEntries();
    Select(0);
    Press(Quintave.FIAdd);
    SetFocus(Quintave.Text1[1]);
    Type("Cancel");
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    PressCtrl('Q');
    EXPECT_TRUE(ProgramEnded());
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("\"Cancel\""));
}

TEST_F(Session, QuitLeavesAGroupBeforeItAsks) {
    StartWithEntries();
    EnterGroup();
    Dialogs.Answers = {CancelAnswer};
    Press(Quintave.CommandQuit);
    ExpectQuitQuestion();
    EXPECT_EQ(ActiveList, 0);
    EXPECT_FALSE(Quintave.GrpExit.Visible);
    EXPECT_EQ(folder.Read("GRP00004.XXX"), std::string("\x0A\0\1\0", 4) + "12        ");
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    ExpectRowsInStep();
}

TEST_F(Session, EndingGivesTheDirectoryFree) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer};
    Press(Quintave.CommandQuit);
    const int handle = open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY);
    EXPECT_EQ(flock(handle, LOCK_EX | LOCK_NB), 0);
    close(handle);
}

// --- Closing the window
// ------------------------------------------------------------------------------------------------

TEST_F(Session, ClosingWithoutUnsavedEntriesAsksNothing) {
    StartWithEntries();
    SaveAs("a.rpx");
    EXPECT_TRUE(CloseMainWindow());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    ExpectWorkFilesDeleted();
}

TEST_F(Session, ClosingAnsweredCancelIsRefused) {
    StartWithEntries();
    Dialogs.Answers = {CancelAnswer};
    EXPECT_FALSE(CloseMainWindow());
    ExpectClosingQuestion();
    EXPECT_FALSE(ProgramEnded());
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    ExpectWorkFilesKept();
}

TEST_F(Session, ClosingAnsweredNoClosesWithoutSaving) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer};
    EXPECT_TRUE(CloseMainWindow());
    ExpectClosingQuestion();
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
    ExpectWorkFilesDeleted();
}

TEST_F(Session, ClosingAnsweredYesWhichIsTheDefaultSavesFirst) {
    StartWithEntries();
    EnterGroup();
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    EXPECT_TRUE(CloseMainWindow());
    ExpectClosingQuestion();
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("\"Wells\""));
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("\"12\""));
    EXPECT_EQ(QuitSave, 0);
    ExpectWorkFilesDeleted();
}

TEST_F(Session, ClosingAnsweredCancelLeavesAnOpenGroupOpen) {
    StartWithEntries();
    EnterGroup();
    Dialogs.Answers = {CancelAnswer};
    EXPECT_FALSE(CloseMainWindow());
    ExpectClosingQuestion();
    EXPECT_EQ(ActiveList, 3);
    EXPECT_TRUE(Quintave.TableFrame.Visible);
    EXPECT_EQ(Focused(), &Quintave.List1[3]);
    ExpectRowsInStep();
}

TEST_F(Session, ClosingWhoseSaveIsCancelledOrFailsIsRefused) {
    StartWithEntries();
    Dialogs.Answers = {YesAnswer};
    EXPECT_FALSE(CloseMainWindow());
    ExpectClosingQuestion();
    EXPECT_EQ(QuitSave, 0);
    SaveAs("a.rpx");
    fs::remove(folder.Path() + "a.rpx");
    fs::create_directory(folder.Path() + "a.rpx");
    Enter(0, "2");
    Dialogs.Answers = {YesAnswer};
    EXPECT_FALSE(CloseMainWindow());
    EXPECT_EQ(DataChanged, -1);
    ExpectWorkFilesKept();
}

TEST_F(Session, ClosingCommitsAnEditBeforeItJudges) {
    StartWithEntries();
    SaveAs("a.rpx");
    Select(4);
    Type("typed");
    EXPECT_TRUE(CloseMainWindow());
    ExpectClosingQuestion();
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("\"typed\""));
}

TEST_F(Session, ClosingWhileTheStartUpFrameIsShownAsksNothing) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    folder.Write("SITE.FTF", TemplateText(Fields));
    StartUp();
    DataChanged = True;
    EXPECT_TRUE(CloseMainWindow());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    ExpectWorkFilesDeleted();
}

TEST_F(Session, ClosingWhileThePrintPanelIsShownAsksNothing) {
    StartWithEntries();
    SetVisible(Quintave.editframe, false);
    SetVisible(Quintave.PrintFrame, true);
    EXPECT_TRUE(CloseMainWindow());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    ExpectWorkFilesDeleted();
}

TEST_F(Session, WithoutWorkFilesEndingTellsNothing) {
    StartWithEntries();
    DeleteMatching(folder.Path(), "*.XXX");
    DataChanged = False;
    EXPECT_TRUE(CloseMainWindow());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(Session, NothingButTheReportStaysBehind) {
    StartWithEntries();
    EnterGroup();
    SaveAs("a.rpx");
    EXPECT_TRUE(CloseMainWindow());
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(folder.Path())) names.push_back(entry.path().filename().string());
    EXPECT_THAT(names, testing::UnorderedElementsAre("quintave.tbl", "SITE.FTF", "a.rpx"));
}

// --- Template command
// --------------------------------------------------------------------------------------------------

namespace {

class TemplateCommand : public Session {
protected:
    void WriteNext(const std::vector<std::string> &lines) const { folder.Write("next.ftf", TemplateText(lines)); }
};

} // namespace

TEST_F(TemplateCommand, AsksWithItsDialog) {
    Start(Fields);
    ReportFileDir = "/reports/"; // where the last report was saved says nothing of where templates lie
    Press(Quintave.CommandTemplate);
    ASSERT_THAT(Dialogs.Asked, SizeIs(1));
    EXPECT_EQ(Dialogs.Asked[0].Title, "Select a new FIELDS TEMPLATE File...");
    EXPECT_EQ(Dialogs.Asked[0].Text, "Quintave FTF(*.ftf,*.tbl)|*.ftf;*.tbl|All files(*.*)|*.*");
    EXPECT_EQ(Dialogs.Asked[0].Proposal, "");
    EXPECT_EQ(Dialogs.Asked[0].Directory, TemplateDir);
    EXPECT_EQ(TemplateDir, CurrentDirectory());
    EXPECT_EQ(Dialogs.Asked[0].Flags, 4100);
    EXPECT_THAT(Dialogs.Asked[0].Places,
                testing::ElementsAre(ResourceDir)); // where those that came with the program lie
}

TEST_F(TemplateCommand, DoesNothingMoreWhenItsResetIsCancelled) {
    StartWithEntries();
    SaveAs("a.rpx");
    Enter(0, "2");
    Select(4);
    Dialogs.Asked.clear();
    Dialogs.Answers = {CancelAnswer};
    Press(Quintave.CommandTemplate);
    ExpectResetQuestion();
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
    EXPECT_EQ(RowValue[0], "Wells2");
    EXPECT_EQ(CurrentField, 4);
    EXPECT_EQ(FileMark, "a.rpx");
    EXPECT_EQ(QuitSave, 0);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(TemplateCommand, DoesNothingMoreWhenTheSaveOfItsResetIsCancelled) {
    StartWithEntries();
    Dialogs.Answers = {YesAnswer};
    Press(Quintave.CommandTemplate);
    EXPECT_THAT(Dialogs.Asked, SizeIs(1)); // the save's dialog alone
    EXPECT_EQ(RowValue[0], "Wells");
    EXPECT_EQ(QuitSave, 0);
}

TEST_F(TemplateCommand, GoesOnAfterAnInstanceThatReadsCancelled) {
    Start(Fields);
    Enter(0, "one");
    Select(0);
    Press(Quintave.FIAdd);
    Press(Quintave.Text1[1]);
    Type("CANCELLED");
    Dialogs.Answers = {NoAnswer};
    CommandTemplate_Click();
    EXPECT_THAT(Dialogs.Asked, SizeIs(1));
}

TEST_F(TemplateCommand, CancelledInItsDialogKeepsTheTemplateWithoutEntries) {
    StartWithEntries();
    Dialogs.Answers = {NoAnswer};
    Press(Quintave.CommandTemplate);
    ExpectResetQuestion();
    ExpectEmptied();
    EXPECT_EQ(NumFields, 8);
    EXPECT_EQ(TemplateName, "SITE.FTF");
    EXPECT_EQ(QuitSave, 0);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    Enter(0, "usable");
    EXPECT_EQ(RowValue[0], "usable");
}

TEST_F(TemplateCommand, AFailingDialogKeepsTheTemplate) {
    Start(Fields);
    Dialogs.DialogErrors = {PermissionDenied};
    Press(Quintave.CommandTemplate);
    ExpectOneMessage("Quintave", "Error: 70 - Permission denied", CriticalIcon);
    EXPECT_EQ(NumFields, 8);
    EXPECT_EQ(QuitSave, 0);
}

TEST_F(TemplateCommand, LoadsTheNewTemplate) {
    StartWithEntries();
    SaveAs("a.rpx");
    Select(4);
    WriteNext({R"(1,30,"TEXT","New","","")", R"(1,30,"TEXT","Second","","")"});
    Dialogs.Texts = {folder.Path() + "next.ftf"};
    Press(Quintave.CommandTemplate);
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre(" New                       | ", " Second                    | "));
    EXPECT_EQ(TemplateDir, folder.Path());
    EXPECT_EQ(TemplateName, "next.ftf");
    EXPECT_EQ(ReportFileDir, folder.Path());
    EXPECT_EQ(ReportFileName, "next.ftf");
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: next.ftf] - RPX File(s): ");
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Open File");
    EXPECT_EQ(FileMark, "FirstLoad");
    EXPECT_EQ(CurrentField, 0);
    EXPECT_EQ(Quintave.List1[0].ListIndex, 0);
    EXPECT_EQ(DataChanged, 0);
    EXPECT_EQ(QuitSave, 0);
    EXPECT_TRUE(Quintave.editframe.Enabled);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_THAT(MatchingNames(folder.Path(), "*.XXX"), IsEmpty());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    Enter(0, "value");
    EXPECT_EQ(Row(0), " New                       | value");
}

TEST_F(TemplateCommand, LoadsOneFromAnotherDirectoryWithItsHelpFiles) {
    Start(Fields);
    fs::create_directory(folder.Path() + "forms");
    folder.Write("forms/next.ftf", TemplateText({R"(1,30,"TEXT","New","","more.hlp")"}));
    folder.Write("forms/more.hlp", "");
    Dialogs.Texts = {folder.Path() + "forms/next.ftf"};
    Press(Quintave.CommandTemplate);
    EXPECT_EQ(TemplateDir, folder.Path() + "forms/");
    EXPECT_EQ(FieldExtra[1][HelpFile], "more.hlp");
    EXPECT_EQ(ResourceDir, CurrentDirectory());
}

TEST_F(TemplateCommand, DiscardsAllValues) {
    StartWithEntries();
    EnterGroup();
    Press(Quintave.GrpExit);
    Dialogs.Answers = {NoAnswer};
    Dialogs.Texts = {folder.Path() + "SITE.FTF"};
    Press(Quintave.CommandTemplate);
    ExpectResetQuestion();
    ExpectEmptied();
}

TEST_F(TemplateCommand, KeepsThePrintLayoutThatTheUserChose) {
    Start(Fields);
    SetCaption(Quintave.PrintFrameIndent, "Section/Field Nested Indents");
    SetCaption(Quintave.PrintFrameToggler, "Data Start on Line Below Title");
    Dialogs.Texts = {folder.Path() + "SITE.FTF"};
    Press(Quintave.CommandTemplate);
    EXPECT_EQ(Quintave.PrintFrameIndent.Caption, "Section/Field Nested Indents");
    EXPECT_EQ(Quintave.PrintFrameToggler.Caption, "Data Start on Line Below Title");
}

TEST_F(TemplateCommand, AnEmptyTemplateShowsItsOneRow) {
    Start(Fields);
    WriteNext({});
    Dialogs.Texts = {folder.Path() + "next.ftf"};
    Press(Quintave.CommandTemplate);
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre("NO DATA FIELDS"));
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: next.ftf] - RPX File(s): ");
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(TemplateCommand, NoChoiceOfTheOldTemplateIsShown) {
    Start(Fields);
    Open(1);
    ASSERT_THAT(Quintave.List2[0].Rows, ElementsAre("Red", "Blue", "OTHER..."));
    WriteNext({R"(1,30,"TEXT","New","","")", R"(1,30,"LIST","Tree","","")", "Oak", "XXX-1XXX"});
    Dialogs.Texts = {folder.Path() + "next.ftf"};
    Press(Quintave.CommandTemplate);
    EXPECT_THAT(Quintave.List2[0].Rows, IsEmpty());
    EXPECT_FALSE(Quintave.List2[0].Visible);
    Open(1);
    EXPECT_THAT(Quintave.List2[0].Rows, ElementsAre("Oak"));
}

TEST_F(TemplateCommand, FromInsideAGroupEndsOnTheFieldList) {
    StartWithEntries();
    EnterGroup();
    WriteNext({R"(1,30,"TEXT","New","","")", R"(1,2,"GROUP START","G","","")", R"(2,3,"TEXT","m","","")",
               R"(1,0,"GROUP END","","","")"});
    Dialogs.Texts = {folder.Path() + "next.ftf"};
    Press(Quintave.CommandTemplate);
    ExpectResetQuestion();
    EXPECT_EQ(ActiveList, 0);
    EXPECT_FALSE(Quintave.TableFrame.Visible);
    EXPECT_FALSE(Quintave.GrpExit.Visible);
    EXPECT_THAT(Quintave.List1[3].Rows, IsEmpty());
    EXPECT_EQ(Quintave.List1[3].Tag, "-1");
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_EQ(folder.Read("GRP00002.XXX"), std::string("\3\0\1\0   ", 7));
    EXPECT_THAT(Quintave.List1[0].Rows,
                ElementsAre(" New                       | ", " G                         | -- REPEATABLE GROUP --"));
}

TEST_F(TemplateCommand, SavesFirstWhereTheAnswerIsYes) {
    StartWithEntries();
    WriteNext({R"(1,30,"TEXT","New","","")"});
    Dialogs.Answers = {YesAnswer};
    Dialogs.Texts = {folder.Path() + "a.rpx", folder.Path() + "next.ftf"};
    Press(Quintave.CommandTemplate);
    ExpectResetQuestion();
    EXPECT_THAT(folder.Read("a.rpx"), testing::HasSubstr("\"Wells\""));
    EXPECT_EQ(TemplateName, "next.ftf");
    EXPECT_EQ(QuitSave, 0);
}

TEST_F(TemplateCommand, KeepsQuitSaveUntilItEnds) {
    StartWithEntries();
    QuitSave = True; // as the template command sets it
    Dialogs.Answers = {YesAnswer};
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    CommandReset_Click();
    EXPECT_EQ(QuitSave, -1);
    Enter(0, "again");
    Dialogs.Answers = {NoAnswer};
    CommandReset_Click();
    EXPECT_EQ(QuitSave, -1);
}
