// Windows-1252 there and back, and its letters.
#include "platform/codepage.h"

#include <gtest/gtest.h>

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

TEST(CodePage, TellsWhatItHolds) {
    EXPECT_TRUE(FitsCodePage("plain, long enough for eight and more"));
    EXPECT_TRUE(FitsCodePage(ToUtf8(AllBytes())));
    for (const char *text : {"Ł", "a long text with one Ω in it", "山", "e\u0301", "😀"})
        EXPECT_FALSE(FitsCodePage(text));
}

TEST(CodePage, BytesThatAreNoUtf8AreReadByIt) {
    std::size_t first = 0;
    EXPECT_EQ(RepairedUtf8("Ω and \xE9", first), "Ω and é");
    EXPECT_EQ(first, 7u);
    EXPECT_EQ(RepairedUtf8("\xC3\xC3\xA9\x80", first), "Ãé€");
    EXPECT_EQ(first, 0u);
    EXPECT_EQ(RepairedUtf8("Ω \uFFFD", first), "Ω \uFFFD"); // a character of its own
    EXPECT_EQ(first, std::string::npos);
    EXPECT_TRUE(IsUtf8("Ω \uFFFD"));
    EXPECT_FALSE(IsUtf8("Ω \xE9"));
    EXPECT_FALSE(IsUtf8("\xED\xA0\x80")); // half of a pair
    EXPECT_FALSE(IsUtf8("\xC0\xAF"));     // longer than it needs
}

TEST(CodePage, ANameIsShownByItsCharactersOrItsBytes) {
    EXPECT_EQ(NameText("m\xC3\xA4rz"), "märz");
    EXPECT_EQ(NameText("m\xE4rz"), "märz");
    EXPECT_EQ(NameText("Ω"), "Ω");
}
