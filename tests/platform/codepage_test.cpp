// Windows-1252 there and back, and its letters.
#include "platform/codepage.h"

#include <gtest/gtest.h>

#include <random>

namespace {

std::string AllBytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(static_cast<unsigned char>(byte));
    return bytes;
}

} // namespace

TEST(CodePage, EveryByteSurvivesTheWayThereAndBack) {
    bool replaced = false;
    EXPECT_EQ(FromUtf8(ToUtf8(AllBytes()), &replaced), AllBytes());
    EXPECT_FALSE(replaced);
}

TEST(CodePage, HoldsTheCharactersOfWindows1252) {
    EXPECT_EQ(ToCodePage(U'€'), '\x80');
    EXPECT_EQ(ToCodePage(U'“'), '\x93');
    EXPECT_EQ(ToCodePage(U'™'), '\x99');
    EXPECT_EQ(ToCodePage(U'Ÿ'), '\x9F');
    EXPECT_EQ(ToCodePage(U'é'), '\xE9');
    EXPECT_EQ(ToCodePage(0x81), '\x81');
    EXPECT_EQ(ToCodePage(0x9D), '\x9D');
    EXPECT_EQ(ToUtf8("\x80\x85\xE4"), "€…ä");
}

TEST(CodePage, HasNoOtherCharacter) {
    for (const char32_t c :
         {char32_t{0x80}, char32_t{0x100}, char32_t{0x9F}, U'Ω', U'東', char32_t{0xFFFD}, char32_t{0x1F600}})
        EXPECT_FALSE(ToCodePage(c)) << static_cast<unsigned>(c);
}

TEST(CodePage, EveryForeignCharacterBecomesOneQuestionMark) {
    bool replaced = false;
    EXPECT_EQ(FromUtf8("aΩ東😀é", &replaced), "a???\xE9");
    EXPECT_TRUE(replaced);
}

TEST(CodePage, EachByteOfAFaultySequenceCounts) {
    EXPECT_EQ(Characters("a\xC3"), U"a\xFFFD");
    EXPECT_EQ(Characters("\xE2\x82"), U"\xFFFD\xFFFD");
    EXPECT_EQ(Characters("\xFF\x80z"), U"\xFFFD\xFFFDz");
    EXPECT_EQ(Characters("\xC3\xC3\xA9"), U"\xFFFD\u00E9");
}

// A character written longer than it needs would let a text pass that is tested for that character.
TEST(CodePage, AnOverlongSequenceIsFaulty) {
    EXPECT_EQ(Characters("\xC0\xAF"), U"\xFFFD\xFFFD");
    EXPECT_EQ(Characters("\xE0\x80\xAF"), U"\xFFFD\xFFFD\xFFFD");
    EXPECT_EQ(Characters("\xF0\x80\x80\xAF"), U"\xFFFD\xFFFD\xFFFD\xFFFD");
}

TEST(CodePage, HalfACharacterOrOneBeyondTheLastIsFaulty) {
    EXPECT_EQ(Characters("\xED\xA0\x80"), U"\xFFFD\xFFFD\xFFFD");
    EXPECT_EQ(Characters("\xF4\x90\x80\x80"), U"\xFFFD\xFFFD\xFFFD\xFFFD");
    EXPECT_EQ(Characters("\xF4\x8F\xBF\xBF").front(), char32_t{0x10FFFF});
    EXPECT_EQ(Characters("\xED\x9F\xBF").front(), char32_t{0xD7FF});
}

TEST(CodePage, AnyBytesGiveAtMostOneCharacterEach) {
    std::mt19937 random(1); // the same bytes in every run
    for (int round = 0; round < 2000; ++round) {
        std::string bytes;
        for (std::size_t i = random() % 12; i > 0; --i) bytes += static_cast<char>(random());
        EXPECT_LE(Characters(bytes).size(), bytes.size());
        EXPECT_EQ(FromUtf8(bytes).size(), Characters(bytes).size());
    }
}

TEST(CodePage, LettersChangeTheirCaseOneForOne) {
    EXPECT_EQ(UpperCase("abc xyz 1\xE9\xFE\x9A\x9C\x9E\xFF"), "ABC XYZ 1\xC9\xDE\x8A\x8C\x8E\x9F");
    EXPECT_EQ(LowerCase("ABC XYZ 1\xC9\xDE\x8A\x8C\x8E\x9F"), "abc xyz 1\xE9\xFE\x9A\x9C\x9E\xFF");
}

TEST(CodePage, WhatHasNoOtherCaseStays) {
    constexpr const char *Caseless = "\xDF\xF7\xD7\xB5\x83@[`{";
    EXPECT_EQ(UpperCase(Caseless), Caseless);
    EXPECT_EQ(LowerCase(Caseless), Caseless);
}

TEST(CodePage, BothCasesLeadBackToEachOther) {
    for (const char byte : AllBytes()) {
        const std::string upper = UpperCase(std::string(1, byte));
        EXPECT_EQ(UpperCase(LowerCase(upper)), upper);
    }
}

TEST(CodePage, ANameIsShownByItsCharactersOrItsBytes) {
    EXPECT_EQ(NameText("m\xC3\xA4rz"), "m\xE4rz");
    EXPECT_EQ(NameText("m\xE4rz"), "m\xE4rz");
    EXPECT_EQ(NameText("Ω"), "?");
}
