// What two states of the entries differ in, and the way from the one to the other.
#include "model/entries_image.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

constexpr Integer Head = 3;

EntriesImage ImageOf(const std::string &first, const std::string &second, const std::string &store) {
    EntriesImage image;
    image.Rows.Size(1);
    image.Rows[0] = first;
    image.Rows[1] = second;
    image.Stores[Head] = {1, false, store};
    return image;
}

// What leads from the second state back to the first, the known one being the second then.
EntriesDifference Taken(EntriesImage &known, const EntriesImage &now) {
    EntriesDifference former;
    TakeRows(known, now.Rows, former);
    TakeStore(known, Head, now.Stores.at(Head), former);
    return former;
}

} // namespace

TEST(EntriesImage, OfEqualStatesNothingIsKept) {
    EntriesImage known = ImageOf("a", "b", "cells");
    EXPECT_TRUE(Taken(known, ImageOf("a", "b", "cells")).IsEmpty());
}

TEST(EntriesImage, OnlyWhatDiffersIsKept) {
    EntriesImage known = ImageOf("a", "b", "one  two  three");
    const EntriesDifference former = Taken(known, ImageOf("a", "c", "one  three"));
    ASSERT_EQ(former.Rows.size(), 1U);
    EXPECT_EQ(former.Rows[0], std::make_pair(Integer{1}, std::string("b")));
    ASSERT_EQ(former.Stores.size(), 1U);
    EXPECT_EQ(former.Stores[0].At, 6U); // "one  t" is common
    EXPECT_EQ(former.Stores[0].Bytes, "wo  t");
    EXPECT_EQ(former.Stores[0].Others, 0U);
}

TEST(EntriesImage, APartOfAStoreIsTakenWhereItStands) {
    EntriesImage known = ImageOf("", "", "aaaabbbbcccc");
    EntriesDifference former;
    TakePart(known, Head, 4, 4, "bXXb", former);
    EXPECT_EQ(known.Stores[Head].Bytes, "aaaabXXbcccc");
    EXPECT_EQ(former.Stores[0].At, 5U);
    EXPECT_EQ(former.Stores[0].Bytes, "bb");
}

TEST(EntriesImage, ExchangingLeadsThereAndBack) {
    std::mt19937 random(1);
    const auto text = [&] {
        std::string letters(random() % 9, 'a');
        for (char &letter : letters) letter = static_cast<char>('a' + random() % 2);
        return letters;
    };
    for (int round = 0; round < 2000; ++round) {
        const EntriesImage first = ImageOf(text(), text(), text());
        EntriesImage second = ImageOf(text(), text(), text());
        if (round % 2 == 1) second.Stores[Head].Record = 2; // in another layout
        second.Stores[Head].Wide = round % 4 == 3;
        EntriesImage known = first;
        EntriesDifference difference = Taken(known, second);
        ASSERT_EQ(known, second);
        Exchange(known, difference);
        ASSERT_EQ(known, first);
        Exchange(known, difference);
        ASSERT_EQ(known, second);
    }
}
