// The bytes of a report file. The commands that save: save_command_test.cpp; the earlier version:
// earlier_version_test.cpp.
#include "platform/codepage.h"
#include "support/report_test.h"
#include "support/stores.h"

#include "groups/open_group.h"
#include "model/store.h"
#include "report/save_command.h"

namespace {

class Writer : public ReportTest {};

// One group of two members, and a field behind it.
const std::vector<std::string> GroupTemplate{
    R"(1,30,"TEXT","Title","","")", R"(2,2,"GROUP START","Samples","","")", R"(3,5,"TEXT","Depth","","")",
    R"(3,30,"MEMO","Notes","","")", R"(2,1,"GROUP END","","","")",          R"(1,30,"TEXT","Remark","","")",
};

constexpr Integer Samples = 2; // element of the group start

} // namespace

TEST_F(Writer, WithoutValuesTheHeaderLineIsAll) {
    Start({R"(1,-1,"","Citation","","")", R"(2,30,"TEXT","Title","","")"});
    EXPECT_EQ(SaveAs("a.rpx"), "0,\"QuintaveV2\",\"SITE.FTF\"\r\n");
}

TEST_F(Writer, ATemplateWithoutFieldsGivesTheHeaderLine) {
    Start({});
    EXPECT_EQ(SaveAs("a.rpx"), ReportHeader);
}

TEST_F(Writer, AValueIsLevelCountTitleAndTextWithoutBlanksBetween) {
    Start({R"(2,30,"TEXT","Title","","")"});
    Enter(0, "Wells of 1904");
    EXPECT_EQ(Saved(), "2,1,\"Title\",\"Wells of 1904\"\r\n");
}

TEST_F(Writer, ANegativeLevelIsWrittenWithoutItsSign) {
    Start({R"(-1,-1,"","Citation","","")", R"(-3,30,"TEXT","Title","","")", R"(-2,2,"GROUP START","Samples","","")",
           R"(-3,5,"TEXT","Depth","","")", R"(-2,1,"GROUP END","","","")"});
    RowValue[0] = "Wells";
    PutStore(3, "12 ft");
    EXPECT_EQ(Saved(), Lines({R"(1,-1,"Citation","")", R"(3,1,"Title","Wells")",
                              R"(2,-9,"Samples","REPEATING GROUP, Occurrence #1")", R"(3,1,"Depth","12 ft")",
                              R"(2,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writer, ACharacterIsOneByteOfWindows1252) {
    Start({R"(1,30,"TEXT","Title","","")"});
    Enter(0, "K\u00F6ln \u20AC5");
    EXPECT_EQ(Saved(), "1,1,\"Title\",\"K\xF6ln \x80"
                       "5\"\r\n");
}

TEST_F(Writer, EveryByteFromBlankToFFIsWrittenAsItIs) {
    Start({R"(1,500,"TEXT","Title","","")"});
    std::string all;
    for (int code = 0x20; code <= 0xFF; ++code)
        if (code != '|') all += static_cast<char>(code);
    RowValue[0] = ToUtf8(all);
    EXPECT_EQ(Saved(), "1,1,\"Title\",\"" + all + "\"\r\n");
}

TEST_F(Writer, AMemoValueOfThreeLinesIsARecordAndTwoContinuationLines) {
    Start({R"(1,999,"MEMO","Notes","","")"});
    RowValue[0] = "first\r\nsecond\r\nthird";
    EXPECT_EQ(Saved(), "1,3,\"Notes\",\"first\"\r\n\"second\"\r\n\"third\"\r\n");
}

TEST_F(Writer, AnEmptyLineOfAMemoValueIsAnEmptyContinuationLine) {
    Start({R"(1,999,"MEMO","Notes","","")"});
    RowValue[0] = "first\r\n\r\nthird\r\n";
    EXPECT_EQ(Saved(), "1,4,\"Notes\",\"first\"\r\n\"\"\r\n\"third\"\r\n\"\"\r\n");
}

TEST_F(Writer, EachInstanceIsARecordOfItsOwn) {
    Start({R"(1,30,"TEXT","Title","","")", R"(1,999,"MEMO","Notes","","")"});
    RowValue[0] = "x|y|z";
    RowValue[1] = "a|b\r\nc";
    EXPECT_EQ(Saved(), Lines({R"(1,1,"Title","x")", R"(1,1,"Title","y")", R"(1,1,"Title","z")", R"(1,1,"Notes","a")",
                              R"(1,2,"Notes","b")", R"("c")"}));
}

TEST_F(Writer, AnEmptyInstanceIsWrittenAsAnEmptyText) {
    Start({R"(1,30,"TEXT","Title","","")"});
    RowValue[0] = "x||";
    EXPECT_EQ(Saved(), Lines({R"(1,1,"Title","x")", R"(1,1,"Title","")", R"(1,1,"Title","")"}));
}

TEST_F(Writer, ADoubleQuoteInAMemoValueBecomesAnApostrophe) {
    Start({R"(1,999,"MEMO","Notes","","")"});
    RowValue[0] = "\"a\" and \"b\"";
    EXPECT_EQ(Saved(), "1,1,\"Notes\",\"'a' and 'b'\"\r\n");
    EXPECT_EQ(RowValue[0], "'a' and 'b'");
}

TEST_F(Writer, ADoubleQuoteInAnotherValueIsWrittenAsItIs) {
    Start({R"(1,30,"TEXT","Short","","")", R"(1,60,"TEXT","Long","","")", R"(1,9,"LIST","Kind","","")", "\"OTHER...\"",
           "XXX-1XXX"});
    RowValue[0] = "5\"";
    RowValue[1] = "6\"";
    RowValue[2] = "7\"";
    EXPECT_EQ(Saved(), "1,1,\"Short\",\"5\"\"\r\n1,1,\"Long\",\"6\"\"\r\n1,1,\"Kind\",\"7\"\"\r\n");
}

TEST_F(Writer, ALineBreakOutsideAMemoStaysInsideTheQuotes) {
    Start({R"(1,30,"TEXT","Short","","")", R"(1,60,"TEXT","Long","","")", R"(1,9,"LIST","Kind","","")", "\"OTHER...\"",
           "XXX-1XXX"});
    for (std::string &value : RowValue) value = "a\r\nb";
    EXPECT_EQ(Saved(), "1,1,\"Short\",\"a\r\nb\"\r\n1,1,\"Long\",\"a\r\nb\"\r\n1,1,\"Kind\",\"a\r\nb\"\r\n");
}

TEST_F(Writer, BlanksAtTheEndOfAValueAreNotWritten) {
    Start({R"(1,30,"TEXT","Title","","")", R"(1,30,"TEXT","Place","","")", R"(1,999,"MEMO","Notes","","")"});
    RowValue[0] = "  Wells  ";
    RowValue[1] = "    ";
    RowValue[2] = "a  \r\nb  ";
    EXPECT_EQ(Saved(), "1,1,\"Title\",\"  Wells\"\r\n1,2,\"Notes\",\"a  \"\r\n\"b\"\r\n");
    EXPECT_EQ(RowValue[0], "  Wells");
    EXPECT_EQ(RowValue[1], "");
}

// --- Counts of 16 bits

namespace {

// A text of so many lines.
std::string LinesOf(int count) {
    std::string text = "x";
    for (int n = 1; n < count; ++n) text += "\r\nx";
    return text;
}

class WriterCounts : public ReportTest {
protected:
    // Save is refused with error 6, and the report is as it was, with nothing beside it.
    void ExpectRefused() {
        folder.Write("a.rpx", ReportHeader);
        DataChanged = True;
        SaveAs("a.rpx");
        ASSERT_FALSE(Dialogs.Messages.empty());
        EXPECT_EQ(Dialogs.Messages[0], WriteMessage("6 - Overflow"));
        EXPECT_EQ(folder.Read("a.rpx"), ReportHeader);
        EXPECT_FALSE(folder.Has("a.rpx~"));
        EXPECT_EQ(DataChanged, True);
    }
};

} // namespace

TEST_F(WriterCounts, AValueOfAsManyLinesAsCanBeCountedComesBack) {
    Start({R"(1,999,"MEMO","Notes","","")"});
    const std::string value = LinesOf(32767) + "|" + LinesOf(2);
    RowValue[0] = value;
    EXPECT_TRUE(Saved().starts_with("1,32767,"));
    Press(Quintave.CommandReset);
    Add("saved.rpx");
    EXPECT_EQ(RowValue[0], value);
}

TEST_F(WriterCounts, AValueOfOneLineMoreIsRefusedBeforeTheReportIsTouched) {
    Start({R"(1,999,"MEMO","Notes","","")"});
    RowValue[0] = "a|" + LinesOf(32768);
    ExpectRefused();
}

TEST_F(WriterCounts, AStoreOfMoreOccurrencesThanCanBeCountedIsRefusedBeforeTheReportIsTouched) {
    Start(GroupTemplate);
    folder.Write("GRP00002.XXX", std::string("\x23\0\0\x80", 4));
    ExpectRefused();
}

// --- Headings

TEST_F(Writer, AHeadingIsWrittenOnlyAboveData) {
    Start({R"(1,-1,"","Citation","","")", R"(2,30,"TEXT","Title","","")", R"(1,-1,"","Place","","")",
           R"(2,30,"TEXT","Town","","")", R"(1,-1,"","Empty","","")", R"(2,30,"TEXT","Nothing","","")"});
    RowValue[1] = "Bern"; // the break above the second row has no row of its own
    EXPECT_EQ(Saved(), Lines({R"(1,-1,"Place","")", R"(2,1,"Town","Bern")"}));
}

TEST_F(Writer, EveryHeadingAroundDataIsWrittenInOrder) {
    Start({R"(1,-1,"","Outer","","")", R"(2,-1,"","Inner","","")", R"(3,30,"TEXT","Title","","")",
           R"(3,30,"TEXT","Place","","")"});
    RowValue[1] = "Bern";
    EXPECT_EQ(Saved(), Lines({R"(1,-1,"Outer","")", R"(2,-1,"Inner","")", R"(3,1,"Place","Bern")"}));
}

TEST_F(Writer, TheLookBelowAHeadingEndsAtTheFirstElementThatIsNotDeeper) {
    Start({R"(2,-1,"","Upper","","")", R"(1,0,"","Note","","")", R"(3,30,"TEXT","Title","","")"});
    Enter(0, "Wells");
    EXPECT_EQ(Saved(), "3,1,\"Title\",\"Wells\"\r\n");
}

TEST_F(Writer, AHeadingOfTheSameLevelEndsTheOneBefore) {
    Start({R"(1,-1,"","One","","")", R"(1,-1,"","Two","","")", R"(2,30,"TEXT","Title","","")"});
    Enter(0, "Wells");
    EXPECT_EQ(Saved(), Lines({R"(1,-1,"Two","")", R"(2,1,"Title","Wells")"}));
}

TEST_F(Writer, ADeeperUnknownFieldIsNoData) {
    Start({R"(1,-1,"","Citation","","")", R"(2,30,"PICTURE","Image","","")"});
    EXPECT_EQ(Saved(), "");
}

TEST_F(Writer, ElementsOfKind0And1AreNeverWritten) {
    Start({R"(1,0,"","Zero","","")", R"(1,1,"TEXT","One","","")", R"(2,30,"TEXT","Title","","")",
           R"(2,2,"GROUP START","Samples","","")", R"(3,0,"","Zero","","")", R"(3,1,"TEXT","One","","")",
           R"(3,5,"TEXT","Depth","","")", R"(2,1,"GROUP END","","","")"});
    RowValue[0] = "Wells";
    PutStore(4, "12 ft");
    EXPECT_EQ(Saved(), Lines({R"(2,1,"Title","Wells")", R"(2,-9,"Samples","REPEATING GROUP, Occurrence #1")",
                              R"(3,1,"Depth","12 ft")", R"(2,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writer, AnUntouchedGroupBelowAHeadingBringsTheHeading) {
    Start({R"(1,-1,"","Citation","","")", R"(2,2,"GROUP START","Samples","","")", R"(3,5,"TEXT","Depth","","")",
           R"(2,1,"GROUP END","","","")"});
    EXPECT_EQ(Saved(), Lines({R"(1,-1,"Citation","")", R"(2,-9,"Samples","REPEATING GROUP, Occurrence #1")",
                              R"(2,-99,"END REPEATING GROUP","")"}));
}

// --- Groups

TEST_F(Writer, AnUntouchedGroupIsOneMarkerAndTheEnd) {
    Start(GroupTemplate);
    EXPECT_EQ(Saved(),
              Lines({R"(2,-9,"Samples","REPEATING GROUP, Occurrence #1")", R"(2,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writer, OccurrencesAreNumberedAndEndOnce) {
    Start(GroupTemplate);
    RowValue[0] = "Wells";
    RowValue[2] = "none";
    std::string notes = "first line\r\nsecond line";
    notes.resize(30, ' ');
    PutStore(Samples, "12 ft" + notes + "15 ft" + std::string(30, ' ') + std::string(35, ' '));
    EXPECT_EQ(Saved(), Lines({R"(1,1,"Title","Wells")", R"(2,-9,"Samples","REPEATING GROUP, Occurrence #1")",
                              R"(3,1,"Depth","12 ft")", R"(3,2,"Notes","first line")", R"("second line")",
                              R"(2,-9,"Samples","REPEATING GROUP, Occurrence #2")", R"(3,1,"Depth","15 ft")",
                              R"(2,-9,"Samples","REPEATING GROUP, Occurrence #3")", R"(2,-99,"END REPEATING GROUP","")",
                              R"(1,1,"Remark","none")"}));
}

TEST_F(Writer, MembersAreWrittenInTemplateOrderAndEmptyOnesLeftOut) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(2,3,"TEXT","B","","")", R"(2,3,"TEXT","A","","")",
           R"(2,3,"TEXT","C","","")", R"(1,1,"GROUP END","","","")"});
    PutStore(1, "b     c  ");
    EXPECT_EQ(Saved(), Lines({R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")", R"(2,1,"B","b")", R"(2,1,"C","c")",
                              R"(1,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writer, HeadingsInsideAnOccurrenceAreAlwaysWritten) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(2,-1,"","Core","","")", R"(3,3,"TEXT","A","","")",
           R"(2,-1,"","Rest","","")", R"(1,1,"GROUP END","","","")"});
    EXPECT_EQ(Saved(), Lines({R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")", R"(2,-1,"Core","")",
                              R"(2,-1,"Rest","")", R"(1,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writer, ADoubleQuoteInAMemoMemberBecomesAnApostrophe) {
    Start(GroupTemplate);
    std::string cells = "     \"deep\"";
    cells.resize(35, ' ');
    PutStore(Samples, cells);
    EXPECT_THAT(Saved(), testing::HasSubstr("3,1,\"Notes\",\"'deep'\"\r\n"));
}

TEST_F(Writer, AStoreWithoutOccurrencesIsTheEndAlone) {
    Start(GroupTemplate);
    folder.Write("GRP00002.XXX", std::string("\x23\0\0\0", 4));
    EXPECT_EQ(Saved(), Lines({R"(2,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writer, EveryValueOnTheScreenIsAsTheReportHoldsItAlsoWhereTheWriteFails) {
    Start({R"(1,30,"TEXT","A","","")", R"(1,30,"TEXT","B","","")", R"(1,999,"MEMO","C","","")",
           R"(1,30,"TEXT","D","","")"});
    for (std::string &value : RowValue) value = " x  ";
    ReportFileDir = folder.Path() + "none/";
    ReportFileName = "a.rpx";
    EXPECT_FALSE(WriteReportFile());
    for (Integer row = 0; row < NumRows; ++row) EXPECT_EQ(RowValue[row], " x");
}

TEST_F(Writer, AGroupWithoutMembersIsOneMarkerAndTheEnd) {
    Start({R"(1,2,"GROUP START","Samples","","")", R"(1,1,"GROUP END","","","")"});
    EXPECT_EQ(Saved(),
              Lines({R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")", R"(1,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writer, TheStoreReadIsTheOneNumberedAsTheGroupStart) {
    std::vector<std::string> lines(11, R"(1,0,"","Note","","")");
    lines.insert(lines.end(),
                 {R"(1,2,"GROUP START","Samples","","")", R"(2,3,"TEXT","A","","")", R"(1,1,"GROUP END","","","")"});
    Start(lines);
    folder.Write("GRP00012.XXX", std::string("\3\0\2\0", 4) + "abcdef");
    EXPECT_EQ(Saved(), Lines({R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")", R"(2,1,"A","abc")",
                              R"(1,-9,"Samples","REPEATING GROUP, Occurrence #2")", R"(2,1,"A","def")",
                              R"(1,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writer, CellsMissingAtTheEndOfAStoreAreBlanks) {
    Start(GroupTemplate);
    folder.Write("GRP00002.XXX", std::string("\x23\0\2\0", 4) + "12 ft");
    EXPECT_EQ(Saved(),
              Lines({R"(2,-9,"Samples","REPEATING GROUP, Occurrence #1")", R"(3,1,"Depth","12 ft")",
                     R"(2,-9,"Samples","REPEATING GROUP, Occurrence #2")", R"(2,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writer, AVanishedStoreEndsTheWriteWithItsMessage) {
    Start(GroupTemplate);
    RowValue[0] = "Wells";
    DataChanged = True;
    ReportFileDir = folder.Path();
    ReportFileName = "a.rpx";
    std::filesystem::remove(folder.Path() + "GRP00002.XXX");
    EXPECT_FALSE(WriteReportFile());
    EXPECT_EQ(Dialogs.Messages, std::vector{WriteMessage("53 - File not found")});
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(folder.Read("a.rpx"), ReportText({R"(1,1,"Title","Wells")"})); // the part before it stays
}

TEST_F(Writer, TheOpenOccurrenceIsStoredBeforeTheFileIsWritten) {
    Start(GroupTemplate);
    Open(1);
    Enter(0, "12 ft");
    ASSERT_EQ(ActiveList, GroupList);
    ReportFileDir = folder.Path();
    ReportFileName = "a.rpx";
    EXPECT_TRUE(WriteReportFile());
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(folder.Read("a.rpx"), ReportText({R"(2,-9,"Samples","REPEATING GROUP, Occurrence #1")",
                                                R"(3,1,"Depth","12 ft")", R"(2,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writer, APendingEditIsCommittedBeforeTheFileIsWritten) {
    Start({R"(1,30,"TEXT","Title","","")", R"(1,30,"TEXT","Place","","")"});
    Open(0);
    Type("Wells");
    ASSERT_EQ(RowValue[0], "");
    EXPECT_EQ(Saved(), "1,1,\"Title\",\"Wells\"\r\n");
}
