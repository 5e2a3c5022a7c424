// Occurrences of groups in a report being read.
#include "support/report_test.h"
#include "support/stores.h"

#include "model/store.h"
#include "report/records.h"

namespace {

// Two groups of the same shape with a field before, between and behind them.
const std::vector<std::string> TwoGroups{
    R"(1,60,"TEXT","Title","","")",       R"(1,2,"GROUP START","Samples","","")", R"(2,5,"TEXT","Depth","","")",
    R"(2,9,"MEMO","Notes","","")",        R"(1,1,"GROUP END","","","")",          R"(1,60,"TEXT","Between","","")",
    R"(1,2,"GROUP START","Wells","","")", R"(2,5,"TEXT","Depth","","")",          R"(1,1,"GROUP END","","","")",
    R"(1,60,"TEXT","Last","","")",
};
constexpr Integer Samples = 2;
constexpr Integer Wells = 7;

const char *const OneMarker = R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")";
const char *const TwoMarker = R"(1,-9,"Samples","REPEATING GROUP, Occurrence #2")";
const char *const WellMarker = R"(1,-9,"Wells","REPEATING GROUP, Occurrence #1")";
const char *const UnknownMarker = R"(1,-9,"Rocks","REPEATING GROUP, Occurrence #1")";
const char *const End = R"(1,-99,"END REPEATING GROUP","")";
const char *const A = R"(2,1,"Depth","a")";
const char *const B = R"(2,1,"Depth","b")";

class GroupReader : public ReportTest {
protected:
    void SetUp() override { Start(TwoGroups); }

    // What a group's store holds: the occurrences, each in its cells, divided by "/".
    static std::string Stored(Integer head) {
        Cells cells;
        const StoreLayout header = ReadStore(head, cells);
        std::string text;
        for (std::size_t k = 0; k < static_cast<std::size_t>(header.Occurrences); ++k)
            text += (k == 0 ? "" : "/") + cells.Bytes.substr(k * header.Record, header.Record);
        return text;
    }
};

// An occurrence of Samples whose Depth is this text.
std::string Depth(const std::string &text, const std::string &notes = "") {
    return text + std::string(5 - text.size(), ' ') + notes + std::string(9 - notes.size(), ' ');
}

} // namespace

TEST_F(GroupReader, AFileLoadedIntoABlankGroupBeginsAtOccurrence1WithoutAQuestion) {
    Load({OneMarker, A, TwoMarker, B, End});
    EXPECT_EQ(Stored(Samples), Depth("a") + "/" + Depth("b"));
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_EQ(folder.Read("GRP00002.XXX"), std::string("\x0E\0\2\0", 4) + Depth("a") + Depth("b"));
}

TEST_F(GroupReader, AGroupThatHoldsDataAsksOncePerLoad) {
    PutStore(Samples, Depth("old"));
    PutStore(Wells, "old  ");
    RowValue[0] = "old";
    Dialogs.Answers = {YesAnswer};
    Load({OneMarker, A, TwoMarker, B, End, WellMarker, A, End, R"(1,1,"Title","x")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{GroupMergeMessage()});
    EXPECT_EQ(RowValue[0], "x");
}

TEST_F(GroupReader, TheAnswerAboutAFieldCountsForGroupsToo) {
    PutStore(Samples, Depth("old"));
    RowValue[0] = "old";
    Dialogs.Answers = {NoAnswer};
    Load({R"(1,1,"Title","x")", OneMarker, A, End});
    EXPECT_EQ(Dialogs.Messages, std::vector{FieldMergeMessage()});
    EXPECT_EQ(Stored(Samples), Depth("old") + "/" + Depth("a"));
}

TEST_F(GroupReader, YesLeavesExactlyTheFilesOccurrences) {
    PutStore(Samples, Depth("x") + Depth("y") + Depth("z"));
    Dialogs.Answers = {YesAnswer};
    Load({OneMarker, A, End});
    EXPECT_EQ(Stored(Samples), Depth("a"));
}

TEST_F(GroupReader, NoPutsTheFilesOccurrencesBehindTheStoredOnes) {
    PutStore(Samples, Depth("x") + Depth("y"));
    Dialogs.Answers = {NoAnswer};
    Load({OneMarker, A, TwoMarker, B, End});
    EXPECT_EQ(Stored(Samples), Depth("x") + "/" + Depth("y") + "/" + Depth("a") + "/" + Depth("b"));
}

TEST_F(GroupReader, WithoutInstancesTheGroupIsReplacedWithoutAQuestion) {
    AllowInstances = False;
    PutStore(Samples, Depth("x") + Depth("y"));
    Load({OneMarker, A, End});
    EXPECT_EQ(Stored(Samples), Depth("a"));
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(GroupReader, TheSameFileTwiceWithYesIsAsOnce) {
    Load({OneMarker, A, TwoMarker, B, End});
    Dialogs.Answers = {YesAnswer};
    Load({OneMarker, A, TwoMarker, B, End});
    EXPECT_EQ(Stored(Samples), Depth("a") + "/" + Depth("b"));
}

TEST_F(GroupReader, ABlankOccurrenceBetweenOthersStays) {
    Load({OneMarker, A, TwoMarker, R"(1,-9,"Samples","")", B, End});
    EXPECT_EQ(Stored(Samples), Depth("a") + "/" + Depth("") + "/" + Depth("b"));
}

TEST_F(GroupReader, ABlockWithoutAnyValueChangesNothingWhateverIsAnswered) {
    for (const Answer answer : {YesAnswer, NoAnswer}) {
        PutStore(Samples, Depth("x") + Depth("y"));
        Forget();
        Dialogs.Answers = {answer};
        Load({OneMarker, TwoMarker, R"(2,1,"Depth","")", End});
        EXPECT_EQ(Dialogs.Messages, std::vector{GroupMergeMessage()});
        EXPECT_EQ(Stored(Samples), Depth("x") + "/" + Depth("y"));
    }
}

TEST_F(GroupReader, TheAnswerAboutAFieldOverwritesGroupsToo) {
    PutStore(Samples, Depth("old"));
    RowValue[0] = "old";
    Dialogs.Answers = {YesAnswer};
    Load({R"(1,1,"Title","x")", OneMarker, A, End});
    EXPECT_EQ(Dialogs.Messages, std::vector{FieldMergeMessage()});
    EXPECT_EQ(Stored(Samples), Depth("a"));
}

TEST_F(GroupReader, TheAnswerAboutAGroupAddsToFieldsToo) {
    PutStore(Samples, Depth("old"));
    RowValue[0] = "old";
    Dialogs.Answers = {NoAnswer};
    Load({OneMarker, A, End, R"(1,1,"Title","x")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{GroupMergeMessage()});
    EXPECT_EQ(RowValue[0], "old|x");
}

// A title above a group that the template lacks is read all the same: it is no other section's.
TEST_F(GroupReader, ADroppedValueRecordIsReadAsATitle) {
    Load({R"(1,1,"Elsewhere","x")", OneMarker, A, UnknownMarker, R"(1,1,"Nowhere","y")", End, R"(1,1,"Last","z")"});
    EXPECT_EQ(LevelTable[1][TitleRead], "Last");
    EXPECT_EQ(LevelTable[2][TitleRead], "Depth");
    Load({R"(1,1,"Elsewhere","x")"});
    EXPECT_EQ(LevelTable[1][TitleRead], "Elsewhere");
    Load({UnknownMarker, R"(1,1,"Nowhere","y")"});
    EXPECT_EQ(LevelTable[1][TitleRead], "Nowhere");
}

TEST_F(GroupReader, CutValuesAreToldAfterALoadThatWasStoppedOrDamaged) {
    const std::string cut = R"(2,1,"Depth","123456")";
    const auto told = [] { return LastMessage().Title == "WARNING - Field Data Cut!"; };
    Dialogs.Answers = {NoAnswer};
    Load({OneMarker, cut, UnknownMarker});
    ASSERT_EQ(MessageCount(), 2U);
    EXPECT_TRUE(told());
    Forget();
    Load({OneMarker, cut, "broken"});
    ASSERT_EQ(MessageCount(), 3U); // the question, the fault
    EXPECT_TRUE(told());
}

TEST_F(GroupReader, ABlockEndsWithTheFile) {
    Load({OneMarker, A});
    EXPECT_EQ(Stored(Samples), Depth("a"));
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(GroupReader, ABlockEndsWithAnotherGroupsMarker) {
    Load({OneMarker, A, WellMarker, B, End});
    EXPECT_EQ(Stored(Samples), Depth("a"));
    EXPECT_EQ(Stored(Wells), "b    ");
}

TEST_F(GroupReader, OfTwoRecordsForOneMemberTheLastStays) {
    Load({OneMarker, A, B, End});
    EXPECT_EQ(Stored(Samples), Depth("b"));
}

TEST_F(GroupReader, AMemberOutsideAnOccurrenceIsNotFound) {
    Load({R"(1,-1,"Samples","")", A});
    EXPECT_EQ(Dialogs.Messages, std::vector{NotFoundMessage("Depth")});
    Load({OneMarker, A, End, B});
    EXPECT_EQ(Stored(Samples), Depth("a"));
    EXPECT_EQ(LastMessage(), NotFoundMessage("Depth"));
}

TEST_F(GroupReader, AFieldOfTheListInsideABlockIsPlacedThere) {
    Load({OneMarker, A, R"(1,1,"Between","x")"});
    EXPECT_EQ(RowValue[2], "x");
    EXPECT_EQ(Stored(Samples), Depth("a"));
}

TEST_F(GroupReader, AnUnknownGroupAsksOncePerMarkerAndIsDropped) {
    Dialogs.Answers = {YesAnswer, YesAnswer};
    Load({UnknownMarker, A, R"(2,1,"Colour","red")", UnknownMarker, B, End, OneMarker, A, End, R"(1,1,"Last","x")"});
    EXPECT_EQ(Dialogs.Messages, (std::vector{NotFoundMessage("Rocks"), NotFoundMessage("Rocks")}));
    EXPECT_EQ(Stored(Samples), Depth("a"));
    EXPECT_EQ(RowValue[4], "x");
}

TEST_F(GroupReader, NothingIsAskedAboutTheRecordsOfADroppedOccurrence) {
    Dialogs.Answers = {YesAnswer};
    Load({UnknownMarker, R"(3,1,"Too deep","x")", R"(2,1,"Colour","red")", End, R"(1,1,"Last","x")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{NotFoundMessage("Rocks")});
    EXPECT_EQ(RowValue[4], "x");
}

TEST_F(GroupReader, AnUnknownGroupEndsTheBlockBeforeIt) {
    Dialogs.Answers = {YesAnswer};
    Load({OneMarker, A, UnknownMarker, B, End});
    EXPECT_EQ(Stored(Samples), Depth("a"));
}

TEST_F(GroupReader, NoOnAnUnknownGroupStopsTheLoadAndKeepsWhatWasRead) {
    Dialogs.Answers = {NoAnswer};
    Load({OneMarker, A, UnknownMarker, B, End, R"(1,1,"Last","x")"});
    EXPECT_EQ(Stored(Samples), Depth("a"));
    EXPECT_EQ(RowValue[4], "");
    EXPECT_EQ(FileMark, "");
}

TEST_F(GroupReader, AFieldIsNoGroup) {
    Load({R"(1,-9,"Title","REPEATING GROUP, Occurrence #1")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{NotFoundMessage("Title")});
}

TEST_F(GroupReader, TheRowOfAGroupHoldsNoValue) {
    const std::string row = Row(1);
    Load({OneMarker, A, End});
    EXPECT_EQ(RowValue[1], "");
    EXPECT_EQ(Row(1), row);
}

TEST_F(GroupReader, TheEndOfABlockLeavesTheTitlesReadAsTheyWere) {
    Load({R"(1,-1,"Elsewhere","")", R"(1,-99,"Samples","")", A});
    EXPECT_EQ(Dialogs.Messages, std::vector{NotFoundMessage("Depth")});
}

TEST_F(GroupReader, ABarInAMemberIsLeftOut) {
    Load({OneMarker, R"(2,1,"Depth","a|b")", End});
    EXPECT_EQ(Stored(Samples), Depth("ab"));
}

TEST_F(GroupReader, AMemberValueOfManyLinesKeepsItsBreaks) {
    Load({OneMarker, R"(2,3,"Notes","a")", R"("")", R"("b")", End});
    EXPECT_EQ(Stored(Samples), Depth("", "a\r\n\r\nb"));
}

TEST_F(GroupReader, AValueThatFillsItsCellsIsNotCut) {
    Load({OneMarker, R"(2,1,"Depth","12345")", End});
    EXPECT_EQ(Stored(Samples), Depth("12345"));
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(GroupReader, ALongerValueIsCutAndToldOnceAfterTheLoad) {
    const std::string before = ReportText({OneMarker, R"(2,1,"Notes","1234567890")", R"(2,1,"Depth","123456")",
                                           TwoMarker, R"(2,1,"Depth","1234567")", End, R"(1,1,"Last","x")"});
    folder.Write("A.rpx", before);
    Add("A.rpx");
    EXPECT_EQ(Stored(Samples), Depth("12345", "123456789") + "/" + Depth("12345"));
    EXPECT_EQ(
        Dialogs.Messages,
        std::vector{(ShownMessage{"WARNING - Field Data Cut!",
                                  "The data of 2 field(s) did not fit into their Repeating Group and were cut to the "
                                  "length that the Fields Template File allows!\r\n\r\nFirst field: Notes",
                                  ExclamationIcon})});
    EXPECT_EQ(folder.Read("A.rpx"), before);
    EXPECT_EQ(RowValue[4], "x");
}

TEST_F(GroupReader, ACutNeverLeavesHalfALineBreak) {
    Load({OneMarker, R"(2,2,"Notes","12345678")", R"("b")", End});
    EXPECT_EQ(Stored(Samples), Depth("", "12345678"));
}

TEST_F(GroupReader, OccurrencesReadBeforeAFaultStay) {
    Load({OneMarker, A, TwoMarker, B, "broken"});
    EXPECT_EQ(Dialogs.Messages, std::vector{LoadMessage("A.rpx", "13 - Type mismatch")});
    EXPECT_EQ(Stored(Samples), Depth("a") + "/" + Depth("b"));
}

TEST_F(GroupReader, AMissingStoreEndsTheLoadWithError53) {
    std::filesystem::remove(folder.Path() + "GRP00002.XXX");
    Load({R"(1,1,"Title","x")", OneMarker, A, End, R"(1,1,"Last","x")"});
    // The temporary report could not be written for the same reason.
    EXPECT_EQ(Dialogs.Messages,
              (std::vector{WriteMessage("53 - File not found"), LoadMessage("A.rpx", "53 - File not found")}));
    EXPECT_EQ(RowValue[0], "x");
    EXPECT_EQ(RowValue[4], "");
}

TEST_F(GroupReader, AStoreThatCannotBeReplacedIsToldOnceAndStaysAsItWas) {
    PutStore(Samples, Depth("old"));
    std::filesystem::create_directory(folder.Path() + "GRP00002.$$$");
    Dialogs.Answers = {YesAnswer};
    Load({OneMarker, A, End, R"(1,1,"Last","x")"});
    EXPECT_EQ(Dialogs.Messages,
              (std::vector{GroupMergeMessage(), LoadMessage("A.rpx", "75 - Path/File access error")}));
    EXPECT_EQ(Stored(Samples), Depth("old"));
    EXPECT_EQ(FileMark, "");
}

TEST_F(GroupReader, EachGroupOfAReportSavedComesBack) {
    PutStore(Samples, Depth("a", "n\r\nm") + Depth("") + Depth("b"));
    PutStore(Wells, "w    ");
    const std::string saved = SaveAs("a.rpx");
    Press(Quintave.CommandReset);
    EXPECT_EQ(Stored(Samples), Depth(""));
    Add("a.rpx");
    EXPECT_EQ(Stored(Samples), Depth("a", "n\r\nm") + "/" + Depth("") + "/" + Depth("b"));
    EXPECT_EQ(SaveAs("b.rpx"), saved);
}

// --- Markers that are deeper than the template

namespace {

const char *const DeepMarker = R"(9,-9,"Others","REPEATING GROUP, Occurrence #1")";
const char *const DeepEnd = R"(9,-99,"END REPEATING GROUP","")";

} // namespace

TEST_F(GroupReader, AMarkerThatIsTooDeepIsSkippedAlone) {
    Load({DeepMarker, A, R"(1,1,"Title","t")", R"(1,1,"Last","z")"});
    EXPECT_EQ(Dialogs.Messages, (std::vector{TooDeepMessage("9", "Others", "2"), NotFoundMessage("Depth")}));
    EXPECT_EQ(RowValue[0], "t");
    EXPECT_EQ(RowValue[4], "z");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(GroupReader, AMarkerThatIsTooDeepLeavesTheOpenBlockOpen) {
    Load({OneMarker, A, DeepMarker, R"(2,1,"Notes","n")", TwoMarker, B, End});
    EXPECT_EQ(Dialogs.Messages, std::vector{TooDeepMessage("9", "Others", "2")});
    EXPECT_EQ(Stored(Samples), Depth("a", "n") + "/" + Depth("b"));
}

TEST_F(GroupReader, CancelOnAMarkerThatIsTooDeepEndsTheLoad) {
    Dialogs.Answers = {CancelAnswer};
    Load({OneMarker, A, DeepMarker, R"(1,1,"Title","t")"});
    EXPECT_EQ(Stored(Samples), Depth("a"));
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(FileMark, "");
}

TEST_F(GroupReader, ARecordBehindADroppedMarkerStaysDroppedBehindOneThatIsTooDeep) {
    Load({UnknownMarker, A, DeepMarker, B, R"(2,1,"Colour","red")", End, R"(1,1,"Last","z")"});
    EXPECT_EQ(Dialogs.Messages, (std::vector{NotFoundMessage("Rocks"), TooDeepMessage("9", "Others", "2")}));
    EXPECT_EQ(RowValue[4], "z");
}

TEST_F(GroupReader, AnEndThatIsTooDeepIsPassedOver) {
    Load({OneMarker, A, DeepEnd, R"(2,1,"Notes","n")", End, DeepEnd, R"(1,1,"Last","z")"});
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_EQ(Stored(Samples), Depth("a", "n"));
    EXPECT_EQ(RowValue[4], "z");
}

// --- Groups that come back although titles repeat

namespace {

class GroupComesBack : public ReportTest {
protected:
    // Loads the report that a save of the present entries made, on an empty screen, and saves it again.
    void ExpectSameAgain() {
        const std::string saved = SaveAs("a.rpx");
        Forget();
        Press(Quintave.CommandReset);
        Add("a.rpx");
        EXPECT_TRUE(Dialogs.Messages.empty());
        EXPECT_EQ(SaveAs("b.rpx"), saved);
    }
};

} // namespace

TEST_F(GroupComesBack, WithMembersThatStandHigherThanTheirGroup) {
    Start({R"(1,-1,"","Field work","","")", R"(2,2,"GROUP START","Samples","","")", R"(1,5,"TEXT","Depth","","")",
           R"(2,1,"GROUP END","","","")"});
    PutStore(2, "a    b    c    ");
    ExpectSameAgain();
}

TEST_F(GroupComesBack, WithAMemberThatIsNamedAsAFieldBeforeIt) {
    Start({R"(1,0,"","Samples","","")", R"(2,60,"TEXT","Depth","","")", R"(1,2,"GROUP START","Samples","","")",
           R"(2,5,"TEXT","Depth","","")", R"(1,1,"GROUP END","","","")"});
    PutStore(3, "a    b    ");
    ExpectSameAgain();
    RowValue[0] = "field";
    ExpectSameAgain();
    EXPECT_EQ(RowValue[0], "field");
}
