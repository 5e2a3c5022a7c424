// Reports read into the entries: values, notices with their lines, occurrences.
#include "values/values_test.h"

#include "model/field_tables.h"
#include "model/store.h"
#include "model/work_files.h"
#include "support/stores.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::vector<std::string> Site{R"(1,-1,"","Citation","","")",
                                    R"(2,30,"TEXT","Title","","")",
                                    R"(2,9,"LIST","Kind","","")",
                                    "\"Maps\"",
                                    "\"Numbers\"",
                                    "\"XXX-1XXX\"",
                                    R"(2,20,"MEMO","Notes","","")",
                                    R"(-2,30,"TEXT","Once","","")",
                                    R"(1,2,"GROUP START","Wells","","")",
                                    R"(2,5,"TEXT","Name","","")",
                                    R"(2,4,"LIST","State","","")",
                                    "\"Dry\"",
                                    "\"Wet\"",
                                    "\"XXX-1XXX\"",
                                    R"(1,0,"GROUP END","","","")"};
constexpr Integer TitleRow = 0;
constexpr Integer KindRow = 1;
constexpr Integer NotesRow = 2;
constexpr Integer OnceRow = 3;
constexpr Integer TitleElement = 2;
constexpr Integer KindElement = 3;
constexpr Integer Wells = 6;
constexpr Integer NameElement = 7;
constexpr Integer StateElement = 8;

class Reading : public Values {
protected:
    Reading() { Load(Site); }

    // Reads records below the section that the fields stand in.
    static LoadResult ReadCitation(std::vector<std::string> records) {
        records.insert(records.begin(), R"(1,-1,"Citation","")");
        return Read(records);
    }

    static std::string StoredWells() { return StoredCells(Wells); }
};

} // namespace

TEST_F(Reading, PlacesValuesAndTellsTheirRows) {
    EXPECT_EQ(Read({R"(1,-1,"Citation","")", R"(2,1,"Title","Wells")", R"(2,2,"Notes","one")", "\"two\""}),
              LoadResult::Whole);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(RowValue[NotesRow], "one\r\ntwo");
    EXPECT_THAT(Heard.Rows, ElementsAre(TitleRow, NotesRow));
    EXPECT_THAT(Heard.Notices, IsEmpty());
}

TEST_F(Reading, ANoticeSaysWhatWhereAndOnWhichLine) {
    EXPECT_EQ(Read({R"(1,-1,"Citation","")", R"(2,1,"Kind","Songs")", R"(2,1,"Nowhere","x")"}), LoadResult::Partial);
    ASSERT_THAT(Kinds(), ElementsAre(Notice::NotInList, Notice::NotInTemplate));
    EXPECT_EQ(Heard.Notices[0].Element, KindElement);
    EXPECT_EQ(Heard.Notices[0].Line, 3);
    EXPECT_EQ(Heard.Notices[0].Title, "WARNING - Field Data Not Found in List!");
    EXPECT_EQ(Heard.Notices[0].Style, ExclamationIcon);
    EXPECT_EQ(Heard.Notices[1].Line, 4);
    EXPECT_EQ(Heard.Notices[1].Style, YesNo);
    EXPECT_EQ(RowValue[KindRow], "");
}

TEST_F(Reading, NoAtAnUnknownTitleStopsThereAndKeepsWhatStoodBefore) {
    Heard.Reply = [](const LoadNotice &) { return NoAnswer; };
    EXPECT_EQ(ReadCitation({R"(2,1,"Title","Wells")", R"(2,1,"Nowhere","x")", R"(2,1,"Notes","n")"}),
              LoadResult::Stopped);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(RowValue[NotesRow], "");
}

TEST_F(Reading, TheQuestionAboutValuesIsAskedOnceALoad) {
    RowValue[TitleRow] = "a";
    RowValue[NotesRow] = "b";
    Heard.Reply = [](const LoadNotice &notice) {
        EXPECT_EQ(notice.What, Notice::OverwriteFields);
        return NoAnswer;
    };
    EXPECT_EQ(ReadCitation({R"(2,1,"Title","c")", R"(2,1,"Notes","d")"}), LoadResult::Whole);
    EXPECT_EQ(Heard.Notices.size(), 1U);
    EXPECT_EQ(RowValue[TitleRow], "a|c");
    EXPECT_EQ(RowValue[NotesRow], "b|d");
    EXPECT_EQ(ReadCitation({R"(2,1,"Title","e")"}), LoadResult::Whole);
    EXPECT_EQ(Heard.Notices.size(), 2U);
}

TEST_F(Reading, AFieldOfOneValueTellsThatItIsReplaced) {
    EXPECT_EQ(ReadCitation({R"(2,1,"Once","first")", R"(2,1,"Once","second")"}), LoadResult::Partial);
    ASSERT_THAT(Kinds(), ElementsAre(Notice::ValueReplaced));
    EXPECT_EQ(Heard.Notices[0].Line, 4);
    EXPECT_EQ(RowValue[OnceRow], "second");
}

TEST_F(Reading, OccurrencesGoIntoTheStoreWithTheirCuts) {
    EXPECT_EQ(Read({R"(1,-9,"Wells","REPEATING GROUP, Occurrence #1")", R"(2,1,"Name","Old well")",
                    R"(2,1,"State","Wet")", R"(1,-9,"Wells","REPEATING GROUP, Occurrence #2")", R"(2,1,"Name","New")",
                    R"(1,-99,"END REPEATING GROUP","")"}),
              LoadResult::Partial);
    EXPECT_EQ(StoredWells(), "Old wWet New      ");
    ASSERT_THAT(Kinds(), ElementsAre(Notice::ValueCut, Notice::ValuesCut));
    EXPECT_EQ(Heard.Notices[0].Element, NameElement);
    EXPECT_EQ(Heard.Notices[0].Line, 3);
}

TEST_F(Reading, ADamagedRecordKeepsWhatStoodBeforeAndTellsTheErrorAndLine) {
    EXPECT_EQ(ReadCitation({R"(2,1,"Title","Wells")", R"(1,-9,"Wells","")", R"(2,1,"Name","A")", R"(2,x,"Name","B")"}),
              LoadResult::Stopped);
    ASSERT_THAT(Kinds(), ElementsAre(Notice::Damaged));
    EXPECT_EQ(Heard.Notices[0].Error, TypeMismatch);
    EXPECT_EQ(Heard.Notices[0].Line, 6);
    EXPECT_EQ(Heard.Notices[0].Title, "ERROR LOADING a.rpx");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(StoredWells(), "A        ");
}

TEST_F(Reading, WhatIsNoReportChangesNothing) {
    RowValue[TitleRow] = "a";
    const EntriesState before = TheEntries;
    for (const char *bytes : {"", "1,\"QuintaveV2\",\"\"\r\n", "0,\"Something\",\"\"\r\n2,1,\"Title\",\"b\"\r\n"}) {
        Heard = {};
        EXPECT_EQ(ReadBytes(bytes), LoadResult::Refused) << bytes;
        EXPECT_THAT(Kinds(), ElementsAre(Notice::NotAReport));
        EXPECT_EQ(TheEntries, before);
    }
}

TEST_F(Reading, ARecordThatIsTooDeepIsSkippedOrEndsTheLoad) {
    EXPECT_EQ(ReadCitation({R"(7,1,"Deep","x")", R"(2,1,"Title","Wells")"}), LoadResult::Partial);
    ASSERT_THAT(Kinds(), ElementsAre(Notice::TooDeep));
    EXPECT_EQ(Heard.Notices[0].Style, OkCancel + InformationIcon);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    ClearEntries();
    Heard.Reply = [](const LoadNotice &) { return CancelAnswer; };
    EXPECT_EQ(ReadCitation({R"(7,1,"Deep","x")", R"(2,1,"Title","Wells")"}), LoadResult::Stopped);
    EXPECT_EQ(RowValue[TitleRow], "");
}

TEST_F(Reading, AnsweringGroupsReplacesOrAdds) {
    PutStore(Wells, "Old  Dry ");
    Heard.Reply = [](const LoadNotice &notice) {
        EXPECT_EQ(notice.What, Notice::OverwriteGroups);
        return NoAnswer;
    };
    const std::vector<std::string> report{R"(1,-9,"Wells","")", R"(2,1,"Name","New")"};
    EXPECT_EQ(Read(report), LoadResult::Whole);
    EXPECT_EQ(StoredWells(), "Old  Dry New      ");
    Heard.Reply = nullptr;
    EXPECT_EQ(Read(report), LoadResult::Whole);
    EXPECT_EQ(StoredWells(), "New      ");
}

TEST_F(Reading, EntriesAreEmptyAgainAtOnce) {
    EXPECT_EQ(
        ReadCitation({R"(2,1,"Title","Wells")", R"(2,1,"Kind","Maps")", R"(1,-9,"Wells","")", R"(2,1,"State","Dry")"}),
        LoadResult::Whole);
    EXPECT_EQ(FieldInfo[KindElement][Choice], 0);
    EXPECT_EQ(ClearEntries(), 0);
    EXPECT_EQ(RowValue[TitleRow] + RowValue[KindRow], "");
    EXPECT_EQ(FieldInfo[KindElement][Choice], -1);
    EXPECT_EQ(FieldInfo[StateElement][Choice], -1);
    EXPECT_EQ(StoredWells(), std::string(9, ' '));
    EXPECT_THAT(WrittenStores(), IsEmpty());
}

TEST_F(Reading, TheModelKnowsWhatStandsWhere) {
    EXPECT_EQ(NumFields, 9);
    EXPECT_EQ(NumRows, 5);
    std::vector<Integer> elements;
    for (const Integer e : Elements()) elements.push_back(e);
    EXPECT_THAT(elements, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
    ASSERT_EQ(Members(Wells).size(), 2U);
    EXPECT_EQ(Members(Wells)[1].Element, StateElement);
    EXPECT_EQ(Members(Wells)[1].First, 5U);
    EXPECT_EQ(Members(Wells)[1].Cells, 4U);
    EXPECT_EQ(LengthOf(Wells), 9);
    EXPECT_EQ(LengthOf(TitleElement), 30);
    EXPECT_TRUE(Members(TitleElement).empty());
    EXPECT_TRUE(HasRow(TitleElement));
    EXPECT_FALSE(HasRow(NameElement));
    EXPECT_FALSE(HasRow(Wells));
}

TEST_F(Values, ATemplateLeavesNoWorkFileOfTheOneBefore) {
    Load({R"(1,30,"LIST","Colour","","")", "Red", "XXX-1XXX"});
    EXPECT_EQ(ReadWorkFile(ChoiceFileName(1)), "\"Red\"\r\n");
    Load({R"(1,30,"TEXT","Title","","")"});
    EXPECT_THROW(ReadWorkFile(ChoiceFileName(1)), RuntimeError);
}
