// A number that tells texts apart.
#include "platform/checksum.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

std::uint64_t SumOf(std::string_view text) { return Checksum().Add(text).Value(); }

const std::string Text = "A text of some more than three times eight bytes";

} // namespace

TEST(Checksum, HoweverATextIsDividedItsNumberIsTheSame) {
    for (std::size_t first = 0; first <= Text.size(); ++first)
        for (std::size_t second = first; second <= Text.size(); ++second) {
            Checksum sum;
            sum.Add(Text.substr(0, first)).Add(Text.substr(first, second - first)).Add(Text.substr(second));
            EXPECT_EQ(sum.Value(), SumOf(Text)) << first << " " << second;
        }
}

// Files of an earlier version hold them.
TEST(Checksum, ATextHasTheSameNumberInEveryVersion) {
    EXPECT_EQ(SumOf(""), 0x860389C57A9C1205U);
    EXPECT_EQ(SumOf("a"), 0xEB9A3D4FB2EC2C36U);
    EXPECT_EQ(SumOf(Text), 0xA2326EBB24B60C0DU);
}

TEST(Checksum, ADifferenceInOneByteIsAnotherNumber) {
    std::set<std::uint64_t> sums{SumOf(Text)};
    for (std::size_t at = 0; at < Text.size(); ++at)
        for (int difference = 1; difference < 256; ++difference) {
            std::string other = Text;
            other[at] = static_cast<char>(other[at] ^ difference);
            sums.insert(SumOf(other));
        }
    EXPECT_EQ(sums.size(), 1 + Text.size() * 255);
}

TEST(Checksum, ZerosAtTheBeginningOrTheEndCount) {
    std::set<std::uint64_t> sums;
    for (std::size_t zeros = 0; zeros < 40; ++zeros) {
        sums.insert(SumOf(std::string(zeros, '\0') + "a"));
        sums.insert(SumOf("a" + std::string(zeros, '\0')));
    }
    EXPECT_EQ(sums.size(), 79U);
}
