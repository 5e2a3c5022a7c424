// What selecting, clicking and keys do on the field list.
#include "screen/field_list.h"

#include "model/row_text.h"
#include "screen/selected_field.h"
#include "screen/value_entry.h"
#include "support/screen_test.h"
#include "support/template_lines.h"

using testing::ElementsAre;
using testing::FieldsAre;

namespace {

constexpr auto DeleteTitle = "DELETING FIELD DATA";
constexpr auto DeleteQuestion = "Do you want to remove all entered data associated with this field?";

enum FieldRows : Integer { TitleRow, PlaceRow, DashesRow, ColourRow, SamplesRow, LastRow };

class FieldList : public ScreenTest {
protected:
    void SetUp() override {
        folder.Write("A.HLP", "a");
        folder.Write("B.HLP", "b");
        Start(Join({{Element(1, 30, "TEXT", "Title", "Say what it is.", "A.HLP"),
                     Element(1, 30, "TEXT", "Place", "Say what it is.", "B.HLP"), Element(1, -1, "", "More")},
                    ListOf(2, 20, "Colour", {"Red", "Mango", "Maple", "OTHER..."}),
                    {Element(2, 2, "GROUP START", "Samples", "Open it.", "MISSING.HLP"),
                     Element(3, 8, "TEXT", "Depth", "In metres.", "B.HLP"), Element(3, 5, "TEXT", "Rock"),
                     Element(2, 0, "GROUP END", ""), Element(2, 99, "MEMO", "Last")}}));
    }

    static void Give(Integer row, const std::string &value) {
        RowValue[row] = value;
        SetRow(Quintave.List1[0], row, RowWithValue(Row(static_cast<std::size_t>(row)), value));
    }

    Control &list = Quintave.List1[0];
};

} // namespace

TEST_F(FieldList, EnterCommitsATypedValueAndSelectsTheNextRow) {
    Enter(TitleRow, "Wells");
    EXPECT_EQ(Row(TitleRow), " Title                     | Wells");
    EXPECT_EQ(CurrentField, PlaceRow);
    EXPECT_EQ(Focused(), &list);
}

TEST_F(FieldList, EnterCtrlEnterAndDoubleClickOpenTheEntryControlOfTheRow) {
    const std::vector<std::pair<Integer, Control *>> controls{
        {TitleRow, &Quintave.Text1[1]}, {ColourRow, &Quintave.List2[0]}, {LastRow, &Quintave.Text1[3]}};
    for (const auto &[row, control] : controls) {
        Select(row);
        EXPECT_EQ(Focused(), &list);
        PressEnter();
        EXPECT_EQ(Focused(), control);
        Select(row);
        PressEnter(CtrlMask);
        EXPECT_EQ(Focused(), control);
        DoubleClickRow(list, row);
        EXPECT_EQ(Focused(), control);
        EXPECT_EQ(PendingKey, "");
    }
    Give(ColourRow, "Ochre");
    Open(ColourRow);
    EXPECT_EQ(Focused(), &Quintave.Text2[2]);
    EXPECT_EQ(DataChanged, False);
}

TEST_F(FieldList, ALetterOpensTheChoicesAtTheFirstThatBeginsWithIt) {
    Select(ColourRow);
    Type("m");
    EXPECT_EQ(Focused(), &Quintave.List2[0]);
    EXPECT_EQ(ChosenText(), "Mango");
    Select(ColourRow);
    Type("R");
    EXPECT_EQ(RowValue[ColourRow], "Red");
    EXPECT_EQ(CurrentField, SamplesRow);
}

TEST_F(FieldList, ArrowKeysSelectEveryRowAndOpenNothing) {
    EXPECT_EQ(CurrentField, TitleRow);
    for (const Integer row : {PlaceRow, DashesRow, ColourRow, SamplesRow, LastRow, LastRow}) {
        PressKey(DownArrowKey);
        EXPECT_EQ(CurrentField, row);
        EXPECT_EQ(list.ListIndex, row);
        EXPECT_EQ(Focused(), &list);
        EXPECT_EQ(ActiveList, 0);
    }
    EXPECT_THAT(ShownEntryControls(), ElementsAre("Text1_3"));
    PressKey(HomeKey);
    EXPECT_EQ(CurrentField, TitleRow);
    EXPECT_THAT(ShownEntryControls(), ElementsAre("Text1_1"));
}

TEST_F(FieldList, ARowSelectedByTheProgramRefreshesTheControlsBesideIt) {
    SetListIndex(list, ColourRow);
    EXPECT_EQ(CurrentField, ColourRow);
    EXPECT_THAT(ShownEntryControls(), ElementsAre("List2_0"));
    EXPECT_EQ(Quintave.DataLevelLabel.Caption, "2");
    UserKey = True;
    SetListIndex(list, TitleRow);
    EXPECT_EQ(UserKey, False);
}

TEST_F(FieldList, ItIsWhiteWithTheFocusAndLightGreyWithout) {
    EXPECT_EQ(list.BackColor, 0xFFFFFF);
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(list.BackColor, 0xC0C0C0);
    Open(SamplesRow);
    EXPECT_EQ(Quintave.List1[GroupList].BackColor, 0xFFFFFF);
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(Quintave.List1[GroupList].BackColor, 0xC0C0C0);
}

TEST_F(FieldList, ASelectionMadeByAcceptingAChoiceMarksTheEntriesChanged) {
    AcceptingChoice = True;
    SetListIndex(list, PlaceRow);
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
}

TEST_F(FieldList, AnyOtherSelectionDoesNot) {
    for (Integer row = TitleRow; row <= LastRow; ++row) Select(row);
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Open File");
}

// Help line
// ------------------------------------------------------------------------------

TEST_F(FieldList, TheHelpLineAndItsFileAreThoseOfTheSelectedRow) {
    struct Help {
        Integer Row;
        const char *Line;
        const char *File;
    };
    // Title and Place have the same line and different files; the file of Samples is not there.
    for (const auto &[row, line, file] : {Help{TitleRow, "Say what it is.", "A.HLP"},
                                          {PlaceRow, "Say what it is.", "B.HLP"},
                                          {DashesRow, "", ""},
                                          {SamplesRow, "Open it.", ""},
                                          {TitleRow, "Say what it is.", "A.HLP"}}) {
        Select(row);
        EXPECT_EQ(Quintave.helpline.Caption, line);
        EXPECT_EQ(Quintave.CommandMoreHelp.Enabled, *file != '\0');
        if (*file != '\0') {
            EXPECT_EQ(Quintave.CommandMoreHelp.Tag, TemplateDir + file);
        }
    }
}

TEST_F(FieldList, EnteringTheListShowsTheHelpLineOfItsRow) {
    Select(SamplesRow);
    UserEnters(Quintave.CommandSave);
    SetCaption(Quintave.helpline, "another");
    UserEnters(list);
    EXPECT_EQ(Quintave.helpline.Caption, "Open it.");
}

TEST_F(FieldList, TheHelpLineFollowsIntoAGroupAndOut) {
    Open(SamplesRow);
    EXPECT_EQ(Quintave.helpline.Caption, "In metres.");
    EXPECT_TRUE(Quintave.CommandMoreHelp.Enabled);
    Select(1);
    EXPECT_EQ(Quintave.helpline.Caption, "");
    Press(Quintave.GrpExit);
    EXPECT_EQ(CurrentField, LastRow);
    EXPECT_EQ(Quintave.helpline.Caption, "");
    Select(SamplesRow);
    EXPECT_EQ(Quintave.helpline.Caption, "Open it.");
}

// Delete
// ------------------------------------------------------------------------------

TEST_F(FieldList, DeleteOnAFilledRowAsksAndYesEmptiesAllItsInstances) {
    Give(TitleRow, "Wells|Springs");
    Select(TitleRow);
    Dialogs.Answers = {YesAnswer};
    PressKey(DeleteKey);
    EXPECT_THAT(Dialogs.Messages, ElementsAre(FieldsAre(DeleteTitle, DeleteQuestion, YesNo + QuestionIcon)));
    EXPECT_EQ(RowValue[TitleRow], "");
    EXPECT_EQ(Row(TitleRow), RowOf("Title"));
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_EQ(Quintave.FILabel[0].Caption, "1");
    EXPECT_EQ(Quintave.Text1[1].Text, "");
    EXPECT_EQ(CurrentField, TitleRow);
}

TEST_F(FieldList, DeleteTogetherWithCtrlOrShiftIsDelete) {
    for (const Integer shift : {CtrlMask, ShiftMask}) {
        Give(TitleRow, "Wells");
        Select(TitleRow);
        Dialogs.Answers = {YesAnswer};
        PressKey(DeleteKey, shift);
        EXPECT_THAT(Dialogs.Messages, ElementsAre(FieldsAre(DeleteTitle, DeleteQuestion, YesNo + QuestionIcon)));
        EXPECT_EQ(RowValue[TitleRow], "");
        Dialogs.Messages.clear();
    }
}

TEST_F(FieldList, NoToTheQuestionChangesNothing) {
    Give(TitleRow, "Wells|Springs");
    Select(TitleRow);
    Dialogs.Answers = {NoAnswer};
    PressKey(DeleteKey);
    EXPECT_EQ(MessageCount(), 1u);
    EXPECT_EQ(RowValue[TitleRow], "Wells|Springs");
    EXPECT_EQ(Row(TitleRow), RowOf("Title", "Wells|Springs"));
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(Quintave.FILabel[0].Caption, "2");
}

TEST_F(FieldList, DeleteOnAChoiceRowClearsItsSelection) {
    Give(ColourRow, "Red");
    Select(ColourRow);
    Dialogs.Answers = {YesAnswer};
    PressKey(DeleteKey);
    EXPECT_EQ(RowValue[ColourRow], "");
    EXPECT_EQ(Quintave.List2[0].ListIndex, -1);
}

TEST_F(FieldList, DeleteOnAGroupsRowOnlyTells) {
    Open(SamplesRow);
    Enter(0, "12 m");
    Press(Quintave.GrpExit);
    const std::string store = folder.Read("GRP00005.XXX");
    Select(SamplesRow);
    PressKey(DeleteKey);
    EXPECT_THAT(Dialogs.Messages,
                ElementsAre(FieldsAre(DeleteTitle,
                                      "You can not remove all entered data associated with this Repeating Group from "
                                      "here! Go into the group itself and remove entered data from there!",
                                      OkOnly + InformationIcon)));
    EXPECT_EQ(folder.Read("GRP00005.XXX"), store);
    EXPECT_EQ(Row(SamplesRow), RowOf("Samples", "-- REPEATABLE GROUP --"));
}

TEST_F(FieldList, DeleteOnDashesOrAnEmptyRowAsksNothing) {
    for (const Integer row : {DashesRow, TitleRow, ColourRow, LastRow}) {
        Select(row);
        PressKey(DeleteKey);
    }
    Open(SamplesRow);
    PressKey(DeleteKey);
    EXPECT_EQ(MessageCount(), 0u);
    EXPECT_EQ(DataChanged, False);
}

TEST_F(FieldList, DeleteInAGroupEmptiesTheMembersCellsAndNoValueOfTheMainList) {
    Give(TitleRow, "Wells");
    Give(PlaceRow, "Hill");
    Open(SamplesRow);
    Enter(0, "12 m");
    Enter(1, "Clay");
    Select(1);
    Dialogs.Answers = {YesAnswer};
    PressKey(DeleteKey);
    EXPECT_EQ(LastMessage().Text, DeleteQuestion);
    EXPECT_EQ(Row(1), RowOf("Rock"));
    EXPECT_EQ(Row(0), RowOf("Depth", "12 m"));
    Press(Quintave.GrpExit);
    EXPECT_EQ(folder.Read("GRP00005.XXX"), std::string("\x0D\0\1\0", 4) + "12 m         ");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(RowValue[PlaceRow], "Hill");
    EXPECT_EQ(Row(PlaceRow), RowOf("Place", "Hill"));
}

TEST_F(FieldList, DeleteInAGroupAsksMarksTheEntriesChangedAndClearsAChoice) {
    folder.Write("OTHER.FTF", TemplateText(Join({{Element(1, 2, "GROUP START", "G")},
                                                 ListOf(2, 4, "Rock", {"Clay", "Sand"}),
                                                 {Element(1, 0, "GROUP END", "")}})));
    Dialogs.Texts = {folder.Path() + "OTHER.FTF"};
    Press(Quintave.CommandTemplate);
    folder.Write("GRP00001.XXX", std::string("\4\0\1\0", 4) + "Sand");
    Open(0);
    ASSERT_EQ(Quintave.List2[GroupList].ListIndex, 1);
    Dialogs.Answers = {NoAnswer, YesAnswer};
    PressKey(DeleteKey);
    EXPECT_EQ(Row(0), RowOf("Rock", "Sand"));
    EXPECT_EQ(Quintave.List2[GroupList].ListIndex, 1);
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Open File");
    PressKey(DeleteKey);
    EXPECT_EQ(MessageCount(), 2u);
    EXPECT_EQ(Row(0), RowOf("Rock"));
    EXPECT_EQ(Quintave.List2[GroupList].ListIndex, -1);
    EXPECT_EQ(FieldInfo[2][Choice], -1);
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    Press(Quintave.GrpExit);
    EXPECT_EQ(folder.Read("GRP00001.XXX"), std::string("\4\0\1\0", 4) + "    ");
}

TEST_F(FieldList, ATitleThatBeginsLikeDashesIsAFieldLikeAnyOther) {
    FieldTitle[1] = "- - - - x";
    SetRow(list, TitleRow, RowPrefix(FieldTitle[1]));
    Give(TitleRow, "Wells");
    Select(TitleRow);
    PressKey(DeleteKey);
    EXPECT_EQ(MessageCount(), 1u);
}
