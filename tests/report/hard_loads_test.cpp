// Loads that lost data or went on with the wrong group once.
#include "support/report_test.h"
#include "support/template_lines.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class HardLoad : public ScreenTest {
protected:
    void SetUp() override {
        Start({Element(1, 30, "TEXT", "Title"), Element(1, 30, "TEXT", "Place"),
               Element(1, 2, "GROUP START", "Samples"), Element(2, 10, "TEXT", "Depth"), Element(1, 0, "GROUP END", ""),
               Element(1, 30, "TEXT", "Last")});
    }

    void Add(const std::vector<std::string> &lines) {
        folder.Write("a.rpx", ReportText(lines));
        Dialogs.Texts.push_back(folder.Path() + "a.rpx");
        CommandAdd_Click();
    }
};

} // namespace

TEST_F(HardLoad, AValueThatReadsLikeAnAnswerStopsNothing) {
    Add({R"(1,1,"Title","CANCELLED!")", R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")",
         R"(2,1,"Depth","CANCELLED!")", R"(1,-99,"END REPEATING GROUP","")", R"(1,1,"Last","end")"});
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(RowValue[0], "CANCELLED!");
    EXPECT_EQ(RowValue[3], "end");
    EXPECT_EQ(FileMark, "a.rpx");
}

TEST_F(HardLoad, AHeaderWithoutQuotesIsWrittenForATemplateThatHasThemInItsName) {
    TemplateName = "my\"site.ftf";
    EXPECT_EQ(SaveAs("b.rpx").substr(0, 31), "0,\"QuintaveV2\",\"my'site.ftf\"\r\n1");
}

TEST_F(HardLoad, AHundredMegabytesOfNoReportAreRefusedAndChangeNothing) {
    constexpr std::size_t Bytes = 100'000'000;
    std::string noise(Bytes, '\0');
    std::uint32_t state = 1; // a fixed sequence of all bytes but the one that ends a file
    for (char &byte : noise) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(static_cast<unsigned char>(state >> 24) | 0x20U);
    }
    Enter(0, "kept");
    folder.Write("a.rpx", noise);
    Dialogs.Texts.push_back(folder.Path() + "a.rpx");
    CommandAdd_Click();
    EXPECT_THAT(Dialogs.Messages, ElementsAre(InvalidFormatMessage()));
    EXPECT_EQ(RowValue[0], "kept");
    EXPECT_EQ(FileMark, "FirstLoad");
}
