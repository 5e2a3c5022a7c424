// Numbers, texts and errors of the runtime.
#include "platform/runtime.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>

namespace {

Integer NumberOf(void (*act)()) {
    try {
        act();
    } catch (const RuntimeError &error) {
        return error.Number;
    }
    return 0;
}

} // namespace

TEST(Integers, EveryNumberOfSixteenBitsPasses) {
    EXPECT_EQ(ToInteger(32767), 32767);
    EXPECT_EQ(ToInteger(-32768), -32768);
    EXPECT_EQ(ToInteger(std::size_t{32767}), 32767);
}

TEST(Integers, PastSixteenBitsIsAnOverflow) {
    EXPECT_EQ(NumberOf([] { ToInteger(32768); }), Overflow);
    EXPECT_EQ(NumberOf([] { ToInteger(-32769L); }), Overflow);
    EXPECT_EQ(NumberOf([] { ToInteger(std::numeric_limits<std::size_t>::max()); }), Overflow);
    EXPECT_EQ(NumberOf([] { ToInteger(LLONG_MIN); }), Overflow);
}

TEST(Integers, TruthIsMinusOneOrZero) {
    EXPECT_EQ(Truth(true), -1);
    EXPECT_EQ(Truth(false), 0);
}

TEST(Tables, HaveOneCellAtFirst) {
    Table<Integer> table;
    EXPECT_EQ(table.UpperBound(), 0);
    EXPECT_EQ(table[0], 0);
}

TEST(Tables, AreEmptiedBySizing) {
    Table<Integer> table;
    table[0] = 7;
    table.Size(3);
    EXPECT_EQ(table.UpperBound(), 3);
    EXPECT_EQ(table[0], 0);
}

TEST(Tables, AnIndexOutsideIsAnError) {
    EXPECT_EQ(NumberOf([] { Table<Integer>()[1] = 1; }), SubscriptOutOfRange);
    EXPECT_EQ(NumberOf([] { Table<Integer>()[-1] = 1; }), SubscriptOutOfRange);
}

TEST(Tables, HoldTheLargestIndex) {
    Table<char> table;
    table.Size(32767);
    EXPECT_EQ(table.UpperBound(), 32767);
}

TEST(Errors, EachNumberHasItsDescription) {
    struct {
        Integer Number;
        const char *Text;
    } constexpr Expected[] = {{5, "5 - Invalid procedure call or argument"},
                              {6, "6 - Overflow"},
                              {7, "7 - Out of memory"},
                              {9, "9 - Subscript out of range"},
                              {13, "13 - Type mismatch"},
                              {52, "52 - Bad file name or number"},
                              {53, "53 - File not found"},
                              {54, "54 - Bad file mode"},
                              {55, "55 - File already open"},
                              {57, "57 - Device I/O error"},
                              {58, "58 - File already exists"},
                              {61, "61 - Disk full"},
                              {62, "62 - Input past end of file"},
                              {67, "67 - Too many files"},
                              {68, "68 - Device unavailable"},
                              {70, "70 - Permission denied"},
                              {75, "75 - Path/File access error"},
                              {76, "76 - Path not found"},
                              {482, "482 - Printer error"},
                              {99, "99 - Application-defined error"}};
    for (const auto &[number, text] : Expected) EXPECT_EQ(ErrorText(number), text);
}

TEST(Texts, TrimTakesBlanksOnly) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\t a"), "\t a");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(RTrim("  a  "), "  a");
    EXPECT_EQ(RTrim("a\t "), "a\t");
    EXPECT_EQ(RTrim("  "), "");
}

TEST(Texts, TheNumberAtTheStartCounts) {
    struct {
        const char *Text;
        std::int32_t Number;
    } constexpr Expected[] = {{"75x", 75}, {"", 0},    {"-3", -3}, {"  12 ", 12}, {"+4", 4}, {"x7", 0},
                              {"- 3", 0},  {"007", 7}, {"-", 0},   {"1 2", 1},    {"\t5", 0}};
    for (const auto &[text, number] : Expected) EXPECT_EQ(NumericValue(text), number) << text;
}

TEST(Texts, DecimalsAndAPowerOfTenBelongToADecimalNumber) {
    struct {
        const char *Text;
        double Number;
    } constexpr Expected[] = {{"60.5", 60.5}, {"-0.5", -0.5}, {"1e2", 100},  {"1E2", 100}, {"25e-1", 2.5},
                              {".5", 0.5},    {"75x", 75},    {"  12 ", 12}, {"+4", 4},    {"5.", 5},
                              {"1e", 1},      {"", 0},        {"-", 0},      {"x7", 0},    {"+-4", 0},
                              {"inf", 0},     {"nan", 0},     {".", 0},      {"1,5", 1},   {"0x10", 0}};
    for (const auto &[text, number] : Expected) EXPECT_EQ(DecimalValue(text), number) << text;
    EXPECT_GT(DecimalValue("1e999"), 1e308);
    EXPECT_LT(DecimalValue("-1e999"), -1e308);
    EXPECT_EQ(DecimalValue("1e-999"), 0);
}

TEST(Texts, ANumberStaysWithinThirtyTwoBits) {
    EXPECT_EQ(NumericValue("2147483647"), INT32_MAX);
    EXPECT_EQ(NumericValue("99999999999999999999999"), INT32_MAX);
    EXPECT_EQ(NumericValue("-99999999999999999999999"), -INT32_MAX);
}
