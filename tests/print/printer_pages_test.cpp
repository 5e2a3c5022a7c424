// Pages as the printer gets them: every text with its place and its font. Letter paper: an inch is 12 columns and
// 6 lines.
#include "support/print_test.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class PagePrint : public PrintTest {};

const std::string Heading = "03-03-2019 [SITE.FTF]; Quintave Report for A.RPX      Page ";

PrintedText Bold(double line, double column, const std::string &text, int page = 1) {
    return {page, line, column, text, true, 10};
}

PrintedText Plain(double line, double column, const std::string &text, int page = 1) {
    return {page, line, column, text, false, 10};
}

std::vector<std::string> Records(std::size_t count) {
    return std::vector<std::string>(count, ValueRecord(1, "Title", "x"));
}

std::vector<std::string> With(std::vector<std::string> lines, const std::string &last) {
    lines.push_back(last);
    return lines;
}

const std::vector<std::string> Sampling{R"(1,-1,"Field work","")", R"(2,1,"Place","Ely")",
                                        R"(2,-9,"Samples","REPEATING GROUP, Occurrence #1")", R"(3,1,"Depth","12 ft")",
                                        R"(2,-99,"END REPEATING GROUP","")"};

// Records that fill the lines of the first page up to and with this one.
std::vector<std::string> FilledTo(double line) { return Records(static_cast<std::size_t>(line - 8 + 1)); }

} // namespace

// --- The page header

TEST_F(PagePrint, StartsWithABoldHeaderAtTheMarginsAndAnEmptyLine) {
    EXPECT_THAT(PagesOf({ValueRecord(1, "Title", "x")}),
                ElementsAre(Bold(6, 12, Heading + "1"), Bold(8, 12, "Title| "), Plain(8, 19, "x")));
}

TEST_F(PagePrint, TheScreenIsLabelledAsSuch) {
    OpenForScreen();
    PressPrinter();
    EXPECT_EQ(Printer.Jobs.at(0).at(0).Text,
              "03-03-2019 [SITE.FTF]; Quintave Report for ON-SCREEN INFORMATION      Page 1");
}

TEST_F(PagePrint, TheNameIsInUpperCaseAlsoOverSeven) {
    folder.Write("\xC3\xA9t\xC3\xA9.rpx", ReportHeader); // a name as the system has it, in UTF-8
    OpenFor("\xC3\xA9t\xC3\xA9.rpx");
    PressPrinter();
    EXPECT_EQ(Printer.Jobs.at(0).at(0).Text, "03-03-2019 [SITE.FTF]; Quintave Report for ÉTÉ.RPX      Page 1");
}

TEST_F(PagePrint, EveryCopyStartsWithPageOne) {
    folder.Write("A.rpx", ReportText(Records(60)));
    OpenFor("A.rpx");
    Set({.Copies = 2});
    PressPrinter();
    ASSERT_EQ(Printer.Jobs.size(), 2U);
    EXPECT_EQ(Printer.Jobs[0], Printer.Jobs[1]);
    EXPECT_EQ(Printer.Jobs[1].front(), Bold(6, 12, Heading + "1"));
    EXPECT_EQ(Printer.Jobs[1].back().Page, 2);
}

TEST_F(PagePrint, AWrongHeaderPrintsTheFailureLineAndEndsTheJob) {
    EXPECT_THAT(PagesOfFile("hello"),
                ElementsAre(Bold(6, 12, Heading + "1"),
                            Plain(8, 12, "File Header Failure -- This is not a Valid QuintaveV2 File!")));
    EXPECT_EQ(Printer.Closed, 1);
    ExpectEntryScreen();
}

// --- Modes

TEST_F(PagePrint, WithoutIndentsASectionIsACentredHeadingOf14Points) {
    EXPECT_THAT(PageBodyOf(Sampling),
                ElementsAre(PrintedText{1, 10, 46, "Field work", true, 14}, Bold(12, 12, "Place| "),
                            Plain(12, 19, "Ely"), Bold(13, 12, "Samples| "),
                            Plain(13, 21, "REPEATING GROUP, Occurrence #1"), Bold(14, 12, "Depth| "),
                            Plain(14, 19, "12 ft"), Bold(15, 12, "*** END REPEATING GROUP***| ")));
}

TEST_F(PagePrint, NestedTitlesLeaveTheDataAtTheirIndent) {
    EXPECT_THAT(PageBodyOf(Sampling, {.Mode = NestedTitles, .Indent = "20"}),
                ElementsAre(Bold(8, 12, "Field work| "), Bold(9, 12, "    Place| "), Plain(9, 32, "Ely"),
                            Bold(10, 12, "    Samples| "), Plain(10, 32, "REPEATING GROUP, Occurrence #1"),
                            Bold(11, 12, "        Depth| "), Plain(11, 32, "12 ft"),
                            Bold(12, 12, "    *** END REPEATING GROUP***| ")));
}

TEST_F(PagePrint, NestedDataStartAtFourForEachLevelOrWhereTheTitleEnds) {
    EXPECT_THAT(PageBodyOf(Sampling, {.Mode = NestedData}),
                ElementsAre(Bold(8, 12, "Field work| "), Bold(9, 12, "    Place| "), Plain(9, 23, "Ely"),
                            Bold(10, 12, "    Samples| "), Plain(10, 25, "REPEATING GROUP, Occurrence #1"),
                            Bold(11, 12, "        Depth| "), Plain(11, 27, "12 ft"),
                            Bold(12, 12, "    *** END REPEATING GROUP***| ")));
}

TEST_F(PagePrint, RawPrintsNeitherGroupEndsNorOccurrenceTexts) {
    EXPECT_THAT(PageBodyOf(Sampling, {.Mode = RawMode, .Below = true}),
                ElementsAre(Bold(8, 12, "Field work| "), Bold(9, 12, "    Place| "), Plain(10, 20, "Ely"),
                            Bold(11, 12, "    Samples| "), Bold(12, 12, "        Depth| "), Plain(13, 24, "12 ft")));
}

TEST_F(PagePrint, AnUnknownCaptionCountsAsNestedData) {
    folder.Write("A.rpx", ReportText({ValueRecord(2, "a", "x")}));
    OpenFor("A.rpx");
    SetCaption(Quintave.PrintFrameIndent, "Something Else");
    PressPrinter();
    EXPECT_EQ(Printer.Jobs.at(0).back(), Plain(8, 20, "x"));
}

TEST_F(PagePrint, NestedDataKeepTheColumnOfTheLastValueForContinuationLines) {
    // A section in between does not move the column; the next value does.
    EXPECT_THAT(PageBodyOf({ValueRecord(4, "a", "x"), R"(1,-1,"S","")", R"(2,2,"b","y")", R"("z")"},
                           {.Mode = NestedData, .Below = true}),
                ElementsAre(Bold(8, 12, "            a| "), Plain(9, 28, "x"), Bold(10, 12, "S| "),
                            Bold(11, 12, "    b| "), Plain(12, 20, "y"), Plain(13, 20, "z")));
}

TEST_F(PagePrint, TheValueStandsOnTheNextLineWhereAsked) {
    EXPECT_THAT(PageBodyOf({ValueRecord(1, "Title", "x")}, {.Indent = "20", .Below = true}),
                ElementsAre(Bold(8, 12, "Title| "), Plain(9, 32, "x")));
}

TEST_F(PagePrint, AMarkerOfMinusTwoIsABoldLineIndentedFromItsBaseLevel) {
    const std::vector<std::string> lines{R"(1,-2,"a","")", R"(3,-2,"b","")"};
    EXPECT_THAT(PageBodyOf(lines), ElementsAre(Bold(8, 12, "a| "), Bold(9, 12, "    b| ")));
    EXPECT_THAT(PageBodyOf(lines, {.Mode = NestedTitles}), ElementsAre(Bold(8, 12, "a| "), Bold(9, 12, "        b| ")));
}

TEST_F(PagePrint, AMarkerOfMinusThreeIsACentredPlainLineInEveryMode) {
    for (int mode = 0; mode <= RawMode; ++mode)
        EXPECT_THAT(PageBodyOf({R"(2,-3,"middle","")"}, {.Mode = mode}), ElementsAre(Plain(8, 48, "middle"))) << mode;
}

TEST_F(PagePrint, CentringTakesHalfAColumnForEachCharacterWhateverTheFont) {
    EXPECT_THAT(PageBodyOf({R"(1,-1,"odd","")", R"(1,-3,"odd","")"}),
                ElementsAre(PrintedText{1, 10, 49.5, "odd", true, 14}, Plain(12, 49.5, "odd")));
}

// --- Values

TEST_F(PagePrint, LinesWrapBeforeTheRightMargin) {
    const std::string value(71, 'a'); // the title ends at column 19, the limit is 90
    EXPECT_THAT(PageBodyOf({ValueRecord(1, "Title", value + "b")}, {.Indent = "30"}),
                ElementsAre(Bold(8, 12, "Title| "), Plain(8, 42, std::string(48, 'a')),
                            Plain(9, 42, std::string(23, 'a') + "b")));
    EXPECT_THAT(PageBodyOf({ValueRecord(1, "Title", value + "b")}),
                ElementsAre(Bold(8, 12, "Title| "), Plain(8, 19, value), Plain(9, 12, "b")));
}

TEST_F(PagePrint, AnEmptyValueEndsTheTitlesLine) {
    EXPECT_THAT(PageBodyOf({ValueRecord(1, "a", ""), ValueRecord(1, "b", "x")}),
                ElementsAre(Bold(8, 12, "a| "), Plain(8, 15, ""), Bold(9, 12, "b| "), Plain(9, 15, "x")));
}

TEST_F(PagePrint, ATitleBeyondTheRightMarginCarriesSomeOfItsValue) {
    const std::string title(88, 't'); // it ends 12 columns beyond the limit: 80 less 12 remain
    EXPECT_THAT(PageBodyOf({ValueRecord(1, title, std::string(70, 'v'))}),
                ElementsAre(Bold(8, 12, title + "| "), Plain(8, 102, std::string(68, 'v')), Plain(9, 12, "vv")));
}

TEST_F(PagePrint, ATitleUpToTheRightMarginHasItsValueOnTheNextLine) {
    const std::string title(76, 't');
    EXPECT_THAT(PageBodyOf({ValueRecord(1, title, "value")}, {.Indent = "10"}),
                ElementsAre(Bold(8, 12, title + "| "), Plain(9, 22, "value")));
}

TEST_F(PagePrint, ADataColumnBeyondTheRightMarginBelowTheTitleBreaksAfterEachCharacter) {
    EXPECT_THAT(PageBodyOf({ValueRecord(20, "T", "ab")}, {.Mode = NestedData, .Below = true}),
                ElementsAre(Bold(8, 12, std::string(76, ' ') + "T| "), Plain(9, 92, "a"), Plain(10, 92, "b"),
                            Plain(11, 92, "")));
}

TEST_F(PagePrint, ATitleStandsOnOneLine) {
    EXPECT_THAT(PageBodyOf({"1,1,\"Ti\r\ntl\re\",\"x\"", "1,-1,\"Sec\ntion\",\"\"", "1,-3,\"Mid\r\ndle\",\"\""}),
                ElementsAre(Bold(8, 12, "Ti  tl e| "), Plain(8, 22, "x"), PrintedText{1, 11, 47, "Sec tion", true, 14},
                            Plain(13, 47, "Mid  dle")));
}

// --- Page ends

TEST_F(PagePrint, ARecordBelowTheLastLineStartsAPage) {
    const auto texts = PagesOf(FilledTo(LastLine + 1));
    EXPECT_THAT(std::vector(texts.end() - 5, texts.end()),
                ElementsAre(Bold(54, 12, "Title| "), Plain(54, 19, "x"), Bold(6, 12, Heading + "2", 2),
                            Bold(8, 12, "Title| ", 2), Plain(8, 19, "x", 2)));
}

TEST_F(PagePrint, AHeadingNeedsEightLinesAboveTheBottom) {
    const std::string section = R"(1,-1,"Section","")";
    EXPECT_EQ(PagesOf(With(FilledTo(45), section)).back(), (PrintedText{1, 48, 47.5, "Section", true, 14}));
    EXPECT_EQ(PagesOf(With(FilledTo(46), section)).back(), (PrintedText{2, 10, 47.5, "Section", true, 14}));
}

TEST_F(PagePrint, ACentredLineNeedsSix) {
    const std::string line = R"(1,-3,"line","")";
    EXPECT_EQ(PagesOf(With(FilledTo(47), line)).back(), Plain(48, 49, "line"));
    EXPECT_EQ(PagesOf(With(FilledTo(48), line)).back(), Plain(8, 49, "line", 2));
}

TEST_F(PagePrint, APageEndInsideAValueRepeatsTheTitle) {
    auto lines = FilledTo(53);
    lines.insert(lines.end(), {R"(2,3,"Notes","one")", R"("two")", R"("three")"});
    const auto texts = PagesOf(lines, {.Indent = "20"});
    EXPECT_THAT(std::vector(texts.end() - 6, texts.end()),
                ElementsAre(Bold(54, 12, "Notes| "), Plain(54, 32, "one"), Bold(6, 12, Heading + "2", 2),
                            Bold(8, 12, "Notes   (continued)...", 2), Plain(9, 32, "two", 2),
                            Plain(10, 32, "three", 2)));
}

TEST_F(PagePrint, TheLastLineOfAValueMayStandOneLineBelow) {
    auto lines = FilledTo(53);
    lines.insert(lines.end(), {R"(2,2,"Notes","one")", R"("two")", ValueRecord(1, "Title", "x")});
    const auto texts = PagesOf(lines, {.Indent = "20"});
    EXPECT_THAT(std::vector(texts.end() - 6, texts.end()),
                ElementsAre(Bold(54, 12, "Notes| "), Plain(54, 32, "one"), Plain(55, 32, "two"),
                            Bold(6, 12, Heading + "2", 2), Bold(8, 12, "Title| ", 2), Plain(8, 32, "x", 2)));
}

TEST_F(PagePrint, MarginsGrowWithThePaper) {
    Printer.Width = 85;  // 10 columns to an inch of 8.5
    Printer.Height = 55; // 5 lines to an inch of 11
    auto texts = PagesOf(With(Records(39), ValueRecord(1, "Title", std::string(70, 'x'))));
    EXPECT_EQ(texts.front(), Bold(5, 10, Heading + "1"));
    EXPECT_EQ(texts[1], Bold(7, 10, "Title| "));
    // Lines 7 to 45 hold a record each; a value reaches from the title's end to 10 columns from the right.
    EXPECT_EQ(texts.end()[-5].Line, 45);
    EXPECT_EQ(texts.end()[-4], Bold(5, 10, Heading + "2", 2));
    EXPECT_EQ(texts.end()[-2], Plain(7, 17, std::string(58, 'x'), 2));
    EXPECT_EQ(texts.end()[-1], Plain(8, 10, std::string(12, 'x'), 2));
}

TEST_F(PagePrint, MarginsOfPaperOfBrokenInches) {
    Printer.Width = 99.2; // A4: 12 columns and 6 lines to a true inch, 11.67 and 6.378 to one of its own
    Printer.Height = 70.2;
    const double inch = Printer.Width / 8.5;
    const double top = Printer.Height / 11;
    // Lines begin at 2 below the header; the last one stands at 57.38, above two inches at the bottom.
    std::vector<std::string> lines = Records(49);
    lines.insert(lines.end(), {R"(1,3,"Notes","one")", R"("two")", R"("three")"});
    auto texts = PagesOf(lines);
    EXPECT_DOUBLE_EQ(texts.front().Line, top);
    EXPECT_DOUBLE_EQ(texts.front().Column, inch);
    EXPECT_DOUBLE_EQ(texts[1].Line, top + 2);
    EXPECT_DOUBLE_EQ(texts[2].Column, inch + 7);
    const auto first = texts.end() - 6;
    EXPECT_EQ(first[1].Text, "one");
    EXPECT_NEAR(first[1].Line, top + 51, 1e-9);
    EXPECT_EQ(first[2].Text, Heading + "2");
    EXPECT_EQ(first[3].Text, "Notes   (continued)...");
    EXPECT_DOUBLE_EQ(first[3].Line, top + 2);
    EXPECT_DOUBLE_EQ(first[3].Column, inch);
    EXPECT_EQ(first[4].Text, "two");
    EXPECT_DOUBLE_EQ(first[4].Column, inch);
    // 87.53 columns less the title's end at 18.67: the 69th character fills the line; behind it there are 75.86.
    texts = PagesOf({ValueRecord(1, "Title", std::string(150, 'v'))});
    EXPECT_EQ(texts[2].Text, std::string(69, 'v'));
    EXPECT_EQ(texts[3].Text, std::string(76, 'v'));
    EXPECT_EQ(texts[4].Text, std::string(5, 'v'));
}

TEST_F(PagePrint, AHeadingOnPaperOfBrokenInchesNeedsEightLines) {
    Printer.Width = 99.2;
    Printer.Height = 70.2; // the bottom limit is 57.436
    const std::string section = R"(1,-1,"Section","")";
    const auto pageBehind = [&](std::size_t records) { return PagesOf(With(Records(records), section)).back().Page; };
    EXPECT_EQ(pageBehind(41), 1); // at 49.38: 57.38 is within
    EXPECT_EQ(pageBehind(42), 2);
    EXPECT_DOUBLE_EQ(PagesOf({section}).back().Column, 99.2 / 2 - 3.5);
}

// --- While it runs

TEST_F(PagePrint, StarsGrowByRecordAndStartAgainEvery25) {
    static std::vector<std::string> captions;
    static std::vector<bool> busy;
    Progress.OnRepaint = [](const Control &control) {
        captions.push_back(control.Caption);
        busy.push_back(Progress.PointerIsBusy);
    };
    folder.Write("A.rpx", ReportText(Records(24)));
    OpenFor("A.rpx");
    Set({.Copies = 2});
    PressPrinter();
    ASSERT_EQ(captions.size(), 48U);
    EXPECT_EQ(captions[0], "   Printing Copy 1*");
    EXPECT_EQ(captions[22], "   Printing Copy 1" + std::string(23, '*'));
    EXPECT_EQ(captions[23], "   Printing Copy 1*");
    EXPECT_EQ(captions[24], "   Printing Copy 2*");
    EXPECT_EQ(busy, std::vector<bool>(48, true));
    EXPECT_EQ(Quintave.printLabel.Caption, "Waiting for PRINT command");
    ExpectEntryScreen();
}
