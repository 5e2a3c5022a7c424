// Entries written as reports, and back.
#include "values/values_test.h"

#include "model/field_tables.h"
#include "model/store.h"
#include "platform/files.h"
#include "report/title_index.h"
#include "report/writer.h"
#include "support/stores.h"

#include <ctime>
#include <random>

namespace {

const std::vector<std::string> Site{R"(1,-1,"","Citation","","")",  R"(2,30,"TEXT","Title","","")",
                                    R"(2,99,"MEMO","Notes","","")", R"(1,2,"GROUP START","Wells","","")",
                                    R"(2,-1,"","Place","","")",     R"(3,6,"TEXT","Name","","")",
                                    R"(1,0,"GROUP END","","","")",  R"(1,30,"TEXT","Last","","")"};
constexpr Integer TitleRow = 0;
constexpr Integer NotesRow = 1;
constexpr Integer LastRow = 3;
constexpr Integer TitleElement = 2;
constexpr Integer Wells = 4;
constexpr Integer NameElement = 6;

class Writing : public Values {
protected:
    Writing() { Load(Site); }
};

std::string RandomText(std::mt19937 &random, std::string_view letters, std::size_t most) {
    std::string text;
    const std::size_t length = random() % (most + 1);
    while (text.size() < length) text += letters[random() % letters.size()];
    return text;
}

} // namespace

TEST_F(Writing, WritesHeadingsBeforeWhatTheyEnclose) {
    RowValue[TitleRow] = "a|b";
    RowValue[NotesRow] = "one\r\n\"two\"";
    EXPECT_EQ(Records(),
              Lines({R"(1,-1,"Citation","")", R"(2,1,"Title","a")", R"(2,1,"Title","b")", R"(2,2,"Notes","one")",
                     R"("'two'")", R"(1,-9,"Wells","REPEATING GROUP, Occurrence #1")", R"(2,-1,"Place","")",
                     R"(1,-99,"END REPEATING GROUP","")"}));
}

TEST_F(Writing, ChangesNoEntry) {
    RowValue[TitleRow] = "blanks behind  ";
    RowValue[NotesRow] = "\"quoted\"";
    const EntriesState before = TheEntries;
    const long stores = StoreChanges();
    EXPECT_NE(Written(), "");
    EXPECT_EQ(TheEntries, before);
    EXPECT_EQ(StoreChanges(), stores);
}

TEST_F(Writing, LeavesOutBlanksAndWhatIsEmpty) {
    RowValue[TitleRow] = "   ";
    RowValue[LastRow] = "z  ";
    PutStore(Wells, "A     ");
    EXPECT_EQ(Records(), Lines({R"(1,-9,"Wells","REPEATING GROUP, Occurrence #1")", R"(2,-1,"Place","")",
                                R"(3,1,"Name","A")", R"(1,-99,"END REPEATING GROUP","")", R"(1,1,"Last","z")"}));
}

TEST_F(Writing, TheHeaderNamesTheTemplateItIsGiven) {
    const std::string bytes = BytesOf([](OutputFile &file) { WriteReport(file, "a\"b.ftf"); });
    EXPECT_EQ(bytes.substr(0, bytes.find('\n') + 1), "0,\"QuintaveV2\",\"a'b.ftf\"\r\n");
}

TEST_F(Writing, WhatIsWrittenIsReadBackAsItWas) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 300; ++round) {
        ClearEntries();
        RowValue[TitleRow] = "t" + RandomText(random, "ab ,'\\", 20) + "e";
        RowValue[NotesRow] = "n" + RandomText(random, "xy,'", 30) + "\r\n" + RandomText(random, "z ", 9) + "e";
        std::string cells;
        for (std::size_t k = 0; k <= random() % 4; ++k) {
            cells += "c" + RandomText(random, "pq,", 5);
            cells.resize((k + 1) * 6, ' ');
        }
        PutStore(Wells, cells);
        const EntriesState entries = TheEntries;
        const std::string bytes = Written();
        ClearEntries();
        ASSERT_EQ(ReadBytes(bytes), LoadResult::Whole);
        EXPECT_TRUE(Heard.Notices.empty()) << Heard.Notices[0].Text;
        EXPECT_EQ(TheEntries, entries) << bytes;
        EXPECT_EQ(StoredCells(Wells), cells);
        EXPECT_EQ(Written(), bytes);
    }
}

TEST_F(Writing, ASnapshotOfTheEntriesIsACopy) {
    RowValue[TitleRow] = "before";
    FileMark = "a.rpx";
    const EntriesState snapshot = TheEntries;
    RowValue[TitleRow] = "after";
    FileMark.clear();
    DataChanged = True;
    EXPECT_NE(TheEntries, snapshot);
    TheEntries = snapshot;
    EXPECT_EQ(RowValue[TitleRow], "before");
    EXPECT_EQ(FileMark, "a.rpx");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(Writing, TheIndexFindsElementsByTheTitlesReadAboveThem) {
    ForgetTitlesRead();
    NoteTitleRead(1, "Citation");
    NoteTitleRead(2, "Title");
    EXPECT_EQ(FindElement(2, "Title", Target::Field), TitleElement);
    EXPECT_EQ(FindElement(2, "Title", Target::Group), 0);
    EXPECT_EQ(FindElement(1, "Title", Target::Field), 0);
    NoteTitleRead(1, "Wells");
    EXPECT_EQ(FindElement(1, "Wells", Target::Group), Wells);
    NoteTitleRead(2, "Place");
    NoteTitleRead(3, "Name");
    EXPECT_EQ(FindElement(3, "Name", Target::Member, Wells), NameElement);
    EXPECT_EQ(FindElement(3, "Name", Target::Field), 0);
}

// The sum of titles that the index looks up can be forged; the title of the element cannot.
TEST_F(Writing, OnlyTheVeryTitleFindsAnElement) {
    ForgetTitlesRead();
    NoteTitleRead(1, "Citation");
    NoteTitleRead(2, "Title");
    EXPECT_EQ(FindElement(2, "Title", Target::Field), TitleElement);
    FieldTitle[TitleElement] = "Other"; // as if another title had its number
    EXPECT_EQ(FindElement(2, "Title", Target::Field), 0);
}

// What a record costs does not grow with the level it stands at.
TEST_F(Writing, ManyRecordsOfADeepTemplateAreReadInNoTime) {
    constexpr int Deep = 30000;
    std::vector<std::string> lines;
    std::vector<std::string> records;
    for (int i = 0; i < Deep; ++i) {
        lines.push_back(std::to_string(Deep) + R"(,9,"TEXT","F)" + std::to_string(i) + R"(","","")");
        records.push_back(std::to_string(Deep) + R"(,1,"F)" + std::to_string(i) + R"(","v")");
    }
    Load(lines);
    const auto begin = std::clock();
    EXPECT_EQ(Read(records), LoadResult::Whole);
    const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    EXPECT_LT(seconds, 2.0); // 30,000 sums of 30,000 numbers each would be 900 million steps
    EXPECT_EQ(RowValue[Deep - 1], "v");
}
