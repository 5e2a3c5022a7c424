// The text of rows.
#include "model/row_text.h"

#include "support/screen_test.h"
#include "support/template_lines.h"

using testing::ElementsAre;

namespace {

class Rows : public ScreenTest {};

struct FittedTitle {
    const char *Title;
    const char *Shown;
};

constexpr std::array FittedTitles{
    FittedTitle{"", "                          "},
    FittedTitle{"A", "A                         "},
    FittedTitle{"A title of 25 characters.", "A title of 25 characters. "},
    FittedTitle{"A title of 26 characters..", "A title of 26 characters.."},
    FittedTitle{"A title of 27 characters...", "...tle of 27 characters..."},
};

} // namespace

TEST_F(Rows, ATitleIsFittedInto26CharactersByCuttingItsStart) {
    for (const auto &[title, shown] : FittedTitles) {
        EXPECT_EQ(FitTitle(title), shown);
        EXPECT_EQ(RowPrefix(title), std::string(" ") + shown + "| ");
    }
}

TEST_F(Rows, TheFieldListFitsTheTitlesOfTheTemplate) {
    Start({Element(1, 30, "TEXT", FittedTitles[3].Title), Element(1, 30, "TEXT", FittedTitles[4].Title)});
    EXPECT_EQ(Row(0), " A title of 26 characters..| ");
    EXPECT_EQ(Row(1), " ...tle of 27 characters...| ");
    EXPECT_EQ(FieldTitle[2], FittedTitles[4].Title);
}

TEST_F(Rows, AValueOf29CharactersShowsWholeAndOneOf30IsCut) {
    Start({Element(1, 60, "TEXT", "Title")});
    Enter(0, std::string(28, 'a') + "z");
    EXPECT_EQ(Row(0), RowOf("Title", std::string(28, 'a') + "z"));
    EXPECT_EQ(Row(0).size(), 58u);
    Enter(0, "b");
    EXPECT_EQ(Row(0), RowOf("Title", std::string(26, 'a') + "..."));
    EXPECT_EQ(RowValue[0], std::string(28, 'a') + "zb");
}

TEST_F(Rows, ASectionBreakBelowTheSecondRowIsARowOfDashes) {
    Start({Element(1, 30, "TEXT", "Title"), Element(1, 30, "TEXT", "Place"), Element(1, -1, "", "Field work"),
           Element(1, 30, "TEXT", "Depth")});
    EXPECT_EQ(Row(2), " - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - ");
    EXPECT_EQ(Row(2).size(), 63u);
    EXPECT_EQ(Row(2), SeparatorRow());
}

TEST_F(Rows, AGroupsRowSaysSoAndItsMembersHaveTheSameFirst29Characters) {
    Start({Element(1, 2, "GROUP START", "Samples"), Element(2, 30, "TEXT", FittedTitles[4].Title),
           Element(2, 4, "TEXT", "Depth"), Element(1, 0, "GROUP END", "")});
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre(" Samples                   | -- REPEATABLE GROUP --"));
    Open(0);
    EXPECT_THAT(Quintave.List1[GroupList].Rows, ElementsAre(" ...tle of 27 characters...| ", RowOf("Depth")));
}

TEST(RowText, AMarkInFrontOfAValueGoesWithIt) {
    const std::string row = RowWithValue(RowPrefix("Title"), "\u0301abc");
    EXPECT_EQ(row, RowPrefix("Title") + "\u0301abc");
    EXPECT_EQ(RowWithValue(row, "x"), RowPrefix("Title") + "x");
    EXPECT_EQ(RowWithValue(row, ""), RowPrefix("Title"));
}

TEST(RowText, OfWideCharactersIsCutByItsColumns) {
    EXPECT_EQ(RowPrefix("山田太郎山田太郎山田太郎山田"), " ... 郎山田太郎山田太郎山田| ");
    EXPECT_EQ(RowWithValue(RowPrefix("A"), "山田太郎山田太郎山田太郎山田太"),
              RowPrefix("A") + "山田太郎山田太郎山田太郎山...");
}
