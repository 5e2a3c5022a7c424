// What a loaded template puts into the field model, onto the screen and into the work files.
#include "groups/open_group.h"
#include "main/template_command.h"
#include "model/work_files.h"
#include "support/messages.h"
#include "support/screen_test.h"

#include <filesystem>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char *TwoFields[] = {R"(1,30,"TEXT","Title","","")", R"(1,30,"TEXT","Place","","")"};

std::string Dashes() {
    std::string row;
    for (int i = 0; i < 31; ++i) row += " -";
    return row + " ";
}

class TemplateLoad : public ScreenTest {
protected:
    static const std::vector<std::string> &Rows() { return Quintave.List1[0].Rows; }
    static Integer Info(Integer element, InfoColumn column) { return FieldInfo[element][column]; }
};

} // namespace

TEST_F(TemplateLoad, ElementsAreNumberedFromOneInTheirOrder) {
    Start({R"(1,-1,"","Section","","")", TwoFields[0], R"(2,0,"","Heading","","")", TwoFields[1]});
    EXPECT_EQ(NumFields, 4);
    EXPECT_EQ(FieldTitle[0], "");
    EXPECT_EQ(FieldTitle[1], "Section");
    EXPECT_EQ(FieldTitle[2], "Title");
    EXPECT_EQ(FieldTitle[3], "Heading");
    EXPECT_EQ(FieldTitle[4], "Place");
    EXPECT_EQ(Info(0, TypeCode), 0);
    EXPECT_EQ(RowField[0], 2);
    EXPECT_EQ(RowField[1], 4);
}

TEST_F(TemplateLoad, TypeCodesFollowTypeAndKind) {
    Start({R"(1,50,"TEXT","a","","")", R"(1,51,"TEXT","b","","")", R"(1,20,"MEMO","c","","")",
           R"(1,20,"LIST","d","","")", "\"12345\"", "XXX-1XXX", R"(1,2,"GROUP START","e","","")",
           R"(1,20,"MEMO","f","","")", R"(1,1200,"MEMO","g","","")", R"(1,0,"GROUP END","h","","")",
           R"(1,1,"TEXT","i","","")", R"(1,0,"TEXT","j","","")", R"(1,-1,"","k","","")", R"(1,20,"NUMBER","l","","")"});
    constexpr Integer Codes[] = {0, -1, -2, -3, 5 * 120 + 320, -99, -3, -3, -99, 0, 0, 0, 0};
    ASSERT_EQ(NumFields, 12);
    for (Integer e = 1; e <= NumFields; ++e) EXPECT_EQ(Info(e, TypeCode), Codes[e]) << e;
}

TEST_F(TemplateLoad, TheKindIsTheLengthLimitButOfAMemoOutsideAGroup) {
    Start({R"(1,20,"MEMO","a","","")", R"(1,17,"TEXT","b","","")", R"(1,9,"GROUP START","c","","")",
           R"(1,1200,"MEMO","d","","")", R"(1,0,"GROUP END","e","","")"});
    EXPECT_EQ(Info(1, KindItem), 999);
    EXPECT_EQ(Info(2, KindItem), 17);
    EXPECT_EQ(Info(3, KindItem), 9);
    EXPECT_EQ(Info(4, KindItem), 1200);
    EXPECT_EQ(Info(5, KindItem), 0);
}

TEST_F(TemplateLoad, LevelsKeepTheirSign) {
    Start({R"(1,30,"TEXT","a","","")", R"(-3,30,"TEXT","b","","")", R"(2,0,"","c","","")"});
    EXPECT_EQ(Info(1, LevelItem), 1);
    EXPECT_EQ(Info(2, LevelItem), -3);
    EXPECT_EQ(Info(3, LevelItem), 2);
}

TEST_F(TemplateLoad, TheLevelOfLargestAbsoluteValueFixesTheLevelTable) {
    Start({R"(1,30,"TEXT","a","","")", R"(-3,30,"TEXT","b","","")", R"(2,0,"","c","","")"});
    EXPECT_EQ(DeepestLevel, 3);
    EXPECT_EQ(LevelTableRows, 5);
    EXPECT_EQ(LevelTable.UpperBound(), 5);
    for (const auto &cells : LevelTable) EXPECT_THAT(cells, ElementsAre("", ""));
}

TEST_F(TemplateLoad, TitlesAreKeptAsTheyAre) {
    Start({R"(1,30,"TEXT","  A title that is much longer than its row ","","")", R"(1,0,"","","","")"});
    EXPECT_EQ(FieldTitle[1], "  A title that is much longer than its row ");
    EXPECT_EQ(FieldTitle[2], "");
}

TEST_F(TemplateLoad, RowsFitTheirTitles) {
    Start({R"(1,30,"TEXT","12345678901234567890123456","","")", R"(1,30,"TEXT","123456789012345678901234567","","")",
           R"(1,30,"TEXT","x","","")", R"(1,30,"TEXT","","","")"});
    EXPECT_THAT(Rows(), ElementsAre(" 12345678901234567890123456| ", " ...56789012345678901234567| ",
                                    " x                         | ", "                           | "));
    for (const auto &row : Rows()) EXPECT_EQ(row.size(), 29U);
}

TEST_F(TemplateLoad, ADoubleQuoteInATitleBecomesAnApostrophe) {
    Start({R"(1,30,TEXT,5" pipe,,)"});
    EXPECT_EQ(FieldTitle[1], "5' pipe");
    EXPECT_EQ(Row(0), " 5' pipe                   | ");
}

TEST_F(TemplateLoad, FieldsOutsideGroupsAndTheGroupsThemselvesHaveRows) {
    Start({TwoFields[0], R"(1,2,"GROUP START","Samples","","")", R"(2,10,"TEXT","Depth","","")",
           R"(1,0,"GROUP END","","","")", TwoFields[1], R"(1,1,"TEXT","One","","")", R"(1,0,"","Zero","","")"});
    EXPECT_THAT(Rows(),
                ElementsAre(" Title                     | ", " Samples                   | -- REPEATABLE GROUP --",
                            " Place                     | "));
    EXPECT_EQ(NumRows, 3);
    constexpr Integer RowOf[] = {0, 1, 2, 0, -1, 3, -1, -1};
    for (Integer e = 1; e <= NumFields; ++e) EXPECT_EQ(FieldRow[e], RowOf[e]) << e;
    EXPECT_EQ(RowField[1], 2);
    EXPECT_EQ(RowField[2], 5);
}

TEST_F(TemplateLoad, ASectionBreakNeedsTwoRowsAboveIt) {
    Start({R"(1,-1,"","S1","","")", TwoFields[0], R"(1,-1,"","S3","","")", TwoFields[1], R"(1,-1,"","S5","","")",
           R"(2,30,"TEXT","Last","","")"});
    EXPECT_THAT(Rows(), ElementsAre(" Title                     | ", " Place                     | ", Dashes(),
                                    " Last                      | "));
    EXPECT_EQ(Rows()[2].size(), 63U);
    EXPECT_EQ(FieldRow[1], -1);
    EXPECT_EQ(FieldRow[3], -1);
    EXPECT_EQ(FieldRow[5], 3);
    EXPECT_EQ(RowField[2], 5);
    EXPECT_EQ(Quintave.SectionLabel.Tag, "-1|1|3|5|7");
}

TEST_F(TemplateLoad, ASectionBreakInsideAGroupHasNoRowButANumber) {
    Start({TwoFields[0], TwoFields[1], R"(1,2,"GROUP START","G","","")", R"(2,-1,"","Inside","","")",
           R"(3,10,"TEXT","a","","")", R"(1,0,"GROUP END","","","")"});
    EXPECT_THAT(Rows(), SizeIs(3));
    EXPECT_EQ(FieldRow[4], -1);
    EXPECT_EQ(Info(4, TypeCode), 0);
    EXPECT_EQ(Quintave.SectionLabel.Tag, "-1|4|7");
}

TEST_F(TemplateLoad, WithoutSectionsTheTagHoldsTheEndMarkAlone) {
    Start({TwoFields[0]});
    EXPECT_EQ(Quintave.SectionLabel.Tag, "-1|2");
    EXPECT_EQ(Quintave.List1[3].Tag, "-1");
}

TEST_F(TemplateLoad, TypesAreTheSameInAnyLetterCase) {
    Start({R"(1,30,"text","a","","")", R"(1,30,"Memo","b","","")", R"(1,30,"list","c","","")", "Oak", "Ash", "XXX-1XXX",
           R"(1,2,"Group Start","d","","")", R"(1,30,"List","e","","")", "Elm", "XXX-1XXX",
           R"(1,0,"group end","f","","")", R"(1,30,"TEXT","g","","")"});
    constexpr Integer Codes[] = {0, -1, -3, 680, -99, 680, -99, -1};
    ASSERT_EQ(NumFields, 7);
    for (Integer e = 1; e <= NumFields; ++e) EXPECT_EQ(Info(e, TypeCode), Codes[e]) << e;
}

TEST_F(TemplateLoad, ItemsMayBeQuotedOrNotAndCommasBelongToQuotedOnes) {
    Start({R"( 1 , 30 , TEXT , Plain title , help, x.hlp)", R"("1","30","TEXT","a, b","c, d","")"});
    EXPECT_EQ(FieldTitle[1], "Plain title");
    EXPECT_EQ(FieldExtra[1][HelpLine], "help");
    EXPECT_EQ(FieldTitle[2], "a, b");
    EXPECT_EQ(FieldExtra[2][HelpLine], "c, d");
}

TEST_F(TemplateLoad, OnlyAnExistingFileIsKeptAsHelpFile) {
    folder.Write("help.hlp", "");
    folder.Write("other", "");
    std::filesystem::create_directory(folder.Path() + "dir");
    Start({R"(1,30,"TEXT","a","line","help.hlp")", R"(1,30,"TEXT","b","line","HELP.HLP")",
           R"(1,30,"TEXT","c","line","none.hlp")", R"(1,30,"TEXT","d","line","")", R"(1,30,"TEXT","e","line","dir")",
           R"(1,30,"TEXT","f","line","*")", R"(1,30,"TEXT","g","line","oth?r")", R"(1,30,"TEXT","h","line","../other")",
           R"(1,0,"","i","line","help.hlp")"});
    constexpr const char *Files[] = {"", "help.hlp", "help.hlp", "", "", "", "", "", "", ""};
    for (Integer e = 1; e <= NumFields; ++e) EXPECT_EQ(FieldExtra[e][HelpFile], Files[e]) << e;
    EXPECT_EQ(FieldExtra[1][HelpLine], "line");
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(TemplateLoad, AChoiceFileHoldsEachChoiceInQuotes) {
    Start({TwoFields[0], R"(1,30,"LIST","Colour","","")", "\"Red, dark\"", "Blue", "\"OTHER...\"", "\"\"", "Blue",
           "\"  XXX-1XXX  \"", TwoFields[1]});
    EXPECT_EQ(folder.Read("LST00002.XXX"), "\"Red, dark\"\r\n\"Blue\"\r\n\"OTHER...\"\r\n\"\"\r\n\"Blue\"\r\n");
    EXPECT_EQ(NumFields, 3);
    EXPECT_EQ(FieldTitle[3], "Place");
}

TEST_F(TemplateLoad, AnUnquotedCommaDividesAChoice) {
    Start({R"(1,30,"LIST","Colour","","")", "Red, dark", "XXX-1XXX"});
    EXPECT_EQ(folder.Read("LST00001.XXX"), "\"Red\"\r\n\"dark\"\r\n");
}

TEST_F(TemplateLoad, ReservedCharactersAreTakenOutOfChoices) {
    Start({R"(1,30,"LIST","Size","","")", "3|4", "5\" pipe", "XXX-1XXX"});
    EXPECT_EQ(folder.Read("LST00001.XXX"), "\"34\"\r\n\"5 pipe\"\r\n");
}

TEST_F(TemplateLoad, TheEndMarkIsInCapitals) {
    Start({R"(1,30,"LIST","Colour","","")", "xxx-1xxx", "XXX-1XXX"});
    EXPECT_EQ(folder.Read("LST00001.XXX"), "\"xxx-1xxx\"\r\n");
}

TEST_F(TemplateLoad, WorkFilesCarryFiveDigitsOfTheElementNumber) {
    std::vector<std::string> lines;
    for (int i = 1; i < 7; ++i) lines.push_back(TwoFields[0]);
    lines.insert(lines.end(), {R"(1,30,"LIST","Seven","","")", "XXX-1XXX", R"(1,2,"GROUP START","Eight","","")",
                               R"(1,0,"GROUP END","","","")"});
    Start(lines);
    EXPECT_EQ(folder.Read("LST00007.XXX"), "");
    EXPECT_EQ(folder.Read("GRP00008.XXX"), std::string("\0\0\1\0", 4));
    EXPECT_EQ(ChoiceFileName(42), "LST00042.XXX");
    EXPECT_EQ(GroupFileName(999), "GRP00999.XXX");
    EXPECT_EQ(GroupFileName(1000), "GRP01000.XXX");
    EXPECT_EQ(ChoiceFileName(32767), "LST32767.XXX");
}

TEST_F(TemplateLoad, AChoiceListIsAsWideAsItsWidestChoiceUpToALimit) {
    struct {
        std::size_t Characters;
        Integer Width;
    } constexpr Expected[] = {{0, 320}, {10, 1520}, {51, 6440}, {52, 6528}, {300, 6528}};
    std::vector<std::string> lines;
    for (const auto &[characters, width] : Expected) {
        lines.push_back(R"(1,30,"LIST","L","","")");
        if (characters > 0) lines.insert(lines.end(), {"x", std::string(characters, 'y'), "z"});
        lines.push_back("XXX-1XXX");
    }
    Start(lines);
    Integer e = 0;
    for (const auto &[characters, width] : Expected) EXPECT_EQ(Info(++e, TypeCode), width) << characters;
}

TEST_F(TemplateLoad, AListFieldStartsWithoutAChosenEntry) {
    Start({R"(1,30,"LIST","Colour","","")", "Red", "OTHER...", "XXX-1XXX", TwoFields[0]});
    EXPECT_EQ(Info(1, Choice), -1);
    EXPECT_EQ(Info(2, Choice), 0);
    Open(0);
    EXPECT_EQ(Quintave.List2[0].ListIndex, -1);
}

TEST_F(TemplateLoad, AGroupStoreIsItsHeaderAndOneBlankOccurrence) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(2,10,"TEXT","a","","")", R"(2,40,"MEMO","b","","")",
           R"(2,0,"","heading","","")", R"(2,8,"LIST","c","","")", "Red", "XXX-1XXX",
           R"(2,99,"NUMBER","no value","","")", R"(1,0,"GROUP END","","","")"});
    EXPECT_EQ(folder.Read("GRP00001.XXX"), std::string("\x3A\0\1\0", 4) + std::string(58, ' '));
    EXPECT_EQ(folder.Read("LST00005.XXX"), "\"Red\"\r\n");
    EXPECT_EQ(GroupItemCount, 58); // of the group loaded last
    EXPECT_EQ(GroupOccurrenceCount, 1);
}

TEST_F(TemplateLoad, AGroupStoreHeaderIsLittleEndian) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(2,515,"MEMO","a","","")", R"(1,0,"GROUP END","","","")"});
    EXPECT_EQ(folder.Read("GRP00001.XXX"), std::string("\x03\x02\1\0", 4) + std::string(515, ' '));
}

TEST_F(TemplateLoad, AKindBelowMinusOneIsNeitherFieldNorSection) {
    Start({TwoFields[0], TwoFields[1], R"(1,-2,"TEXT","Odd","","")", R"(1,-32768,"LIST","Odder","","")", "XXX-1XXX",
           R"(1,30,"TEXT","Last","","")"});
    EXPECT_THAT(Rows(), ElementsAre(" Title                     | ", " Place                     | ",
                                    " Last                      | "));
    for (const Integer odd : {Integer{3}, Integer{4}}) {
        EXPECT_EQ(FieldRow[odd], -1);
        EXPECT_EQ(Info(odd, TypeCode), 0);
        EXPECT_FALSE(IsSection(odd));
    }
    EXPECT_EQ(RowField[2], 5);
    EXPECT_EQ(Quintave.SectionLabel.Tag, "-1|6");
}

TEST_F(TemplateLoad, TheFirstGroupEndClosesTheGroup) {
    Start({R"(1,2,"GROUP START","Outer","","")", R"(2,10,"TEXT","a","","")", R"(2,7,"GROUP START","Inner","","")",
           R"(3,5,"TEXT","b","","")", R"(2,0,"GROUP END","","","")", R"(2,30,"TEXT","c","","")",
           R"(1,0,"GROUP END","","","")"});
    EXPECT_THAT(Rows(),
                ElementsAre(" Outer                     | -- REPEATABLE GROUP --", " c                         | "));
    EXPECT_EQ(Info(3, TypeCode), 0);
    EXPECT_FALSE(IsGroupStart(3));
    EXPECT_EQ(FieldRow[3], -1);
    EXPECT_EQ(Info(7, TypeCode), 0);
    EXPECT_EQ(folder.Read("GRP00001.XXX").size(), 4U + 15U);
    EXPECT_FALSE(folder.Has("GRP00003.XXX"));
    EXPECT_EQ(GroupEnd(1), 5);
}

TEST_F(TemplateLoad, AGroupStartOfASectionsKindInAGroupIsAHeadingThere) {
    Start({R"(1,2,"GROUP START","Outer","","")", R"(2,-1,"GROUP START","Inner","","")", R"(3,5,"TEXT","b","","")",
           R"(1,0,"GROUP END","","","")"});
    EXPECT_TRUE(IsSection(2));
    EXPECT_FALSE(IsGroupStart(2));
    EXPECT_EQ(GroupEnd(1), 4);
    Open(0);
    Enter(0, "x");
    Press(Quintave.GrpExit);
    EXPECT_THAT(SaveAs("a.rpx"), testing::HasSubstr("1,-9,\"Outer\",\"REPEATING GROUP, Occurrence #1\"\r\n"
                                                    "2,-1,\"Inner\",\"\"\r\n3,1,\"b\",\"x\"\r\n"));
}

TEST_F(TemplateLoad, AByteOrderMarkInFrontIsSkipped) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    folder.Write("SITE.FTF", "\xEF\xBB\xBF" + TemplateText({TwoFields[0]}));
    StartUp();
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_THAT(Rows(), ElementsAre(" Title                     | "));
}

TEST_F(TemplateLoad, AllMembersHaveRowsWhereAGroupEndOfAFieldsKindEndsNothing) {
    std::vector<std::string> lines{R"(1,2,"GROUP START","G","","")", R"(2,5,"TEXT","a","","")",
                                   R"(1,2,"GROUP END","","","")"};
    for (int member = 0; member < 6; ++member) lines.emplace_back(R"(2,5,"TEXT","b","","")");
    lines.emplace_back(R"(1,0,"GROUP END","","","")");
    Start(lines);
    Open(0);
    EXPECT_THAT(Quintave.List1[3].Rows, SizeIs(7));
    Enter(6, "last");
    EXPECT_EQ(Row(6), " b                         | last");
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

// The table of a group's rows has room for all records of a positive kind, its end and those that are no fields
// included.
TEST_F(TemplateLoad, TheTableOfGroupRowsHasRoomForWhatTheFirstPassCounts) {
    Start({R"(1,2,"GROUP START","G","","")", R"(2,5,"TEXT","a","","")", R"(2,1,"TEXT","b","","")",
           R"(2,0,"TEXT","c","","")", R"(1,1,"GROUP END","","","")"});
    EXPECT_EQ(GroupSlot.UpperBound(), 3);
    EXPECT_EQ(GroupItemCount, 5);
}

TEST_F(TemplateLoad, AGroupEndWithoutAGroupIsAnElementWithoutValue) {
    Start({R"(1,0,"GROUP END","","","")", TwoFields[0]});
    EXPECT_EQ(Info(1, TypeCode), 0);
    EXPECT_EQ(FieldRow[1], -1);
    EXPECT_FALSE(folder.Has("GRP00001.XXX"));
}

TEST_F(TemplateLoad, AGroupStartOrListOfKindOneOrLessIsNoField) {
    Start({R"(1,1,"GROUP START","G","","")", R"(1,30,"TEXT","Title","","")", R"(1,0,"GROUP END","","","")",
           R"(1,0,"LIST","L","","")", "Red", "XXX-1XXX", TwoFields[1]});
    EXPECT_THAT(Rows(), ElementsAre(" Title                     | ", " Place                     | "));
    EXPECT_EQ(NumFields, 5);
    for (const Integer e : {Integer{1}, Integer{3}, Integer{4}}) EXPECT_EQ(Info(e, TypeCode), 0) << e;
    EXPECT_FALSE(folder.Has("LST00004.XXX"));
    EXPECT_FALSE(folder.Has("GRP00001.XXX"));
}

TEST_F(TemplateLoad, AnUnknownTypeHasARowButNoValue) {
    Start({R"(1,30,"NUMBER","Count","help","")", TwoFields[0]});
    EXPECT_EQ(Row(0), " Count                     | ");
    EXPECT_EQ(Info(1, TypeCode), 0);
    Open(0);
    Type("x");
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(DataChanged, 0);
}

TEST_F(TemplateLoad, AnUnknownTypeInAGroupTakesNoRowThere) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(2,10,"TEXT","Depth","","")", R"(2,99,"NUMBER","Count","","")",
           R"(1,0,"GROUP END","","","")"});
    Open(0);
    EXPECT_THAT(Quintave.List1[3].Rows, ElementsAre(" Depth                     | "));
}

TEST_F(TemplateLoad, AGroupWithoutMembersIsNotEntered) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(1,0,"GROUP END","","","")"});
    Open(0);
    ExpectOneMessage("REPEATABLE GROUP", "There are no data fields in this Repeating Group!", InformationIcon);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(folder.Read("GRP00001.XXX"), std::string("\0\0\1\0", 4));
}

// The counting pass skips the choices of any type that ends in LIST; the other takes these six lines for a record.
TEST_F(TemplateLoad, InAGroupOnlyTheWordListItselfHasChoices) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(2,10,"PICKLIST","Pick","","")", "1", "20", "TEXT", "Five", "x",
           "XXX-1XXX", R"(1,0,"GROUP END","","","")", TwoFields[0]});
    EXPECT_EQ(NumFields, 5);
    EXPECT_EQ(Info(2, TypeCode), 0);
    EXPECT_EQ(FieldTitle[3], "Five");
    EXPECT_EQ(FieldRow[3], 0);
    EXPECT_EQ(Row(1), " Title                     | ");
    EXPECT_EQ(folder.Read("GRP00001.XXX").size(), 4U + 20U);
    EXPECT_FALSE(folder.Has("LST00002.XXX"));
}

TEST_F(TemplateLoad, OutsideAGroupAWordThatEndsInListHasNoChoices) {
    Start({R"(1,10,"PICKLIST","Pick","","")", TwoFields[0]});
    EXPECT_EQ(NumFields, 2);
    EXPECT_EQ(Info(1, TypeCode), 0);
}

TEST_F(TemplateLoad, NoNumberIsZero) {
    Start({R"(x,30,"TEXT","Title","","")", R"(1,thirty,"TEXT","No field","","")"});
    EXPECT_EQ(Info(1, LevelItem), 0);
    EXPECT_EQ(Info(2, KindItem), 0);
    EXPECT_THAT(Rows(), SizeIs(1));
}

TEST_F(TemplateLoad, AnyLineEndBlankLinesAndBlanksAreAccepted) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\n");
    folder.Write("SITE.FTF", "\n\r\"QUINTAVE FIELDS TEMPLATE FILE\" , QuintaveV2 ,a,b,c,d  \n\n"
                             "1,30,TEXT,Title,,\r\r1,30,LIST,Colour,,\r\n Red \n\n\tXXX-1XXX \r  "
                             "1,30,TEXT,Place,,\n \n\x1A this is not read");
    StartUp();
    EXPECT_THAT(Rows(), ElementsAre(" Title                     | ", " Colour                    | ",
                                    " Place                     | "));
    EXPECT_EQ(folder.Read("LST00002.XXX"), "\"Red\"\r\n");
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(TemplateLoad, CharactersOfTheCodePageAreOneEach) {
    Start({"1,30,\"TEXT\",\"H\xF6he \x80\",\"\",\"\""});
    EXPECT_EQ(Row(0), " Höhe €                    | ");
}

TEST_F(TemplateLoad, AnEmptyTemplateShowsOneRowAndNoMessage) {
    Start({});
    EXPECT_THAT(Rows(), ElementsAre("NO DATA FIELDS"));
    EXPECT_EQ(NumFields, 0);
    EXPECT_EQ(NumRows, 0);
    EXPECT_EQ(Info(0, TypeCode), -1);
    EXPECT_EQ(FieldTitle.UpperBound(), 0);
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(TemplateLoad, ATemplateOfHeadingsAloneShowsThatRowToo) {
    Start({R"(1,-1,"","Section","","")", R"(2,0,"","Heading","","")"});
    EXPECT_THAT(Rows(), ElementsAre("NO DATA FIELDS"));
}

TEST_F(TemplateLoad, TheRowWithoutFieldsHasNoEntryControlAndTakesNoKeys) {
    Start({});
    EXPECT_THAT(Quintave.SectionLabel.Rows, ElementsAre("No Sections Specified"));
    EXPECT_EQ(Quintave.DataLevelLabel.Caption, "0");
    Open(0);
    PressEnter();
    Type("abc");
    PressKey(DeleteKey);
    EXPECT_THAT(Rows(), ElementsAre("NO DATA FIELDS"));
    EXPECT_EQ(DataChanged, 0);
    EXPECT_FALSE(Quintave.MultiInstanceFrame.Visible);
    for (const Control &box : Quintave.Text1) EXPECT_TRUE(box.Name.empty() || !box.Visible);
    EXPECT_FALSE(Quintave.List2[0].Visible);
    const std::string report = SaveAs("a.rpx");
    EXPECT_EQ(report.find("\r\n"), report.size() - 2);
}

TEST_F(TemplateLoad, TheCountersStartAnew) {
    Start({TwoFields[0], TwoFields[1]});
    for (Integer *counter : {&CurrentField, &ListTop, &LoadState, &DataChanged}) *counter = 1;
    ASSERT_TRUE(LoadTemplateFile());
    for (const Integer *counter : {&CurrentField, &ListTop, &LoadState, &DataChanged}) EXPECT_EQ(*counter, 0);
}

TEST_F(TemplateLoad, TheFirstTemplateIsShownFromItsFirstRow) {
    Start({TwoFields[0], TwoFields[1]});
    EXPECT_EQ(CurrentField, 0);
    EXPECT_EQ(ListTop, 0);
    EXPECT_EQ(LoadState, 0);
    EXPECT_EQ(DataChanged, 0);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(Quintave.List1[0].ListIndex, 0);
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Open File");
    EXPECT_EQ(GroupItems, Cells{});
}

TEST_F(TemplateLoad, FixedNamesAreSetOnTheFirstActivation) {
    Start({TwoFields[0]});
    EXPECT_EQ(ReportFilePattern, "*.rpx");
    EXPECT_EQ(ReportFileName, "");
    EXPECT_THAT(FileFilter, ElementsAre("Quintave Files (*.rpx)", "*.rpx", "All Files (*.*)", "*.*", "-1", "0"));
    EXPECT_EQ(TemplateDir, ResourceDir);
    EXPECT_EQ(FileMark, "FirstLoad");
}

TEST_F(TemplateLoad, AllOldWorkFilesAreDeleted) {
    for (const std::string name : {"LST00009.XXX", "grp00001.xxx", "!quin!02.$$$", "LST00001.$$$", "notes.txt"})
        folder.Write(name, "old");
    Start({TwoFields[0]});
    for (const std::string name : {"LST00009.XXX", "grp00001.xxx", "!quin!02.$$$", "LST00001.$$$"})
        EXPECT_FALSE(folder.Has(name)) << name;
    EXPECT_TRUE(folder.Has("notes.txt"));
}

TEST_F(TemplateLoad, TemporaryNamesOfWorkFilesAreNotLeftBehind) {
    Start({R"(1,30,"LIST","Colour","","")", "Red", "XXX-1XXX", R"(1,2,"GROUP START","G","","")",
           R"(2,5,"TEXT","a","","")", R"(1,0,"GROUP END","","","")"});
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(folder.Path()))
        names.push_back(entry.path().filename().string());
    EXPECT_THAT(names, testing::UnorderedElementsAre("quintave.tbl", "SITE.FTF", "LST00001.XXX", "GRP00002.XXX"));
}

// --- Header
// -------------------------------------------------------------------------------------------------------------

TEST_F(TemplateLoad, TheSuffixOfTheVersionDecidesOnInstancesAndLevelLabels) {
    struct {
        const char *Version;
        Integer Instances;
        bool Labels;
    } constexpr Expected[] = {{"QuintaveV2", -1, true},    {"QuintaveV2-", 0, true},   {"QuintaveV2--", 0, false},
                              {"QuintaveV2x-", -1, false}, {"QuintaveV2---", 0, true}, {"QuintaveV2x", -1, true},
                              {"QuintaveV2.1", -1, true},  {"QuintaveV2-x", 0, true},  {"QuintaveV2xy-", -1, true}};
    Start({TwoFields[0]});
    for (const auto &[version, instances, labels] : Expected) {
        folder.Write("next.ftf", TemplateText({TwoFields[0]}, version));
        Dialogs.Texts.push_back(folder.Path() + "next.ftf");
        Press(Quintave.CommandTemplate);
        EXPECT_EQ(AllowInstances, instances) << version;
        EXPECT_EQ(Quintave.Label2.Visible, labels) << version;
        EXPECT_EQ(Quintave.DataLevelLabel.Visible, labels) << version;
    }
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(TemplateLoad, TheFirstTemplatesSuffixCountsToo) {
    Start({TwoFields[0]}, "QuintaveV2--");
    EXPECT_EQ(AllowInstances, 0);
    EXPECT_FALSE(Quintave.Label2.Visible);
    EXPECT_FALSE(Quintave.DataLevelLabel.Visible);
}

TEST_F(TemplateLoad, TheOtherHeaderItemsHaveNoEffect) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    folder.Write("SITE.FTF", "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"XXX-1XXX\",-7,,\"LIST\"\r\n" +
                                 Lines({TwoFields[0]}));
    StartUp();
    EXPECT_THAT(Rows(), SizeIs(1));
    EXPECT_EQ(AllowInstances, -1);
}

// --- Find
// ---------------------------------------------------------------------------------------------------------------

TEST_F(TemplateLoad, ATemplateInASubdirectoryIsFoundInAnyLetterCase) {
    std::filesystem::create_directory(folder.Path() + "Forms");
    folder.Write("quintave.tbl", "\"\",\"forms\\site.ftf\",\"-1\"\r\n");
    folder.Write("Forms/Site.Ftf", TemplateText({R"(1,30,"TEXT","Title","","help.hlp")"}));
    folder.Write("Forms/help.hlp", "");
    StartUp();
    EXPECT_EQ(TemplateDir, folder.Path() + "Forms/");
    EXPECT_EQ(TemplateName, "SITE.FTF");
    EXPECT_EQ(FieldExtra[1][HelpFile], "help.hlp");
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
}
