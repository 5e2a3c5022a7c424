// A list with more choices than it shows at once.
#include "window/window_test.h"

#include "window/templates.h"

#include <QApplication>
#include <QScrollBar>

#include <cstdlib>

namespace {

class LongChoices : public WindowTest, public testing::WithParamInterface<int> {
protected:
    // "A 00" to "Z 25", a second one with M, and one that is wider.
    static std::vector<std::string> Choices26() {
        std::vector<std::string> choices;
        for (int i = 0; i < 26; ++i)
            choices.push_back(std::string(1, static_cast<char>('A' + i)) + (i < 10 ? " 0" : " ") + std::to_string(i));
        choices[5] = "F and a number of words";
        choices[13] = "M 13";
        return choices;
    }

    // Title, then the two lists: Kind, and Rock in a group.
    static std::vector<std::string> Template() {
        std::vector<std::string> lines{R"(1,40,"TEXT","Title","","")", R"(1,40,"LIST","Kind","","")"};
        for (const std::string &choice : Choices26()) lines.push_back(choice);
        lines.insert(lines.end(), {"XXX-1XXX", R"(1,20,"GROUP START","Samples","","")", R"(2,8,"TEXT","Depth","","")",
                                   R"(2,40,"LIST","Rock","","")"});
        for (const std::string &choice : Choices26()) lines.push_back(choice);
        lines.insert(lines.end(), {"XXX-1XXX", R"(1,1,"GROUP END","","","")"});
        return lines;
    }

    static constexpr int KindRow = 1;
    static constexpr int GroupRow = 2;
    static constexpr int RockRow = 1;

    static QRect PlaceOf(const QListView &list, int row) { return list.visualRect(list.model()->index(row, 0)); }

    static int RowsInView(const QListView &list) { return list.viewport()->height() / PlaceOf(list, 0).height(); }

    static void ExpectInTheMiddle(const QListView &list, int row) {
        EXPECT_EQ(SelectedRow(list), row);
        EXPECT_LT(std::abs(PlaceOf(list, row).center().y() - list.viewport()->rect().center().y()),
                  PlaceOf(list, row).height());
    }
};

} // namespace

TEST_P(LongChoices, NothingIsScrolledSidewaysThatFits) {
    QFont font = QApplication::font();
    font.setPointSize(GetParam());
    QApplication::setFont(font);
    Start(Template());
    ClickRow(Fields(), KindRow);
    EXPECT_GT(Choices().verticalScrollBar()->maximum(), 0);
    EXPECT_FALSE(Choices().horizontalScrollBar()->isVisible());
    EXPECT_GE(Choices().viewport()->width(),
              QFontMetrics(Choices().font()).horizontalAdvance("F and a number of words"));
    EXPECT_GE(RowsInView(Choices()), 5);
}

INSTANTIATE_TEST_SUITE_P(FontSizes, LongChoices, testing::Values(8, 10, 14, 20));

TEST_F(LongChoices, ATypedLetterShowsItsChoiceInTheMiddle) {
    Start(Template());
    ClickRow(Fields(), KindRow);
    Type("m");
    ASSERT_EQ(FocusName(), "List2_0");
    ExpectInTheMiddle(Choices(), 12);
    const QRect place = PlaceOf(Choices(), 13);
    Type("m");
    EXPECT_EQ(SelectedRow(Choices()), 13);
    EXPECT_EQ(PlaceOf(Choices(), 13), place) << "a row that is seen need not move";
}

TEST_F(LongChoices, AStoredValueIsShownInTheMiddle) {
    Start(Template());
    RowValue[KindRow] = "P 15";
    ClickRow(Fields(), KindRow);
    ExpectInTheMiddle(Choices(), 15);
}

// The eye follows a row that moves by one.
TEST_F(LongChoices, ArrowsScrollByOneRow) {
    Start(Template());
    DoubleClickRow(Fields(), KindRow);
    for (int i = 0; i < RowsInView(Choices()); ++i) Key(Qt::Key_Down);
    const int before = Choices().verticalScrollBar()->value();
    Key(Qt::Key_Down);
    EXPECT_EQ(Choices().verticalScrollBar()->value(), before + 1);
}

TEST_F(LongChoices, AFreshOccurrenceShowsTheFirstChoices) {
    Start(Template());
    DoubleClickRow(Fields(), GroupRow);
    auto &members = The<QListView>("List1_3");
    auto &rocks = The<QListView>("List2_3");
    DoubleClickRow(members, RockRow);
    DoubleClickRow(rocks, 20);
    ClickRow(members, RockRow);
    EXPECT_GT(rocks.verticalScrollBar()->value(), 0);
    Ctrl('N');
    ClickRow(members, RockRow);
    EXPECT_EQ(SelectedRow(rocks), -1);
    EXPECT_EQ(rocks.verticalScrollBar()->value(), 0);
}
