// An open group in the real window: its occurrences, moving between them, and the row that leaving it selects.
#include "window/window_test.h"

#include "support/group_store.h"
#include "window/templates.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTest>

namespace {

class Groups : public WindowTest {
protected:
    // The group stands on the last row.
    void OpenLast() {
        Start(AllKinds());
        DoubleClickRow(Fields(), SamplesRow);
    }

    // The group stands before another row.
    void OpenFirst() {
        Start({R"(1,9,"GROUP START","Samples","","")", R"(2,8,"TEXT","Depth","","")", R"(2,8,"TEXT","Place","","")",
               R"(1,1,"GROUP END","","","")", R"(-2,30,"TEXT","Behind","","")"});
        DoubleClickRow(Fields(), 0);
    }

    static QListView &Members() { return The<QListView>("List1_3"); }

    static std::vector<std::string> Occurrences() {
        std::vector<std::string> numbers;
        const auto &combo = The<QComboBox>("TblFldNum");
        for (int i = 0; i < combo.count(); ++i) numbers.push_back(combo.itemText(i).toStdString());
        return numbers;
    }

    static std::string Shown() { return The<QComboBox>("TblFldNum").currentText().toStdString(); }

    static void EnterDepth(const QString &depth) {
        DoubleClickRow(Members(), 0);
        Type(depth + "\n");
    }

    // As one number, and another one than what was typed before: the toolkit tells them apart by the time between.
    static void TypeNumber(const QString &keys) {
        constexpr int Long = 10000;
        QApplication::setKeyboardInputInterval(0);
        QTest::qWait(5);
        Type(keys.left(1));
        QApplication::setKeyboardInputInterval(Long);
        Type(keys.mid(1));
    }

    static std::string Depth() { return RowText(Members(), 0).substr(29); }
};

} // namespace

TEST_F(Groups, TheNumbersAreThoseOfTheOccurrencesAndTheOneLeftIsShownAgain) {
    OpenFirst();
    EXPECT_THAT(Occurrences(), testing::ElementsAre("1"));
    EnterDepth("1 m");
    for (const char *depth : {"2 m", "3 m"}) {
        Click(Named("FldChange_2"));
        EnterDepth(depth);
    }
    Click(Named("FldChange_0"));
    Click(Named("GrpExit"));
    DoubleClickRow(Fields(), 0);
    EXPECT_THAT(Occurrences(), testing::ElementsAre("1", "2", "3"));
    EXPECT_EQ(Shown(), "2");
    EXPECT_EQ(Depth(), "2 m");
}

TEST_F(Groups, AMoveShowsItsOccurrenceWithTheFocusOnTheList) {
    OpenFirst();
    EnterDepth("1 m");
    Click(Named("FldChange_2"));
    EnterDepth("2 m");
    const std::vector<std::pair<const char *, const char *>> moves{
        {"FldChange_1", "1 m"}, {"FldChange_2", "2 m"}, {"FldChange_0", "1 m"}, {"FldChange_3", "2 m"}};
    for (const auto &[button, depth] : moves) {
        Click(Named(button));
        EXPECT_EQ(FocusName(), "List1_3") << button;
        EXPECT_EQ(Depth(), depth) << button;
    }
}

TEST_F(Groups, EnterGoesFromMemberToMemberAndStaysOnTheLast) {
    OpenFirst();
    Type("1 m\n");
    EXPECT_EQ(SelectedRow(Members()), 1);
    EXPECT_EQ(FocusName(), "List1_3");
    Type("Ely\n");
    EXPECT_EQ(SelectedRow(Members()), 1);
    EXPECT_EQ(FocusName(), "List1_3");
    EXPECT_EQ(RowText(Members(), 1), " Place                     | Ely");
}

TEST_F(Groups, InsertAddsANumberAndKeepsTheOneShown) {
    OpenFirst();
    EnterDepth("1 m");
    Click(Named("FldChange_2"));
    EnterDepth("2 m");
    Click(Named("TblFldInsert"));
    EXPECT_THAT(Occurrences(), testing::ElementsAre("1", "2", "3"));
    EXPECT_EQ(Shown(), "2");
    EXPECT_EQ(Depth(), "");
}

TEST_F(Groups, LeavingSelectsTheRowBehindTheGroup) {
    OpenFirst();
    Click(Named("GrpExit"));
    EXPECT_EQ(SelectedRow(Fields()), 1);
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_TRUE(Named("Text1_1").isVisible());
    EXPECT_EQ(The<QLabel>("DataLevelLabel").text(), "2");
}

TEST_F(Groups, LeavingTheLastRowsGroupStaysOnItsRowOutsideIt) {
    OpenLast();
    ClickRow(Members(), 2);
    EXPECT_EQ(The<QLabel>("DataLevelLabel").text(), "3");
    Click(Named("GrpExit"));
    EXPECT_EQ(SelectedRow(Fields()), SamplesRow);
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_FALSE(Members().isVisible());
    EXPECT_FALSE(Named("Text1_6").isVisible());
    EXPECT_EQ(The<QLabel>("DataLevelLabel").text(), "2");
}

// As it lies in the file, byte for byte.
TEST_F(Groups, TheStoreHoldsTheOccurrencesThatWereEntered) {
    OpenFirst();
    const auto stored = [this] { return folder.Read("GRP00001.XXX"); };
    const auto enter = [](const QString &depth, const QString &place) {
        DoubleClickRow(Members(), 0);
        Type(depth + "\n");
        Type(place + "\n");
    };
    enter("1 m", "Ely");
    Ctrl('N');
    EXPECT_EQ(stored(), Store(16, {"1 m     Ely", ""}));
    enter("2 m", "Dunwich !");
    Ctrl('V');
    EXPECT_EQ(stored(), Store(16, {"1 m     Ely", "2 m     Dunwich "}));
    Ctrl('I');
    enter("0 m", "York");
    Ctrl('B');
    EXPECT_EQ(stored(), Store(16, {"0 m     York", "1 m     Ely", "2 m     Dunwich "}));
    Ctrl('V');
    Ctrl('D');
    const std::string behind = "2 m     Dunwich "; // of the longer store
    EXPECT_EQ(stored(), Store(16, {"0 m     York", "2 m     Dunwich "}, behind));
    DoubleClickRow(Members(), 0);
    Type("5");
    Click(Named("GrpExit"));
    EXPECT_EQ(stored(), Store(16, {"0 m5    York", "2 m     Dunwich "}, behind));
}

TEST_F(Groups, DigitsChooseAnOccurrenceByItsWholeNumber) {
    OpenFirst();
    for (int number = 1; number <= 12; ++number) {
        EnterDepth(QString::number(number) + " m");
        if (number < 12) Ctrl('N');
    }
    Ctrl('T');
    Ctrl('G');
    const std::vector<std::pair<const char *, const char *>> typed{{"12", "12"}, {"x", "12"}, {"0", "12"},
                                                                   {"4", "4"},   {"0", "4"},  {"10", "10"}};
    for (const auto &[keys, shown] : typed) {
        TypeNumber(keys);
        EXPECT_EQ(Shown(), shown) << keys;
        EXPECT_EQ(Depth(), std::string(shown) + " m") << keys;
        EXPECT_EQ(FocusName(), "TblFldNum") << keys;
    }
}
