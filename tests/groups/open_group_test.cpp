// Entering a group, moving between its occurrences, leaving it.
#include "groups/open_group.h"

#include "main/session.h"
#include "model/row_text.h"
#include "screen/selected_field.h"
#include "screen/value_entry.h"
#include "support/group_store.h"
#include "support/open_files.h"
#include "support/screen_test.h"
#include "support/template_lines.h"

#include <cstdio>

using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;

namespace {

// Rows: Title, Samples (Depth 8, Rock 5 with choices, Remark MEMO 60), Place, Empty (no members), Last group (One 4).
const TemplateLines Site =
    Join({{Element(1, 30, "TEXT", "Title"), Element(1, 2, "GROUP START", "Samples"), Element(2, 8, "TEXT", "Depth")},
          ListOf(2, 5, "Rock", {"Clay", "Yellow", "OTHER..."}),
          {Element(2, 60, "MEMO", "Remark"), Element(1, 0, "GROUP END", ""), Element(1, 30, "TEXT", "Place"),
           Element(1, 2, "GROUP START", "Empty"), Element(2, 30, "NUMBER", "Odd"), Element(1, 0, "GROUP END", ""),
           Element(1, 2, "GROUP START", "Last"), Element(2, 4, "TEXT", "One"), Element(1, 0, "GROUP END", "")}});

enum SiteRow : Integer { TitleRow, SamplesRow, PlaceRow, EmptyRow, LastRow };
enum Member : Integer { Depth, Rock, Remark };
constexpr std::size_t Length = 73;
constexpr auto SamplesFile = "GRP00002.XXX";

// One occurrence of Samples.
std::string Sample(std::string depth, std::string rock = "", std::string remark = "") {
    depth.resize(8, ' ');
    rock.resize(5, ' ');
    remark.resize(60, ' ');
    return depth + rock + remark;
}

class OpenedGroup : public ScreenTest {
protected:
    void SetUp() override { Start(Site); }

    void OpenSamples(const std::vector<std::string> &occurrences) {
        folder.Write(SamplesFile, Store(Length, occurrences));
        Open(SamplesRow);
    }

    std::string SamplesStore() const { return folder.Read(SamplesFile); }

    static void TypeDepth(const std::string &text) {
        Open(Depth);
        Type(text);
    }

    static void PressMove(FldChangeButton button) { Press(Quintave.FldChange.at(static_cast<std::size_t>(button))); }

    Control &members = Quintave.List1[GroupList];
    Control &number = Quintave.TblFldNum;
};

} // namespace

// Entering
// ------------------------------------------------------------------------------

TEST_F(OpenedGroup, EnteringShowsTheMembersTheOccurrencesAndTheFocusInTheFirstRow) {
    OpenSamples({Sample("0 m", "Clay", "a\r\nb"), Sample("1 m")});
    EXPECT_THAT(members.Rows, ElementsAre(RowOf("Depth", "0 m"), RowOf("Rock", "Clay"), RowOf("Remark", "a\r\nb")));
    EXPECT_EQ(members.ListIndex, 0);
    EXPECT_EQ(CurrentField, 0);
    EXPECT_EQ(Focused(), &members);
    EXPECT_THAT(number.Rows, ElementsAre("1", "2"));
    EXPECT_EQ(number.ListIndex, 0);
    EXPECT_TRUE(Quintave.TableFrame.Visible);
    EXPECT_TRUE(Quintave.GrpExit.Visible);
    EXPECT_EQ(Quintave.TableFrame.Caption, "REPEATED GROUP: Samples");
    EXPECT_EQ(members.Tag, "2");
    EXPECT_FALSE(Quintave.List1[0].TabStop);
    EXPECT_TRUE(members.TabStop);
    EXPECT_EQ(GroupItemCount, 73);
    EXPECT_EQ(GroupRecordLength, 73);
    EXPECT_THAT(ShownEntryControls(), ElementsAre("Text1_4"));
}

TEST_F(OpenedGroup, OutsideAGroupItsFrameAndExitAreHidden) {
    EXPECT_FALSE(Quintave.TableFrame.Visible);
    EXPECT_FALSE(Quintave.GrpExit.Visible);
    OpenSamples({Sample("")});
    Press(Quintave.GrpExit);
    EXPECT_FALSE(Quintave.TableFrame.Visible);
    EXPECT_FALSE(Quintave.GrpExit.Visible);
    EXPECT_TRUE(Quintave.List1[0].TabStop);
    EXPECT_FALSE(members.TabStop);
    EXPECT_THAT(ShownEntryControls(), ElementsAre("Text1_1"));
}

TEST_F(OpenedGroup, EnteringAndLeavingLeavesTheStoreByteForByte) {
    const std::string store = Store(Length, {Sample("0 m", "Clay"), Sample("1 m")}, "left over");
    folder.Write(SamplesFile, store);
    Open(SamplesRow);
    for (const Integer member : {Rock, Remark, Depth}) Open(member);
    Press(Quintave.GrpExit);
    EXPECT_EQ(SamplesStore(), store);
    EXPECT_EQ(DataChanged, False);
}

TEST_F(OpenedGroup, TheStoreIsOpenOnlyWhileTheGroupIs) {
    const auto open = OpenFileCount();
    OpenSamples({Sample("0 m")});
    EXPECT_EQ(OpenFileCount(), open + 1);
    PressMove(Next);
    Press(Quintave.TblFldInsert);
    Press(Quintave.TblFldDelete);
    EXPECT_EQ(OpenFileCount(), open + 1);
    Press(Quintave.GrpExit);
    EXPECT_EQ(OpenFileCount(), open);
    Open(EmptyRow);
    EXPECT_EQ(OpenFileCount(), open);
}

TEST_F(OpenedGroup, AGroupWithoutMembersSaysSoAndIsNotEntered) {
    Open(EmptyRow);
    EXPECT_THAT(Dialogs.Messages,
                ElementsAre(FieldsAre("REPEATABLE GROUP", "There are no data fields in this Repeating Group!",
                                      OkOnly + InformationIcon)));
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(CurrentField, EmptyRow);
    EXPECT_FALSE(Quintave.GrpExit.Visible);
    EXPECT_EQ(folder.Read("GRP00008.XXX"), StoreHeader(0, 1));
}

TEST_F(OpenedGroup, EachMembersCellsBeginBehindThoseOfTheMembersBeforeIt) {
    OpenSamples({Sample("")});
    for (const auto &[row, member, cell] : {std::tuple{Depth, 3, 1}, {Rock, 4, 9}, {Remark, 5, 14}}) {
        EXPECT_EQ(RowField[row], member);
        EXPECT_EQ(GroupSlot[row][SlotFirstCell], cell);
    }
}

TEST_F(OpenedGroup, AListMemberShowsItsStoredChoiceAsSelected) {
    OpenSamples({Sample("", "Clay"), Sample("", "Yello"), Sample("", "Slate"), Sample("")});
    Select(Rock);
    for (const auto &[choice, index] : {std::pair{"Clay", 0}, {"Yellow", 1}, {"OTHER...", 2}, {"", -1}}) {
        EXPECT_EQ(ChosenText(GroupList), choice);
        EXPECT_EQ(FieldInfo[4][Choice], index);
        PressCtrl('N');
        Select(Rock);
    }
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(OpenedGroup, AListMemberWithoutItsChoiceFileKeepsItsValueAndSelectsNothing) {
    folder.Write(SamplesFile, Store(Length, {Sample("", "Clay")}));
    ASSERT_EQ(std::remove("LST00004.XXX"), 0);
    Open(SamplesRow);
    EXPECT_EQ(Row(Rock), RowOf("Rock", "Clay"));
    EXPECT_EQ(FieldInfo[4][Choice], -1);
    Select(Rock);
    EXPECT_THAT(Quintave.List2[GroupList].Rows, IsEmpty());
    EXPECT_EQ(MessageCount(), 0u);
    Press(Quintave.GrpExit);
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("", "Clay")}));
}

TEST_F(OpenedGroup, AChoiceFileThatHasChangedIsReadAnewOnEnteringAgain) {
    OpenSamples({Sample("", "Clay")});
    EXPECT_EQ(FieldInfo[4][Choice], 0);
    Press(Quintave.GrpExit);
    folder.Write("LST00004.XXX", "\"Loam\"\r\n\"Clay\"\r\n");
    Open(SamplesRow);
    EXPECT_EQ(FieldInfo[4][Choice], 1);
    Press(Quintave.GrpExit);
    ASSERT_EQ(std::remove("LST00004.XXX"), 0);
    Open(SamplesRow);
    EXPECT_EQ(FieldInfo[4][Choice], -1);
    EXPECT_EQ(MessageCount(), 0u);
}

// Entry
// ------------------------------------------------------------------------------

TEST_F(OpenedGroup, EnterStoresAMembersValueAndSelectsTheNextMember) {
    OpenSamples({Sample("")});
    TypeDepth("12 m");
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Row(Depth), RowOf("Depth"));
    PressEnter();
    EXPECT_EQ(Row(Depth), RowOf("Depth", "12 m"));
    EXPECT_EQ(CurrentField, Rock);
    EXPECT_EQ(Focused(), &members);
    Open(Remark);
    Type("one");
    PressEnter();
    Type("two");
    PressEnter(CtrlMask);
    EXPECT_EQ(Row(Remark), RowOf("Remark", "one\r\ntwo"));
    EXPECT_EQ(CurrentField, Remark);
    Press(Quintave.GrpExit);
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("12 m", "", "one\r\ntwo")}));
}

TEST_F(OpenedGroup, AMemberTakesAsManyCharactersAsItHasCells) {
    OpenSamples({Sample("")});
    TypeDepth("123456789");
    EXPECT_EQ(Quintave.Text1[4].Text, "12345678");
    Open(Remark);
    Paste(Quintave.Text1[6], std::string(80, 'x'));
    EXPECT_EQ(Quintave.Text1[6].Text, std::string(60, 'x'));
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(Row(Remark), RowOf("Remark", std::string(26, 'x') + "..."));
}

TEST_F(OpenedGroup, HalfALineBreakIsNeverStored) {
    OpenSamples({Sample("")});
    Open(Remark);
    Paste(Quintave.Text1[6], std::string(59, 'x') + "\r\ny");
    PressEnter(CtrlMask);
    Press(Quintave.GrpExit);
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("", "", std::string(59, 'x'))}));
}

TEST_F(OpenedGroup, AValueKeepsItsLeadingBlanksAndGainsNone) {
    OpenSamples({Sample("  x")});
    for (int i = 0; i < 3; ++i) {
        Open(Depth);
        UserEnters(Quintave.CommandSave);
        EXPECT_EQ(Row(Depth), RowOf("Depth", "  x"));
    }
}

TEST_F(OpenedGroup, AChoiceIsStoredCutToItsCellsAndFoundAgain) {
    OpenSamples({Sample("")});
    Select(Rock);
    DoubleClickRow(Quintave.List2[GroupList], 1);
    EXPECT_EQ(Row(Rock), RowOf("Rock", "Yello"));
    EXPECT_EQ(CurrentField, Remark);
    EXPECT_EQ(DataChanged, True);
    Select(Rock);
    EXPECT_EQ(ChosenText(GroupList), "Yellow");
}

TEST_F(OpenedGroup, TheOpenChoiceKeepsAFreeTextAndEmptiesAListedOne) {
    OpenSamples({Sample("", "Slate")});
    Select(Rock);
    DoubleClickRow(Quintave.List2[GroupList], 2);
    EXPECT_EQ(Focused(), &Quintave.Text2[5]);
    EXPECT_EQ(Quintave.Text2[5].Text, "Slate");
    PressEnter();
    Select(Rock);
    DoubleClickRow(Quintave.List2[GroupList], 1);
    Select(Rock);
    DoubleClickRow(Quintave.List2[GroupList], 2);
    EXPECT_EQ(Row(Rock), RowOf("Rock"));
    Type("Loess!");
    EXPECT_EQ(Quintave.Text2[5].Text, "Loess");
    Press(Quintave.GrpExit);
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("", "Loess")}));
}

// Moving
// ------------------------------------------------------------------------------

TEST_F(OpenedGroup, EachMoveShowsItsOccurrenceWithTheFocusOnTheList) {
    OpenSamples({Sample("0 m"), Sample("1 m"), Sample("2 m")});
    const std::vector<std::pair<FldChangeButton, Integer>> moves{{Next, 1}, {Next, 2},     {Previous, 1}, {Bottom, 2},
                                                                 {Top, 0},  {Previous, 0}, {Bottom, 2},   {Top, 0}};
    for (const auto &[move, shown] : moves) {
        PressMove(move);
        EXPECT_EQ(Row(Depth), RowOf("Depth", std::to_string(shown) + " m"));
        EXPECT_EQ(number.ListIndex, shown);
        EXPECT_EQ(GroupLoadedOccurrence, shown);
        EXPECT_EQ(FieldInfo[2][Choice], shown);
        if (move != Previous || shown != 0) {
            EXPECT_EQ(Focused(), &members);
        }
    }
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("0 m"), Sample("1 m"), Sample("2 m")}));
}

TEST_F(OpenedGroup, PreviousAtTheFirstOccurrenceDoesNothingAtAll) {
    OpenSamples({Sample("0 m"), Sample("1 m")});
    CallTrail.clear();
    RunEvent(Quintave.FldChange[Previous], Event::Click);
    EXPECT_EQ(CallTrail, "");
    EXPECT_EQ(GroupLoadedOccurrence, 0);
}

TEST_F(OpenedGroup, NextAtTheLastOfThreeMakesAFourthBlankOne) {
    OpenSamples({Sample("0 m"), Sample("1 m"), Sample("2 m")});
    PressMove(Bottom);
    PressMove(Next);
    EXPECT_THAT(number.Rows, ElementsAre("1", "2", "3", "4"));
    EXPECT_EQ(number.ListIndex, 3);
    EXPECT_EQ(GroupOccurrenceCount, 4);
    EXPECT_EQ(Row(Depth), RowOf("Depth"));
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("0 m"), Sample("1 m"), Sample("2 m"), Sample("")}));
    EXPECT_EQ(DataChanged, False);
}

TEST_F(OpenedGroup, EachMoveStoresTheEditInTheOccurrenceItWasTypedIn) {
    for (const FldChangeButton move : {Previous, Top, Next, Bottom}) {
        folder.Write(SamplesFile, Store(Length, {Sample("0 m"), Sample("1 m"), Sample("2 m")}));
        Open(SamplesRow);
        PressMove(Top);
        PressMove(Next);
        Select(Depth);
        PressEnter();
        Type("!");
        PressMove(move);
        EXPECT_EQ(SamplesStore(), Store(Length, {Sample("0 m"), Sample("1 m!"), Sample("2 m")})) << move;
        Press(Quintave.GrpExit);
        EXPECT_EQ(SamplesStore(), Store(Length, {Sample("0 m"), Sample("1 m!"), Sample("2 m")})) << move;
        Select(SamplesRow);
    }
}

TEST_F(OpenedGroup, ValuesOfOneOccurrenceNeverAppearInAnother) {
    OpenSamples({Sample("0 m", "Clay", "remark")});
    for (const Integer member : {Depth, Rock, Remark}) {
        PressMove(Top);
        Open(member);
        PressMove(Next);
        EXPECT_THAT(members.Rows, ElementsAre(RowOf("Depth"), RowOf("Rock"), RowOf("Remark")));
        Open(member);
        EXPECT_EQ(Quintave.Text1[4].Text + Quintave.Text1[6].Text + Quintave.Text2[5].Text, "");
    }
}

// Leaving
// ------------------------------------------------------------------------------

TEST_F(OpenedGroup, LeavingSelectsTheRowBehindTheGroupAndPutsTheRowsRight) {
    Enter(TitleRow, "Wells");
    OpenSamples({Sample("0 m")});
    Select(Remark);
    Press(Quintave.GrpExit);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(CurrentField, PlaceRow);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    const std::vector<Integer> elements{1, 2, 7, 8, 11};
    for (Integer row = TitleRow; row <= LastRow; ++row)
        EXPECT_EQ(RowField[row], elements[static_cast<std::size_t>(row)]);
    Select(TitleRow);
    EXPECT_EQ(Quintave.Text1[1].Text, "Wells");
}

TEST_F(OpenedGroup, LeavingTheLastRowsGroupKeepsItSelectedWithoutEnteringAgain) {
    Open(LastRow);
    ASSERT_EQ(ActiveList, GroupList);
    Quintave.DataLevelLabel.Caption.clear();
    Press(Quintave.GrpExit);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(CurrentField, LastRow);
    EXPECT_FALSE(Quintave.TableFrame.Visible);
    EXPECT_EQ(Quintave.DataLevelLabel.Caption, "1");
}

TEST_F(OpenedGroup, LeavingFromAnyMemberHidesItsEntryControls) {
    for (const Integer member : {Depth, Rock, Remark}) {
        OpenSamples({Sample("0 m", "Clay", "a")});
        Open(member);
        ASSERT_EQ(ShownEntryControls().size(), 1u);
        Press(Quintave.GrpExit);
        EXPECT_THAT(ShownEntryControls(), ElementsAre("Text1_1")) << member; // of the row behind the group
    }
    OpenSamples({Sample("", "Slate")});
    Open(Rock);
    ASSERT_THAT(ShownEntryControls(), ElementsAre("Text2_5", "List2_3"));
    Type("!");
    Press(Quintave.GrpExit);
    EXPECT_THAT(ShownEntryControls(), ElementsAre("Text1_1"));
    for (const Control *control :
         {&Quintave.Text1[4], &Quintave.Text1[5], &Quintave.Text1[6], &Quintave.Text2[5], &Quintave.List2[GroupList]})
        EXPECT_FALSE(control->Visible) << control->Name << control->Index;
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("", "Slate")}));
}

TEST_F(OpenedGroup, EveryCommandStoresTheFreeTextBesideTheChoices) {
    struct Command {
        void (*Press)();
        std::vector<std::string> Left;
    };
    const std::string free = Sample("", "Loess");
    const std::vector<Command> commands{
        {[] { PressCtrl('N'); }, {Sample(""), free, Sample("2")}},
        {[] { PressCtrl('V'); }, {Sample(""), free, Sample("2")}},
        {[] { PressCtrl('T'); }, {Sample(""), free, Sample("2")}},
        {[] { PressCtrl('B'); }, {Sample(""), free, Sample("2")}},
        {[] { PressCtrl('I'); }, {Sample(""), Sample(""), free, Sample("2")}},
        {[] { PressCtrl('D'); }, {Sample(""), Sample("2")}},
        {[] { PressCtrl('E'); }, {Sample(""), free, Sample("2")}},
        {[] { UserSelects(Quintave.TblFldNum, 2); }, {Sample(""), free, Sample("2")}},
    };
    for (std::size_t i = 0; i < commands.size(); ++i) {
        OpenSamples({Sample(""), Sample(""), Sample("2")});
        PressMove(Top);
        PressMove(Next);
        Select(Rock);
        DoubleClickRow(Quintave.List2[GroupList], 2);
        Type("Loess");
        commands[i].Press();
        if (ActiveList == GroupList) {
            EXPECT_FALSE(Quintave.Text2[5].Visible) << i;
            Press(Quintave.GrpExit);
        }
        EXPECT_TRUE(SamplesStore().starts_with(Store(Length, commands[i].Left))) << i;
        Select(SamplesRow);
    }
}

TEST_F(OpenedGroup, ReenteringReturnsToTheOccurrenceThatWasCurrent) {
    OpenSamples({Sample("0 m"), Sample("1 m"), Sample("2 m")});
    PressMove(Next);
    Press(Quintave.GrpExit);
    EXPECT_EQ(FieldInfo[2][Choice], 1);
    Open(LastRow);
    Press(Quintave.GrpExit);
    Open(SamplesRow);
    EXPECT_EQ(Row(Depth), RowOf("Depth", "1 m"));
    EXPECT_EQ(number.ListIndex, 1);
}

TEST_F(OpenedGroup, ReenteringAShorterStoreShowsItsLastOccurrence) {
    OpenSamples({Sample("0 m"), Sample("1 m"), Sample("2 m")});
    PressMove(Bottom);
    Press(Quintave.GrpExit);
    OpenSamples({Sample("0 m"), Sample("1 m")});
    EXPECT_EQ(number.ListIndex, 1);
    EXPECT_EQ(Row(Depth), RowOf("Depth", "1 m"));
}

TEST_F(OpenedGroup, LeavingStoresThePendingEditAndClosesTheStore) {
    OpenSamples({Sample("")});
    TypeDepth("12 m");
    Press(Quintave.GrpExit);
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("12 m")}));
    EXPECT_EQ(EntryFlag, False);
    EXPECT_EQ(Quintave.Text1[4].Visible, false);
}

TEST_F(OpenedGroup, SaveAddPrintResetAndQuitStoreTheOpenOccurrenceAndLeave) {
    const std::vector<std::pair<Control *, Answer>> commands{{&Quintave.CommandSave, CancelAnswer},
                                                             {&Quintave.CommandSaveAs, CancelAnswer},
                                                             {&Quintave.CommandAdd, CancelAnswer},
                                                             {&Quintave.CommandPrint, CancelAnswer},
                                                             {&Quintave.CommandQuit, CancelAnswer}};
    for (const auto &[command, answer] : commands) {
        OpenSamples({Sample("")});
        TypeDepth("12 m");
        Dialogs.Answers = {answer};
        Press(*command);
        EXPECT_EQ(ActiveList, 0) << command->Name;
        EXPECT_EQ(SamplesStore(), Store(Length, {Sample("12 m")})) << command->Name;
        Dialogs.Answers.clear();
    }
}

TEST_F(OpenedGroup, ACancelledPrintHasLeftTheGroupForTheRowBehindIt) {
    OpenSamples({Sample("0 m"), Sample("1 m")});
    PressMove(Next);
    Select(Remark);
    Dialogs.Answers = {CancelAnswer};
    PressCtrl('P');
    ASSERT_EQ(MessageCount(), 1u);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(CurrentField, PlaceRow);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_FALSE(Quintave.PrintFrame.Visible);
    Open(SamplesRow);
    EXPECT_EQ(number.ListIndex, 1);
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("0 m"), Sample("1 m")}));
}

TEST_F(OpenedGroup, ResetAsksFirstAndCancelKeepsTheGroupOpen) {
    OpenSamples({Sample("")});
    TypeDepth("12 m");
    Dialogs.Answers = {CancelAnswer};
    Press(Quintave.CommandReset);
    EXPECT_EQ(ActiveList, GroupList);
    EXPECT_EQ(Row(Depth), RowOf("Depth", "12 m"));
    Press(Quintave.GrpExit);
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("12 m")}));
    Open(SamplesRow);
    Dialogs.Answers = {NoAnswer};
    Press(Quintave.CommandReset);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(SamplesStore(), Store(Length, {Sample("")}));
}

TEST_F(OpenedGroup, ASaveFromInsideWritesTheOccurrenceOnScreen) {
    OpenSamples({Sample("0 m")});
    PressMove(Next);
    TypeDepth("1 m");
    EXPECT_EQ(SaveAs("a.rpx"),
              Lines({R"(0,"QuintaveV2","SITE.FTF")", R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")",
                     R"(2,1,"Depth","0 m")", R"(1,-9,"Samples","REPEATING GROUP, Occurrence #2")",
                     R"(2,1,"Depth","1 m")", R"(1,-99,"END REPEATING GROUP","")",
                     R"(1,-9,"Empty","REPEATING GROUP, Occurrence #1")", R"(1,-99,"END REPEATING GROUP","")",
                     R"(1,-9,"Last","REPEATING GROUP, Occurrence #1")", R"(1,-99,"END REPEATING GROUP","")"}));
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(CurrentField, PlaceRow);
}

namespace {

class GroupWithHeadings : public ScreenTest {};

} // namespace

TEST_F(GroupWithHeadings, HeadingsInsideTakeNoRowAndNoCells) {
    Start({Element(1, 2, "GROUP START", "G"), Element(2, 4, "TEXT", "One"), Element(2, -1, "", "Part"),
           Element(3, 9, "NUMBER", "Odd"), Element(3, 0, "", "Heading"), Element(3, 3, "TEXT", "Two"),
           Element(1, 0, "GROUP END", "")});
    folder.Write("GRP00001.XXX", Store(7, {"onetwo!"}));
    Open(0);
    EXPECT_THAT(Quintave.List1[GroupList].Rows, ElementsAre(RowOf("One", "onet"), RowOf("Two", "wo!")));
    Select(1);
    EXPECT_EQ(Quintave.Text1[4].Text, "wo!");
}

TEST_F(GroupWithHeadings, LeavingSelectsARowOfDashesOrAGroupBehindItWithoutOpeningIt) {
    const TemplateLines group{Element(1, 2, "GROUP START", "G"), Element(2, 4, "TEXT", "One"),
                              Element(1, 0, "GROUP END", "")};
    Start(Join({group, group, {Element(1, -1, "", "Section"), Element(2, 30, "TEXT", "Last")}}));
    Open(0);
    Press(Quintave.GrpExit);
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_FALSE(Quintave.TableFrame.Visible);
    EXPECT_EQ(Quintave.List1[GroupList].Tag, "-1");
    Open(1);
    Press(Quintave.GrpExit);
    EXPECT_EQ(CurrentField, 2);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_THAT(ShownEntryControls(), IsEmpty());
}

TEST_F(GroupWithHeadings, OfChoicesThatAgreeInTheirCellsTheFirstIsShown) {
    Start(Join({{Element(1, 2, "GROUP START", "G")},
                ListOf(2, 5, "Rock", {"Clay", "Yellow", "Yelloo", "Yello"}),
                {Element(1, 0, "GROUP END", "")}}));
    for (const Integer choice : {Integer{2}, Integer{3}, Integer{1}}) {
        Open(0);
        DoubleClickRow(Quintave.List2[GroupList], choice);
        EXPECT_EQ(Row(0), RowOf("Rock", "Yello"));
        Select(0);
        EXPECT_EQ(ChosenText(GroupList), "Yellow");
        EXPECT_EQ(FieldInfo[2][Choice], 1);
        Press(Quintave.GrpExit);
        EXPECT_EQ(folder.Read("GRP00001.XXX"), Store(5, {"Yello"}));
        Select(0);
    }
}

TEST_F(OpenedGroup, ClosingTheWindowCommitsTheOpenEditAndAsks) {
    OpenSamples({Sample("")});
    TypeDepth("12 m");
    Dialogs.Answers = {CancelAnswer};
    EXPECT_FALSE(CloseMainWindow());
    EXPECT_EQ(Row(Depth), RowOf("Depth", "12 m"));
}
