// Reports laid out as text, choices matched: on bytes alone.
#include "values/values_test.h"

#include "platform/files.h"
#include "platform/items.h"
#include "print/report_layout.h"
#include "print/text_lines.h"
#include "report/choice_matching.h"

#include <climits>

namespace {

int LastRecord = 0;

std::string Printed(const std::vector<std::string> &records, PrintOptions options) {
    options.Heading = "HEAD";
    options.Progress = [](int record) { LastRecord = record; };
    ItemInput input = ItemsOf("0,\"QuintaveV2\",\"SITE.FTF\"\r\n" + Lines(records));
    return BytesOf([&](OutputFile &file) { WriteTextPrint(input, file, options); });
}

} // namespace

TEST(LayingOut, TheOptionsSayAllThatALayoutNeeds) {
    const std::vector<std::string> report{R"(2,1,"Title","Wells of 1904")"};
    EXPECT_EQ(Printed(report, {.Separator = "| "}), "HEAD\r\n \r\nTitle| Wells of 1904\r\n");
    EXPECT_EQ(Printed(report, {.Indent = Indents::Titles, .Separator = ": "}),
              "HEAD\r\n \r\n    Title: Wells of 1904\r\n");
    EXPECT_EQ(Printed(report, {.DataIndent = 12, .Separator = "| ", .Below = true}),
              "HEAD\r\n \r\nTitle| \r\n            Wells of 1904\r\n");
    EXPECT_EQ(Printed(report, {.Indent = Indents::Raw}), "    TitleWells of 1904\r\n");
    EXPECT_EQ(LastRecord, 2);
}

TEST(LayingOut, GroupEndsStandInEveryModeButRaw) {
    const std::vector<std::string> report{R"(1,-9,"Wells","REPEATING GROUP, Occurrence #1")",
                                          R"(1,-99,"END REPEATING GROUP","")"};
    EXPECT_THAT(Printed(report, {}), testing::HasSubstr("*** END REPEATING GROUP***"));
    EXPECT_THAT(Printed(report, {.Indent = Indents::Raw}), testing::Not(testing::HasSubstr("***")));
}

TEST(LayingOut, NoReportIsSaid) {
    ItemInput input = ItemsOf("nothing");
    EXPECT_EQ(BytesOf([&](OutputFile &file) { WriteTextPrint(input, file, {.Indent = Indents::Raw}); }),
              std::string(HeaderFailure) + "\r\n");
}

TEST(LayingOut, NamesAreThoseOfTheFileOrTheScreen) {
    EXPECT_EQ(ReportLabel("wells.rpx"), "WELLS.RPX");
    EXPECT_EQ(ReportLabel("!quin!02.$$$"), "ON-SCREEN INFORMATION");
    EXPECT_THAT(ReportHeading("site.ftf", "WELLS.RPX"),
                testing::MatchesRegex("..-..-.... \\[site.ftf\\]; Quintave Report for WELLS.RPX"));
}

TEST(Matching, AChoiceIsMeantByItsTextWithOrWithoutTheBlanksAtItsEnd) {
    const std::vector<std::string> choices{"Red ", "Blue", "Blue", " Other... ", "other..."};
    EXPECT_EQ(ChoiceOf(choices, "Red", LONG_MAX), 0);
    EXPECT_EQ(ChoiceOf(choices, "Red ", LONG_MAX), 0);
    EXPECT_EQ(ChoiceOf(choices, "Blue", LONG_MAX), 1);
    EXPECT_EQ(ChoiceOf(choices, "Green", LONG_MAX), 4);
    EXPECT_EQ(ChoiceOf(choices, "", LONG_MAX), -1);
    EXPECT_EQ(ChoiceOf({"Blue"}, "Green", LONG_MAX), -1);
}
