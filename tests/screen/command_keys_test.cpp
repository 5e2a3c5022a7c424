// The Ctrl shortcuts.
#include "screen/command_keys.h"

#include "screen/selected_field.h"
#include "screen/value_entry.h"
#include "support/screen_test.h"
#include "support/template_lines.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

enum FieldRows : Integer { TitleRow, NotesRow, ColourRow, SamplesRow };

class CommandKeys : public ScreenTest {
protected:
    void SetUp() override {
        folder.Write("SAMPLES.HLP", "help");
        Start(Join({{Element(1, 30, "TEXT", "Title", "", "SAMPLES.HLP"), Element(1, 99, "MEMO", "Notes")},
                    ListOf(1, 20, "Colour", {"Sand", "Quartz", "OTHER..."}),
                    {Element(1, 2, "GROUP START", "Samples"), Element(2, 8, "TEXT", "Depth"),
                     Element(1, 0, "GROUP END", "")}}));
    }

    // The title of the dialog or message that a shortcut brings up; all of them are then cancelled.
    static std::string AskedBy(char letter) {
        Dialogs.Asked.clear();
        Dialogs.Messages.clear();
        Dialogs.Answers = {CancelAnswer};
        PressCtrl(letter);
        Dialogs.Answers.clear();
        if (!Dialogs.Messages.empty()) return Dialogs.Messages[0].Title;
        return Dialogs.Asked.empty() ? "" : Dialogs.Asked[0].Title;
    }

    // In the group, with three occurrences "0 m", "1 m", "2 m", the second shown.
    static void OpenSamples() {
        Open(SamplesRow);
        for (const char *depth : {"0 m", "1 m", "2 m"}) {
            Open(0);
            Type(depth);
            if (depth[0] != '2') PressCtrl('N');
        }
        PressCtrl('V');
    }

    static constexpr auto SaveTitle = "Name a Quintave report (*.RPX) output file...";
};

} // namespace

TEST_F(CommandKeys, EachLetterRunsItsCommand) {
    DataChanged = True;
    EXPECT_EQ(AskedBy('A'), "Pick a '*.RPX' file to add...");
    EXPECT_EQ(AskedBy('P'), "PRINT CURRENT SCREEN FIELDS?");
    EXPECT_EQ(AskedBy('Q'), "Quit Quintave");
    EXPECT_EQ(AskedBy('R'), "CLEAR ALL FIELDS (Reset)");
    EXPECT_EQ(AskedBy('S'), SaveTitle);
    DataChanged = False;
    EXPECT_EQ(AskedBy('F'), "Select a new FIELDS TEMPLATE File...");
    EXPECT_FALSE(ProgramEnded());
    PressCtrl('Q');
    EXPECT_TRUE(ProgramEnded());
}

TEST_F(CommandKeys, ShortcutsWorkFromEveryControlOfTheEntryScreenButReset) {
    SetEnabled(Quintave.CommandMoreHelp, true);
    const std::vector<Control *> controls{&Quintave.List1[0],        &Quintave.Text1[1],      &Quintave.CommandAdd,
                                          &Quintave.CommandSave,     &Quintave.CommandSaveAs, &Quintave.CommandPrint,
                                          &Quintave.CommandTemplate, &Quintave.CommandQuit,   &Quintave.CommandMoreHelp,
                                          &Quintave.FIAdd,           &Quintave.FIDel,         &Quintave.FIScroll};
    for (Control *control : controls) {
        UserEnters(*control);
        ASSERT_EQ(Focused(), control) << control->Name;
        EXPECT_EQ(AskedBy('S'), SaveTitle) << control->Name;
    }
    Open(NotesRow);
    EXPECT_EQ(AskedBy('S'), SaveTitle);
    Open(ColourRow);
    EXPECT_EQ(AskedBy('S'), SaveTitle);
    DoubleClickRow(Quintave.List2[0], 2);
    ASSERT_EQ(Focused(), &Quintave.Text2[2]);
    EXPECT_EQ(AskedBy('S'), SaveTitle);
}

TEST_F(CommandKeys, ShortcutsWorkFromEveryControlOfAnOpenGroup) {
    std::vector<Control *> controls{&Quintave.List1[GroupList], &Quintave.Text1[4],     &Quintave.TblFldNum,
                                    &Quintave.TblFldInsert,     &Quintave.TblFldDelete, &Quintave.GrpExit};
    for (Control &button : Quintave.FldChange) controls.push_back(&button);
    for (Control *control : controls) {
        Open(SamplesRow);
        UserEnters(*control);
        ASSERT_EQ(Focused(), control) << control->Name;
        PressCtrl('E');
        EXPECT_EQ(ActiveList, 0) << control->Name;
        EXPECT_EQ(Focused(), &Quintave.List1[0]);
    }
}

TEST_F(CommandKeys, NoShortcutWorksWhileResetHasTheFocus) {
    DataChanged = True;
    UserEnters(Quintave.CommandReset);
    for (const char letter : {'A', 'F', 'P', 'Q', 'R', 'S'}) EXPECT_EQ(AskedBy(letter), "") << letter;
    EXPECT_FALSE(ProgramEnded());
}

TEST_F(CommandKeys, CtrlWithShiftOrAltIsNoShortcut) {
    DataChanged = True;
    for (Control *control : {&Quintave.List1[0], &Quintave.Text1[1], &Quintave.CommandSave}) {
        UserEnters(*control);
        for (const int shift : {CtrlMask + ShiftMask, CtrlMask + AltMask, 0 + AltMask, CtrlMask + ShiftMask + AltMask})
            PressCtrl('S', static_cast<Integer>(shift));
    }
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(CommandKeys, CtrlWithShiftOrAltIsNoShortcutBesideTheChoicesAndInAGroupEither) {
    DataChanged = True;
    Open(ColourRow);
    const auto press = [](Control &control) {
        UserEnters(control);
        ASSERT_EQ(Focused(), &control) << control.Name;
        for (const char letter : {'S', 'N', 'E', 'D', 'I'})
            for (const int shift : {CtrlMask + ShiftMask, CtrlMask + AltMask, CtrlMask + ShiftMask + AltMask})
                PressCtrl(letter, static_cast<Integer>(shift));
        EXPECT_NE(CtrlHeld, True) << control.Name;
    };
    press(Quintave.List2[0]);
    DoubleClickRow(Quintave.List2[0], 2);
    press(Quintave.Text2[2]);
    Open(SamplesRow);
    for (Control *control :
         {&Quintave.List1[GroupList], &Quintave.Text1[4], &Quintave.TblFldNum, &Quintave.TblFldInsert,
          &Quintave.TblFldDelete, &Quintave.FldChange[Next], &Quintave.GrpExit})
        press(*control);
    EXPECT_EQ(ActiveList, GroupList);
    EXPECT_EQ(GroupOccurrenceCount, 1);
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(CommandKeys, GroupLettersDoNothingOutsideAGroup) {
    Select(SamplesRow);
    for (const char letter : {'B', 'D', 'E', 'G', 'I', 'N', 'T'}) {
        PressCtrl(letter);
        EXPECT_EQ(ActiveList, 0);
        EXPECT_EQ(Focused(), &Quintave.List1[0]);
        EXPECT_EQ(DataChanged, False);
    }
    EXPECT_EQ(folder.Read("GRP00004.XXX"), std::string("\x08\0\1\0", 4) + "        ");
}

TEST_F(CommandKeys, GroupLettersRunTheGroupsCommands) {
    OpenSamples();
    EXPECT_EQ(Row(0), RowOf("Depth", "1 m"));
    PressCtrl('B');
    EXPECT_EQ(Row(0), RowOf("Depth", "2 m"));
    PressCtrl('T');
    EXPECT_EQ(Row(0), RowOf("Depth", "0 m"));
    PressCtrl('N');
    EXPECT_EQ(Row(0), RowOf("Depth", "1 m"));
    PressCtrl('V');
    EXPECT_EQ(Row(0), RowOf("Depth", "0 m"));
    PressCtrl('I');
    EXPECT_EQ(Row(0), RowOf("Depth"));
    EXPECT_EQ(GroupOccurrenceCount, 4);
    PressCtrl('D');
    EXPECT_EQ(Row(0), RowOf("Depth", "0 m"));
    EXPECT_EQ(GroupOccurrenceCount, 3);
    PressCtrl('G');
    EXPECT_EQ(Focused(), &Quintave.TblFldNum);
    PressCtrl('E');
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(CommandKeys, AGroupShortcutStoresTheOpenEditOfTheMemberItWasTypedIn) {
    for (const char letter : {'B', 'D', 'E', 'G', 'I', 'N', 'T', 'V'}) {
        Open(SamplesRow);
        while (GroupOccurrenceCount > 1) PressCtrl('D');
        PressCtrl('N'); // the second of two
        Open(0);
        Quintave.Text1[4].Text.clear();
        Quintave.Text1[4].Caret = 0;
        Type("7");
        const Integer typedIn = GroupLoadedOccurrence;
        PressCtrl(letter);
        EXPECT_EQ(EntryFlag, False) << letter;
        if (ActiveList == GroupList) PressCtrl('E');
        const std::string store = folder.Read("GRP00004.XXX");
        const std::string expected = letter == 'D' ? "        " : "7       ";
        const auto record = static_cast<std::size_t>(typedIn + (letter == 'I' ? 1 : 0));
        EXPECT_EQ(store.substr(4 + 8 * (letter == 'D' ? 0 : record), 8), expected) << letter;
    }
}

TEST_F(CommandKeys, AGroupShortcutStoresTheOpenEditOfEveryKindOfBox) {
    folder.Write("OTHER.FTF", TemplateText(Join({{Element(1, 2, "GROUP START", "G"), Element(2, 8, "MEMO", "Notes")},
                                                 ListOf(2, 4, "Rock", {"Clay", "OTHER..."}),
                                                 {Element(1, 0, "GROUP END", "")}})));
    Dialogs.Texts = {folder.Path() + "OTHER.FTF"};
    Press(Quintave.CommandTemplate);
    for (const char letter : {'B', 'E', 'G', 'I', 'N', 'T', 'V'}) {
        Press(Quintave.CommandReset);
        Open(0);
        PressCtrl('N');
        Open(0);
        Type("a");
        PressEnter();
        Type("b");
        PressCtrl(letter);
        if (ActiveList == 0) Open(0);
        PressCtrl('B');
        Select(1);
        DoubleClickRow(Quintave.List2[GroupList], 1);
        Type("Sand");
        PressCtrl(letter);
        if (ActiveList == GroupList) PressCtrl('E');
        const std::string store = folder.Read("GRP00001.XXX");
        EXPECT_NE(store.find("a\r\nb    "), std::string::npos) << letter;
        EXPECT_NE(store.find("Sand"), std::string::npos) << letter;
        DataChanged = False;
    }
}

TEST_F(CommandKeys, EveryOtherShortcutCommitsTheOpenEditBeforeItsCommand) {
    for (const char letter : {'A', 'F', 'P', 'Q', 'R', 'S'}) {
        RowValue[TitleRow].clear();
        Open(TitleRow);
        Type(std::string(1, letter));
        AskedBy(letter);
        EXPECT_EQ(RowValue[TitleRow], std::string(1, letter));
    }
}

TEST_F(CommandKeys, AShortcutGivesNoCharacter) {
    Open(TitleRow);
    Type("a");
    for (char letter = 'A'; letter <= 'Y'; ++letter) {
        constexpr std::string_view LeftToTheToolkit = "CVX";
        Integer key = static_cast<unsigned char>(letter);
        Dialogs.Answers = {CancelAnswer};
        const bool passed = UserKeyDown(Quintave.Text1[1], key, CtrlMask);
        EXPECT_EQ(passed, LeftToTheToolkit.find(letter) != std::string_view::npos) << letter;
        Open(TitleRow);
    }
    EXPECT_EQ(Quintave.Text1[1].Text, "a");
}

TEST_F(CommandKeys, ACharacterThatComesWithCtrlIsNoneForAnyControl) {
    const auto offer = [](Control &control, const char *character) {
        UserKeyDown(control, '1', CtrlMask);
        UserKeyPress(control, character);
    };
    Select(ColourRow);
    offer(Quintave.List1[0], "S");
    offer(Quintave.List1[0], "|");
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_EQ(RowValue[ColourRow], "");
    UserEnters(Quintave.List2[0]);
    offer(Quintave.List2[0], "S");
    EXPECT_EQ(RowValue[ColourRow], "");
    EXPECT_EQ(Quintave.List2[0].ListIndex, -1);
    Open(TitleRow);
    Type("a");
    for (const char *character : {"|", "\"", "\r"}) offer(Quintave.Text1[1], character);
    Open(ColourRow);
    DoubleClickRow(Quintave.List2[0], 2);
    for (const char *character : {"|", "\"", "\r"}) offer(Quintave.Text2[2], character);
    EXPECT_EQ(Focused(), &Quintave.Text2[2]);
    EXPECT_EQ(CurrentField, ColourRow);
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(CommandKeys, CtrlVPastesOutsideAGroupAndGoesBackInside) {
    Open(TitleRow);
    EXPECT_TRUE(UserKeyDown(Quintave.Text1[1], 'V', CtrlMask));
    OpenSamples();
    Open(0);
    EXPECT_FALSE(UserKeyDown(Quintave.Text1[4], 'V', CtrlMask));
    EXPECT_EQ(GroupLoadedOccurrence, 0);
    EXPECT_TRUE(UserKeyDown(Quintave.List1[GroupList], 'C', CtrlMask));
}

TEST_F(CommandKeys, CodesThatAreNoShortcutAreIgnored) {
    for (int code = 0; code <= 255; ++code) {
        if (code >= 'A' && code <= 'Z') continue;
        auto key = static_cast<Integer>(code);
        CtrlHeld = True;
        HandleCommandKey(key);
        EXPECT_EQ(key, code);
        EXPECT_EQ(CtrlHeld, code == EnterCode ? EnterCode : True);
    }
    EXPECT_EQ(MessageCount(), 0u);
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
}

TEST_F(CommandKeys, AfterAShortcutTheNextKeyTypesAgain) {
    Open(TitleRow);
    PressCtrl('K');
    Type("a|");
    EXPECT_EQ(Quintave.Text1[1].Text, "a");
    EXPECT_EQ(MessageCount(), 1u);
    EXPECT_EQ(CtrlHeld, False);
}

TEST_F(CommandKeys, ShortcutsAreDeadOnThePrintPanel) {
    Dialogs.Answers = {YesAnswer};
    PressCtrl('P');
    ASSERT_TRUE(Quintave.PrintFrame.Visible);
    const std::size_t messages = MessageCount();
    for (const char letter : {'A', 'F', 'P', 'Q', 'R', 'S'}) PressCtrl(letter);
    EXPECT_EQ(MessageCount(), messages);
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
    EXPECT_FALSE(ProgramEnded());
}

namespace {

class StartFrame : public ScreenTest {};

} // namespace

TEST_F(StartFrame, ShortcutsAreDeadOnIt) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    folder.Write("SITE.FTF", TemplateText({Element(1, 30, "TEXT", "Title")}));
    StartUp();
    for (Control *button : {&Quintave.LogoOff, &Quintave.LogoQuit}) {
        UserEnters(*button);
        for (const char letter : {'A', 'F', 'P', 'Q', 'R', 'S'}) PressCtrl(letter);
    }
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
    EXPECT_EQ(MessageCount(), 0u);
    EXPECT_FALSE(ProgramEnded());
}
