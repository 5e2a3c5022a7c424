// Reading reports: header, records, titles, errors. Merging into entries: merge_test.cpp; occurrences of groups:
// group_reader_test.cpp; the command: load_command_test.cpp.
#include "support/open_files.h"
#include "support/report_test.h"

#include "platform/files.h"

namespace {

class Reader : public ReportTest {};

const std::vector<std::string> ThreeFields{
    R"(1,60,"TEXT","Title","","")",
    R"(1,999,"MEMO","Notes","","")",
    R"(1,60,"TEXT","Place","","")",
};

} // namespace

// --- Header

TEST_F(Reader, AFileThatIsNoReportIsRefused) {
    Start(ThreeFields);
    const std::string title = "\r\n1,1,\"Title\",\"x\"\r\n";
    for (const std::string &bytes :
         {std::string(), std::string("\r\n  \r\n"), "1,\"QuintaveV2\",\"SITE.FTF\"" + title,
          "0,\"QuintaveV1\",\"X\"" + title, "0,\"quintavev2\",\"X\"" + title, "0,\" QuintaveV2\",\"X\"" + title,
          std::string("0"), std::string("0,"), std::string("0,\"QuintaveV2\""), std::string("0,\"QuintaveV2\","),
          std::string("0,\"QuintaveV2\",\"SITE"), std::string("0,\"QuintaveV2"), "99999,\"QuintaveV2\",\"X\"" + title,
          std::string("\x1A") + ReportHeader, std::string("PK\3\4 foreign \0 bytes", 20)}) {
        SCOPED_TRACE(bytes);
        folder.Write("A.rpx", bytes);
        Forget();
        Add("A.rpx");
        EXPECT_EQ(Dialogs.Messages, std::vector{InvalidFormatMessage()});
        EXPECT_EQ(RowValue[0], "");
    }
}

TEST_F(Reader, ARefusedFileChangesNothing) {
    Start(ThreeFields);
    Enter(0, "Wells");
    SaveAs("mine.rpx");
    Enter(2, "Bern");
    const std::string caption = Quintave.editframe.Caption;
    folder.Write("A.rpx", "1,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"Title\",\"x\"\r\n");
    Add("A.rpx");
    EXPECT_EQ(LastMessage(), InvalidFormatMessage());
    EXPECT_EQ(Quintave.editframe.Caption, caption);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_EQ(FileMark, "mine.rpx");
    EXPECT_EQ(ReportFileName, "mine.rpx");
    EXPECT_EQ(RowValue[0], "Wells");
    EXPECT_EQ(DataChanged, True);
}

TEST_F(Reader, ARefusedFirstFileLeavesTheFirstLoadToTheNext) {
    Start(ThreeFields);
    folder.Write("A.rpx", "");
    Add("A.rpx");
    EXPECT_EQ(FileMark, FirstLoad);
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Open File");
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
}

TEST_F(Reader, OnlyTheFirstTenCharactersOfTheIdentifierCountAndNotTheTemplate) {
    Start(ThreeFields);
    folder.Write("A.rpx", "0,\"QuintaveV2 and more\",\"ELSEWHERE.FTF\"\r\n1,1,\"Title\",\"x\"\r\n");
    Add("A.rpx");
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_EQ(RowValue[0], "x");
}

// --- Records

TEST_F(Reader, ContinuationLinesAreJoinedByLineBreaks) {
    Start(ThreeFields);
    Load({R"(1,4,"Notes","first")", R"("")", R"("third")", R"("")", R"(1,1,"Place","Bern")"});
    EXPECT_EQ(RowValue[1], "first\r\n\r\nthird\r\n");
    EXPECT_EQ(RowValue[2], "Bern");
}

TEST_F(Reader, ALoneCarriageReturnOrLineFeedInAValueBecomesALineBreak) {
    Start(ThreeFields);
    Load({"1,1,\"Notes\",\"a\nb\rc\r\nd\""});
    EXPECT_EQ(RowValue[1], "a\r\nb\r\nc\r\nd");
}

TEST_F(Reader, ACountOf0IsOneLine) {
    Start(ThreeFields);
    Load({R"(1,0,"Title","x")", R"(1,1,"Place","Bern")"});
    EXPECT_EQ(RowValue[0], "x");
    EXPECT_EQ(RowValue[2], "Bern");
}

TEST_F(Reader, ANegativeMarkerThatMeansNothingElseIsATitleOnly) {
    Start({R"(1,-1,"","One","","")", R"(2,60,"TEXT","Title","","")", R"(1,-1,"","Two","","")",
           R"(2,60,"TEXT","Title","","")"});
    for (const char *marker : {"-1", "-2", "-3", "-98", "-100"}) {
        SCOPED_TRACE(marker);
        RowValue[1].clear();
        Load({std::string("1,") + marker + ",\"Two\",\"\"", R"(2,1,"Title","x")"});
        EXPECT_EQ(RowValue[0], "");
        EXPECT_EQ(RowValue[1], "x");
    }
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Reader, ATitleOnlyRecordOfAFieldStoresNothing) {
    Start(ThreeFields);
    Load({R"(1,-1,"Title","x")"});
    EXPECT_EQ(RowValue[0], "");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Reader, ANegativeLevelInTheFileCountsWithoutItsSign) {
    Start(ThreeFields);
    Load({R"(-1,1,"Title","x")"});
    EXPECT_EQ(RowValue[0], "x");
}

TEST_F(Reader, RecordsMayStandOnSeveralLinesShareOneAndEndInAnyLineEnd) {
    Start(ThreeFields);
    folder.Write("A.rpx",
                 "0,QuintaveV2,X\n\n \t\n1,1,Title\nx\r1 , \"1\" ,  Place , Bern , 1,2,\"Notes\",a\n\r\n  \"b\"\n\n");
    Add("A.rpx");
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_EQ(RowValue[0], "x");
    EXPECT_EQ(RowValue[1], "a\r\nb");
    EXPECT_EQ(RowValue[2], "Bern");
}

TEST_F(Reader, ByteOneAEndsTheFile) {
    Start(ThreeFields);
    folder.Write("A.rpx", ReportText({R"(1,1,"Title","x")"}) + "\x1A" + Lines({R"(1,1,"Place","Bern")"}));
    Add("A.rpx");
    EXPECT_EQ(RowValue[0], "x");
    EXPECT_EQ(RowValue[2], "");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Reader, AStrayEndOfGroupIsIgnored) {
    Start(ThreeFields);
    Load({R"(1,-99,"END REPEATING GROUP","")", R"(1,1,"Title","x")", R"(1,-99,"END REPEATING GROUP","")"});
    EXPECT_EQ(RowValue[0], "x");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Reader, ABarInAValueMakesTwoInstances) {
    Start(ThreeFields);
    Load({R"(1,1,"Title","x|y")"});
    EXPECT_EQ(RowValue[0], "x|y");
}

TEST_F(Reader, AValueLongerThanItsFieldIsKeptWhole) {
    Start({R"(1,5,"TEXT","Title","","")"});
    Load({R"(1,1,"Title","longer than five")"});
    EXPECT_EQ(RowValue[0], "longer than five");
}

TEST_F(Reader, EachRowIsItsFirst29CharactersAndTheWholeSlotCutAt58) {
    Start(ThreeFields);
    Dialogs.Answers = {NoAnswer};
    Load({"1,1,\"Title\",\"" + std::string(29, 'a') + "\"", "1,1,\"Place\",\"" + std::string(28, 'a') + "\"",
          R"(1,1,"Place","b")"});
    EXPECT_EQ(Row(0), " Title                     | " + std::string(29, 'a'));
    EXPECT_EQ(Row(2), " Place                     | " + std::string(26, 'a') + "...");
    EXPECT_EQ(RowValue[2], std::string(28, 'a') + "|b");
}

// --- Where records belong

TEST_F(Reader, ARecordBelongsToTheFieldWhoseEnclosingTitlesWereRead) {
    Start({R"(1,-1,"","One","","")", R"(2,60,"TEXT","Title","","")", R"(1,-1,"","Two","","")",
           R"(2,60,"TEXT","Title","","")"});
    Load({R"(1,-1,"Two","")", R"(2,1,"Title","second")", R"(1,-1,"One","")", R"(2,1,"Title","first")"});
    EXPECT_EQ(RowValue[0], "first");
    EXPECT_EQ(RowValue[1], "second");
}

TEST_F(Reader, TheFirstOfTwoFieldsWithOnePathGetsBothRecords) {
    Start({R"(1,60,"TEXT","Title","","")", R"(1,60,"TEXT","Title","","")"});
    Dialogs.Answers = {NoAnswer};
    Load({R"(1,1,"Title","x")", R"(1,1,"Title","y")"});
    EXPECT_EQ(RowValue[0], "x|y");
    EXPECT_EQ(RowValue[1], "");
}

TEST_F(Reader, AFieldBelowAnEmptyFieldIsFound) {
    Start({R"(1,-1,"","Citation","","")", R"(2,60,"TEXT","Title","","")", R"(3,60,"TEXT","Subtitle","","")"});
    Load({R"(1,-1,"Citation","")", R"(3,1,"Subtitle","x")"});
    EXPECT_EQ(RowValue[1], "x");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Reader, AFieldBelowATitleThatIsNeverWrittenIsFound) {
    Start({R"(1,0,"","Citation","","")", R"(2,60,"TEXT","Title","","")"});
    Load({R"(2,1,"Title","x")"});
    EXPECT_EQ(RowValue[0], "x");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Reader, AFieldBelowAHeadingThatWasNotReadIsNotFound) {
    Start({R"(1,-1,"","Citation","","")", R"(2,60,"TEXT","Title","","")"});
    Load({R"(2,1,"Title","x")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{NotFoundMessage("Title")});
    EXPECT_EQ(RowValue[0], "");
}

TEST_F(Reader, ATitleMustStandAtItsLevel) {
    Start({R"(1,60,"TEXT","Title","","")", R"(2,60,"TEXT","Place","","")"});
    Load({R"(2,1,"Title","x")", R"(0,1,"Title","x")", R"(1,1,"title","x")"});
    EXPECT_EQ(Dialogs.Messages,
              (std::vector{NotFoundMessage("Title"), NotFoundMessage("Title"), NotFoundMessage("title")}));
    EXPECT_EQ(RowValue[0], "");
}

TEST_F(Reader, AnElementWithoutAValueTakesNone) {
    Start({R"(1,-1,"","Heading","","")", R"(1,0,"","Zero","","")", R"(1,1,"TEXT","One","","")",
           R"(1,30,"PICTURE","Unknown","","")", R"(1,2,"GROUP START","Group","","")", R"(2,5,"TEXT","A","","")",
           R"(1,1,"GROUP END","End","","")"});
    std::vector<ShownMessage> expected;
    for (const char *title : {"Heading", "Zero", "One", "Unknown", "Group", "End", "END REPEATING GROUP"}) {
        Load({std::string("1,1,\"") + title + "\",\"x\""});
        expected.push_back(NotFoundMessage(title));
    }
    EXPECT_EQ(Dialogs.Messages, expected);
    for (const std::string &value : RowValue) EXPECT_EQ(value, "");
}

TEST_F(Reader, ALevel0RecordBelongsToTheLevel0FieldOfItsTitle) {
    Start({R"(0,60,"TEXT","Title","","")", R"(0,60,"TEXT","Place","","")"});
    Load({R"(0,1,"Place","Bern")"});
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(RowValue[1], "Bern");
}

// --- Unknown titles

TEST_F(Reader, YesDropsTheUnknownRecordWithItsLinesAndAsksAgainForTheNext) {
    Start(ThreeFields);
    Dialogs.Answers = {YesAnswer, YesAnswer};
    Load({R"(1,3,"Colour","red")", R"("1,1,x")", R"("blue")", R"(1,1,"Title","x")", R"(1,1,"Colour","red")",
          R"(1,1,"Place","Bern")"});
    EXPECT_EQ(Dialogs.Messages, (std::vector{NotFoundMessage("Colour"), NotFoundMessage("Colour")}));
    EXPECT_EQ(RowValue[0], "x");
    EXPECT_EQ(RowValue[2], "Bern");
    EXPECT_EQ(FileMark, "A.rpx");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(Reader, NoStopsTheLoadAndSaveAsksForAName) {
    Start(ThreeFields);
    Dialogs.Answers = {NoAnswer};
    Load({R"(1,1,"Title","x")", R"(1,1,"Colour","red")", R"(1,1,"Place","Bern")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{NotFoundMessage("Colour")});
    EXPECT_EQ(RowValue[0], "x");
    EXPECT_EQ(RowValue[2], "");
    EXPECT_EQ(FileMark, "");
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): A; ");
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    Press(Quintave.CommandSave);
    EXPECT_EQ(Dialogs.Asked.back().Title, "Name a Quintave report (*.RPX) output file...");
}

// --- Too deep records

TEST_F(Reader, ARecordDeeperThanTheTemplateIsSkippedWithItsLinesOnOk) {
    Start({R"(1,60,"TEXT","Title","","")", R"(-3,60,"TEXT","Place","","")", R"(1,60,"TEXT","Last","","")"});
    Dialogs.Answers = {OkAnswer};
    Load({R"(1,1,"Title","x")", R"(4,3,"Deep","a")", R"("b")", R"("c")", R"(1,1,"Last","z")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{TooDeepMessage("4", "Deep", "3")});
    EXPECT_EQ(RowValue[0], "x");
    EXPECT_EQ(RowValue[2], "z");
    EXPECT_EQ(FileMark, "A.rpx");
}

TEST_F(Reader, CancelOnATooDeepRecordEndsTheLoad) {
    Start({R"(1,60,"TEXT","Title","","")", R"(1,60,"TEXT","Last","","")"});
    Dialogs.Answers = {CancelAnswer};
    Load({R"(1,1,"Title","x")", R"(2,1,"Deep","a")", R"(1,1,"Last","z")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{TooDeepMessage("2", "Deep", "1")});
    EXPECT_EQ(RowValue[0], "x");
    EXPECT_EQ(RowValue[1], "");
    EXPECT_EQ(FileMark, "");
    EXPECT_EQ(DataChanged, True);
}

// --- Errors

TEST_F(Reader, AFaultInTheFileIsToldAndWhatWasPlacedStays) {
    const struct {
        const char *Lines;
        const char *Error;
    } cases[] = {
        {"1,1,\"Place\",\"say \"hi\"\"\r\n", "13 - Type mismatch"},
        {"one,1,\"Place\",\"x\"\r\n", "13 - Type mismatch"},
        {",1,\"Place\",\"x\"\r\n", "13 - Type mismatch"},
        {"1,,\"Place\",\"x\"\r\n", "13 - Type mismatch"},
        {"1,1,\"Place\"", "62 - Input past end of file"},
        {"1,1,\"Place\",\"x", "62 - Input past end of file"},
        {"1,3,\"Place\",\"x\"\r\n\"y\"\r\n", "62 - Input past end of file"},
        {"1,2,\"Notes\",\"x\"\r\n1,1,\"Place\",\"Bern\"\r\n", "13 - Type mismatch"},
        {"40000,1,\"Place\",\"x\"\r\n", "6 - Overflow"},
        {"-32768,1,\"Place\",\"x\"\r\n", "6 - Overflow"},
        {"1,32768,\"Place\",\"x\"\r\n", "6 - Overflow"},
        {"1,32767,\"Place\",\"x\"\r\n", "62 - Input past end of file"},
    };
    Start(ThreeFields);
    for (const auto &damaged : cases) {
        SCOPED_TRACE(damaged.Lines);
        RowValue[0].clear();
        FileMark = FirstLoad;
        DataChanged = False;
        SetCaption(Quintave.CommandAdd, "^Add/Open File");
        Forget();
        folder.Write("A.rpx", ReportText({R"(1,1,"Title","x")"}) + damaged.Lines);
        Add("A.rpx");
        EXPECT_EQ(Dialogs.Messages, std::vector{LoadMessage("A.rpx", damaged.Error)});
        EXPECT_EQ(RowValue[0], "x");
        EXPECT_EQ(FileMark, "");
        EXPECT_EQ(DataChanged, True);
        EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    }
}

TEST_F(Reader, AfterAFaultTheFileIsClosedAndMayBeWritten) {
    Start(ThreeFields);
    Load({R"(1,1,"Title","x")", "broken"});
    Forget();
    EXPECT_EQ(SaveAs("A.rpx"), ReportText({R"(1,1,"Title","x")"}));
    ASSERT_EQ(Dialogs.Messages.size(), 1U);
    EXPECT_EQ(Dialogs.Messages[0].Style, InformationIcon); // the damaged one is kept
}

TEST_F(Reader, NoFileStaysOpenAfterALoadASaveOrAFailure) {
    Start({R"(1,60,"TEXT","Title","","")", R"(1,9,"LIST","Kind","","")", "\"Map\"", "XXX-1XXX",
           R"(1,2,"GROUP START","Samples","","")", R"(2,5,"TEXT","Depth","","")", R"(1,1,"GROUP END","","","")"});
    const std::string marker = R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")";
    const std::string depth = R"(2,1,"Depth","a")";
    std::filesystem::create_directory(folder.Path() + "dir.rpx");
    const auto open = OpenFileCount();
    for (const std::vector<std::string> &lines :
         std::vector<std::vector<std::string>>{{R"(1,1,"Title","x")", R"(1,1,"Kind","Map")", marker, depth},
                                               {marker, depth, "broken"},
                                               {R"(1,1,"Kind","Globe")", R"(1,1,"Unknown","x")"}}) {
        Load(lines);
        EXPECT_EQ(OpenFileCount(), open);
    }
    Add("none.rpx");
    SaveAs("saved.rpx");
    Dialogs.Texts = {folder.Path() + "dir.rpx"};
    Press(Quintave.CommandSaveAs);
    EXPECT_EQ(OpenFileCount(), open);
    for (const std::string name : {"LST00002.XXX", "GRP00003.XXX"}) {
        std::filesystem::remove(folder.Path() + name);
        Load({R"(1,1,"Kind","Map")", marker, depth});
        EXPECT_EQ(OpenFileCount(), open) << name;
    }
}

TEST_F(Reader, AFileThatIsGoneIsToldAndChangesNothing) {
    Start(ThreeFields);
    Add("none.rpx");
    EXPECT_EQ(Dialogs.Messages, std::vector{LoadMessage("none.rpx", "53 - File not found")});
    EXPECT_EQ(FileMark, FirstLoad);
    EXPECT_EQ(ReportFileName, "");
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
    std::filesystem::create_directory(folder.Path() + "dir.rpx");
    Add("dir.rpx");
    EXPECT_EQ(LastMessage(), LoadMessage("dir.rpx", "75 - Path/File access error"));
    Add("none/a.rpx");
    EXPECT_EQ(LastMessage(), LoadMessage("a.rpx", "76 - Path not found"));
}
