// Picking from a choice list.
#include "model/row_text.h"
#include "report/choice_matching.h"
#include "screen/selected_field.h"
#include "screen/value_entry.h"
#include "support/screen_test.h"
#include "support/template_lines.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Choices of the first row, by their position.
enum Choices : Integer { Clear, Red, Rose, Blue, Other, Cyan, Lower };

class ChoiceList : public ScreenTest {
protected:
    void SetUp() override {
        Start(Join({ListOf(1, 20, "Colour",
                           {" <reset/clear field entry> ", "Red", "Rose", "Blue", " Other... ", "Cyan", "pink"}),
                    ListOf(1, 20, "Closed", {"Mango", "Maple"})}));
    }

    // A row with a value that was loaded, newly selected.
    static void Give(Integer row, const std::string &value) {
        UserEnters(Quintave.List1[0]);
        RowValue[row] = value;
        SetRow(Quintave.List1[0], row, RowWithValue(Row(static_cast<std::size_t>(row)), value));
        Select(row);
    }

    static constexpr Integer Element1 = 1;
    Control &choices = Quintave.List2[0];
    Control &other = Quintave.Text2[2];
};

} // namespace

// Accepting
// ------------------------------------------------------------------------------

TEST_F(ChoiceList, DoubleClickAcceptsTheChoiceAndSelectsTheNextRow) {
    Select(0);
    DoubleClickRow(choices, Rose);
    EXPECT_EQ(RowValue[0], "Rose");
    EXPECT_EQ(Row(0), RowOf("Colour", "Rose"));
    EXPECT_EQ(FieldInfo[Element1][Choice], Rose);
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_EQ(AcceptingChoice, False);
}

TEST_F(ChoiceList, EnterAndCtrlEnterAcceptTheSelectedChoice) {
    for (const Integer shift : {Integer{0}, CtrlMask}) {
        Open(0);
        ClickRow(choices, Blue);
        EXPECT_EQ(RowValue[0], "");
        PressEnter(shift);
        EXPECT_EQ(RowValue[0], "Blue");
        EXPECT_EQ(CurrentField, 1);
        Give(0, "");
    }
}

TEST_F(ChoiceList, AcceptingOnTheLastRowKeepsItSelected) {
    Select(1);
    DoubleClickRow(choices, 1);
    EXPECT_EQ(RowValue[1], "Maple");
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_EQ(DataChanged, True);
}

TEST_F(ChoiceList, EnterWithNothingSelectedDoesNothing) {
    Open(0);
    PressEnter();
    EXPECT_EQ(Focused(), &choices);
    EXPECT_EQ(CurrentField, 0);
    EXPECT_EQ(DataChanged, False);
}

TEST_F(ChoiceList, ADoubleClickWithNothingSelectedKeepsTheValue) {
    Give(1, "Foreign");
    UserDoubleClicks(choices);
    EXPECT_EQ(RowValue[1], "Foreign");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(ChoiceList, TheClearingChoiceEmptiesTheValueInAnyCase) {
    Give(0, "Red");
    DoubleClickRow(choices, Clear);
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(Row(0), RowOf("Colour"));
    EXPECT_EQ(DataChanged, True);
}

TEST_F(ChoiceList, AChoiceLongerThanTheFieldIsStoredWhole) {
    FieldInfo[Element1][KindItem] = 3;
    Select(0);
    DoubleClickRow(choices, Blue);
    EXPECT_EQ(RowValue[0], "Blue");
}

TEST_F(ChoiceList, ClickingAndMovingByKeysCommitNothing) {
    Open(0);
    ClickRow(choices, Red);
    for (int i = 0; i < 4; ++i) PressKey(DownArrowKey);
    PressKey(UpArrowKey);
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(Row(0), RowOf("Colour"));
    EXPECT_EQ(DataChanged, False);
    Select(1);
    EXPECT_EQ(RowValue[0], "");
}

TEST_F(ChoiceList, TheListIsWhiteWithTheFocusAndLightGreyWithout) {
    Open(0);
    EXPECT_EQ(choices.BackColor, 0xFFFFFF);
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(choices.BackColor, 0xC0C0C0);
}

TEST_F(ChoiceList, ListTopFollowsTheSelectedChoice) {
    Give(0, "Blue");
    EXPECT_EQ(ListTop, Blue);
    ClickRow(choices, Red);
    EXPECT_EQ(ListTop, Red);
    Give(0, "");
    EXPECT_EQ(ListTop, -1);
}

// The open choice
// ------------------------------------------------------------------------------

TEST_F(ChoiceList, MovingOntoOtherShowsItsBoxAndMovingOffHidesIt) {
    Open(0);
    ClickRow(choices, Blue);
    PressKey(DownArrowKey);
    EXPECT_THAT(ShownEntryControls(), ElementsAre("Text2_2", "List2_0"));
    EXPECT_EQ(choices.ListIndex, Other);
    PressKey(DownArrowKey);
    EXPECT_THAT(ShownEntryControls(), ElementsAre("List2_0"));
    ClickRow(choices, Other);
    EXPECT_TRUE(other.Visible);
    ClickRow(choices, Red);
    EXPECT_FALSE(other.Visible);
    EXPECT_EQ(choices.ListIndex, Red);
    EXPECT_EQ(RowValue[0], "");
}

TEST_F(ChoiceList, OtherSelectedWithoutKeyOrPressShowsItsBoxToo) {
    Open(0);
    ClickRow(choices, Red);
    UserSelects(choices, Other); // a drag goes on, a screen reader selects
    EXPECT_THAT(ShownEntryControls(), ElementsAre("Text2_2", "List2_0"));
    UserSelects(choices, Blue);
    EXPECT_THAT(ShownEntryControls(), ElementsAre("List2_0"));
    EXPECT_EQ(choices.ListIndex, Blue);
    UserSelects(choices, Other);
    UserEnters(other);
    Type("Ochre");
    PressEnter();
    EXPECT_EQ(RowValue[0], "Ochre");
}

TEST_F(ChoiceList, OtherIsShownWithWhatItsInstanceHolds) {
    Give(0, "Red|Blue");
    UserSelects(choices, Other);
    EXPECT_EQ(other.Text, "Red");
    UserScrolls(Quintave.FIScroll, 2);
    EXPECT_EQ(RowValue[0], "Red|Blue");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(ChoiceList, TheTextOfAHiddenBoxIsNeverStored) {
    Give(0, "Ochre");
    Give(1, "Mango");
    Give(0, "Red|Blue");
    ShowListIndex(choices, Other); // selected, but the box is not shown
    ASSERT_FALSE(other.Visible);
    SetText(other, "left over", 0);
    UserScrolls(Quintave.FIScroll, 2);
    EXPECT_EQ(RowValue[0], "Red|Blue");
    ShowListIndex(choices, Other);
    Press(Quintave.FIAdd);
    EXPECT_EQ(RowValue[0], "Red|Blue");
}

TEST_F(ChoiceList, AcceptingOtherShowsItsBoxWithTheFocusAndStaysOnTheRow) {
    Select(0);
    DoubleClickRow(choices, Other);
    EXPECT_EQ(Focused(), &other);
    EXPECT_EQ(CurrentField, 0);
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(Row(0), RowOf("Colour"));
    EXPECT_EQ(FieldInfo[Element1][Choice], Other);
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(AcceptingChoice, False);
}

TEST_F(ChoiceList, AcceptingOtherKeepsAnEarlierFreeText) {
    Give(0, "Ochre");
    DoubleClickRow(choices, Other);
    EXPECT_EQ(RowValue[0], "Ochre");
    EXPECT_EQ(Row(0), RowOf("Colour", "Ochre"));
    EXPECT_EQ(other.Text, "Ochre");
}

TEST_F(ChoiceList, AcceptingOtherKeepsAnEarlierFreeTextWhereItIsTheFirstChoice) {
    folder.Write("OTHER.FTF", TemplateText(ListOf(1, 20, "Colour", {"OTHER...", "Red"})));
    Dialogs.Texts = {folder.Path() + "OTHER.FTF"};
    Press(Quintave.CommandTemplate);
    Give(0, "Ochre");
    DoubleClickRow(choices, 0);
    EXPECT_EQ(RowValue[0], "Ochre");
    EXPECT_EQ(Row(0), RowOf("Colour", "Ochre"));
    EXPECT_EQ(other.Text, "Ochre");
}

TEST_F(ChoiceList, AcceptingOtherEmptiesAListedValue) {
    for (const char *listed : {"Red", " Other... "}) {
        Give(0, listed);
        DoubleClickRow(choices, Other);
        EXPECT_EQ(RowValue[0], "");
        EXPECT_EQ(Row(0), RowOf("Colour"));
        EXPECT_EQ(other.Text, "");
    }
}

TEST_F(ChoiceList, AcceptingOtherInOneInstanceLeavesTheOthers) {
    Give(0, "Red|Blue|Ochre");
    UserScrolls(Quintave.FIScroll, 2);
    DoubleClickRow(choices, Other);
    EXPECT_EQ(RowValue[0], "Red||Ochre");
    Type("Sand");
    PressEnter();
    EXPECT_EQ(RowValue[0], "Red|Sand|Ochre");
}

TEST_F(ChoiceList, TypingInTheOtherBoxTiesTheValueToThatChoice) {
    Open(0);
    ClickRow(choices, Other);
    UserEnters(other);
    Type("Ochre");
    EXPECT_EQ(FieldInfo[Element1][Choice], Other);
    EXPECT_EQ(ListTop, Other);
    EXPECT_EQ(DataChanged, True);
    PressEnter();
    EXPECT_EQ(RowValue[0], "Ochre");
    Select(0);
    EXPECT_EQ(choices.ListIndex, Other);
    EXPECT_EQ(other.Text, "Ochre");
}

TEST_F(ChoiceList, AChoiceAcceptedAfterAFreeTextTakesItsPlace) {
    Give(0, "Ochre");
    DoubleClickRow(choices, Red);
    EXPECT_EQ(RowValue[0], "Red");
    Select(0);
    EXPECT_EQ(ChosenText(), "Red");
    EXPECT_FALSE(other.Visible);
}

// Letters
// ------------------------------------------------------------------------------

TEST_F(ChoiceList, ALetterThatStartsOneChoiceAcceptsItAtOnce) {
    Select(0);
    Type("b");
    EXPECT_EQ(RowValue[0], "Blue");
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(PendingKey, "");
}

TEST_F(ChoiceList, ALetterThatStartsSeveralSelectsTheNextAndWraps) {
    Select(0);
    Type("r");
    EXPECT_EQ(Focused(), &choices);
    EXPECT_EQ(choices.ListIndex, Red);
    Type("r");
    EXPECT_EQ(choices.ListIndex, Rose);
    Type("R");
    EXPECT_EQ(choices.ListIndex, Red);
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(PendingKey, "");
}

TEST_F(ChoiceList, WithNothingSelectedTheFirstMatchIsSelected) {
    Select(1);
    Type("m");
    EXPECT_EQ(ChosenText(), "Mango");
    EXPECT_EQ(RowValue[1], "");
}

TEST_F(ChoiceList, ALetterThatStartsNoneLeavesTheSelectionAndFocusesTheList) {
    Give(0, "Rose");
    Type("z");
    EXPECT_EQ(choices.ListIndex, Rose);
    EXPECT_EQ(Focused(), &choices);
    EXPECT_EQ(PendingKey, "");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(ChoiceList, ChoicesThatBeginInLowerCaseAreNeverFound) {
    Give(0, "Rose");
    for (const char *key : {"p", "P"}) {
        Type(key);
        EXPECT_EQ(choices.ListIndex, Rose);
    }
}

TEST_F(ChoiceList, TheSmallCStartsNoSearchOnTheListButTheCapitalDoes) {
    Open(0);
    Type("c");
    EXPECT_EQ(choices.ListIndex, -1);
    EXPECT_EQ(RowValue[0], "");
    Type("C");
    EXPECT_EQ(RowValue[0], "Cyan");
}

TEST_F(ChoiceList, TheSmallCTypedOnTheRowSearches) {
    Select(0);
    Type("c");
    EXPECT_EQ(RowValue[0], "Cyan");
}

TEST_F(ChoiceList, ALetterFromOtherToAListedChoiceHidesTheBox) {
    Give(0, "Ochre");
    Type("r");
    EXPECT_EQ(choices.ListIndex, Red);
    EXPECT_FALSE(other.Visible);
    EXPECT_EQ(Focused(), &choices);
    EXPECT_EQ(RowValue[0], "Ochre");
}

TEST_F(ChoiceList, AccentedLettersDigitsAndBlanksAreLookedForLikeLetters) {
    folder.Write("OTHER.FTF", TemplateText(ListOf(1, 20, "Depth",
                                                  {"Eta",
                                                   "\xC9"
                                                   "cole",
                                                   "10 m", "20 m", "2 km", " deep"})));
    Dialogs.Texts = {folder.Path() + "OTHER.FTF"};
    Press(Quintave.CommandTemplate);
    for (const auto &[key, value] :
         {std::pair{"\u00E9", "École"}, {"\u00C9", "École"}, {"e", "Eta"}, {"1", "10 m"}, {" ", " deep"}}) {
        Give(0, "");
        Type(key);
        EXPECT_EQ(RowValue[0], value) << key;
    }
    Give(0, "");
    Type("2");
    EXPECT_EQ(ChosenText(), "20 m");
    Type("2");
    EXPECT_EQ(ChosenText(), "2 km");
    EXPECT_EQ(RowValue[0], "");
}

TEST_F(ChoiceList, TheOnlyMatchIsAcceptedAlsoWhereItIsSelectedAlready) {
    Give(0, "Blue");
    DataChanged = False;
    Type("b");
    EXPECT_EQ(RowValue[0], "Blue");
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(DataChanged, True);
}

TEST_F(ChoiceList, TheKeysThatMoveInAListAreTheUsers) {
    Open(0);
    for (Integer key = 1; key <= 60; ++key) {
        if (key == EnterCode) continue;
        UserKey = False;
        UserKeyDown(choices, key, 0);
        EXPECT_EQ(UserKey, Truth(key >= 33 && key <= 40)) << key;
    }
    UserKey = False;
    UserPressesMouse(choices);
    EXPECT_EQ(UserKey, True);
    UserSelects(choices, Red);
    EXPECT_EQ(UserKey, False);
}

// Choices of several instances
// ------------------------------------------------------------------------------

TEST_F(ChoiceList, ACommitByAChoiceReplacesOnlyTheInstanceShown) {
    Give(0, "Red|Blue");
    UserScrolls(Quintave.FIScroll, 2);
    DoubleClickRow(choices, Rose);
    EXPECT_EQ(RowValue[0], "Red|Rose");
    EXPECT_EQ(Row(0), RowOf("Colour", "Red|Rose"));
    EXPECT_EQ(CallTrail.substr(0, 13), "List2_DblClic");
}

TEST_F(ChoiceList, GoingToOtherKeepsTheInstanceShown) {
    Give(0, "Red|Blue|Rose");
    UserScrolls(Quintave.FIScroll, 2);
    ClickRow(choices, Other);
    EXPECT_EQ(Quintave.FILabel[1].Caption, "2");
    EXPECT_EQ(RowValue[0], "Red|Blue|Rose");
    EXPECT_EQ(choices.ListIndex, Other);
}
