// The help window: its text, its place and sizes, opening and closing it.
#include "support/screen_test.h"
#include "support/template_lines.h"

#include "help/help_window.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

class HelpTest : public ScreenTest {
protected:
    void SetUp() override {
        // A template names only help files that are there when it is loaded.
        folder.Write("TITLE.HLP", "One\r\nTwo\r\n");
        folder.Write("PLACE.HLP", "Three\r\n");
        Start({Element(1, 60, "TEXT", "Title", "About titles", "TITLE.HLP"),
               Element(1, 30, "TEXT", "Place", "About places", "PLACE.HLP"), Element(1, 30, "TEXT", "Other")});
        Select(0);
    }

    void ShowText(const std::string &bytes) {
        if (Quintave.helpline.Tag == "-1") Press(Help.HelpQuit);
        folder.Write("TITLE.HLP", bytes);
        Press(Quintave.CommandMoreHelp);
    }

    static void ExpectOpen(bool open) {
        EXPECT_EQ(Help.HelpForm.Visible, open);
        EXPECT_EQ(Quintave.helpline.Tag, open ? "-1" : "0");
    }
};

} // namespace

TEST_F(HelpTest, MoreHelpOpensTheTextOfTheRowsHelpFile) {
    ExpectOpen(false);
    Press(Quintave.CommandMoreHelp);
    ExpectOpen(true);
    EXPECT_EQ(Help.HelpText.Text, "\r\nOne\r\nTwo");
    EXPECT_EQ(Help.HelpText.Caret, 0);
}

TEST_F(HelpTest, EachLineStandsBehindALineBreak) {
    struct Case {
        std::string Bytes;
        std::string Text;
    };
    for (const auto &[bytes, text] : std::vector<Case>{{"", ""},
                                                       {"a", "\r\na"},
                                                       {"a\r\n", "\r\na"},
                                                       {"a\nb", "\r\na\r\nb"},
                                                       {"a\rb\r", "\r\na\r\nb"},
                                                       {"a\n\nb", "\r\na\r\n\r\nb"},
                                                       {"\r\n\r\n", "\r\n\r\n"},
                                                       {"caf\xE9 \x80", "\r\ncafé €"}}) {
        ShowText(bytes);
        EXPECT_EQ(Help.HelpText.Text, text);
        ExpectOpen(true);
    }
}

TEST_F(HelpTest, TheTextCannotBeEdited) {
    EXPECT_TRUE(Help.HelpText.ReadOnly);
    EXPECT_TRUE(Help.HelpText.ManyLines);
}

TEST_F(HelpTest, TheWindowStandsAtTheLowerRightOfTheScreen) {
    Press(Quintave.CommandMoreHelp);
    // The screen is 19200 by 15360 twips; 2.5 % of both stay free.
    EXPECT_EQ(Help.HelpForm.Left + Help.HelpForm.Width, 18720);
    EXPECT_EQ(Help.HelpForm.Top + Help.HelpForm.Height, 14976);
    EXPECT_GT(Help.HelpForm.Left, 0);
    EXPECT_GT(Help.HelpForm.Top, 0);
}

TEST_F(HelpTest, TheCloseButtonClosesIt) {
    Press(Quintave.CommandMoreHelp);
    Press(Help.HelpQuit);
    ExpectOpen(false);
}

TEST_F(HelpTest, ClosingTheWindowByItsFrameMarksItClosed) {
    Press(Quintave.CommandMoreHelp);
    UserCloses(Help.HelpForm);
    EXPECT_EQ(Quintave.helpline.Tag, "0");
    SetVisible(Help.HelpForm, false);
    Press(Quintave.CommandMoreHelp);
    ExpectOpen(true);
}

TEST_F(HelpTest, ASecondClickReloadsNothing) {
    Press(Quintave.CommandMoreHelp);
    folder.Write("TITLE.HLP", "New\r\n");
    Press(Quintave.CommandMoreHelp);
    EXPECT_EQ(Help.HelpText.Text, "\r\nOne\r\nTwo");
}

TEST_F(HelpTest, AnotherRowsFileIsShownInTheOpenWindow) {
    Press(Quintave.CommandMoreHelp);
    Select(1);
    EXPECT_EQ(Help.HelpText.Text, "\r\nThree");
    Select(2);
    EXPECT_EQ(Help.HelpText.Text, "\r\nThree") << "a row without a file leaves the text";
    ExpectOpen(true);
}

TEST_F(HelpTest, WhileItIsOpenTheRowToGoBackToIsTheSelectedOne) {
    Select(1);
    EXPECT_EQ(LoadState, 0);
    Press(Quintave.CommandMoreHelp);
    EXPECT_EQ(LoadState, 1);
    Select(2); // without a file
    EXPECT_EQ(LoadState, 2);
    Press(Help.HelpQuit);
    Select(0);
    EXPECT_EQ(LoadState, 2);
}

TEST_F(HelpTest, AnotherRowOpensNoWindow) {
    Select(1);
    ExpectOpen(false);
}

TEST_F(HelpTest, OpenedAgainItShowsTheFileOfTheRowThen) {
    Press(Quintave.CommandMoreHelp);
    Press(Help.HelpQuit);
    Select(1);
    Press(Quintave.CommandMoreHelp);
    ExpectOpen(true);
    EXPECT_EQ(Help.HelpText.Text, "\r\nThree");
}

TEST_F(HelpTest, ARowWithoutAFileHasNoMoreHelp) {
    Select(2);
    EXPECT_FALSE(Quintave.CommandMoreHelp.Enabled);
    Press(Quintave.CommandMoreHelp);
    ExpectOpen(false);
}

TEST_F(HelpTest, ButtonAndTextFollowTheWindowsWidth) {
    Press(Quintave.CommandMoreHelp);
    UserResizes(Help.HelpForm, 5000, 4000);
    EXPECT_EQ(Help.HelpQuit.Width, 4900);
    EXPECT_EQ(Help.HelpText.Width, 4900);
    UserResizes(Help.HelpForm, 180, 4000);
    EXPECT_EQ(Help.HelpQuit.Width, 80);
    EXPECT_EQ(Help.HelpText.Width, 80);
}

TEST_F(HelpTest, BelowAWidthOf180TheyStayAsTheyWere) {
    Press(Quintave.CommandMoreHelp);
    UserResizes(Help.HelpForm, 5000, 4000);
    UserResizes(Help.HelpForm, 179, 4000);
    EXPECT_EQ(Help.HelpQuit.Width, 4900);
    EXPECT_EQ(Help.HelpText.Width, 4900);
}

TEST_F(HelpTest, TheTextFollowsTheWindowsHeightDownTo800) {
    Press(Quintave.CommandMoreHelp);
    UserResizes(Help.HelpForm, 5000, 4000);
    const long below = 4000 - Help.HelpText.Height;
    EXPECT_GE(below, Help.HelpQuit.Height);
    EXPECT_GE(Help.HelpText.Top, Help.HelpQuit.Top + Help.HelpQuit.Height) << "the button stands above the text";
    UserResizes(Help.HelpForm, 5000, 800);
    EXPECT_EQ(Help.HelpText.Height, 800 - below);
    UserResizes(Help.HelpForm, 5000, 799);
    EXPECT_EQ(Help.HelpText.Height, 800 - below);
}

TEST_F(HelpTest, OpenedAgainItHasItsFirstSize) {
    Press(Quintave.CommandMoreHelp);
    const long width = Help.HelpForm.Width;
    UserResizes(Help.HelpForm, 100, 100);
    Press(Help.HelpQuit);
    Press(Quintave.CommandMoreHelp);
    EXPECT_EQ(Help.HelpForm.Width, width);
    EXPECT_EQ(Help.HelpText.Width, width - 100);
}

TEST_F(HelpTest, AMissingFileIsToldAndOpensNoWindow) {
    std::filesystem::remove(folder.Path() + "TITLE.HLP");
    Press(Quintave.CommandMoreHelp);
    EXPECT_EQ(LastMessage().Title, "More Help");
    EXPECT_EQ(LastMessage().Text,
              "Error: 53 - File not found\r\nError reading this help file! (" + folder.Path() + "TITLE.HLP)");
    EXPECT_EQ(LastMessage().Style, CriticalIcon);
    ExpectOpen(false);
}

TEST_F(HelpTest, AMissingFileLeavesNothingOfTheTextShownBefore) {
    Press(Quintave.CommandMoreHelp);
    Press(Help.HelpQuit);
    std::filesystem::remove(folder.Path() + "TITLE.HLP");
    Press(Quintave.CommandMoreHelp);
    EXPECT_EQ(Help.HelpText.Text, "");
}

TEST_F(HelpTest, AFileThatCannotBeReadIsToldWithItsError) {
    std::filesystem::remove(folder.Path() + "TITLE.HLP");
    std::filesystem::create_directory(folder.Path() + "TITLE.HLP");
    Press(Quintave.CommandMoreHelp);
    EXPECT_EQ(LastMessage().Text,
              "Error: 75 - Path/File access error\r\nError reading this help file! (" + folder.Path() + "TITLE.HLP)");
    ExpectOpen(false);
}

TEST_F(HelpTest, AMissingFileOfAnotherRowEmptiesTheOpenWindowWithoutAMessage) {
    Press(Quintave.CommandMoreHelp);
    std::filesystem::remove(folder.Path() + "PLACE.HLP");
    const std::size_t before = MessageCount();
    Select(1);
    EXPECT_EQ(Help.HelpText.Text, "");
    EXPECT_EQ(MessageCount(), before);
}

TEST_F(HelpTest, CtrlF1ListsTheKeysOfAllCommands) {
    EXPECT_FALSE(UserKeyDown(*Focused(), F1Key, CtrlMask)); // the toolkit has nothing to do with it
    ExpectOpen(true);
    EXPECT_THAT(Help.HelpText.Text,
                testing::HasSubstr("\r\n  Ctrl+S    Save the report\r\n  Ctrl+Y    Do again what was undone last\r\n"
                                   "  Ctrl+Z    Undo the last change of the entries\r\n  Ctrl+F1   Show the keys"));
    EXPECT_THAT(Help.HelpText.Text,
                testing::HasSubstr("\r\n\r\nIn a group\r\n  Ctrl+B    Go to the last occurrence\r\n"));
    Press(Help.HelpQuit);
    ExpectOpen(false);
    UserKeyDown(*Focused(), F1Key, 0); // without Ctrl it is no command's
    ExpectOpen(false);
}

TEST_F(HelpTest, CtrlF1TakesTheWindowThatIsOpen) {
    Press(Quintave.CommandMoreHelp);
    UserKeyDown(*Focused(), F1Key, CtrlMask);
    ExpectOpen(true);
    EXPECT_THAT(Help.HelpText.Text, testing::StartsWith("\r\nKeys\r\n  Ctrl+A    Open a saved report"));
}
