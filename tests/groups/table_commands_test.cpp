// Insert, delete and jump.
#include "groups/table_commands.h"

#include "screen/selected_field.h"
#include "screen/value_entry.h"
#include "support/group_store.h"
#include "support/screen_test.h"
#include "support/template_lines.h"

using testing::ElementsAre;

namespace {

enum SiteRow : Integer { SamplesRow, LastRow };
constexpr auto File = "GRP00001.XXX";

class TableCommands : public ScreenTest {
protected:
    void SetUp() override {
        Start(Join({{Element(1, 2, "GROUP START", "Samples"), Element(2, 4, "TEXT", "Depth")},
                    ListOf(2, 4, "Rock", {"Clay", "Sand"}),
                    {Element(1, 0, "GROUP END", ""), Element(1, 30, "TEXT", "Last")}}));
    }

    // Opens the group with these occurrences, the one of that number shown.
    void OpenAt(const std::vector<std::string> &occurrences, Integer shown) {
        folder.Write(File, Store(8, occurrences));
        Select(SamplesRow);
        FieldInfo[1][Choice] = ToInteger(shown - 1);
        PressEnter();
        ASSERT_EQ(number.ListIndex, shown - 1);
    }

    // The user picks a number in the selector.
    void Jump(Integer to) const { UserSelects(Quintave.TblFldNum, ToInteger(to - 1)); }

    std::string Bytes() const { return folder.Read(File); }

    // The occurrence on screen: the value of its Depth.
    static std::string Shown() { return RowValueText(0); }

    static std::string RowValueText(std::size_t row) { return Row(row).substr(29); }

    Control &number = Quintave.TblFldNum;
    Control &members = Quintave.List1[GroupList];
};

} // namespace

// Insert
// ------------------------------------------------------------------------------

TEST_F(TableCommands, InsertAtTheSecondOfThreeMakesABlankSecondOfFour) {
    OpenAt({"a", "b", "c"}, 2);
    Press(Quintave.TblFldInsert);
    EXPECT_EQ(Bytes(), Store(8, {"a", "", "b", "c"}));
    EXPECT_EQ(Shown(), "");
    EXPECT_THAT(number.Rows, ElementsAre("1", "2", "3", "4"));
    EXPECT_EQ(number.ListIndex, 1);
    EXPECT_EQ(GroupOccurrenceCount, 4);
    EXPECT_EQ(GroupLoadedOccurrence, 1);
    EXPECT_EQ(Focused(), &members);
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    PressCtrl('N');
    EXPECT_EQ(Shown(), "b");
}

TEST_F(TableCommands, InsertStoresTheOccurrenceOnScreenFirst) {
    OpenAt({"a", "b"}, 1);
    Open(0);
    Type("1");
    Press(Quintave.TblFldInsert);
    EXPECT_EQ(Bytes(), Store(8, {"", "a1", "b"}));
}

TEST_F(TableCommands, InsertAtBothEnds) {
    OpenAt({"a", "b"}, 2);
    Press(Quintave.TblFldInsert);
    EXPECT_EQ(Bytes(), Store(8, {"a", "", "b"}));
    PressCtrl('T');
    Press(Quintave.TblFldInsert);
    EXPECT_EQ(Bytes(), Store(8, {"", "a", "", "b"}));
}

TEST_F(TableCommands, InsertTakesTheRecordBehindTheLastAsRoom) {
    folder.Write(File, Store(8, {"a", "b"}, "old one old two "));
    Open(SamplesRow);
    Press(Quintave.TblFldInsert);
    EXPECT_EQ(Bytes(), Store(8, {"", "a", "b"}, "old two "));
}

// Delete
// ------------------------------------------------------------------------------

TEST_F(TableCommands, DeleteOfTheOnlyOccurrenceBlanksItOnScreenAndInTheStore) {
    OpenAt({"a   Clay"}, 1);
    Press(Quintave.TblFldDelete);
    EXPECT_EQ(Bytes(), Store(8, {""}));
    EXPECT_EQ(RowValueText(0) + RowValueText(1), "");
    EXPECT_THAT(number.Rows, ElementsAre("1"));
    EXPECT_EQ(number.ListIndex, 0);
    EXPECT_EQ(GroupOccurrenceCount, 1);
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_EQ(Focused(), &members);
}

TEST_F(TableCommands, DeleteOfTheSecondOfThreeShowsTheFirst) {
    OpenAt({"a", "b", "c"}, 2);
    Press(Quintave.TblFldDelete);
    EXPECT_EQ(Bytes(), Store(8, {"a", "c"}, "c       "));
    EXPECT_EQ(Shown(), "a");
    EXPECT_THAT(number.Rows, ElementsAre("1", "2"));
    EXPECT_EQ(number.ListIndex, 0);
    EXPECT_EQ(GroupOccurrenceCount, 2);
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(TableCommands, DeleteOfTheFirstShowsTheNewFirst) {
    OpenAt({"a", "b", "c"}, 1);
    Press(Quintave.TblFldDelete);
    EXPECT_EQ(Shown(), "b");
    EXPECT_EQ(number.ListIndex, 0);
    EXPECT_EQ(Bytes(), Store(8, {"b", "c"}, "c       "));
}

TEST_F(TableCommands, DeleteOfTheLastShowsTheOneBefore) {
    OpenAt({"a", "b", "c"}, 3);
    Press(Quintave.TblFldDelete);
    EXPECT_EQ(Shown(), "b");
    EXPECT_EQ(number.ListIndex, 1);
    EXPECT_EQ(Bytes(), Store(8, {"a", "b"}, "c       "));
}

TEST_F(TableCommands, DeleteDropsThePendingEditOfTheOccurrenceItRemoves) {
    OpenAt({"a", "b"}, 2);
    Open(0);
    Type("1");
    PressCtrl('D');
    EXPECT_EQ(Bytes().substr(0, 12), Store(8, {"a"}));
    EXPECT_EQ(Shown(), "a");
    Press(Quintave.GrpExit);
    EXPECT_EQ(Bytes().substr(0, 12), Store(8, {"a"}));
}

// Jump
// ------------------------------------------------------------------------------

TEST_F(TableCommands, AJumpStoresTheShownOccurrenceAndShowsTheChosenOne) {
    OpenAt({"a", "b", "c"}, 1);
    Open(0);
    Type("1");
    Jump(3);
    EXPECT_EQ(Bytes(), Store(8, {"a1", "b", "c"}));
    EXPECT_EQ(Shown(), "c");
    EXPECT_EQ(GroupLoadedOccurrence, 2);
    EXPECT_EQ(Focused(), &number);
    EXPECT_EQ(UserKey, True);
    Jump(2);
    EXPECT_EQ(Shown(), "b");
    EXPECT_EQ(Bytes(), Store(8, {"a1", "b", "c"}));
}

TEST_F(TableCommands, AJumpByArrowKeys) {
    OpenAt({"a", "b", "c"}, 1);
    PressCtrl('G');
    PressKey(DownArrowKey);
    PressKey(DownArrowKey);
    EXPECT_EQ(Shown(), "c");
    EXPECT_EQ(Focused(), &number);
    EXPECT_EQ(DataChanged, False);
}

TEST_F(TableCommands, ChoosingTheNumberShownDoesNothing) {
    OpenAt({"a", "b"}, 2);
    CallTrail.clear();
    UserEnters(number);
    Jump(2);
    EXPECT_EQ(CallTrail, "");
    EXPECT_EQ(Shown(), "b");
}

TEST_F(TableCommands, ASelectionByTheProgramNeitherStoresNorLoads) {
    OpenAt({"a", "b"}, 1);
    EXPECT_EQ(UserKey, False);
    SetListIndex(number, 1);
    EXPECT_EQ(Shown(), "a");
    EXPECT_EQ(GroupLoadedOccurrence, 0);
    Press(Quintave.GrpExit);
    EXPECT_EQ(Bytes(), Store(8, {"a", "b"}));
}

TEST_F(TableCommands, TheUsersKeyIsKnownWhileTheSelectorHasTheFocus) {
    OpenAt({"a", "b"}, 1);
    UserEnters(number);
    EXPECT_EQ(UserKey, True);
    UserEnters(members);
    EXPECT_EQ(UserKey, False);
}

TEST_F(TableCommands, EnterInTheSelectorReturnsToTheList) {
    OpenAt({"a"}, 1);
    UserEnters(number);
    PressEnter();
    EXPECT_EQ(Focused(), &members);
    EXPECT_EQ(CurrentField, 0);
}

TEST_F(TableCommands, ShortcutsWorkInTheSelector) {
    OpenAt({"a", "b"}, 1);
    UserEnters(number);
    PressCtrl('N');
    EXPECT_EQ(Shown(), "b");
    EXPECT_EQ(CtrlHeld, True);
    EXPECT_EQ(UserKey, False);
}

TEST_F(TableCommands, AJumpNeverChangesAMembersChoice) {
    OpenAt({"a   Clay", "b   Sand", "c"}, 1);
    Select(1);
    for (const auto &[to, choice] : {std::pair{2, "Sand"}, {3, ""}, {1, "Clay"}}) {
        Jump(static_cast<Integer>(to));
        EXPECT_EQ(ChosenText(GroupList), choice);
    }
    Press(Quintave.GrpExit);
    EXPECT_EQ(Bytes(), Store(8, {"a   Clay", "b   Sand", "c"}));
}

TEST_F(TableCommands, LeavingAndReenteringAfterEachCommandShowsTheSameOccurrences) {
    OpenAt({"a", "b", "c"}, 2);
    const std::vector<std::pair<void (*)(), std::vector<std::string>>> steps{
        {[] { Press(Quintave.TblFldInsert); }, {"a", "", "b", "c"}},
        {[] { Press(Quintave.TblFldDelete); }, {"a", "b", "c"}},
        {[] { UserSelects(Quintave.TblFldNum, 2); }, {"a", "b", "c"}},
        {[] { Press(Quintave.TblFldDelete); }, {"a", "b"}}};
    for (const auto &[run, left] : steps) {
        run();
        const Integer shown = GroupLoadedOccurrence;
        Press(Quintave.GrpExit);
        Open(SamplesRow);
        EXPECT_EQ(GroupLoadedOccurrence, shown);
        EXPECT_EQ(number.Rows.size(), left.size());
        PressCtrl('T');
        for (const auto &value : left) {
            EXPECT_EQ(Shown(), value);
            PressCtrl(value == left.back() ? 'B' : 'N');
        }
        UserSelects(number, shown);
    }
}

TEST_F(TableCommands, TheGroupRemembersTheOccurrenceAtEachCommand) {
    OpenAt({"a", "b", "c"}, 3);
    Jump(2);
    EXPECT_EQ(FieldInfo[1][Choice], 1);
    Press(Quintave.TblFldDelete);
    EXPECT_EQ(FieldInfo[1][Choice], 0);
    PressCtrl('B');
    EXPECT_EQ(FieldInfo[1][Choice], 1);
    FieldInfo[1][Choice] = 7;
    Press(Quintave.TblFldInsert);
    EXPECT_EQ(FieldInfo[1][Choice], 1);
}

TEST_F(TableCommands, AKeyInTheSelectorIsTheUsersAndHeldByNoCtrl) {
    OpenAt({"a", "b"}, 1);
    UserEnters(number);
    UserKey = False;
    CtrlHeld = True;
    PressKey(DownArrowKey);
    EXPECT_EQ(CtrlHeld, False);
    EXPECT_EQ(Shown(), "b");
    UserKey = False;
    UserKeyDown(number, UpArrowKey, ShiftMask);
    EXPECT_EQ(UserKey, True);
    PressCtrl('K');
    EXPECT_EQ(CtrlHeld, True);
}
