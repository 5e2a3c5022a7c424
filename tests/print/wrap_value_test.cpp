// Wrapping a value: where its lines end.
#include "print/report_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Pieces = std::vector<std::pair<double, std::string>>; // column and text of each line

Pieces Placed;

void Place(std::string_view text, double column, bool /*last*/, std::string_view /*title*/) {
    Placed.emplace_back(column, text);
}

// Lines of a value, the first at column 30, the others at column 10.
Pieces Wrapped(std::string_view value, double firstWidth, double width) {
    Placed.clear();
    WrapValue(value, 30, firstWidth, 10, width, {.PrintPiece = Place}, "Title");
    return Placed;
}

std::vector<std::string> Lines(std::string_view value, double width) {
    std::vector<std::string> lines;
    for (const auto &[column, text] : Wrapped(value, width, width)) lines.push_back(text);
    return lines;
}

using Texts = std::vector<std::string>;

} // namespace

TEST(WrapValue, BreaksAtTheLastBlankThatFitsAndLeavesItAtTheEnd) {
    EXPECT_EQ(Lines("aaa bbb ccc", 7), (Texts{"aaa ", "bbb ", "ccc"}));
    EXPECT_EQ(Lines("aaa bbb ccc", 8), (Texts{"aaa bbb ", "ccc"}));
}

TEST(WrapValue, AWordLongerThanTheWidthIsCut) {
    EXPECT_EQ(Lines("abcdefgh", 3), (Texts{"abc", "def", "gh"}));
    EXPECT_EQ(Lines("ab cdefgh", 4), (Texts{"ab ", "cdef", "gh"}));
}

TEST(WrapValue, AnExactlyFullLineWithoutABlankIsFollowedByAnEmptyOne) {
    EXPECT_EQ(Lines("abc", 3), (Texts{"abc", ""}));
    EXPECT_EQ(Lines("abc", 4), (Texts{"abc"}));
}

TEST(WrapValue, ALineBreakEndsTheLine) {
    EXPECT_EQ(Lines("a\r\nb\r\n\r\nc", 9), (Texts{"a", "b", "", "c"}));
    EXPECT_EQ(Lines("a\r\n", 9), (Texts{"a", ""}));
    EXPECT_EQ(Lines("\r\n", 9), (Texts{"", ""}));
}

TEST(WrapValue, ALineBreakWinsOverAFullLineAtTheSameCharacter) {
    EXPECT_EQ(Lines("ab\r\ncd", 3), (Texts{"ab", "cd"}));
    EXPECT_EQ(Lines("a b\r\nc", 4), (Texts{"a b", "c"}));
}

TEST(WrapValue, AFullLineRightBeforeALineBreakIsFollowedByAnEmptyOne) {
    EXPECT_EQ(Lines("abc\r\nd", 3), (Texts{"abc", "", "d"}));
}

TEST(WrapValue, ALoneCarriageReturnOrLineFeedIsACharacter) { EXPECT_EQ(Lines("a\rb\nc", 9), (Texts{"a\rb\nc"})); }

TEST(WrapValue, AnEmptyValueIsOneEmptyLine) { EXPECT_EQ(Wrapped("", 5, 5), (Pieces{{30, ""}})); }

TEST(WrapValue, TheFirstLineHasAColumnAndAWidthOfItsOwn) {
    EXPECT_EQ(Wrapped("aaa bbb ccc ddd", 5, 9), (Pieces{{30, "aaa "}, {10, "bbb ccc "}, {10, "ddd"}}));
}

TEST(WrapValue, ABlankAlreadyPrintedBreaksNoSecondLine) {
    EXPECT_EQ(Lines("a bcdefgh", 4), (Texts{"a ", "bcde", "fgh"}));
}

TEST(WrapValue, AWideFirstLineMayLeaveMoreThanTheWidthForTheSecond) {
    // The word has passed the narrow width by the time it is known not to fit beside "x ".
    const std::string word(30, 'w');
    EXPECT_EQ(Wrapped("x " + word, 30, 10), (Pieces{{30, "x "}, {10, std::string(29, 'w')}, {10, "w"}}));
}

TEST(WrapValue, AWidthOfNothingPrintsOneCharacterALine) {
    EXPECT_EQ(Lines("ab", 0), (Texts{"a", "b", ""}));
    EXPECT_EQ(Lines("ab", -8), (Texts{"a", "b", ""}));
}
