// Several instances of one field.
#include "screen/instance_text.h"
#include "screen/instances.h"

#include "model/row_text.h"
#include "screen/selected_field.h"
#include "screen/value_entry.h"
#include "support/screen_test.h"
#include "support/template_lines.h"

namespace {

enum FieldRows : Integer { AuthorRow, ColourRow, ClosedRow, SignedRow, LastRow };

class Instances : public ScreenTest {
protected:
    static TemplateLines Fields() {
        return Join({{Element(1, 30, "TEXT", "Author")},
                     ListOf(1, 20, "Colour", {"<RESET/CLEAR FIELD ENTRY>", "Red", "Blue", "OTHER..."}),
                     ListOf(1, 20, "Closed", {"Mango", "Maple"}),
                     {Element(-2, 30, "TEXT", "Signed"), Element(1, 30, "TEXT", "Last")}});
    }

    void SetUp() override { Start(Fields()); }

    // A row with a value that was loaded, newly selected.
    static void Give(Integer row, const std::string &value) {
        UserEnters(Quintave.List1[0]);
        RowValue[row] = value;
        SetRow(Quintave.List1[0], row, RowWithValue(Row(static_cast<std::size_t>(row)), value));
        Select(row);
    }

    // "2 of 3"
    static std::string Shown() { return Quintave.FILabel[1].Caption + " of " + Quintave.FILabel[0].Caption; }

    Control &author = Quintave.Text1[1];
    Control &choices = Quintave.List2[0];
};

} // namespace

TEST_F(Instances, AnInstanceIsThePartBetweenTwoBars) {
    EXPECT_EQ(InstanceText("a|b|c", 1), "a");
    EXPECT_EQ(InstanceText("a|b|c", 3), "c");
    EXPECT_EQ(InstanceText("a|b|c", 4), "");
    EXPECT_EQ(InstanceText("a||c", 2), "");
    EXPECT_EQ(InstanceText("", 1), "");
    EXPECT_EQ(InstanceText("a", 1), "a");
    EXPECT_EQ(InstanceCount(""), 1);
    EXPECT_EQ(InstanceCount("a|b|c"), 3);
}

TEST_F(Instances, StoringKeepsBothBarsAndAnEmptyLastInstanceGoes) {
    struct Stored {
        const char *Value;
        const char *Number;
        const char *Text;
        const char *After;
    };
    constexpr std::array Cases{Stored{"x|y", "1", "", "|y"},       Stored{"a|b|c", "2", "", "a||c"},
                               Stored{"x|y", "2", "", "x"},        Stored{"x|y", "3", "", "x|y"},
                               Stored{"x|y", "2", "z", "x|z"},     Stored{"x|y", "3", "z", "x|y|z"},
                               Stored{"a|b|c", "1", "z", "z|b|c"}, Stored{"x", "1", "", ""}};
    for (const auto &[value, number, text, after] : Cases) {
        Give(AuthorRow, value);
        SetCaption(Quintave.FILabel[1], number);
        ShowFieldInstance(InstanceAct::Store, text);
        EXPECT_EQ(RowValue[AuthorRow], after) << value << " " << number << " " << text;
        EXPECT_EQ(Row(AuthorRow), RowOf("Author", after));
    }
}

TEST_F(Instances, DeletingTakesOneBarAlong) {
    for (const auto &[value, number, after] :
         {std::tuple{"x|y|z", "2", "x|z"}, {"x|y|z", "1", "y|z"}, {"x|y", "2", "x"}, {"x", "1", ""}}) {
        Give(AuthorRow, value);
        SetCaption(Quintave.FILabel[1], number);
        ShowFieldInstance(InstanceAct::Delete);
        EXPECT_EQ(RowValue[AuthorRow], after) << value << " " << number;
    }
}

TEST_F(Instances, ARowShowsAllItsInstancesCutLikeAnyValue) {
    Give(AuthorRow, "wells");
    Press(Quintave.FIAdd);
    Type("logs");
    PressEnter();
    EXPECT_EQ(Row(AuthorRow), RowOf("Author", "wells|logs"));
    Select(AuthorRow);
    UserScrolls(Quintave.FIScroll, 2);
    UserEnters(author);
    Type(std::string(26, 'x'));
    PressEnter();
    EXPECT_EQ(Row(AuthorRow), RowOf("Author", "wells|logs" + std::string(16, 'x') + "..."));
}

// Adding
// ------------------------------------------------------------------------------

TEST_F(Instances, AddRaisesBothLabelsEmptiesTheEntryAndFocusesItsBox) {
    Give(AuthorRow, "x");
    CallTrail = "Choices";
    Press(Quintave.FIAdd);
    EXPECT_EQ(Shown(), "2 of 2");
    EXPECT_EQ(Quintave.FIScroll.Max, 2);
    EXPECT_EQ(Quintave.FIScroll.Value, 2);
    EXPECT_EQ(Quintave.FIScroll.Tag, "");
    EXPECT_EQ(author.Text, "");
    EXPECT_EQ(Focused(), &author);
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_EQ(CallTrail, "ChoicesFIAdd");
    Type("y");
    PressEnter();
    EXPECT_EQ(RowValue[AuthorRow], "x|y");
    EXPECT_EQ(CurrentField, ColourRow);
}

TEST_F(Instances, AddStoresThePendingEditFirst) {
    Open(AuthorRow);
    Type("x");
    Press(Quintave.FIAdd);
    EXPECT_EQ(RowValue[AuthorRow], "x");
    Type("y");
    Press(Quintave.FIAdd);
    EXPECT_EQ(RowValue[AuthorRow], "x|y");
    EXPECT_EQ(Shown(), "3 of 3");
}

TEST_F(Instances, AddWhileTheShownInstanceIsEmptyDoesNothing) {
    Select(AuthorRow);
    Press(Quintave.FIAdd);
    EXPECT_EQ(Shown(), "1 of 1");
    EXPECT_EQ(DataChanged, False);
    Give(AuthorRow, "x");
    Press(Quintave.FIAdd);
    Type("  ");
    Press(Quintave.FIAdd);
    EXPECT_EQ(Shown(), "2 of 2");
    EXPECT_EQ(RowValue[AuthorRow], "x");
}

TEST_F(Instances, AddBehindAnEmptyLastInstanceDoesNothing) {
    Give(AuthorRow, "x|");
    EXPECT_EQ(Shown(), "1 of 2");
    Press(Quintave.FIAdd);
    EXPECT_EQ(Shown(), "1 of 2");
    EXPECT_EQ(RowValue[AuthorRow], "x|");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(Instances, AddOnAChoiceFieldNeedsASelectedChoiceAndThenClearsIt) {
    Select(ClosedRow);
    Press(Quintave.FIAdd);
    EXPECT_EQ(Shown(), "1 of 1");
    ClickRow(choices, 1);
    Press(Quintave.FIAdd);
    EXPECT_EQ(RowValue[ClosedRow], "Maple");
    EXPECT_EQ(Shown(), "2 of 2");
    EXPECT_EQ(choices.ListIndex, -1);
    DoubleClickRow(choices, 0);
    EXPECT_EQ(RowValue[ClosedRow], "Maple|Mango");
}

TEST_F(Instances, TheClearingChoiceCountsAsEmptyAndTheOpenOneAsItsText) {
    Select(ColourRow);
    ClickRow(choices, 0);
    Press(Quintave.FIAdd);
    EXPECT_EQ(Shown(), "1 of 1");
    Give(ColourRow, "Ochre");
    Press(Quintave.FIAdd);
    EXPECT_EQ(Shown(), "2 of 2");
    EXPECT_EQ(RowValue[ColourRow], "Ochre");
    EXPECT_FALSE(Quintave.Text2[2].Visible);
    EXPECT_EQ(choices.ListIndex, -1);
    EXPECT_EQ(ListTop, -1);
}

TEST_F(Instances, AnAddedInstanceLeftEmptyDisappears) {
    Give(AuthorRow, "x");
    Press(Quintave.FIAdd);
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(RowValue[AuthorRow], "x");
    EXPECT_EQ(Row(AuthorRow), RowOf("Author", "x"));
    Select(LastRow);
    Select(AuthorRow);
    EXPECT_EQ(Shown(), "1 of 1");
}

TEST_F(Instances, AnEmptyLastInstanceThatIsLeftNoLongerCounts) {
    Give(AuthorRow, "x");
    Press(Quintave.FIAdd);
    UserScrolls(Quintave.FIScroll, 1);
    EXPECT_EQ(Shown(), "1 of 1");
    Press(Quintave.FIAdd);
    EXPECT_EQ(Shown(), "2 of 2");
    Type("y");
    UserEnters(Quintave.CommandSave);
    UserEnters(author);
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(RowValue[AuthorRow], "x|y");
}

TEST_F(Instances, CommittingTwiceStoresAnAddedInstanceOnce) {
    Give(AuthorRow, "a|b|c");
    UserScrolls(Quintave.FIScroll, 3);
    UserEnters(author);
    author.Text.clear();
    UserEdits(author, "", 0);
    UserScrolls(Quintave.FIScroll, 2);
    UserEnters(author);
    UserEdits(author, "", 0);
    UserScrolls(Quintave.FIScroll, 1);
    EXPECT_EQ(RowValue[AuthorRow], "a");
    EXPECT_EQ(Shown(), "1 of 1");
    Press(Quintave.FIAdd);
    Type("z");
    Dialogs.Texts.push_back(folder.Path() + "a.rpx");
    PressCtrl('S');
    EXPECT_EQ(RowValue[AuthorRow], "a|z");
}

// Deleting
// ------------------------------------------------------------------------------

TEST_F(Instances, DeletingTheMiddleInstanceShowsTheNextInItsPlace) {
    Give(AuthorRow, "x|y|z");
    UserScrolls(Quintave.FIScroll, 2);
    Press(Quintave.FIDel);
    EXPECT_EQ(RowValue[AuthorRow], "x|z");
    EXPECT_EQ(Row(AuthorRow), RowOf("Author", "x|z"));
    EXPECT_EQ(Shown(), "2 of 2");
    EXPECT_EQ(Quintave.FIScroll.Max, 2);
    EXPECT_EQ(author.Text, "z");
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_EQ(CallTrail, "FIDel");
}

TEST_F(Instances, DeletingTheLastInstanceShowsTheOneBefore) {
    Give(AuthorRow, "x|y");
    UserScrolls(Quintave.FIScroll, 2);
    Press(Quintave.FIDel);
    EXPECT_EQ(RowValue[AuthorRow], "x");
    EXPECT_EQ(Shown(), "1 of 1");
    EXPECT_EQ(Quintave.FIScroll.Value, 1);
    EXPECT_EQ(author.Text, "x");
}

TEST_F(Instances, DeletingTheOnlyInstanceLeavesAnEmptyOne) {
    Give(AuthorRow, "x");
    Press(Quintave.FIDel);
    EXPECT_EQ(RowValue[AuthorRow], "");
    EXPECT_EQ(Row(AuthorRow), RowOf("Author"));
    EXPECT_EQ(Shown(), "1 of 1");
    EXPECT_EQ(author.Text, "");
}

TEST_F(Instances, DeletingOnAChoiceFieldSelectsTheChoiceThatFollows) {
    Give(ColourRow, "Red|Blue");
    Press(Quintave.FIDel);
    EXPECT_EQ(RowValue[ColourRow], "Blue");
    EXPECT_EQ(ChosenText(), "Blue");
}

// Scrolling
// ------------------------------------------------------------------------------

TEST_F(Instances, ScrollingStoresTheEditOfTheInstanceLeft) {
    Give(AuthorRow, "x|y");
    UserScrolls(Quintave.FIScroll, 2);
    EXPECT_EQ(Shown(), "2 of 2");
    EXPECT_EQ(author.Text, "y");
    EXPECT_EQ(DataChanged, False);
    UserEnters(author);
    Type("2");
    CallTrail.clear();
    UserScrolls(Quintave.FIScroll, 1);
    EXPECT_EQ(RowValue[AuthorRow], "x|y2");
    EXPECT_EQ(author.Text, "x");
    EXPECT_EQ(DataChanged, True);
    EXPECT_TRUE(CallTrail.ends_with("FIScrollChange")) << CallTrail;
}

TEST_F(Instances, ScrollingThroughAChoiceFieldSelectsEachInstancesOwnChoice) {
    Give(ColourRow, "Red|Ochre|Blue|Sand");
    const std::vector<std::pair<std::string, std::string>> shown{
        {"Red", ""}, {"OTHER...", "Ochre"}, {"Blue", ""}, {"OTHER...", "Sand"}};
    for (const std::size_t i : {1u, 2u, 3u, 1u, 0u, 3u, 0u}) {
        UserScrolls(Quintave.FIScroll, static_cast<Integer>(i + 1));
        EXPECT_EQ(ChosenText(), shown[i].first) << i;
        EXPECT_EQ(Quintave.Text2[2].Visible, !shown[i].second.empty());
        EXPECT_EQ(Quintave.Text2[2].Visible ? Quintave.Text2[2].Text : "", shown[i].second);
    }
    EXPECT_EQ(RowValue[ColourRow], "Red|Ochre|Blue|Sand");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(Instances, AnotherChoiceSelectedBeforeScrollingIsStored) {
    Give(ColourRow, "Red|Blue");
    ClickRow(choices, 2);
    UserScrolls(Quintave.FIScroll, 2);
    EXPECT_EQ(RowValue[ColourRow], "Blue|Blue");
    EXPECT_EQ(DataChanged, True);
}

TEST_F(Instances, AnInstanceThatAClosedListDoesNotKnowIsKeptWhileScrolling) {
    Give(ClosedRow, "Mango|Foreign|Maple");
    for (const Integer n : {Integer{2}, Integer{3}, Integer{2}, Integer{1}}) {
        UserScrolls(Quintave.FIScroll, n);
        EXPECT_EQ(choices.ListIndex, n == 2 ? -1 : n / 2);
    }
    EXPECT_EQ(RowValue[ClosedRow], "Mango|Foreign|Maple");
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(Instances, AScrollUnderTheTagAddDelIsIgnored) {
    Give(AuthorRow, "x|y");
    Quintave.FIScroll.Tag = "AddDel";
    UserScrolls(Quintave.FIScroll, 2);
    EXPECT_EQ(Shown(), "1 of 2");
    EXPECT_EQ(author.Text, "x");
}

TEST_F(Instances, SelectingAnotherRowIsNoScroll) {
    Give(AuthorRow, "x|y|z");
    UserScrolls(Quintave.FIScroll, 3);
    UserEnters(Quintave.List1[0]);
    CallTrail.clear();
    Select(LastRow); // lowers the range and the position
    EXPECT_EQ(Quintave.FIScroll.Value, 1);
    EXPECT_EQ(CallTrail, "Choices");
    EXPECT_EQ(RowValue[AuthorRow], "x|y|z");
    EXPECT_EQ(RowValue[LastRow], "");
}

TEST_F(Instances, ACommitOfOneOfSeveralIsInTheTrail) {
    Give(AuthorRow, "x|y");
    UserEnters(author);
    Type("1");
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(CallTrail, "Text1-LostFocus");
    Give(ColourRow, "Ochre|Sand");
    UserEnters(Quintave.Text2[2]);
    Type("!");
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(CallTrail, "Text2-LostFocus");
    EXPECT_EQ(RowValue[ColourRow], "Ochre!|Sand");
}

// Where instances are offered
// ------------------------------------------------------------------------------

TEST_F(Instances, FieldsOfNegativeLevelOfferNoneAndEditTheFirst) {
    Give(SignedRow, "x|y");
    EXPECT_FALSE(Quintave.MultiInstanceFrame.Visible);
    Open(SignedRow);
    EXPECT_EQ(author.Text, "x");
    Type("1");
    PressEnter();
    EXPECT_EQ(RowValue[SignedRow], "x1|y");
    Select(AuthorRow);
    EXPECT_TRUE(Quintave.MultiInstanceFrame.Visible);
}

TEST_F(Instances, SelectingARowStartsAtItsFirstInstance) {
    Give(AuthorRow, "x|y");
    UserScrolls(Quintave.FIScroll, 2);
    Select(AuthorRow);
    EXPECT_EQ(Shown(), "1 of 2");
    EXPECT_EQ(author.Text, "x");
}

namespace {

class InstancesElsewhere : public ScreenTest {};

} // namespace

TEST_F(InstancesElsewhere, ATemplateCanTurnThemOff) {
    Start({Element(1, 30, "TEXT", "Author")}, "QuintaveV2-x");
    EXPECT_EQ(AllowInstances, False);
    Select(0);
    EXPECT_FALSE(Quintave.MultiInstanceFrame.Visible);
}

TEST_F(InstancesElsewhere, AFieldOfLevelZeroHasThem) {
    Start({Element(0, 30, "TEXT", "Author")});
    Select(0);
    EXPECT_TRUE(Quintave.MultiInstanceFrame.Visible);
}

TEST_F(InstancesElsewhere, GroupsAndTheirMembersHaveNone) {
    Start({Element(1, 2, "GROUP START", "G"), Element(2, 30, "TEXT", "Member"), Element(1, 0, "GROUP END", "")});
    Select(0);
    EXPECT_FALSE(Quintave.MultiInstanceFrame.Visible);
    Open(0);
    EXPECT_FALSE(Quintave.MultiInstanceFrame.Visible);
    RunEvent(Quintave.FIAdd, Event::Click);
    RunEvent(Quintave.FIDel, Event::Click);
    EXPECT_EQ(DataChanged, False);
}

TEST_F(InstancesElsewhere, InstanceNumber32768IsRefused) {
    Start({Element(1, 30, "TEXT", "Author")});
    RowValue[0] = std::string(32766, '|') + "x";
    Select(0);
    EXPECT_EQ(Quintave.FILabel[0].Caption, "32767");
    UserScrolls(Quintave.FIScroll, 32767);
    const std::string value = RowValue[0];
    Press(Quintave.FIAdd);
    EXPECT_EQ(LastMessage().Text, "Error: 6 - Overflow");
    EXPECT_EQ(RowValue[0], value);
    EXPECT_EQ(Quintave.FILabel[0].Caption, "32767");
}
