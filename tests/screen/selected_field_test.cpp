// The controls beside the list, and how they follow the selected row.
#include "screen/selected_field.h"

#include "model/row_text.h"
#include "support/screen_test.h"
#include "support/template_lines.h"

#include <cstdio>

using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;

namespace {

const TemplateLines Colours{"Red", "Rose", "Blue", "OTHER..."};

// Rows: TitleRow, SummaryRow, NotesRow, ColourRow, dashes, SamplesRow, PlaceRow, Tone.
const TemplateLines Site =
    Join({{Element(1, -1, "", "Citation"), Element(2, 30, "TEXT", "Title"), Element(2, 60, "TEXT", "Summary"),
           Element(-2, 999, "MEMO", "Notes")},
          ListOf(2, 20, "Colour", Colours),
          {Element(1, -1, "", "Field work"), Element(2, 2, "GROUP START", "Samples"), Element(3, 8, "TEXT", "Depth"),
           Element(2, 0, "GROUP END", ""), Element(2, 0, "", "Where"), Element(3, 30, "TEXT", "Place")},
          ListOf(3, 20, "Tone", {"Dark", "Pale", "pink"})});

enum SiteRow : Integer { TitleRow, SummaryRow, NotesRow, ColourRow, DashesRow, SamplesRow, PlaceRow, ToneRow };

class SelectedField : public ScreenTest {
protected:
    // Puts a value into a row as a loaded report does.
    static void Give(Integer row, const std::string &value) {
        RowValue[row] = value;
        SetRow(Quintave.List1[0], row, RowWithValue(Row(static_cast<std::size_t>(row)), value));
    }
};

} // namespace

TEST_F(SelectedField, ATextOrMemoRowShowsTheBoxOfItsTypeWithTheValue) {
    Start(Site);
    Give(TitleRow, "Wells");
    Give(SummaryRow, "Deep wells");
    Give(NotesRow, "one\r\ntwo");
    for (const auto &[row, box, value] :
         {std::tuple{TitleRow, 1, "Wells"}, {SummaryRow, 2, "Deep wells"}, {NotesRow, 3, "one\r\ntwo"}}) {
        Select(row);
        EXPECT_THAT(ShownEntryControls(), ElementsAre("Text1_" + std::to_string(box)));
        const Control &shown = Quintave.Text1.at(static_cast<std::size_t>(box));
        EXPECT_EQ(shown.Text, value);
        EXPECT_EQ(shown.Caret, static_cast<long>(shown.Text.size()));
        EXPECT_EQ(Focused(), &Quintave.List1[0]);
    }
}

TEST_F(SelectedField, TheBoxShowsTheFirstInstance) {
    Start(Site);
    Give(TitleRow, "Wells|Springs");
    Select(TitleRow);
    EXPECT_EQ(Quintave.Text1[1].Text, "Wells");
}

TEST_F(SelectedField, AListRowShowsItsChoicesInTheirWidthWithTheChoiceOfTheValueSelected) {
    Start(Site);
    Give(ColourRow, "Blue");
    Select(ColourRow);
    EXPECT_THAT(ShownEntryControls(), ElementsAre("List2_0"));
    EXPECT_EQ(Quintave.List2[0].Rows, Colours);
    EXPECT_EQ(ChosenText(), "Blue");
    EXPECT_EQ(Quintave.List2[0].Width, FieldInfo[5][TypeCode]);
    EXPECT_GT(Quintave.List2[0].Width, 0);
}

TEST_F(SelectedField, AListRowWithoutAValueSelectsNoChoice) {
    Start(Join({ListOf(1, 20, "First", {"OTHER...", "Red"})}));
    Select(0);
    EXPECT_EQ(Quintave.List2[0].ListIndex, -1);
    EXPECT_THAT(ShownEntryControls(), ElementsAre("List2_0"));
}

TEST_F(SelectedField, OnlyTheEntryControlOfTheSelectedRowIsShown) {
    Start(Site);
    constexpr std::array<Integer, 8> Walk{TitleRow,   ColourRow,  NotesRow, ToneRow,
                                          SummaryRow, SamplesRow, TitleRow, DashesRow};
    const std::vector<TemplateLines> shown{{"Text1_1"}, {"List2_0"}, {"Text1_3"}, {"List2_0"},
                                           {"Text1_2"}, {},          {"Text1_1"}, {}};
    Give(TitleRow, "Wells");
    for (std::size_t i = 0; i < Walk.size(); ++i) {
        Select(Walk[i]);
        EXPECT_EQ(ShownEntryControls(), shown[i]) << "step " << i;
    }
    EXPECT_EQ(Quintave.Text1[1].Text, "");
}

TEST_F(SelectedField, ARowOfDashesShowsNoEntryControlAndNoInstances) {
    Start(Site);
    Select(DashesRow);
    EXPECT_THAT(ShownEntryControls(), IsEmpty());
    EXPECT_FALSE(Quintave.MultiInstanceFrame.Visible);
}

TEST_F(SelectedField, SelectingAGroupsRowDoesNotEnterIt) {
    Start(Site);
    Select(SamplesRow);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_FALSE(Quintave.TableFrame.Visible);
    EXPECT_FALSE(Quintave.GrpExit.Visible);
}

TEST_F(SelectedField, EnterCtrlEnterDoubleClickAndATypedLetterEnterAGroup) {
    Start(Site);
    const auto leave = [] { Press(Quintave.GrpExit); };
    const std::vector<void (*)()> ways{[] { PressEnter(); }, [] { PressEnter(CtrlMask); },
                                       [] { DoubleClickRow(Quintave.List1[0], SamplesRow); }, [] { Type("d"); }};
    for (std::size_t i = 0; i < ways.size(); ++i) {
        Select(SamplesRow);
        ways[i]();
        EXPECT_EQ(ActiveList, GroupList) << "way " << i;
        EXPECT_EQ(Quintave.TableFrame.Caption, "REPEATED GROUP: Samples");
        EXPECT_EQ(Row(0), RowOf("Depth")); // the letter is dropped
        EXPECT_EQ(PendingKey, "");
        leave();
        EXPECT_EQ(ActiveList, 0);
    }
}

TEST_F(SelectedField, TheSectionPathIsTheSectionThenEachDeeperHeading) {
    Start(Site);
    const std::vector<std::pair<Integer, TemplateLines>> paths{{TitleRow, {"Citation"}},
                                                               {DashesRow, {"Citation"}},
                                                               {SamplesRow, {"Field work"}},
                                                               {PlaceRow, {"Field work", "    Where"}},
                                                               {ToneRow, {"Field work", "    Where"}}};
    for (const auto &[row, path] : paths) {
        Select(row);
        EXPECT_EQ(Quintave.SectionLabel.Rows, path) << "row " << row;
    }
    Open(SamplesRow);
    EXPECT_THAT(Quintave.SectionLabel.Rows, ElementsAre("Field work", "    Samples"));
}

TEST_F(SelectedField, EachDeeperHeadingIsIndentedByFourMoreBlanks) {
    Start({Element(1, -1, "", "S"), Element(2, 0, "", "A"), Element(3, 0, "", "B"), Element(4, 0, "", "Other branch"),
           Element(3, 1, "", "C"), Element(4, 30, "TEXT", "Sibling"), Element(4, 30, "TEXT", "Field")});
    Select(1);
    EXPECT_THAT(Quintave.SectionLabel.Rows, ElementsAre("S", "    A", "        C"));
}

TEST_F(SelectedField, AGroupsEndAndAHeadingOfLevelZeroAreNoPartOfThePath) {
    Start({Element(1, -1, "", "S"), Element(2, 0, "", "A"), Element(3, 2, "GROUP START", "G"),
           Element(4, 9, "TEXT", "Member"), Element(2, 0, "GROUP END", "End"), Element(3, 30, "TEXT", "Field"),
           Element(0, 0, "", "Zero"), Element(3, 30, "TEXT", "Later")});
    for (const Integer row : {Integer{1}, Integer{2}}) {
        Select(row);
        EXPECT_THAT(Quintave.SectionLabel.Rows, ElementsAre("S", "    A")) << row;
    }
}

TEST_F(SelectedField, WithoutSectionBreaksEveryRowShowsNoSectionsSpecified) {
    Start({Element(1, 0, "", "Heading"), Element(2, 30, "TEXT", "Title"), Element(2, 30, "TEXT", "Place")});
    for (const Integer row : {Integer{0}, Integer{1}}) {
        Select(row);
        EXPECT_THAT(Quintave.SectionLabel.Rows, ElementsAre("No Sections Specified"));
    }
}

TEST_F(SelectedField, RowsBeforeTheFirstSectionBreakShowNoSectionsSpecified) {
    Start({Element(1, 30, "TEXT", "Title"), Element(1, -1, "", "Field work"), Element(2, 30, "TEXT", "Place")});
    EXPECT_THAT(Quintave.SectionLabel.Rows, ElementsAre("No Sections Specified"));
    Select(1);
    EXPECT_THAT(Quintave.SectionLabel.Rows, ElementsAre("Field work"));
}

TEST_F(SelectedField, TheDataLevelIsTheAbsoluteLevelAsABareNumber) {
    Start(Site);
    Select(NotesRow);
    EXPECT_EQ(Quintave.DataLevelLabel.Caption, "2");
    Select(DashesRow);
    EXPECT_EQ(Quintave.DataLevelLabel.Caption, "1");
    Select(PlaceRow);
    EXPECT_EQ(Quintave.DataLevelLabel.Caption, "3");
}

TEST_F(SelectedField, ARowWithoutDataFieldsShowsPathAndLevelAndNoEntryControl) {
    Start({});
    EXPECT_EQ(Row(0), "NO DATA FIELDS");
    EXPECT_THAT(Quintave.SectionLabel.Rows, ElementsAre("No Sections Specified"));
    EXPECT_EQ(Quintave.DataLevelLabel.Caption, "0");
    PressEnter();
    Type("a");
    PressKey(DeleteKey);
    EXPECT_THAT(ShownEntryControls(), IsEmpty());
    EXPECT_FALSE(Quintave.MultiInstanceFrame.Visible);
    EXPECT_EQ(MessageCount(), 0u);
    EXPECT_EQ(SaveAs("empty.rpx"), "0,\"QuintaveV2\",\"SITE.FTF\"\r\n");
}

TEST_F(SelectedField, AFieldOfUnknownTypeTakesNoEntry) {
    Start({Element(1, 30, "NUMBER", "Odd"), Element(1, 30, "TEXT", "Title")});
    Select(0);
    PressEnter();
    Type("a");
    PressKey(DeleteKey);
    EXPECT_THAT(ShownEntryControls(), IsEmpty());
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_EQ(Row(0), RowOf("Odd"));
    EXPECT_EQ(MessageCount(), 0u);
    EXPECT_EQ(PendingKey, "");
}

TEST_F(SelectedField, ATypedLetterOnDashesDoesNothing) {
    Start(Site);
    Select(DashesRow);
    Type("a");
    PressEnter();
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_EQ(CurrentField, DashesRow);
    EXPECT_EQ(PendingKey, "");
    EXPECT_EQ(DataChanged, False);
}

// Instances
// ------------------------------------------------------------------------------

TEST_F(SelectedField, AValueOfThreeInstancesSetsTheInstanceControls) {
    Start(Site);
    Give(TitleRow, "a|b|c");
    Select(TitleRow);
    EXPECT_EQ(Quintave.FILabel[0].Caption, "3");
    EXPECT_EQ(Quintave.FILabel[1].Caption, "1");
    EXPECT_EQ(Quintave.FIScroll.Max, 3);
    EXPECT_EQ(Quintave.FIScroll.Value, 1);
    EXPECT_EQ(Quintave.FIScroll.Tag, "");
    EXPECT_EQ(Quintave.Text1[1].Text, "a");
    Select(SummaryRow);
    EXPECT_EQ(Quintave.FILabel[0].Caption, "1");
    EXPECT_EQ(Quintave.FILabel[1].Caption, "1");
    EXPECT_EQ(Quintave.FIScroll.Max, 1);
}

TEST_F(SelectedField, ARefreshThatDoesNotRestartKeepsTheInstanceShown) {
    Start(Site);
    Give(TitleRow, "a|b|c");
    Select(TitleRow);
    UserScrolls(Quintave.FIScroll, 2);
    ShowSelectedField(Continue);
    EXPECT_EQ(Quintave.FILabel[1].Caption, "2");
    EXPECT_EQ(Quintave.Text1[1].Text, "b");
    ShowSelectedField(Restart);
    EXPECT_EQ(Quintave.FILabel[1].Caption, "1");
    EXPECT_EQ(Quintave.Text1[1].Text, "a");
}

TEST_F(SelectedField, ARefreshThatOnlyPutsAwayLeavesNoBox) {
    Start(Site);
    Open(TitleRow);
    Type("Wells");
    ShowSelectedField(Restart, PutAwayOnly);
    EXPECT_THAT(ShownEntryControls(), IsEmpty());
    EXPECT_EQ(Quintave.Text1[1].Text, "");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(SelectedField, ARefreshThatOnlyPutsAwayLeavesNoChoicesAndNoFreeText) {
    Start(Site);
    Give(ColourRow, "Ochre");
    Open(ColourRow);
    ASSERT_THAT(ShownEntryControls(), ElementsAre("Text2_2", "List2_0"));
    Type("!");
    ShowSelectedField(Restart, PutAwayOnly);
    EXPECT_THAT(ShownEntryControls(), IsEmpty());
    EXPECT_EQ(Quintave.Text2[2].Text, "");
    EXPECT_EQ(RowValue[ColourRow], "Ochre!");
}

TEST_F(SelectedField, EveryCallIsNotedInTheTrailAndKeepsTheRows) {
    Start(Site);
    const auto rows = Quintave.List1[0].Rows;
    CallTrail.clear();
    for (Integer row = TitleRow; row <= ToneRow; ++row) Select(row);
    ShowSelectedField(Continue);
    EXPECT_EQ(CallTrail, "ChoicesChoicesChoicesChoicesChoicesChoicesChoicesChoicesChoices");
    EXPECT_EQ(Quintave.List1[0].Rows, rows);
}

// Choice list
// ------------------------------------------------------------------------------

TEST_F(SelectedField, TheChoiceFileIsNotReadAgainBetweenRowsThatLeaveItInTheList) {
    Start(Site);
    Select(ColourRow);
    folder.Write("LST00005.XXX", "\"Green\"\r\n");
    Select(TitleRow);
    Select(ColourRow);
    EXPECT_EQ(Quintave.List2[0].Rows, Colours);
    Select(ToneRow);
    Select(ColourRow);
    EXPECT_THAT(Quintave.List2[0].Rows, ElementsAre("Green"));
}

TEST_F(SelectedField, AMissingChoiceFileLeavesTheListEmptyWithoutAMessage) {
    Start(Site);
    Select(ToneRow);
    std::remove("LST00005.XXX");
    Select(ColourRow);
    EXPECT_THAT(Quintave.List2[0].Rows, IsEmpty());
    EXPECT_EQ(MessageCount(), 0u);
    Open(ColourRow);
    Type("r");
    EXPECT_EQ(RowValue[ColourRow], "");
}

TEST_F(SelectedField, TheChoiceListsTagIsThePathOfItsFile) {
    Start(Site);
    Select(ColourRow);
    EXPECT_EQ(Quintave.List2[0].Tag, ResourceDir + "LST00005.XXX");
    std::remove("LST00012.XXX");
    Select(ToneRow);
    EXPECT_EQ(Quintave.List2[0].Tag, ResourceDir + "LST00012.XXX");
    EXPECT_THAT(Quintave.List2[0].Rows, IsEmpty());
}

TEST_F(SelectedField, AChoiceFileThatIsBackIsRead) {
    Start(Site);
    Select(ToneRow);
    std::remove("LST00005.XXX");
    Select(ColourRow);
    folder.Write("LST00005.XXX", "\"Green\"\r\n");
    Select(ColourRow);
    EXPECT_THAT(Quintave.List2[0].Rows, ElementsAre("Green"));
}

TEST_F(SelectedField, AnotherTemplateWithTheSameFileNameShowsItsOwnChoices) {
    Start(Join({ListOf(1, 20, "Colour", {"Red"})}));
    Select(0);
    folder.Write("OTHER.FTF", TemplateText(ListOf(1, 20, "Tone", {"Dark"})));
    Dialogs.Texts.push_back(folder.Path() + "OTHER.FTF");
    Press(Quintave.CommandTemplate);
    Select(0);
    EXPECT_THAT(Quintave.List2[0].Rows, ElementsAre("Dark"));
}

TEST_F(SelectedField, AFreeTextSelectsOtherAndItsBoxEndsAt7695Twips) {
    Start(Site);
    Give(ColourRow, "Ochre");
    Select(ColourRow);
    EXPECT_EQ(ChosenText(), "OTHER...");
    EXPECT_THAT(ShownEntryControls(), ElementsAre("Text2_2", "List2_0"));
    const Control &box = Quintave.Text2[2];
    EXPECT_EQ(box.Text, "Ochre");
    EXPECT_EQ(box.Left, Quintave.List2[0].Left);
    EXPECT_EQ(box.Left + box.Width, 7695);
}

TEST_F(SelectedField, TheFreeTextBoxShowsTheFirstInstance) {
    Start(Site);
    Give(ColourRow, "Ochre|Red");
    Select(ColourRow);
    EXPECT_EQ(Quintave.Text2[2].Text, "Ochre");
}

TEST_F(SelectedField, TheFreeTextBoxStandsBesideListRowsOnly) {
    Start(Site);
    Give(ColourRow, "Ochre");
    for (const Integer row : {TitleRow, NotesRow, DashesRow, SamplesRow, PlaceRow, ToneRow}) {
        Select(ColourRow);
        Select(row);
        EXPECT_FALSE(Quintave.Text2[2].Visible) << "row " << row;
    }
}

TEST_F(SelectedField, ALetterTypedOnATextRowAcceptsNoChoiceOfAFormerRow) {
    Start(Site);
    Select(ColourRow);
    Select(TitleRow);
    Type("B");
    PressEnter();
    EXPECT_EQ(RowValue[TitleRow], "B");
    EXPECT_EQ(RowValue[ColourRow], "");
}

// Boxes of a group
// ------------------------------------------------------------------------------

TEST_F(SelectedField, TheBoxesOfAGroupHoldTheMembersCellsWithoutTrailingBlanks) {
    Start(Join({{Element(1, 2, "GROUP START", "G"), Element(2, 8, "TEXT", "Depth"), Element(2, 60, "TEXT", "Long"),
                 Element(2, 12, "MEMO", "Memo")},
                ListOf(2, 10, "Rock", {"Clay", "OTHER..."}),
                {Element(1, 0, "GROUP END", "")}}));
    std::string long60 = "Longer";
    long60.resize(60, ' ');
    folder.Write("GRP00001.XXX", std::string("\x5A\0\1\0", 4) + " 12 m   " + long60 + "a\r\nb        " + "Slate     ");
    Open(0);
    const std::vector<std::pair<TemplateLines, std::string>> shown{
        {{"Text1_4"}, " 12 m"}, {{"Text1_5"}, "Longer"}, {{"Text1_6"}, "a\r\nb"}, {{"Text2_5", "List2_3"}, "Slate"}};
    const std::array<const Control *, 4> boxes{&Quintave.Text1[4], &Quintave.Text1[5], &Quintave.Text1[6],
                                               &Quintave.Text2[5]};
    for (std::size_t i = 0; i < shown.size(); ++i) {
        Select(static_cast<Integer>(i));
        EXPECT_EQ(ShownEntryControls(), shown[i].first);
        EXPECT_EQ(boxes[i]->Text, shown[i].second);
    }
    EXPECT_EQ(ChosenText(GroupList), "OTHER...");
    EXPECT_EQ(Quintave.Text2[5].Left + Quintave.Text2[5].Width, 7695);
}
