// Rows of the field list and what the keys do on it.
#include "support/screen_test.h"

namespace {

class FieldList : public ScreenTest {};

} // namespace

TEST_F(FieldList, ARowIsABlankTheFittedTitleAndABar) {
    Start({R"(1,30,"TEXT","Title","","")"});
    EXPECT_EQ(Row(0), " Title                     | ");
}

TEST_F(FieldList, EnterCommitsATypedValueAndSelectsTheNextRow) {
    Start({R"(1,30,"TEXT","Title","","")", R"(1,30,"TEXT","Place","","")"});
    Enter(0, "Wells");
    EXPECT_EQ(Row(0), " Title                     | Wells");
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}
