// Text of all scripts on its way through files: what is written in which encoding, and what is told where one is not
// what it says.
#include "values/values_test.h"

#include "model/cells.h"
#include "model/field_tables.h"
#include "model/store.h"
#include "model/template_reader.h"
#include "model/text_files.h"
#include "platform/characters.h"
#include "platform/codepage.h"
#include "report/writer.h"

#include <random>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

const std::vector<std::string> Site{R"(1,60,"TEXT","Title","","")",       R"(1,99,"MEMO","Notes","","")",
                                    R"(1,2,"GROUP START","Wells","","")", R"(2,6,"TEXT","Name","","")",
                                    R"(2,9,"TEXT","Place","","")",        R"(1,0,"GROUP END","","","")"};
constexpr Integer TitleRow = 0;
constexpr Integer NotesRow = 1;
constexpr Integer Wells = 3;

class ScriptFiles : public Values {
protected:
    ScriptFiles() { Load(Site); }

    static void PutName(const std::string &name) {
        Cells cells;
        ReadStore(Wells, cells);
        PutMember(cells, Members(Wells), 0, 0, name);
        ReplaceStore(Wells, cells);
    }

    static std::string Header() {
        const std::string bytes = Written();
        return bytes.substr(0, bytes.find('\r'));
    }
};

// A text of any code points that a value can hold, or of those of the code page alone.
std::string RandomText(std::mt19937 &random, bool all, std::size_t most) {
    const std::size_t length = random() % (most + 1);
    std::string text;
    while (Length(text) < length) {
        const auto c = static_cast<char32_t>(random() % (all ? 0x110000 : 0x180));
        const bool taken = c < ' ' || c == '"' || c == '|' || (c >= 0xD800 && c <= 0xDFFF) || c == 0xFEFF;
        if (!taken && (all || ToCodePage(c))) AppendCodePoint(text, c);
    }
    return RTrim(FirstCharacters(text, length));
}

} // namespace

TEST_F(ScriptFiles, WhatWindows1252HoldsIsWrittenInIt) {
    RowValue[TitleRow] = "Köln € “Größe”";
    PutName("Žižka");
    EXPECT_THAT(Written(), testing::HasSubstr("1,1,\"Title\",\"K\xF6ln \x80 \x93Gr\xF6\xDF"
                                              "e\x94\"\r\n"));
    EXPECT_THAT(Written(), testing::HasSubstr("2,1,\"Name\",\"\x8Ei\x9Eka\"\r\n"));
    EXPECT_THAT(Header(), StartsWith("0,\"QuintaveV2\","));
}

TEST_F(ScriptFiles, OneOtherCharacterMakesTheReportUtf8) {
    RowValue[TitleRow] = "Köln";
    RowValue[NotesRow] = "Łódź\r\n−25 ‰";
    EXPECT_THAT(Header(), StartsWith("0,\"QuintaveV2 UTF-8\","));
    EXPECT_THAT(Written(), testing::HasSubstr("\r\n1,1,\"Title\",\"Köln\"\r\n1,2,\"Notes\",\"Łódź\"\r\n\"−25 ‰\"\r\n"));
    RowValue[NotesRow].clear();
    EXPECT_THAT(Header(), StartsWith("0,\"QuintaveV2\","));
    PutName("山田");
    EXPECT_THAT(Header(), StartsWith("0,\"QuintaveV2 UTF-8\","));
}

TEST_F(ScriptFiles, ATitleCountsOnlyWhereItIsWritten) {
    Load({R"(1,30,"TEXT","Title","","")", R"(1,30,"TEXT","Δ","","")", R"(1,-1,"","Ωμέγα","","")",
          R"(2,30,"TEXT","Last","","")"});
    RowValue[0] = "a";
    EXPECT_THAT(Header(), StartsWith("0,\"QuintaveV2\","));
    RowValue[1] = "b";
    EXPECT_THAT(Header(), StartsWith("0,\"QuintaveV2 UTF-8\","));
    RowValue[1].clear();
    RowValue[3] = "c"; // stands below the section
    EXPECT_THAT(Header(), StartsWith("0,\"QuintaveV2 UTF-8\","));
}

TEST_F(ScriptFiles, TextOfAllPlanesComesBackAsItWas) {
    std::mt19937 random(20261122);
    for (int round = 0; round < 600; ++round) {
        ClearEntries();
        const bool all = round % 2 == 0;
        RowValue[TitleRow] = "t" + RandomText(random, all, 30);
        RowValue[NotesRow] = "n" + RandomText(random, all, 20) + "\r\n" + RandomText(random, all, 9) + "e";
        Cells cells = BlankCells(15, 1 + random() % 4);
        for (std::size_t k = 0; k < CountIn(cells); ++k) {
            PutMember(cells, Members(Wells), k, 0, "w" + RandomText(random, all, 5));
            PutMember(cells, Members(Wells), k, 1, RandomText(random, all, 9));
        }
        Tighten(cells, Members(Wells));
        ReplaceStore(Wells, cells);
        const EntriesState entries = TheEntries;
        const std::string bytes = Written();
        ClearEntries();
        ASSERT_EQ(ReadBytes(bytes), LoadResult::Whole) << bytes;
        ASSERT_THAT(Heard.Notices, IsEmpty()) << Heard.Notices[0].Text;
        ASSERT_EQ(TheEntries, entries) << bytes;
        Cells back;
        ReadStore(Wells, back);
        Tighten(back, Members(Wells));
        ASSERT_EQ(back, cells) << bytes;
        ASSERT_EQ(Written(), bytes);
        ASSERT_EQ(bytes.starts_with("0,\"QuintaveV2 UTF-8\""), !FitsCodePage(ReportText(bytes).Bytes));
    }
}

TEST_F(ScriptFiles, WhatIsLoadedIsNotComposed) {
    ReadBytes("0,\"QuintaveV2 UTF-8\",\"\"\r\n1,1,\"Title\",\"Cafe\u0301\"\r\n");
    EXPECT_EQ(RowValue[TitleRow], "Cafe\u0301");
}

TEST_F(ScriptFiles, BytesThatAreNoUtf8AreToldWithTheirLineAndKept) {
    EXPECT_EQ(ReadBytes("0,\"QuintaveV2 UTF-8\",\"\"\r\n1,1,\"Title\",\"\xC5\x81\xC3\xB3\xE9\"\r\n"),
              LoadResult::Whole);
    ASSERT_THAT(Kinds(), ElementsAre(Notice::NotUtf8));
    EXPECT_EQ(Heard.Notices[0].Title, "WARNING - Not All of It Is UTF-8!");
    EXPECT_EQ(Heard.Notices[0].Text,
              "This file says that it is UTF-8, and in line 2 it is not. What is no UTF-8 was read as Windows-1252.");
    EXPECT_EQ(Heard.Notices[0].Style, ExclamationIcon);
    EXPECT_EQ(Heard.Notices[0].Line, 2);
    EXPECT_EQ(RowValue[TitleRow], "Łóé");
}

TEST_F(ScriptFiles, AReportThatLooksLikeUtf8IsReadAsItSaysAndTold) {
    ReadBytes("0,\"QuintaveV2\",\"\"\r\n1,1,\"Title\",\"Łódź\"\r\n");
    ASSERT_THAT(Kinds(), ElementsAre(Notice::LooksUtf8));
    EXPECT_EQ(Heard.Notices[0].Title, "WARNING - This File Looks Like UTF-8!");
    EXPECT_EQ(Heard.Notices[0].Style, InformationIcon);
    EXPECT_EQ(Heard.Notices[0].Line, 1);
    EXPECT_EQ(RowValue[TitleRow], ToUtf8("Łódź"));
    ClearEntries();
    Heard = {};
    ReadBytes("\xEF\xBB\xBF"
              "0,\"QuintaveV2\",\"\"\r\n1,1,\"Title\",\"Łódź\"\r\n"); // a mark of another kind
    EXPECT_THAT(Kinds(), IsEmpty());
    EXPECT_EQ(RowValue[TitleRow], "Łódź");
}

TEST_F(ScriptFiles, AMemberIsCutByItsCharacters) {
    ReadBytes("0,\"QuintaveV2 UTF-8\",\"\"\r\n1,-9,\"Wells\",\"\"\r\n2,1,\"Name\",\"山田太郎山田太\"\r\n"
              "2,1,\"Place\",\"x\u030Cx\u030Cx\u030Cx\u030Cx\u030Cx\u030Cx\u030Cx\u030Cx\u030C\"\r\n");
    EXPECT_THAT(Kinds(), ElementsAre(Notice::ValueCut, Notice::ValuesCut));
    Cells cells;
    ReadStore(Wells, cells);
    std::string room;
    EXPECT_EQ(MemberIn(cells, Members(Wells), 0, 0, room), "山田太郎山田");
    EXPECT_EQ(Length(MemberIn(cells, Members(Wells), 0, 1, room)), 9U);
}

TEST(ScriptTemplates, AreUtf8ByTheirMarkOrAsTheyStand) {
    const std::string header = "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2--";
    std::string suffix;
    ItemInput marked = TemplateText(header + " UTF-8\",\"\",\"\",\"\",\"\"\r\n1,30,\"TEXT\",\"Łó\xE9\",\"\",\"\"\r\n");
    EXPECT_TRUE(ReadTemplateHeader(marked, suffix));
    EXPECT_EQ(suffix, "--");
    EXPECT_EQ(LineNotUtf8(marked), 2);
    const std::string rest = "\",\"\",\"\",\"\",\"\"\r\n1,30,\"TEXT\",\"";
    EXPECT_THAT(TemplateText(header + rest + "Łódź").Bytes, testing::EndsWith("Łódź"));
    EXPECT_THAT(TemplateText(header + rest + "K\xF6ln").Bytes, testing::EndsWith("Köln"));
    EXPECT_EQ(PlainText("K\xF6ln"), "Köln");
    EXPECT_EQ(PlainText("\xEF\xBB\xBFŁódź"), "Łódź");
}

TEST(ScriptTemplates, OwnFilesKeepTheirTextWhateverItLooksLike) {
    for (const char *text : {"plain", "Köln", "Łódź", "\u00C5\u0081", ""}) EXPECT_EQ(FileText(FileBytes(text)), text);
    EXPECT_EQ(FileBytes("Köln"), "K\xF6ln");
    EXPECT_EQ(FileBytes("Ł"), "\xEF\xBB\xBFŁ");
}
