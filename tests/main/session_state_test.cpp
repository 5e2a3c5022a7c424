// What the session's commands and a template's load leave in the state and on the controls beside their main work.
#include "main/session.h"

#include "groups/open_group.h"
#include "main/start_up.h"
#include "main/template_command.h"
#include "platform/files.h"
#include "print/print_panel.h"
#include "support/messages.h"
#include "support/screen_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<std::string> Fields{R"(1,-1,"","Place","","")",
                                      R"(2,30,"TEXT","Title","Its name.","more.hlp")",
                                      R"(2,30,"LIST","Colour","","")",
                                      "Red",
                                      "Blue",
                                      "XXX-1XXX",
                                      R"(2,2,"GROUP START","Sample","","")",
                                      R"(3,5,"TEXT","Depth","","")",
                                      R"(2,0,"GROUP END","","","")"};
constexpr Integer GroupRow = 2;

// What QuitSave was whenever a message was shown: its title, then the number.
std::vector<std::string> Seen;
Answer FirstAnswer = YesAnswer;

Answer NoteQuitSave(const ShownMessage &message) {
    Seen.push_back(message.Title + " " + std::to_string(QuitSave));
    return message.Style == OkOnly || Seen.size() > 1 ? OkAnswer : FirstAnswer;
}

class SessionState : public ScreenTest {
protected:
    void StartWithEntries() {
        folder.Write("more.hlp", "Help");
        Start(Fields);
        Enter(0, "Wells");
    }

    // Answers the question with Yes, and then cannot save.
    template <class Act> std::vector<std::string> QuitSaveIn(Act act) {
        StartWithEntries();
        Seen.clear();
        Dialogs.Reply = NoteQuitSave;
        Dialogs.Texts = {folder.Path() + "none/a.rpx"};
        act();
        Dialogs.Reply = nullptr;
        EXPECT_EQ(QuitSave, 0);
        return Seen;
    }
};

} // namespace

// --- A save for another command
// -----------------------------------------------------------------------------------------

TEST_F(SessionState, AResetMarksItsSave) {
    EXPECT_THAT(QuitSaveIn([] { Press(Quintave.CommandReset); }),
                ElementsAre("CLEAR ALL FIELDS (Reset) 0", "Quintave -1"));
}

TEST_F(SessionState, QuitMarksItsSave) {
    EXPECT_THAT(QuitSaveIn([] { Press(Quintave.CommandQuit); }), ElementsAre("Quit Quintave 0", "Quintave -1"));
}

TEST_F(SessionState, ClosingMarksItsSave) {
    EXPECT_THAT(QuitSaveIn([] { EXPECT_FALSE(CloseMainWindow()); }), ElementsAre("Done with SESSION 0", "Quintave -1"));
}

// --- Reset
// --------------------------------------------------------------------------------------------------------------

TEST_F(SessionState, AResetByTheUserEnablesTheFrame) {
    StartWithEntries();
    SetEnabled(Quintave.editframe, false);
    Dialogs.Answers = {NoAnswer};
    CommandReset_Click();
    EXPECT_TRUE(Quintave.editframe.Enabled);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(SessionState, AResetForAnotherCommandNeitherEnablesNorFocuses) {
    StartWithEntries();
    SetEnabled(Quintave.editframe, false);
    QuitSave = True;
    Dialogs.Answers = {NoAnswer};
    CommandReset_Click();
    EXPECT_EQ(RowValue[0], "");
    EXPECT_FALSE(Quintave.editframe.Enabled);
    SetEnabled(Quintave.editframe, true);
    SetFocus(Quintave.CommandSave);
    CommandReset_Click();
    EXPECT_EQ(Focused(), &Quintave.CommandSave);
}

TEST_F(SessionState, AResetForgetsTheChoiceShownLast) {
    StartWithEntries();
    Open(1);
    ClickRow(Quintave.List2[0], 1);
    ASSERT_EQ(ListTop, 1);
    Dialogs.Answers = {NoAnswer};
    Press(Quintave.CommandReset);
    EXPECT_EQ(ListTop, 0);
}

// --- Template command
// --------------------------------------------------------------------------------------------------

TEST_F(SessionState, TheTemplateCommandEnablesTheFrameAndShowsTheFieldAnewAlsoWhenCancelled) {
    StartWithEntries();
    Select(0);
    ASSERT_EQ(Quintave.helpline.Caption, "Its name.");
    SetCaption(Quintave.helpline, "spoilt");
    SetEnabled(Quintave.editframe, false);
    Dialogs.Answers = {CancelAnswer};
    CommandTemplate_Click();
    EXPECT_EQ(Quintave.helpline.Caption, "Its name.");
    EXPECT_TRUE(Quintave.editframe.Enabled);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(SessionState, ARefusedTemplateIsStillTheFileChosenLast) {
    StartWithEntries();
    folder.Write("bad.ftf", "no template");
    Dialogs.Answers = {NoAnswer};
    Dialogs.Texts = {folder.Path() + "bad.ftf"};
    Press(Quintave.CommandTemplate);
    EXPECT_EQ(LastMessage().Title, "Quintave");
    EXPECT_EQ(ReportFileName, "bad.ftf");
    EXPECT_EQ(ReportFileDir, folder.Path());
    EXPECT_EQ(TemplateName, "SITE.FTF");
}

TEST_F(SessionState, NothingOfTheOldTemplateStaysInListsAndLabels) {
    StartWithEntries();
    Open(GroupRow);
    Press(Quintave.GrpExit);
    Select(0);
    ASSERT_THAT(Quintave.SectionLabel.Rows, testing::Not(IsEmpty()));
    ASSERT_NE(Quintave.DataLevelLabel.Caption, "");
    ASSERT_TRUE(Quintave.CommandMoreHelp.Enabled);
    ASSERT_TRUE(Quintave.MultiInstanceFrame.Visible);
    folder.Write("next.ftf", TemplateText({R"(-1,30,"TEXT","New","","")"}));
    Dialogs.Answers = {NoAnswer};
    Dialogs.Texts = {folder.Path() + "next.ftf"};
    Press(Quintave.CommandTemplate);
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre(" New                       | "));
    EXPECT_THAT(Quintave.SectionLabel.Rows, ElementsAre("No Sections Specified"));
    EXPECT_EQ(Quintave.DataLevelLabel.Caption, "1");
    EXPECT_EQ(Quintave.helpline.Caption, "");
    EXPECT_FALSE(Quintave.CommandMoreHelp.Enabled);
    EXPECT_FALSE(Quintave.MultiInstanceFrame.Visible);
    EXPECT_THAT(Quintave.TblFldNum.Rows, IsEmpty());
}

// --- Start-up frame, print panel
// ----------------------------------------------------------------------------------------

TEST_F(SessionState, UseQuintaveShowsAnOpenGroupsFrame) {
    StartWithEntries();
    Open(GroupRow);
    SetVisible(Quintave.TableFrame, false);
    SetVisible(Quintave.Frame5, true); // no command leads back there today
    LogoOff_Click();
    EXPECT_TRUE(Quintave.TableFrame.Visible);
}

TEST_F(SessionState, ClosingWhileThePrintPanelIsOpenAsksNothing) {
    StartWithEntries();
    Dialogs.Answers = {YesAnswer}; // the screen is to be printed
    Press(Quintave.CommandPrint);
    ASSERT_TRUE(Quintave.PrintFrame.Visible);
    Dialogs.Messages.clear();
    EXPECT_TRUE(CloseMainWindow());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_THAT(MatchingNames(folder.Path(), "*.XXX"), IsEmpty());
    EXPECT_THAT(MatchingNames(folder.Path(), "*.$$$"), IsEmpty());
}
