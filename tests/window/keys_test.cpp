// Keys on the real window: shortcuts from every control, and what keys do on the lists.
#include "window/window_test.h"

#include "main/start_up.h"
#include "platform/qt/window.h"
#include "window/templates.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QTest>

namespace {

constexpr int YesOrNo = QMessageBox::Yes | QMessageBox::No;

class Keys : public WindowTest {
protected:
    // The names of all controls of the entry screen that can have the focus now.
    static std::vector<std::string> Focusable() {
        std::vector<std::string> names;
        for (const auto *widget : Named("editframe").findChildren<QWidget *>())
            if (widget->isVisible() && widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus &&
                !widget->objectName().isEmpty() && widget->window() == MainWindow())
                names.push_back(widget->objectName().toStdString());
        return names;
    }

    // Ctrl+S from a control shows the Save As dialogue of a report that has no name yet.
    void ExpectSaveFrom(const std::string &name) {
        SCOPED_TRACE(name);
        Named(name.c_str()).setFocus();
        ASSERT_EQ(FocusName(), name);
        Dialogs.Titles.clear();
        Dialogs.CancelFile();
        Ctrl('S');
        EXPECT_THAT(Dialogs.Titles, testing::ElementsAre("Name a Quintave report (*.RPX) output file..."));
    }

    void ExpectSaveFromAll() {
        const auto names = Focusable();
        EXPECT_THAT(names, testing::Contains("CommandReset"));
        for (const auto &name : names)
            if (name != "CommandReset") ExpectSaveFrom(name);
    }

    void OpenSamples() {
        Start(AllKinds());
        DoubleClickRow(Fields(), SamplesRow);
    }

    static QListView &Members() { return The<QListView>("List1_3"); }
    static std::string Occurrence() { return The<QComboBox>("TblFldNum").currentText().toStdString(); }
};

struct Opened {
    char Letter;
    const char *Title;
};

constexpr Opened Commands[] = {
    {'A', "Pick a '*.RPX' file to add..."},
    {'F', "Select a new FIELDS TEMPLATE File..."},
    {'S', "Name a Quintave report (*.RPX) output file..."},
};

} // namespace

TEST_F(Keys, CtrlLettersRunTheCommandsWithADialog) {
    Start(AllKinds());
    for (const auto &[letter, title] : Commands) {
        Dialogs.Titles.clear();
        Dialogs.CancelFile();
        Ctrl(letter);
        EXPECT_THAT(Dialogs.Titles, testing::ElementsAre(title)) << letter;
    }
}

TEST_F(Keys, CtrlPPrintsCtrlRResetsAndCtrlQQuits) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    Type("x");
    Dialogs.Press(QMessageBox::Cancel);
    Ctrl('P');
    EXPECT_EQ(Dialogs.Boxes.back().Title, "PRINT CURRENT SCREEN FIELDS?");
    Dialogs.Press(QMessageBox::Cancel);
    Ctrl('R');
    EXPECT_EQ(Dialogs.Boxes.back().Title, "CLEAR ALL FIELDS (Reset)");
    Dialogs.Press(QMessageBox::Cancel);
    Ctrl('Q');
    EXPECT_EQ(Dialogs.Boxes.back().Title, "Quit Quintave");
}

TEST_F(Keys, ShortcutsWorkFromEveryControlOfEachRow) {
    folder.Write("HELP.HLP", "help");
    auto lines = AllKinds();
    for (auto &line : lines)
        if (line.starts_with("2,") && line.ends_with("\"\"")) line.replace(line.size() - 2, 2, "\"HELP.HLP\"");
    Start(lines);
    for (const int row : {TitleRow, AbstractRow, NotesRow, ColourRow}) {
        ClickRow(Fields(), row);
        if (row == ColourRow) ClickRow(Choices(), 4);
        ExpectSaveFromAll();
        ClickRow(Fields(), row);
    }
}

TEST_F(Keys, ShortcutsWorkFromEveryControlOfAGroup) {
    OpenSamples();
    // A save leaves the group, so each control is tried on a group opened anew.
    for (const int row : {0, 1, 2}) {
        ClickRow(Members(), row);
        for (const auto &name : Focusable()) {
            if (name == "CommandReset") continue;
            if (!Named("List1_3").isVisible()) DoubleClickRow(Fields(), SamplesRow);
            ClickRow(Members(), row);
            ExpectSaveFrom(name);
        }
        DoubleClickRow(Fields(), SamplesRow);
    }
}

TEST_F(Keys, NoShortcutWorksFromTheResetButton) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    Type("x");
    Named("CommandReset").setFocus();
    for (char letter = 'A'; letter <= 'Z'; ++letter) Ctrl(letter);
    EXPECT_TRUE(Dialogs.Titles.empty());
    EXPECT_EQ(FocusName(), "CommandReset");
}

TEST_F(Keys, CtrlTogetherWithShiftOrAltDoesNothing) {
    Start(AllKinds());
    for (const char *name : {"List1_0", "Text1_1", "CommandSave"}) {
        Named(name).setFocus();
        Ctrl('S', Qt::ShiftModifier);
        Ctrl('S', Qt::AltModifier);
        Ctrl('A', Qt::ShiftModifier);
        EXPECT_EQ(FocusName(), name);
    }
    EXPECT_TRUE(Dialogs.Titles.empty());
    EXPECT_EQ(Box().toPlainText(), "");
}

TEST_F(Keys, TheFocusIsSeenBeforeAnyKey) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    WriteTemplate(AllKinds());
    StartUp();
    ASSERT_EQ(FocusName(), "LogoOff");
    const QImage focused = Named("LogoOff").grab().toImage();
    Named("LogoQuit").setFocus(Qt::OtherFocusReason);
    EXPECT_NE(Named("LogoOff").grab().toImage(), focused);
}

TEST_F(Keys, ShortcutsAreDeadOnTheStartUpFrame) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    WriteTemplate(AllKinds());
    StartUp();
    for (const char *name : {"LogoOff", "LogoQuit"}) {
        Named(name).setFocus();
        for (const char letter : {'A', 'F', 'P', 'Q', 'R', 'S'}) Ctrl(letter);
    }
    EXPECT_TRUE(Dialogs.Titles.empty());
    EXPECT_TRUE(MainWindow()->isVisible());
}

TEST_F(Keys, ShortcutsAreDeadOnThePrintPanel) {
    Start(AllKinds());
    Dialogs.Press(QMessageBox::Yes);
    Ctrl('P');
    EXPECT_EQ(FocusName(), "PrintFrameIndent");
    Dialogs.Titles.clear();
    for (const char *name : {"PrintFrameIndent", "PrintFrameToggler", "PrintIndent", "Combo1", "Combo2",
                             "PrintFramePrint_0", "PrintFramePrint_1", "PrintFrameCancel"}) {
        Named(name).setFocus();
        ASSERT_EQ(FocusName(), name);
        for (const char letter : {'A', 'F', 'P', 'Q', 'R', 'S'}) Ctrl(letter);
    }
    EXPECT_TRUE(Dialogs.Titles.empty());
    EXPECT_TRUE(Named("PrintFrame").isVisible());
}

TEST_F(Keys, ShortcutsAreDeadWhileAMessageBoxIsShown) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    Dialogs.Next([](QDialog &dialog) {
        for (const char letter : {'A', 'F', 'P', 'Q', 'R', 'S'}) QTest::keyClick(&dialog, letter, Qt::ControlModifier);
        EXPECT_TRUE(dialog.isVisible());
        dialog.accept();
    });
    Type("|");
    EXPECT_EQ(Dialogs.Titles.size(), 1U);
}

TEST_F(Keys, CtrlLettersOfAGroupDoNothingOutsideOne) {
    Start(AllKinds());
    for (const char letter : {'B', 'D', 'E', 'G', 'I', 'N', 'T'}) Ctrl(letter);
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_EQ(SelectedRow(Fields()), 0);
    EXPECT_EQ(The<QPushButton>("CommandAdd").text(), "^Add/Open File");
}

TEST_F(Keys, CtrlLettersMoveThroughAGroup) {
    OpenSamples();
    EXPECT_EQ(Occurrence(), "1");
    Ctrl('N');
    EXPECT_EQ(Occurrence(), "2");
    Ctrl('V');
    EXPECT_EQ(Occurrence(), "1");
    Ctrl('N');
    Ctrl('N');
    EXPECT_EQ(Occurrence(), "3");
    Ctrl('T');
    EXPECT_EQ(Occurrence(), "1");
    Ctrl('B');
    EXPECT_EQ(Occurrence(), "3");
    Ctrl('I');
    EXPECT_EQ(The<QComboBox>("TblFldNum").count(), 4);
    Ctrl('D');
    EXPECT_EQ(The<QComboBox>("TblFldNum").count(), 3);
    Ctrl('G');
    EXPECT_EQ(FocusName(), "TblFldNum");
    Ctrl('E');
    EXPECT_FALSE(Members().isVisible());
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Keys, CtrlVInAGroupsBoxIsThePreviousOccurrenceAndPastesNothing) {
    OpenSamples();
    Ctrl('N');
    DoubleClickRow(Members(), 0);
    QApplication::clipboard()->setText("pasted");
    Type("12");
    Ctrl('V');
    EXPECT_EQ(Occurrence(), "1");
    EXPECT_EQ(RowText(Members(), 0), " Depth                     | ");
    Ctrl('N');
    EXPECT_EQ(RowText(Members(), 0), " Depth                     | 12");
    // Pasting is by Shift+Insert there.
    DoubleClickRow(Members(), 0);
    Key(Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(Box("Text1_4").toPlainText(), "12pasted");
}

TEST_F(Keys, CtrlANeverSelectsAllText) {
    Start(AllKinds());
    const std::vector<std::pair<int, const char *>> rows{
        {TitleRow, "Text1_1"}, {AbstractRow, "Text1_2"}, {NotesRow, "Text1_3"}};
    for (const auto &[row, name] : rows) {
        DoubleClickRow(Fields(), row);
        Type("some text");
        Dialogs.CancelFile();
        Ctrl('A');
        EXPECT_FALSE(Box(name).textCursor().hasSelection()) << name;
    }
    EXPECT_EQ(Dialogs.Titles.size(), 3U);
}

TEST_F(Keys, AShortcutTypesNothing) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    for (const char letter : {'B', 'D', 'E', 'G', 'H', 'I', 'J', 'K', 'L', 'M', 'N', 'O', 'T', 'U', 'W', 'Y'})
        Ctrl(letter);
    EXPECT_EQ(Box().toPlainText(), "");
    EXPECT_EQ(FocusName(), "Text1_1");
    ClickRow(Fields(), TitleRow);
    Ctrl('M');
    Ctrl('H');
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Keys, ASavedEditIsTheOneJustTyped) {
    Start(TextRows({"A"}));
    DoubleClickRow(Fields(), 0);
    Type("Wells");
    Dialogs.Pick(folder.Path() + "a.rpx");
    Ctrl('S');
    EXPECT_EQ(folder.Read("a.rpx"), "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"A\",\"Wells\"\r\n");
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Keys, ArrowsMoveTheSelectionAndOpenNothing) {
    Start(AllKinds());
    Key(Qt::Key_Down);
    EXPECT_EQ(SelectedRow(Fields()), 1);
    EXPECT_TRUE(Named("Text1_2").isVisible());
    EXPECT_EQ(FocusName(), "List1_0");
    Key(Qt::Key_End);
    EXPECT_EQ(SelectedRow(Fields()), SamplesRow);
    EXPECT_FALSE(Named("List1_3").isVisible());
    Key(Qt::Key_Up);
    EXPECT_EQ(SelectedRow(Fields()), DashesRow);
    Key(Qt::Key_Home);
    EXPECT_EQ(SelectedRow(Fields()), 0);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(SelectedRow(Fields()), SamplesRow);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(SelectedRow(Fields()), 0);
    EXPECT_EQ(CurrentField, 0);
}

TEST_F(Keys, EnterAndCtrlEnterOpenTheEntryControl) {
    Start(AllKinds());
    const std::vector<std::pair<int, const char *>> rows{
        {TitleRow, "Text1_1"}, {AbstractRow, "Text1_2"}, {NotesRow, "Text1_3"}, {ColourRow, "List2_0"}};
    for (const auto &[row, name] : rows) {
        ClickRow(Fields(), row);
        Key(Qt::Key_Return, Qt::NoModifier, "\r");
        EXPECT_EQ(FocusName(), name);
        ClickRow(Fields(), row);
        Key(Qt::Key_Enter, Qt::KeypadModifier | Qt::ControlModifier, "\r");
        EXPECT_EQ(FocusName(), name);
    }
}

TEST_F(Keys, EnterOrALetterOnAGroupRowEntersTheGroup) {
    Start(AllKinds());
    ClickRow(Fields(), SamplesRow);
    EXPECT_FALSE(Named("List1_3").isVisible());
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    EXPECT_TRUE(Named("List1_3").isVisible());
    EXPECT_EQ(FocusName(), "List1_3");
    Ctrl('E');
    ClickRow(Fields(), SamplesRow);
    Type("x");
    EXPECT_TRUE(Named("List1_3").isVisible());
    EXPECT_EQ(Box("Text1_4").toPlainText(), "");
}

TEST_F(Keys, ALetterOnATextRowOpensTheBoxWithTheLetter) {
    Start(AllKinds());
    ClickRow(Fields(), TitleRow);
    Type("W");
    EXPECT_EQ(FocusName(), "Text1_1");
    Type("ells");
    EXPECT_EQ(Box().toPlainText(), "Wells");
    EXPECT_EQ(The<QPushButton>("CommandAdd").text(), "^Add/Merge File");
}

// They count as typed keys, but give no character.
TEST_F(Keys, EscapeAndBackspaceOpenTheEntryControlAndLeaveItsValue) {
    Start(AllKinds());
    RowValue[TitleRow] = "Wells";
    for (const auto &[key, text] : {std::pair{Qt::Key_Escape, "\x1b"}, std::pair{Qt::Key_Backspace, "\b"}}) {
        ClickRow(Fields(), TitleRow);
        Key(key, Qt::NoModifier, text);
        EXPECT_EQ(FocusName(), "Text1_1");
        EXPECT_EQ(Box().toPlainText(), "Wells");
        ClickRow(Fields(), ColourRow);
        Key(key, Qt::NoModifier, text);
        EXPECT_EQ(FocusName(), "List2_0");
        EXPECT_EQ(SelectedRow(Choices()), -1);
        ClickRow(Fields(), SamplesRow);
        Key(key, Qt::NoModifier, text);
        EXPECT_EQ(FocusName(), "List1_3");
        Ctrl('E');
    }
}

TEST_F(Keys, ALetterOnDashesDoesNothing) {
    Start(AllKinds());
    ClickRow(Fields(), DashesRow);
    Type("x");
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    Key(Qt::Key_Delete);
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_EQ(SelectedRow(Fields()), DashesRow);
    EXPECT_FALSE(Named("List2_0").isVisible());
}

TEST_F(Keys, ALetterOnAChoiceRowSelectsTheFirstSuchChoiceAndAcceptsTheOnlyOne) {
    Start(AllKinds());
    ClickRow(Fields(), ColourRow);
    Type("m");
    EXPECT_EQ(FocusName(), "List2_0");
    EXPECT_EQ(SelectedRow(Choices()), 2);
    Type("m");
    EXPECT_EQ(SelectedRow(Choices()), 3);
    Type("M");
    EXPECT_EQ(SelectedRow(Choices()), 2) << "the search starts over at the top";
    Type("z");
    EXPECT_EQ(SelectedRow(Choices()), 2);
    EXPECT_EQ(FocusName(), "List2_0");
    Type("r");
    EXPECT_EQ(RowText(Fields(), ColourRow), " Colour                    | Red");
    EXPECT_EQ(SelectedRow(Fields()), ColourRow + 1);
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Keys, AChoiceThatBeginsInLowerCaseIsNotFoundByItsLetter) {
    Start({R"(1,20,"LIST","Colour","","")", "Amber", "pink", "Coral", "XXX-1XXX"});
    DoubleClickRow(Fields(), 0);
    ClickRow(Choices(), 2);
    for (const char *letter : {"p", "P"}) {
        Type(letter);
        EXPECT_EQ(SelectedRow(Choices()), 2) << letter;
        EXPECT_EQ(RowText(Fields(), 0), " Colour                    | ") << letter;
    }
}

TEST_F(Keys, ASmallCOnTheChoicesStartsNoSearch) {
    Start({R"(1,20,"LIST","Colour","","")", "Amber", "Cyan", "Coral", "XXX-1XXX"});
    DoubleClickRow(Fields(), 0);
    Type("c");
    EXPECT_EQ(SelectedRow(Choices()), -1);
    Type("C");
    EXPECT_EQ(SelectedRow(Choices()), 1);
}

TEST_F(Keys, EnterAcceptsAChoiceAndArrowsOnlyMove) {
    Start(AllKinds());
    DoubleClickRow(Fields(), ColourRow);
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    EXPECT_EQ(SelectedRow(Choices()), 1);
    EXPECT_EQ(RowText(Fields(), ColourRow), " Colour                    | ");
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    EXPECT_EQ(RowText(Fields(), ColourRow), " Colour                    | Red");
}

TEST_F(Keys, MovingOntoOtherShowsItsBoxAndMovingOffHidesIt) {
    Start(AllKinds());
    DoubleClickRow(Fields(), ColourRow);
    Key(Qt::Key_End);
    EXPECT_TRUE(Named("Text2_2").isVisible());
    EXPECT_EQ(FocusName(), "List2_0");
    Key(Qt::Key_Up);
    EXPECT_FALSE(Named("Text2_2").isVisible());
    Key(Qt::Key_Down);
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    EXPECT_EQ(FocusName(), "Text2_2");
    Type("teal\n");
    EXPECT_EQ(RowText(Fields(), ColourRow), " Colour                    | teal");
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Keys, DeleteAsksOnAFilledRowOnly) {
    Start(AllKinds());
    Key(Qt::Key_Delete);
    EXPECT_TRUE(Dialogs.Titles.empty());
    DoubleClickRow(Fields(), TitleRow);
    Type("x\n");
    ClickRow(Fields(), TitleRow);
    Dialogs.Press(QMessageBox::No);
    Key(Qt::Key_Delete);
    EXPECT_EQ(RowText(Fields(), TitleRow), " Title                     | x");
    Dialogs.Press(QMessageBox::Yes);
    Key(Qt::Key_Delete);
    EXPECT_EQ(Dialogs.Boxes.back(),
              (SeenBox{"DELETING FIELD DATA", "Do you want to remove all entered data associated with this field?",
                       QMessageBox::Question, YesOrNo, QMessageBox::Yes}));
    EXPECT_EQ(RowText(Fields(), TitleRow), " Title                     | ");
}

TEST_F(Keys, DeleteOnAGroupRowTellsWhereToDelete) {
    Start(AllKinds());
    ClickRow(Fields(), SamplesRow);
    Dialogs.Press(QMessageBox::Ok);
    Key(Qt::Key_Delete);
    EXPECT_EQ(Dialogs.Boxes.back(),
              (SeenBox{"DELETING FIELD DATA",
                       "You can not remove all entered data associated with this Repeating Group from here! Go into "
                       "the group itself and remove entered data from there!",
                       QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok}));
}

TEST_F(Keys, AReservedCharacterOnTheFieldListIsToldAndTheBoxOpens) {
    Start(AllKinds());
    const std::vector<std::pair<const char *, const char *>> reserved{
        {"|", "'|' is a reserved character in Quintave and is not allowed as input. Please choose another character."},
        {"\"",
         "the 'double quote' or 'seconds' symbol is a reserved character in Quintave and is not allowed as input. "
         "Please choose another character or spell out the appropriate word."}};
    for (const auto &[key, text] : reserved) {
        for (const int row : {TitleRow, ColourRow}) {
            ClickRow(Fields(), row);
            Dialogs.Press(QMessageBox::Ok);
            Type(key);
            EXPECT_EQ(Dialogs.Boxes.back(),
                      (SeenBox{"Quintave", text, QMessageBox::NoIcon, QMessageBox::Ok, QMessageBox::Ok}));
            EXPECT_EQ(FocusName(), row == TitleRow ? "Text1_1" : "List2_0");
        }
    }
    EXPECT_EQ(Box().toPlainText(), "");
    EXPECT_EQ(SelectedRow(Choices()), -1);
}

TEST_F(Keys, ButtonsArePressedBySpaceAndByEnter) {
    Start(AllKinds());
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        Named("CommandSaveAs").setFocus();
        Dialogs.Titles.clear();
        Dialogs.CancelFile();
        Key(key, Qt::NoModifier, key == Qt::Key_Space ? " " : "\r");
        EXPECT_EQ(Dialogs.Titles.size(), 1U) << key;
    }
}

TEST_F(Keys, ArrowsChooseAnOccurrenceAndEnterGoesBackToTheList) {
    OpenSamples();
    Ctrl('N');
    Ctrl('N');
    Ctrl('G');
    Key(Qt::Key_Up);
    EXPECT_EQ(Occurrence(), "2");
    EXPECT_EQ(FocusName(), "TblFldNum");
    Key(Qt::Key_Up);
    EXPECT_EQ(Occurrence(), "1");
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    EXPECT_EQ(FocusName(), "List1_3");
}

// A letter shown by the desktop's own list search would select a row that the user did not ask for.
TEST_F(Keys, TheToolkitsOwnListSearchIsOff) {
    Start(TextRows({"Apples", "Bananas"}));
    Type("B");
    EXPECT_EQ(SelectedRow(Fields()), 0);
    EXPECT_EQ(Box().toPlainText(), "B");
}
