// Characters of all scripts: what counts as one, how wide it is, its cases.
#include "platform/characters.h"

#include "platform/codepage.h"

#include <gtest/gtest.h>

#include <random>

namespace {

constexpr const char *Family = "\U0001F468\u200D\U0001F469\u200D\U0001F467"; // one emoji of three
constexpr const char *Flag = "\U0001F1F5\U0001F1F1";                         // of two letters

std::string Times(int count, const std::string &text) {
    std::string result;
    for (; count > 0; --count) result += text;
    return result;
}

} // namespace

TEST(Characters, AreWhatAReaderTakesForOne) {
    EXPECT_EQ(Length(""), 0u);
    EXPECT_EQ(Length("abc"), 3u);
    EXPECT_EQ(Length("Łódź −25 ‰"), 10u);
    EXPECT_EQ(Length("x\u030Cy"), 2u);
    EXPECT_EQ(Length(Family), 1u);
    EXPECT_EQ(Length(Flag), 1u);
    EXPECT_EQ(Length(Times(3, Flag)), 3u);
    EXPECT_EQ(Length("a\r\nb"), 4u);
    EXPECT_EQ(Length("\u1112\u1161\u11AB"), 1u); // a syllable of three letters
}

TEST(Characters, AreNoLongerThanAnyWritingNeeds) {
    const std::string letter = "x" + Times(1000000, "\u0301");
    EXPECT_EQ(CharacterLength(letter, 0), 63u); // a byte, and 31 marks of two
    EXPECT_EQ(Length(letter), 31251u);
    EXPECT_LE(FirstCharacters(letter, 50).size(), 50 * LongestCharacter);
}

TEST(Characters, AreNeverCutInTwo) {
    EXPECT_EQ(FirstCharacters("x\u030Cy\u030Cz", 2), "x\u030Cy\u030C");
    EXPECT_EQ(FirstCharacters("山田太郎", 3), "山田太");
    EXPECT_EQ(FirstCharacters("ab", 3), "ab");
    EXPECT_EQ(FirstCharacters("ab", 0), "");
    EXPECT_EQ(LastCharacters("x\u030Cy\u030Cz", 2), "y\u030Cz");
    EXPECT_EQ(LastCharacters("ab", 3), "ab");
    EXPECT_EQ(LastCharacters("ab", 0), "");
    EXPECT_EQ(FirstCharacters(std::string(Family) + "a", 1), Family);
}

TEST(Characters, WideOnesTakeTwoColumnsAndMarksNone) {
    EXPECT_EQ(Columns("abc é Ω"), 7u);
    EXPECT_EQ(Columns("山田"), 4u);
    EXPECT_EQ(Columns("x\u030C"), 1u);
    EXPECT_EQ(Columns("\u030C"), 1u);
    EXPECT_EQ(Columns("\u200E"), 0u);
    EXPECT_EQ(Columns(Family), 2u);
    EXPECT_EQ(Columns(Flag), 2u);
    EXPECT_EQ(Columns("\u2764\uFE0F"), 2u); // a heart as an emoji
    EXPECT_EQ(Columns("a\tb\r\n"), 5u);
    EXPECT_EQ(Columns("\uFF76\uAC00"), 3u); // half a width, and whole
}

TEST(Characters, ATextIsFittedIntoColumns) {
    EXPECT_EQ(FirstColumns("a山b", 2), "a");
    EXPECT_EQ(FirstColumns("a山b", 3), "a山");
    EXPECT_EQ(LastColumns("a山b", 2), "b");
    EXPECT_EQ(LastColumns("a山b", 3), "山b");
    EXPECT_EQ(FirstColumns("abc", 2), "ab");
    EXPECT_EQ(LastColumns("abc", 2), "bc");
}

TEST(Characters, AMarkBecomesOneWithItsLetter) {
    EXPECT_EQ(Composed("e\u0301 Z\u030C"), "é Ž");
    EXPECT_EQ(Composed("x\u030C"), "x\u030C");
    EXPECT_EQ(Composed("plain"), "plain");
    EXPECT_EQ(Composed("\u1112\u1161\u11AB"), "한");
    EXPECT_EQ(Composed("no UTF-8: \xE9"), "no UTF-8: \xE9");
}

TEST(Characters, OfOtherScriptsHaveCasesToo) {
    EXPECT_EQ(UpperCase("łódź ελένη жа"), "ŁÓDŹ ΕΛΈΝΗ ЖА");
    EXPECT_EQ(LowerCase("ŁÓDŹ ΕΛΈΝΗ ЖА"), "łódź ελένη жа");
}

TEST(Characters, EachByteOfAFaultySequenceCounts) {
    EXPECT_EQ(CodePoints("a\xC3"), U"a\xFFFD");
    EXPECT_EQ(CodePoints("\xE2\x82"), U"\xFFFD\xFFFD");
    EXPECT_EQ(CodePoints("\xFF\x80z"), U"\xFFFD\xFFFDz");
    EXPECT_EQ(CodePoints("\xC3\xC3\xA9"), U"\xFFFD\u00E9");
}

TEST(Characters, AByteThatLeadsNothingIsNoneWhateverFollows) {
    for (int lead = 0x80; lead <= 0xFF; ++lead) {
        if (lead >= 0xC2 && lead < 0xF5) continue;
        EXPECT_EQ(CodePoints(static_cast<char>(lead) + std::string("\xBF\xBF\xBF")), std::u32string(4, U'\xFFFD'))
            << lead;
    }
}

// A character written longer than it needs would let a text pass that is tested for that character.
TEST(Characters, AnOverlongSequenceIsFaulty) {
    EXPECT_EQ(CodePoints("\xC0\xAF"), U"\xFFFD\xFFFD");
    EXPECT_EQ(CodePoints("\xE0\x80\xAF"), U"\xFFFD\xFFFD\xFFFD");
    EXPECT_EQ(CodePoints("\xF0\x80\x80\xAF"), U"\xFFFD\xFFFD\xFFFD\xFFFD");
}

TEST(Characters, HalfACharacterOrOneBeyondTheLastIsFaulty) {
    EXPECT_EQ(CodePoints("\xED\xA0\x80"), U"\xFFFD\xFFFD\xFFFD");
    EXPECT_EQ(CodePoints("\xF4\x90\x80\x80"), U"\xFFFD\xFFFD\xFFFD\xFFFD");
    EXPECT_EQ(CodePoints("\xF4\x8F\xBF\xBF").front(), char32_t{0x10FFFF});
    EXPECT_EQ(CodePoints("\xED\x9F\xBF").front(), char32_t{0xD7FF});
}

TEST(Characters, AnyBytesGiveAtMostOneCharacterEach) {
    std::mt19937 random(1); // the same bytes in every run
    for (int round = 0; round < 2000; ++round) {
        std::string bytes;
        for (std::size_t i = random() % 12; i > 0; --i) bytes += static_cast<char>(random());
        EXPECT_LE(CodePoints(bytes).size(), bytes.size());
        EXPECT_EQ(FromUtf8(bytes).size(), CodePoints(bytes).size());
        EXPECT_LE(Length(bytes), CodePoints(bytes).size());
        EXPECT_LE(Columns(bytes), bytes.size());
    }
}

TEST(Characters, LettersChangeTheirCaseOneForOne) {
    EXPECT_EQ(UpperCase("abc xyz 1éþšœžÿ"), "ABC XYZ 1ÉÞŠŒŽŸ");
    EXPECT_EQ(LowerCase("ABC XYZ 1ÉÞŠŒŽŸ"), "abc xyz 1éþšœžÿ");
}

TEST(Characters, WhatHasNoOtherCaseStays) {
    constexpr const char *Caseless = "ß÷×µƒ@[`{山";
    EXPECT_EQ(UpperCase(Caseless), Caseless);
    EXPECT_EQ(LowerCase(Caseless), Caseless);
}

TEST(Characters, BothCasesLeadBackToEachOther) {
    for (char32_t c = 1; c < 0x180; ++c) {
        std::string letter;
        AppendCodePoint(letter, c);
        const std::string upper = UpperCase(letter);
        if (c == U'ŉ' || c == U'ı' || c == U'İ') continue; // have no other case of one letter
        EXPECT_EQ(UpperCase(LowerCase(upper)), upper) << letter;
    }
}
