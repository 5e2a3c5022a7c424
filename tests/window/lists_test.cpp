// Lists and the controls beside them, worked with the mouse: clicks, double-clicks, the wheel, many rows.
#include "window/window_test.h"

#include "platform/qt/window.h"
#include "window/templates.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOption>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <chrono>

namespace {

class Lists : public WindowTest {};

bool IsShown(const char *name) { return Named(name).isVisible(); }

std::vector<std::string> Path() {
    std::vector<std::string> rows;
    const auto &list = The<QListView>("SectionLabel");
    for (int row = 0; row < list.model()->rowCount(); ++row) rows.push_back(RowText(list, row));
    return rows;
}

std::string LabelText(const char *name) { return The<QLabel>(name).text().toStdString(); }

void Wheel(QWidget &widget, int notches) {
    const QPoint at = widget.rect().center();
    QWheelEvent event(at, widget.mapToGlobal(at), QPoint(), QPoint(0, -120 * notches), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
    Settle();
}

QRect PartOf(const QScrollBar &bar, QStyle::SubControl part) {
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.subControls = QStyle::SC_All;
    option.orientation = bar.orientation();
    option.state |= QStyle::State_Horizontal;
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.sliderPosition = option.sliderValue = bar.value();
    option.singleStep = bar.singleStep();
    option.pageStep = bar.pageStep();
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar);
}

// The left button goes down on a part of the bar and up that many pixels to the right.
void DragOf(QScrollBar &bar, QStyle::SubControl part, int right) {
    QWindow *const window = MainWindow()->windowHandle();
    const QPoint from = bar.mapTo(MainWindow(), PartOf(bar, part).center());
    const QPoint to = from + QPoint(right, 0);
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    QTest::mouseMove(window, to);
    QTest::mouseRelease(window, Qt::LeftButton, {}, to);
    Settle();
}

// The names of the entry controls that are shown.
std::vector<std::string> EntryControls() {
    std::vector<std::string> shown;
    for (const char *name :
         {"Text1_1", "Text1_2", "Text1_3", "Text1_4", "Text1_5", "Text1_6", "List2_0", "List2_3", "Text2_2", "Text2_5"})
        if (IsShown(name)) shown.push_back(name);
    return shown;
}

} // namespace

TEST_F(Lists, EachRowShowsItsOwnEntryControlOnly) {
    Start(AllKinds());
    const std::vector<std::pair<int, std::vector<std::string>>> rows{
        {AbstractRow, {"Text1_2"}}, {NotesRow, {"Text1_3"}}, {ColourRow, {"List2_0"}}, {DashesRow, {}},
        {TitleRow, {"Text1_1"}},    {SamplesRow, {}}};
    for (const auto &[row, shown] : rows) {
        ClickRow(Fields(), row);
        EXPECT_EQ(EntryControls(), shown) << row;
        EXPECT_EQ(FocusName(), "List1_0");
    }
}

TEST_F(Lists, EachPartOfARowHasItsPlaceAndALongRowIsCut) {
    Start({R"(1,60,"TEXT","A title of 26 characters..","","")", R"(1,60,"TEXT","A title of 27 characters...","","")"});
    for (const int row : {0, 1}) {
        DoubleClickRow(Fields(), row);
        Type(QString(row == 0 ? 29 : 30, 'x') + "\n");
    }
    EXPECT_EQ(RowText(Fields(), 0), " A title of 26 characters..| " + std::string(29, 'x'));
    EXPECT_EQ(RowText(Fields(), 1), " ...tle of 27 characters...| " + std::string(26, 'x') + "...");
}

TEST_F(Lists, AClickShowsTheValueOfTheRow) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    Type("Wells\n");
    EXPECT_EQ(Box().toPlainText(), "") << "the box of the old row is emptied";
    ClickRow(Fields(), TitleRow);
    EXPECT_EQ(Box().toPlainText(), "Wells");
    EXPECT_FALSE(IsShown("Text1_2"));
}

TEST_F(Lists, ADoubleClickOpensTheEntryControl) {
    Start(AllKinds());
    const std::vector<std::pair<int, const char *>> rows{
        {TitleRow, "Text1_1"}, {AbstractRow, "Text1_2"}, {NotesRow, "Text1_3"}, {ColourRow, "List2_0"}};
    for (const auto &[row, name] : rows) {
        DoubleClickRow(Fields(), row);
        EXPECT_EQ(FocusName(), name);
    }
}

TEST_F(Lists, ADoubleClickIsOneOfTheLeftButton) {
    Start(AllKinds());
    ClickRow(Fields(), TitleRow, Qt::RightButton);
    ClickRow(Fields(), TitleRow, Qt::MiddleButton);
    EXPECT_EQ(FocusName(), "List1_0");
    QMouseEvent event(QEvent::MouseButtonDblClick, QPointF(20, 5), Fields().viewport()->mapToGlobal(QPointF(20, 5)),
                      Qt::RightButton, Qt::RightButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Fields().viewport(), &event);
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Lists, ADoubleClickBelowTheLastRowDoesNothing) {
    Start(TextRows({"A"}));
    QMouseEvent event(QEvent::MouseButtonDblClick, QPointF(20, 100), Fields().viewport()->mapToGlobal(QPointF(20, 100)),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Fields().viewport(), &event);
    Settle();
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_EQ(SelectedRow(Fields()), 0);
}

TEST_F(Lists, AClickOnTheSelectedRowIsAClickAllTheSame) {
    Start(AllKinds());
    DoubleClickRow(Fields(), ColourRow);
    ClickRow(Choices(), 1);
    EXPECT_EQ(SelectedRow(Choices()), 1);
    // Going back to the row shows its value again: none was accepted.
    ClickRow(Fields(), ColourRow);
    EXPECT_EQ(SelectedRow(Choices()), -1);
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Lists, ADoubleClickOnAChoiceAcceptsIt) {
    Start(AllKinds());
    ClickRow(Fields(), ColourRow);
    DoubleClickRow(Choices(), 2);
    EXPECT_EQ(RowText(Fields(), ColourRow), " Colour                    | Maple");
    EXPECT_EQ(SelectedRow(Fields()), ColourRow + 1);
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_EQ(The<QPushButton>("CommandAdd").text(), "^Add/Merge File");
    ClickRow(Fields(), ColourRow);
    EXPECT_EQ(SelectedRow(Choices()), 2);
    DoubleClickRow(Choices(), 0);
    EXPECT_EQ(RowText(Fields(), ColourRow), " Colour                    | ");
}

TEST_F(Lists, AChoiceOnTheLastRowKeepsItSelected) {
    Start({R"(1,20,"LIST","Colour","","")", "Red", "XXX-1XXX"});
    DoubleClickRow(Choices(), 0);
    EXPECT_EQ(SelectedRow(Fields()), 0);
    EXPECT_EQ(RowText(Fields(), 0), " Colour                    | Red");
}

TEST_F(Lists, AcceptingOtherOpensItsBoxAndStaysOnTheRow) {
    Start(AllKinds());
    ClickRow(Fields(), ColourRow);
    DoubleClickRow(Choices(), 4);
    EXPECT_EQ(FocusName(), "Text2_2");
    EXPECT_EQ(SelectedRow(Fields()), ColourRow);
}

TEST_F(Lists, AClickOntoOtherShowsItsBoxAndOffItHidesIt) {
    Start(AllKinds());
    ClickRow(Fields(), ColourRow);
    ClickRow(Choices(), 4);
    EXPECT_TRUE(IsShown("Text2_2"));
    ClickRow(Choices(), 1);
    EXPECT_FALSE(IsShown("Text2_2"));
    EXPECT_EQ(RowText(Fields(), ColourRow), " Colour                    | ");
}

TEST_F(Lists, TheOtherBoxStandsBesideChoicesOnly) {
    Start(AllKinds());
    RowValue[ColourRow] = "teal";
    for (const int row : {TitleRow, AbstractRow, NotesRow, DashesRow, SamplesRow}) {
        ClickRow(Fields(), ColourRow);
        EXPECT_TRUE(IsShown("Text2_2"));
        ClickRow(Fields(), row);
        EXPECT_FALSE(IsShown("Text2_2")) << row;
    }
}

TEST_F(Lists, TheSectionPathAndTheLevelFollowTheRow) {
    Start({R"(1,30,"TEXT","Before","","")", R"(1,-1,"TEXT","Citation","","")", R"(2,1,"TEXT","Heading","","")",
           R"(3,30,"TEXT","Deep","","")", R"(-2,30,"TEXT","Flat","","")"});
    EXPECT_THAT(Path(), testing::ElementsAre("No Sections Specified"));
    EXPECT_EQ(LabelText("DataLevelLabel"), "1");
    ClickRow(Fields(), 1);
    EXPECT_THAT(Path(), testing::ElementsAre("Citation", "    Heading"));
    EXPECT_EQ(LabelText("DataLevelLabel"), "3");
    ClickRow(Fields(), 2);
    EXPECT_THAT(Path(), testing::ElementsAre("Citation"));
    EXPECT_EQ(LabelText("DataLevelLabel"), "2");
    EXPECT_EQ(The<QListView>("SectionLabel").focusPolicy(), Qt::NoFocus);
}

TEST_F(Lists, WithoutSectionsThePathSaysSo) {
    Start(TextRows({"A", "B"}));
    for (const int row : {1, 0}) {
        ClickRow(Fields(), row);
        EXPECT_THAT(Path(), testing::ElementsAre("No Sections Specified"));
    }
}

TEST_F(Lists, AClickOnTheSectionPathDoesNothing) {
    Start(AllKinds());
    ClickRow(The<QListView>("SectionLabel"), 0);
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_EQ(SelectedRow(The<QListView>("SectionLabel")), -1);
}

TEST_F(Lists, TheHelpLineAndMoreHelpFollowTheRow) {
    folder.Write("A.HLP", "help");
    folder.Write("B.HLP", "help");
    Start({R"(1,30,"TEXT","A","Same line","A.HLP")", R"(1,30,"TEXT","B","Same line","B.HLP")",
           R"(1,30,"TEXT","C","Other line","")"});
    EXPECT_EQ(LabelText("helpline"), "Same line");
    EXPECT_TRUE(Named("CommandMoreHelp").isEnabled());
    EXPECT_EQ(Named("CommandMoreHelp").property("tag").toString().toStdString(), folder.Path() + "A.HLP");
    ClickRow(Fields(), 1);
    EXPECT_EQ(Named("CommandMoreHelp").property("tag").toString().toStdString(), folder.Path() + "B.HLP");
    ClickRow(Fields(), 2);
    EXPECT_EQ(LabelText("helpline"), "Other line");
    EXPECT_FALSE(Named("CommandMoreHelp").isEnabled());
}

TEST_F(Lists, InstancesAreAddedScrolledAndDeleted) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    auto &bar = The<QScrollBar>("FIScroll");
    EXPECT_EQ(bar.maximum(), 1);
    Type("one");
    Click(Named("FIAdd"));
    EXPECT_EQ(FocusName(), "Text1_1");
    Type("two");
    Click(Named("FIAdd"));
    Type("three\n");
    ClickRow(Fields(), TitleRow);
    EXPECT_EQ(RowText(Fields(), TitleRow), " Title                     | one|two|three");
    EXPECT_EQ(LabelText("FILabel_0"), "3");
    EXPECT_EQ(LabelText("FILabel_1"), "1");
    EXPECT_EQ(bar.maximum(), 3);
    EXPECT_EQ(bar.value(), 1);
    EXPECT_EQ(Box().toPlainText(), "one");
    bar.setFocus();
    Key(Qt::Key_Right);
    EXPECT_EQ(LabelText("FILabel_1"), "2");
    EXPECT_EQ(Box().toPlainText(), "two");
    Click(Named("FIDel"));
    EXPECT_EQ(RowText(Fields(), TitleRow), " Title                     | one|three");
    EXPECT_EQ(LabelText("FILabel_0"), "2");
    EXPECT_EQ(bar.maximum(), 2);
    EXPECT_EQ(Box().toPlainText(), "three");
}

TEST_F(Lists, InstancesAreScrolledToByTheMouse) {
    Start(AllKinds());
    RowValue[TitleRow] = "one|two|three";
    ClickRow(Fields(), AbstractRow);
    ClickRow(Fields(), TitleRow);
    auto &bar = The<QScrollBar>("FIScroll");
    const auto expectShown = [](int instance, const char *text) {
        EXPECT_EQ(LabelText("FILabel_1"), std::to_string(instance));
        EXPECT_EQ(Box().toPlainText(), text);
    };
    DragOf(bar, QStyle::SC_ScrollBarAddLine, 0);
    expectShown(2, "two");
    DragOf(bar, QStyle::SC_ScrollBarSubLine, 0);
    expectShown(1, "one");
    DragOf(bar, QStyle::SC_ScrollBarSlider, bar.width());
    expectShown(3, "three");
    EXPECT_EQ(RowValue[TitleRow], "one|two|three");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(Lists, ScrollingShowsEachInstancesChoice) {
    Start(AllKinds());
    RowValue[ColourRow] = "Red|teal|Mango";
    ClickRow(Fields(), ColourRow);
    auto &bar = The<QScrollBar>("FIScroll");
    bar.setFocus();
    EXPECT_EQ(SelectedRow(Choices()), 1);
    Key(Qt::Key_Right);
    EXPECT_EQ(SelectedRow(Choices()), 4);
    EXPECT_TRUE(IsShown("Text2_2"));
    EXPECT_EQ(Box("Text2_2").toPlainText(), "teal");
    Key(Qt::Key_Right);
    EXPECT_EQ(SelectedRow(Choices()), 3);
    EXPECT_FALSE(IsShown("Text2_2"));
    Key(Qt::Key_Left);
    EXPECT_EQ(Box("Text2_2").toPlainText(), "teal");
    EXPECT_EQ(RowValue[ColourRow], "Red|teal|Mango");
}

TEST_F(Lists, InstanceControlsAreHiddenWhereThereIsOneInstanceOnly) {
    Start({R"(1,30,"TEXT","Many","","")", R"(-1,30,"TEXT","One","","")", R"(1,9,"GROUP START","Group","","")",
           R"(2,9,"TEXT","Part","","")", R"(1,1,"GROUP END","","","")"});
    EXPECT_TRUE(IsShown("MultiInstanceFrame"));
    ClickRow(Fields(), 1);
    EXPECT_FALSE(IsShown("MultiInstanceFrame"));
    ClickRow(Fields(), 0);
    DoubleClickRow(Fields(), 2);
    EXPECT_TRUE(IsShown("List1_3"));
    EXPECT_FALSE(IsShown("MultiInstanceFrame"));
}

TEST_F(Lists, AHeaderSuffixHidesInstancesAndTheLevel) {
    Start(TextRows({"A"}), "QuintaveV2--");
    EXPECT_FALSE(IsShown("MultiInstanceFrame"));
    EXPECT_FALSE(IsShown("Label2"));
    EXPECT_FALSE(IsShown("DataLevelLabel"));
}

TEST_F(Lists, AnOpenGroupTakesTheFieldListsPlace) {
    Start(AllKinds());
    DoubleClickRow(Fields(), SamplesRow);
    EXPECT_FALSE(IsShown("List1_0"));
    EXPECT_TRUE(IsShown("List1_3"));
    EXPECT_TRUE(IsShown("GrpExit"));
    EXPECT_EQ(The<QGroupBox>("TableFrame").title(), "REPEATED GROUP: Samples");
    auto &members = The<QListView>("List1_3");
    EXPECT_EQ(members.model()->rowCount(), 3);
    DoubleClickRow(members, 0);
    Type("12 ft  \n");
    EXPECT_EQ(RowText(members, 0), " Depth                     | 12 ft");
    ClickRow(members, 0);
    EXPECT_EQ(Box("Text1_4").toPlainText(), "12 ft");
    Click(Named("FldChange_2"));
    EXPECT_EQ(The<QComboBox>("TblFldNum").currentText(), "2");
    EXPECT_EQ(RowText(members, 0), " Depth                     | ");
    Click(Named("GrpExit"));
    EXPECT_TRUE(IsShown("List1_0"));
    EXPECT_FALSE(IsShown("GrpExit"));
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Lists, TheWheelScrollsAListAndSelectsNothing) {
    std::vector<std::string> titles;
    for (int i = 0; i < 200; ++i) titles.push_back("Row " + std::to_string(i));
    Start(TextRows(titles));
    Wheel(*Fields().viewport(), 5);
    EXPECT_GT(Fields().verticalScrollBar()->value(), 0);
    EXPECT_EQ(SelectedRow(Fields()), 0);
    EXPECT_EQ(CurrentField, 0);
}

TEST_F(Lists, TheWheelOverTheOccurrenceNumberChangesNothing) {
    Start(AllKinds());
    DoubleClickRow(Fields(), SamplesRow);
    Ctrl('N');
    auto &number = The<QComboBox>("TblFldNum");
    Wheel(number, -1);
    Wheel(number, 1);
    EXPECT_EQ(number.currentText(), "2");
}

TEST_F(Lists, ManyRowsOpenScrollAndFollowTheKeys) {
    constexpr int Rows = 32000;
    std::vector<std::string> titles;
    titles.reserve(Rows);
    for (int i = 0; i < Rows; ++i) titles.push_back("Row " + std::to_string(i));
    const auto before = std::chrono::steady_clock::now();
    Start(TextRows(titles));
    EXPECT_EQ(Fields().model()->rowCount(), Rows);
    Key(Qt::Key_End);
    EXPECT_EQ(SelectedRow(Fields()), Rows - 1);
    EXPECT_TRUE(
        Fields().viewport()->rect().contains(Fields().visualRect(Fields().model()->index(Rows - 1, 0)).center()));
    EXPECT_EQ(RowText(Fields(), Rows - 1), " Row 31999                 | ");
    Type("x\n");
    EXPECT_EQ(RowText(Fields(), Rows - 1), " Row 31999                 | x");
    for (int i = 0; i < 100; ++i) Key(Qt::Key_Up);
    EXPECT_EQ(SelectedRow(Fields()), Rows - 101);
    Key(Qt::Key_Home);
    EXPECT_EQ(CurrentField, 0);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - before;
    EXPECT_LT(taken.count(), 60) << "so slow that something grows with the square of the rows";
}
