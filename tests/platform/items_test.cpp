// Comma-and-line delimited items.
#include "platform/items.h"

#include "support/folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <ctime>
#include <random>
#include <vector>

namespace {

using testing::ElementsAre;

// All text items up to the end; "<62>" stands for the error that ends them.
std::vector<std::string> TextsOf(const std::string &bytes, Input fault = Input::Lenient) {
    ItemInput input = ItemsOf(bytes);
    std::vector<std::string> items;
    try {
        BeginRecord(input);
        while (!AtEnd(input)) items.push_back(ReadText(input, fault));
    } catch (const RuntimeError &error) {
        items.push_back("<" + std::to_string(error.Number) + ">");
    }
    return items;
}

// The first item as a number, or the error it gives as a number past 100,000.
long NumberIn(const std::string &bytes, Input fault = Input::Lenient) {
    ItemInput input = ItemsOf(bytes);
    try {
        return ReadInteger(input, fault);
    } catch (const RuntimeError &error) {
        return 100000 + error.Number;
    }
}

constexpr long OverflowError = 100000 + Overflow;
constexpr long MismatchError = 100000 + TypeMismatch;
constexpr long PastEndError = 100000 + InputPastEnd;

} // namespace

TEST(Items, AreDividedByCommasAndLineEnds) {
    EXPECT_THAT(TextsOf("  abc  , \"x y\" ,\nz\n"), ElementsAre("abc", "x y", "", "z"));
    EXPECT_THAT(TextsOf("\"a,b\",c\"d,\"e\"\r\n"), ElementsAre("a,b", "c\"d", "e"));
}

TEST(Items, AByteOrderMarkInFrontIsNoPartOfThem) {
    EXPECT_THAT(TextsOf("\xEF\xBB\xBF\"a\",b"), ElementsAre("a", "b"));
    EXPECT_TRUE(AtEnd(ItemsOf("\xEF\xBB\xBF")));
    EXPECT_THAT(TextsOf("\xEF\xBB"
                        "a,\xEF\xBB\xBF"
                        "b"),
                ElementsAre("\xEF\xBB"
                            "a",
                            "\xEF\xBB\xBF"
                            "b"));
}

TEST(Items, AnyLineEndWillDo) {
    EXPECT_THAT(TextsOf("a,b\rc,d\ne,f\r\ng"), ElementsAre("a", "b", "c", "d", "e", "f", "g"));
}

TEST(Items, BlanksAndLineEndsBeforeARecordAreSkipped) {
    ItemInput input = ItemsOf("\r\n \t\n  a\n\n\n b");
    EXPECT_EQ(ReadTextLine(input, Input::Strict), "a");
    EXPECT_EQ(ReadTextLine(input, Input::Strict), "b");
    EXPECT_TRUE(AtEnd(input));
}

TEST(Items, BlanksAndLineEndsAloneAreTheEnd) {
    EXPECT_TRUE(AtEnd(ItemsOf("")));
    EXPECT_TRUE(AtEnd(ItemsOf(" \t\r\n\n ")));
    EXPECT_FALSE(AtEnd(ItemsOf(" \r\n,")));
}

TEST(Items, NothingBetweenTwoDelimitersIsAnEmptyItem) {
    EXPECT_THAT(TextsOf("a,,b\n"), ElementsAre("a", "", "b"));
    EXPECT_THAT(TextsOf("a,\nb\n"), ElementsAre("a", "", "b"));
    EXPECT_THAT(TextsOf("\"\",b\n"), ElementsAre("", "b"));
}

TEST(Items, AfterACommaAtTheEndOfTheFileNothingFollows) {
    ItemInput input = ItemsOf("a,");
    EXPECT_EQ(ReadText(input, Input::Lenient), "a");
    EXPECT_THROW(ReadText(input, Input::Lenient), RuntimeError);
    EXPECT_THAT(TextsOf("1,2"), ElementsAre("1", "2"));
    ItemInput two = ItemsOf("1,2");
    ReadText(two, Input::Strict);
    ReadText(two, Input::Strict);
    try {
        ReadText(two, Input::Strict);
        FAIL() << "a third item";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number, InputPastEnd);
    }
}

TEST(Items, QuotesKeepLineEndsCommasAndBlanks) {
    ItemInput input = ItemsOf("\"two\r\nlines\",1\r\n");
    EXPECT_EQ(ReadText(input, Input::Strict), "two\r\nlines");
    EXPECT_EQ(ReadInteger(input, Input::Strict), 1);
    EXPECT_THAT(TextsOf("\"  a , b\t\"\n"), ElementsAre("  a , b\t"));
}

TEST(Items, BehindAClosingQuoteBlanksAreSkippedAndOneDelimiterTaken) {
    EXPECT_THAT(TextsOf("\"a\" \t,\"b\"\r\n\"c\""), ElementsAre("a", "b", "c"));
}

TEST(Items, OtherCharactersBehindAClosingQuoteBeginTheNextItem) {
    EXPECT_THAT(TextsOf("\"say \"hi\" now\"\n"), ElementsAre("say ", "hi\" now\""));
    EXPECT_THAT(TextsOf("\"1,2\"\"X\"\n"), ElementsAre("1,2", "X"));
}

TEST(Items, StrictlyTheyAreATypeMismatch) {
    EXPECT_THAT(TextsOf("\"say \"hi\" now\"\n", Input::Strict), ElementsAre("<13>"));
    EXPECT_THAT(TextsOf("\"1,2\"\"X\"\n", Input::Strict), ElementsAre("<13>"));
}

TEST(Items, WithoutAClosingQuoteTheFileHasEnded) {
    EXPECT_THAT(TextsOf("a,\"b\r\nc"), ElementsAre("a", "<62>"));
    EXPECT_THAT(TextsOf("\"", Input::Strict), ElementsAre("<62>"));
}

TEST(Items, QuotesInsideAnUnquotedItemAreOrdinary) {
    EXPECT_THAT(TextsOf("5\" pipe,x\"\n"), ElementsAre("5\" pipe", "x\""));
}

TEST(Items, TheEndOfFileByteEndsTheFile) {
    EXPECT_THAT(TextsOf(std::string("a,b\x1A,c\n")), ElementsAre("a", "b"));
    EXPECT_TRUE(AtEnd(ItemsOf("\x1A"
                              "abc")));
    EXPECT_THAT(TextsOf("\"a\x1A\"\n"), ElementsAre("<62>"));
}

TEST(Items, ARecordMayStandOnSeveralLinesAndSeveralOnOne) {
    ItemInput input = ItemsOf("1\n2,3,4\n");
    for (const int expected : {1, 2, 3, 4}) EXPECT_EQ(ReadInteger(input, Input::Strict), expected);
}

TEST(ItemNumbers, AreRoundedHalfToEven) {
    struct {
        const char *Text;
        long Number;
    } constexpr Expected[] = {
        {"7", 7},         {"+7", 7},          {"-7", -7},         {"\"7\"", 7},         {" 7 ", 7},    {"2.5", 2},
        {"3.5", 4},       {"-2.5", -2},       {"0.4", 0},         {"1E2", 100},         {"1e+2", 100}, {"25E-1", 2},
        {"32767", 32767}, {"32767.4", 32767}, {"-32768", -32768}, {"-32768.5", -32768}, {"007", 7},    {"1E-400", 0}};
    for (const auto &[text, number] : Expected) {
        EXPECT_EQ(NumberIn(text, Input::Lenient), number) << text;
        EXPECT_EQ(NumberIn(text, Input::Strict), number) << text;
    }
}

TEST(ItemNumbers, OutsideTheirRangeAreAnOverflow) {
    for (const char *text : {"32768", "-32769", "32767.5", "1E9", "1E400", "99999999999999999999"}) {
        EXPECT_EQ(NumberIn(text, Input::Lenient), OverflowError) << text;
        EXPECT_EQ(NumberIn(text, Input::Strict), OverflowError) << text;
    }
}

TEST(ItemNumbers, AnyOtherTextIsZeroOrAMismatch) {
    for (const char *text :
         {"abc,", ",", "1x", "1 2", "--1", "+", "5.", ".5", "1E", "1E+", "0x10", "inf", "nan", "\" 7\"", "\"\""}) {
        EXPECT_EQ(NumberIn(text, Input::Lenient), 0) << text;
        EXPECT_EQ(NumberIn(text, Input::Strict), MismatchError) << text;
    }
}

TEST(ItemNumbers, AtTheEndOfTheFileThereIsNone) { EXPECT_EQ(NumberIn("  ", Input::Lenient), PastEndError); }

TEST(ItemNumbers, ColoursHaveThirtyTwoBits) {
    ItemInput input = ItemsOf("2147483647,-2147483648,2147483648\n");
    EXPECT_EQ(ReadLong(input, Input::Lenient), INT32_MAX);
    EXPECT_EQ(ReadLong(input, Input::Lenient), INT32_MIN);
    EXPECT_THROW(ReadLong(input, Input::Lenient), RuntimeError);
}

TEST(ItemNumbers, HaveAPointInEveryLocale) {
    if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr) std::setlocale(LC_ALL, "");
    EXPECT_EQ(NumberIn("1.5E1", Input::Strict), 15);
}

TEST(Items, AreWrittenInQuotesUnchanged) {
    EXPECT_EQ(Quoted(""), "\"\"");
    EXPECT_EQ(Quoted(" a\r\nb, c "), "\" a\r\nb, c \"");
}

TEST(Items, ALoneLineEndBecomesThePair) {
    EXPECT_EQ(WithWholeLineBreaks("a\nb\rc\r\nd"), "a\r\nb\r\nc\r\nd");
    EXPECT_EQ(WithWholeLineBreaks("\n\r"), "\r\n\r\n");
    EXPECT_EQ(WithWholeLineBreaks("\r"), "\r\n");
}

// Whatever the bytes, reading comes to an end with an item or an error, and what is written comes back.
TEST(Items, AnyBytesAreReadToTheirEnd) {
    constexpr std::string_view Likely = "\"\",,\r\n \t1x-.E\x1A\x80";
    std::mt19937 random(2);
    for (int round = 0; round < 20000; ++round) {
        std::string bytes;
        for (std::size_t i = random() % 40; i > 0; --i) bytes += Likely[random() % Likely.size()];
        for (const Input fault : {Input::Lenient, Input::Strict}) {
            ItemInput input = ItemsOf(bytes);
            std::size_t items = 0;
            try {
                while (!AtEnd(input)) {
                    BeginRecord(input);
                    const std::size_t before = input.At;
                    if (random() % 2 == 0)
                        ReadText(input, fault);
                    else
                        ReadInteger(input, fault);
                    ASSERT_GT(input.At, before) << bytes;
                    ++items;
                }
            } catch (const RuntimeError &error) {
                EXPECT_TRUE(error.Number == InputPastEnd || error.Number == TypeMismatch || error.Number == Overflow);
            }
            ASSERT_LE(items, bytes.size());
        }
    }
}

TEST(Items, WhatIsWrittenComesBack) {
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (std::size_t i = random() % 20; i > 0; --i) {
            const char c = static_cast<char>(random());
            if (c != '"' && c != '\x1A') text += c;
        }
        ItemInput input = ItemsOf(Quoted(text) + "," + std::to_string(round) + "\r\n");
        ASSERT_EQ(ReadText(input, Input::Strict), text);
        ASSERT_EQ(ReadInteger(input, Input::Strict), round);
        ASSERT_TRUE(AtEnd(input));
    }
}

// Eight times the bytes must not take anything like sixty-four times as long.
TEST(Items, ReadingIsLinearInTheBytes) {
    const auto secondsFor = [](const std::string &line, std::size_t count) {
        std::string bytes;
        for (std::size_t i = 0; i < count; ++i) bytes += line;
        double least = 1e9; // of three: what other programs take from the processor's cache is no part of it
        for (int i = 0; i < 3; ++i) {
            const std::clock_t start = std::clock();
            TextsOf(bytes);
            least = std::min(least, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
        }
        return least;
    };
    for (const std::string line : {"a,b\r\n", "\"a\"\"b\"\n", "\n", ",", "\"", "x\"y,"})
        EXPECT_LT(secondsFor(line, 160000), secondsFor(line, 20000) * 32 + 0.05) << line;
}
