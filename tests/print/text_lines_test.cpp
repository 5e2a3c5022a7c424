// The text file of a print, by its bytes: four modes, two layouts, every separator, data indents from 0 to 60.
#include "support/print_test.h"

#include <gmock/gmock.h>

#include <array>

namespace {

class TextPrint : public PrintTest {
protected:
    // What a single value record puts into the file behind the header lines.
    std::string Value(const std::string &value, const PanelOptions &options, const std::string &title = "Title",
                      int level = 2) const {
        return BodyOf({ValueRecord(level, title, value)}, options);
    }
};

const std::vector<std::string> Sampling{R"(1,-1,"Field work","")", R"(2,1,"Place","Ely")",
                                        R"(2,-9,"Samples","REPEATING GROUP, Occurrence #1")", R"(3,1,"Depth","12 ft")",
                                        R"(2,-99,"END REPEATING GROUP","")"};

std::string Blanks(std::size_t count) { return std::string(count, ' '); }

std::string Padded(std::string text, std::size_t length) {
    text.resize(std::max(length, text.size()), ' ');
    return text;
}

constexpr std::array Separators{"' '", "'| '", "': '", "'> '", "' - '", "' = '"};
constexpr std::array Indents{0, 1, 20, 60};

// Title and value of a record.
std::string ShortRecord(const PanelOptions &options, std::size_t level, const std::string &title,
                        const std::string &value) {
    const std::size_t column = options.Mode >= NestedData ? 4 * level
                               : options.Indent.empty()   ? 0
                                                          : std::stoul(options.Indent);
    const std::string start = (options.Mode == 0 ? "" : Blanks(4 * (level - 1))) + title +
                              options.Separator.substr(1, options.Separator.size() - 2);
    const std::string before = options.Below ? start + "\r\n" + Blanks(column) : Padded(start, column);
    const std::size_t beside = options.Below ? column : std::max(start.size(), column);
    if (beside + value.size() < 80) return before + value + "\r\n";
    // Only the text of an occurrence, at the data column 60, is longer than its line.
    const std::size_t first = std::string_view("REPEATING GROUP, ").size();
    return before + value.substr(0, first) + "\r\n" + Blanks(column) + value.substr(first) + "\r\n";
}

std::string CentredLines(const std::string &title) {
    return "\r\n\r\n" + Blanks(40 - title.size() / 2) + title + "\r\n\r\n";
}

std::string Sampled(const PanelOptions &options) {
    const std::string separator = options.Separator.substr(1, options.Separator.size() - 2);
    std::string text = (options.Mode == 0 ? CentredLines("Field work") : "Field work" + separator + "\r\n") +
                       ShortRecord(options, 2, "Place", "Ely");
    text += options.Mode == RawMode ? "    Samples" + separator + "\r\n"
                                    : ShortRecord(options, 2, "Samples", "REPEATING GROUP, Occurrence #1");
    text += ShortRecord(options, 3, "Depth", "12 ft");
    if (options.Mode != RawMode)
        text += Blanks(options.Mode == 0 ? 0 : 4) + "*** END REPEATING GROUP***" + separator + "\r\n";
    return text;
}

} // namespace

// --- Header lines

TEST_F(TextPrint, StartsWithDateTemplateAndItsOwnNameAndALineOfOneBlank) {
    EXPECT_EQ(TextOf({}), "03-03-2019 [SITE.FTF]; Quintave Report for OUT.TXT\r\n \r\n");
}

TEST_F(TextPrint, ANameThatEndsInThreeDollarsIsLabelledAsTheScreen) {
    folder.Write("A.rpx", ReportHeader);
    OpenFor("A.rpx");
    std::filesystem::create_directory(PathOf("prints"));
    PressFile("prints/out.$$$");
    EXPECT_EQ(folder.Read("prints/out.$$$"),
              "03-03-2019 [SITE.FTF]; Quintave Report for ON-SCREEN INFORMATION\r\n \r\n");
}

TEST_F(TextPrint, APrintOfTheScreenCarriesTheTextFilesName) {
    OpenForScreen();
    PressFile("out.txt");
    EXPECT_EQ(folder.Read("out.txt"), TextHeader);
}

TEST_F(TextPrint, RawModeHasNoHeaderLines) {
    EXPECT_EQ(TextOf({ValueRecord(1, "Title", "x")}, {.Mode = RawMode}), "Title| x\r\n");
}

TEST_F(TextPrint, TheTemplateIsTheOneThatIsLoaded) {
    EXPECT_THAT(TextOfFile("0,\"QuintaveV2\",\"OTHER.FTF\"\r\n"), testing::HasSubstr("[SITE.FTF]"));
}

TEST_F(TextPrint, AWrongHeaderWritesTheFailureLine) {
    for (const std::string header :
         {"0,\"QuintaveV1\",\"SITE.FTF\"", "1,\"QuintaveV2\",\"SITE.FTF\"", "", "hello", "0,\"QuintaveV2\""}) {
        EXPECT_EQ(TextOfFile(header), TextHeader + "File Header Failure -- This is not a Valid QuintaveV2 File!\r\n")
            << header;
        ExpectEntryScreen();
    }
    EXPECT_EQ(MessageCount(), 5U) << "the questions alone";
}

TEST_F(TextPrint, AWrongHeaderInRawModeIsTheFailureLineAlone) {
    EXPECT_EQ(TextOfFile("hello", {.Mode = RawMode}),
              "File Header Failure -- This is not a Valid QuintaveV2 File!\r\n");
}

TEST_F(TextPrint, OnlyTheFirstTenCharactersOfTheIdentifierCount) {
    EXPECT_EQ(TextOfFile("0,\"QuintaveV2.1 of 1999\",\"SITE.FTF\"\r\n"), TextHeader);
}

// --- Modes, by whole files

TEST_F(TextPrint, WithoutIndentsSectionsAreCentredAndTitlesStandAtTheLeft) {
    EXPECT_EQ(BodyOf(Sampling), "\r\n\r\n"
                                "                                   Field work\r\n"
                                "\r\n"
                                "Place| Ely\r\n"
                                "Samples| REPEATING GROUP, Occurrence #1\r\n"
                                "Depth| 12 ft\r\n"
                                "*** END REPEATING GROUP***| \r\n");
}

TEST_F(TextPrint, NestedTitlesAreIndentedByFourForEachLevelBelowTheFirst) {
    EXPECT_EQ(BodyOf(Sampling, {.Mode = NestedTitles, .Indent = "20", .Separator = "': '"}),
              "Field work: \r\n"
              "    Place:          Ely\r\n"
              "    Samples:        REPEATING GROUP, Occurrence #1\r\n"
              "        Depth:      12 ft\r\n"
              "    *** END REPEATING GROUP***: \r\n");
}

TEST_F(TextPrint, NestedDataStartAtFourForEachLevel) {
    EXPECT_EQ(BodyOf(Sampling, {.Mode = NestedData, .Below = true}), "Field work| \r\n"
                                                                     "    Place| \r\n"
                                                                     "        Ely\r\n"
                                                                     "    Samples| \r\n"
                                                                     "        REPEATING GROUP, Occurrence #1\r\n"
                                                                     "        Depth| \r\n"
                                                                     "            12 ft\r\n"
                                                                     "    *** END REPEATING GROUP***| \r\n");
}

TEST_F(TextPrint, RawLeavesOutWhatOnlyMarksAGroup) {
    EXPECT_EQ(BodyOf(Sampling, {.Mode = RawMode, .Separator = "': '"}), "Field work: \r\n"
                                                                        "    Place: Ely\r\n"
                                                                        "    Samples: \r\n"
                                                                        "        Depth: 12 ft\r\n");
}

TEST_F(TextPrint, EveryModeLayoutSeparatorAndIndent) {
    for (int mode = 0; mode <= RawMode; ++mode)
        for (const bool below : {false, true})
            for (const std::string separator : Separators)
                for (const int indent : Indents) {
                    // The indent is put in before the mode that disables its box is chosen.
                    const PanelOptions options{mode, std::to_string(indent), below, separator};
                    EXPECT_EQ(BodyOf(Sampling, options), Sampled(options))
                        << "mode " << mode << (below ? " below " : " beside ") << separator << " " << indent;
                }
}

// --- Records

TEST_F(TextPrint, ATitleIsPaddedToTheDataColumn) {
    EXPECT_EQ(Value("x", {.Indent = "20"}), "Title|              x\r\n");
}

TEST_F(TextPrint, ATitleThatEndsAtTheDataColumnOrBeyondIsFollowedByItsValue) {
    EXPECT_EQ(Value("x", {.Indent = "7"}), "Title| x\r\n");
    EXPECT_EQ(Value("x", {.Indent = "6"}), "Title| x\r\n");
    EXPECT_EQ(Value("x", {}), "Title| x\r\n");
}

TEST_F(TextPrint, AnEmptyIndentCountsAsZero) { EXPECT_EQ(Value("x", {.Below = true}), "Title| \r\nx\r\n"); }

TEST_F(TextPrint, AnEmptyPairOfQuotesIsNoSeparator) {
    AddRow(Quintave.Combo2, "''");
    EXPECT_EQ(Value("x", {.Separator = "''"}), "Titlex\r\n");
}

TEST_F(TextPrint, AnEmptyValueEndsTheTitlesLine) {
    EXPECT_EQ(Value("", {.Indent = "20"}), "Title| \r\n");
    EXPECT_EQ(Value("", {.Indent = "20", .Below = true}), "Title| \r\n\r\n");
}

TEST_F(TextPrint, AMarkerOfMinusThreeIsACentredLineInEveryMode) {
    for (int mode = 0; mode <= RawMode; ++mode)
        EXPECT_EQ(BodyOf({R"(3,-3,"Middle","")"}, {.Mode = mode}), Blanks(37) + "Middle\r\n") << mode;
}

TEST_F(TextPrint, AnOddLengthIsCentredByItsHalfRoundedUp) {
    EXPECT_EQ(BodyOf({R"(1,-3,"abc","")"}), Blanks(38) + "abc\r\n");
}

TEST_F(TextPrint, ACentredLineLongerThanTheLineStartsAtTheLeft) {
    EXPECT_EQ(BodyOf({R"(1,-3,")" + std::string(90, 'x') + R"(","")"}), std::string(90, 'x') + "\r\n");
}

TEST_F(TextPrint, AMarkerOfMinusTwoIsIndentedFromTheModesBaseLevel) {
    const std::vector<std::string> lines{R"(0,-2,"a","")", R"(1,-2,"b","")", R"(2,-2,"c","")", R"(3,-2,"d","")"};
    EXPECT_EQ(BodyOf(lines), "a| \r\nb| \r\nc| \r\n    d| \r\n");
    for (int mode = NestedTitles; mode <= RawMode; ++mode)
        EXPECT_EQ(BodyOf(lines, {.Mode = mode}), "a| \r\nb| \r\n    c| \r\n        d| \r\n") << mode;
}

TEST_F(TextPrint, LevelZeroHasNoIndent) {
    EXPECT_EQ(Value("x", {.Mode = NestedTitles}, "Title", 0), "Title| x\r\n");
    EXPECT_EQ(Value("x", {.Mode = NestedData}, "Title", 0), "Title| x\r\n");
}

TEST_F(TextPrint, ANegativeLevelCountsAsItsAmount) {
    EXPECT_EQ(Value("x", {.Mode = NestedData, .Below = true}, "Title", -2), "    Title| \r\n        x\r\n");
}

TEST_F(TextPrint, ACountOfZeroIsAValueOfOneLine) { EXPECT_EQ(BodyOf({R"(2,0,"Title","x")"}), "Title| x\r\n"); }

TEST_F(TextPrint, AnUnknownMarkerIsAValue) { EXPECT_EQ(BodyOf({R"(2,-5,"Title","x")"}), "Title| x\r\n"); }

TEST_F(TextPrint, ContinuationLinesJoinTheValueEachOnItsLine) {
    EXPECT_EQ(BodyOf({R"(2,3,"Notes","one")", R"("two")", R"("three")"}, {.Indent = "10"}),
              "Notes|    one\r\n          two\r\n          three\r\n");
}

TEST_F(TextPrint, EveryRecordIsPrintedWhereAFieldHasSeveral) {
    EXPECT_EQ(BodyOf({ValueRecord(1, "Colour", "red"), ValueRecord(1, "Colour", "blue")}),
              "Colour| red\r\nColour| blue\r\n");
}

TEST_F(TextPrint, ALoneLineEndInAValueBecomesAWholeOne) {
    EXPECT_EQ(BodyOf({"1,1,\"Notes\",\"one\ntwo\rthree\""}, {.Indent = "10"}),
              "Notes|    one\r\n          two\r\n          three\r\n");
}

TEST_F(TextPrint, ATitleStandsOnOneLine) {
    EXPECT_EQ(BodyOf({"1,1,\"Ti\r\ntle\",\"x\""}, {.Indent = "10"}), "Ti  tle|  x\r\n");
    for (const std::string end : {"\r", "\n"}) EXPECT_EQ(BodyOf({"1,1,\"Ti" + end + "tle\",\"x\""}), "Ti tle| x\r\n");
}

TEST_F(TextPrint, CharactersOver127AreTheCodePagesBytes) {
    EXPECT_EQ(Value("caf\xE9 \x80 5", {}), "Title| caf\xE9 \x80 5\r\n");
}

// --- Wrapping within 80 columns

TEST_F(TextPrint, ALongValueWrapsBelowItself) {
    const std::string forty = "abc def ghi jkl mno pqr stu vwx yza bcd ";
    EXPECT_EQ(Value(forty + forty + "end", {.Indent = "40"}),
              "Title|" + Blanks(34) + forty + "\r\n" + Blanks(40) + forty + "\r\n" + Blanks(40) + "end\r\n");
}

TEST_F(TextPrint, AValueUnderItsTitleWrapsAtTheDataColumn) {
    EXPECT_EQ(Value(std::string(70, 'a') + "bcd", {.Indent = "10", .Below = true}),
              "Title| \r\n" + Blanks(10) + std::string(70, 'a') + "\r\n" + Blanks(10) + "bcd\r\n");
}

TEST_F(TextPrint, AValueThatFillsItsLineIsFollowedByAnEmptyOne) {
    EXPECT_EQ(Value(std::string(73, 'a'), {}), "Title| " + std::string(73, 'a') + "\r\n\r\n");
    EXPECT_EQ(Value(std::string(72, 'a'), {}), "Title| " + std::string(72, 'a') + "\r\n");
}

TEST_F(TextPrint, ATitleThatFillsItsLineHasItsValueOnTheNext) {
    const std::string title(78, 't');
    EXPECT_EQ(Value("value", {.Indent = "10"}, title), title + "| \r\n" + Blanks(10) + "value\r\n");
    EXPECT_EQ(Value("", {.Indent = "10"}, title), title + "| \r\n");
}

TEST_F(TextPrint, ATitleBeyondTheLineCarriesSomeOfItsValue) {
    const std::string title(88, 't'); // it ends 10 columns beyond the line: 80 less 10 remain
    EXPECT_EQ(Value(std::string(75, 'v'), {.Indent = "10"}, title),
              title + "| " + std::string(70, 'v') + "\r\n" + Blanks(10) + "vvvvv\r\n");
}

TEST_F(TextPrint, ADataColumnBeyondTheLineBreaksAfterEachCharacter) {
    for (const int level : {20, 21, 40}) {
        const std::string title = Blanks(4 * static_cast<std::size_t>(level - 1)) + "T| \r\n";
        const std::string column = Blanks(4 * static_cast<std::size_t>(level));
        EXPECT_EQ(Value("ab", {.Mode = NestedData, .Below = true}, "T", level),
                  title + column + "a\r\n" + column + "b\r\n\r\n")
            << level;
    }
}

TEST_F(TextPrint, ADataColumnBeyondTheLineCarriesSomeOfTheValueBesideItsTitle) {
    EXPECT_EQ(Value(std::string(80, 'v'), {.Mode = NestedData}, "T", 21),
              Blanks(80) + "T|  " + std::string(76, 'v') + "\r\n" + Blanks(84) + "v\r\n" + Blanks(84) + "v\r\n" +
                  Blanks(84) + "v\r\n" + Blanks(84) + "v\r\n\r\n");
}

TEST_F(TextPrint, ALongReportIsOneTextWithoutPages) {
    std::string expected;
    std::vector<std::string> records;
    for (int n = 0; n < 100; ++n) {
        records.push_back(R"(2,3,"Notes","one")");
        records.insert(records.end(), {R"("two")", R"("three")"});
        expected += "Notes|    one\r\n          two\r\n          three\r\n";
    }
    EXPECT_EQ(BodyOf(records, {.Indent = "10"}), expected);
}

// --- While it runs

TEST_F(TextPrint, StarsGrowByRecordAndStartAgainEvery25) {
    static std::vector<std::string> captions;
    static std::vector<bool> busy;
    Progress.OnRepaint = [](const Control &control) {
        EXPECT_EQ(&control, &Quintave.printLabel);
        captions.push_back(control.Caption);
        busy.push_back(Progress.PointerIsBusy);
    };
    TextOf(std::vector<std::string>(50, ValueRecord(1, "Title", "x")));
    ASSERT_EQ(captions.size(), 50U);
    // The counter starts at 1 before the first record, so the rows of stars are 23, 25 and 2 long.
    const std::string shown = "   Printing To File ";
    EXPECT_EQ(captions[0], shown + "*");
    EXPECT_EQ(captions[22], shown + std::string(23, '*'));
    EXPECT_EQ(captions[23], shown + "*");
    EXPECT_EQ(captions[47], shown + std::string(25, '*'));
    EXPECT_EQ(captions[48], shown + "*");
    EXPECT_EQ(captions[49], shown + "**");
    EXPECT_EQ(busy, std::vector<bool>(50, true));
    EXPECT_FALSE(Progress.PointerIsBusy);
}
