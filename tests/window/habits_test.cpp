// What people do without thinking: keys held down, other Enter keys, a click somewhere else in the middle of an edit,
// Ctrl with a click, the window made small.
#include "window/window_test.h"

#include "platform/qt/window.h"
#include "window/templates.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QTest>

namespace {

class Habits : public WindowTest {
protected:
    // A key that is held down: one press and this many repetitions.
    static void Hold(Qt::Key key, int repetitions, const QString &text = {}) {
        for (int i = 0; i <= repetitions; ++i) {
            QWidget *const focused = QApplication::focusWidget();
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text, i > 0);
            QCoreApplication::sendEvent(focused, &press);
            Settle();
        }
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text, false);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &release);
        Settle();
    }

    // The left button goes down on the first of these rows and up on the last.
    static void Drag(QListView &list, const std::vector<int> &rows) {
        const auto at = [&](int row) { return list.visualRect(list.model()->index(row, 0)).center(); };
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, at(rows.front()));
        for (const int row : rows) QTest::mouseMove(list.viewport(), at(row));
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, at(rows.back()));
        Settle();
    }

    static void ScrollThereAndBack() {
        Named("FIScroll").setFocus();
        Key(Qt::Key_Right);
        Key(Qt::Key_Left);
    }

    static void ClickWithCtrl(QListView &list, int row) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                          list.visualRect(list.model()->index(row, 0)).center());
        Settle();
    }
};

} // namespace

TEST_F(Habits, ArrowsHeldDownGoToTheLastRowAndStayThere) {
    Start(AllKinds());
    Hold(Qt::Key_Down, 50);
    EXPECT_EQ(SelectedRow(Fields()), SamplesRow);
    Hold(Qt::Key_Up, 50);
    EXPECT_EQ(SelectedRow(Fields()), TitleRow);
}

TEST_F(Habits, ALetterHeldDownFillsTheBoxUpToItsLimit) {
    Start(AllKinds());
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    Hold(Qt::Key_X, 100, "x");
    EXPECT_EQ(Box().toPlainText(), QString(30, 'x'));
}

TEST_F(Habits, TheOtherEnterKeyCommitsLikeTheFirst) {
    Start(AllKinds());
    Key(Qt::Key_Enter, Qt::KeypadModifier, "\r");
    Type("Wells");
    Key(Qt::Key_Enter, Qt::KeypadModifier, "\r");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(SelectedRow(Fields()), AbstractRow);
}

TEST_F(Habits, CharactersOfTheThirdLevelOfAKeyAreTyped) {
    Start(AllKinds());
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    Key(Qt::Key_At, Qt::GroupSwitchModifier, "@");
    Key(Qt::Key_unknown, Qt::GroupSwitchModifier, "\u20AC");
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    EXPECT_EQ(RowValue[TitleRow], "@€");
}

TEST_F(Habits, AClickOnAnotherRowInTheMiddleOfAnEditStoresItInItsOwn) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    Type("Wells");
    ClickRow(Fields(), NotesRow);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(RowValue[NotesRow], "");
    EXPECT_EQ(SelectedRow(Fields()), NotesRow);
}

TEST_F(Habits, AClickOnAChoiceWhileTheOtherBoxIsOpenStoresTheBoxFirst) {
    Start(AllKinds());
    DoubleClickRow(Fields(), ColourRow);
    DoubleClickRow(Choices(), 4);
    ASSERT_EQ(FocusName(), "Text2_2");
    Type("Teal");
    ClickRow(Choices(), 1);
    EXPECT_FALSE(Named("Text2_2").isVisible());
    EXPECT_EQ(SelectedRow(Choices()), 1);
    EXPECT_EQ(RowValue[ColourRow], "Teal");
    DoubleClickRow(Choices(), 1);
    EXPECT_EQ(RowValue[ColourRow], "Red");
}

TEST_F(Habits, AClickOnACommandInTheMiddleOfAnEditStoresIt) {
    Start(AllKinds());
    DoubleClickRow(Fields(), SamplesRow);
    DoubleClickRow(The<QListView>("List1_3"), 0);
    Type("1 m");
    Click(Named("FldChange_2"));
    Click(Named("FldChange_0"));
    EXPECT_EQ(RowText(The<QListView>("List1_3"), 0).substr(29), "1 m");
}

TEST_F(Habits, CtrlWithAClickSelectsARowAndNeverTakesTheSelectionAway) {
    Start(AllKinds());
    ClickWithCtrl(Fields(), NotesRow);
    EXPECT_EQ(SelectedRow(Fields()), NotesRow);
    EXPECT_EQ(CurrentField, NotesRow);
    ClickWithCtrl(Fields(), NotesRow);
    EXPECT_EQ(SelectedRow(Fields()), NotesRow);
    EXPECT_EQ(CurrentField, NotesRow);
}

// As assistive programs do it: the row is selected without being made the current one.
TEST_F(Habits, ARowSelectedByAnAssistiveProgramIsTheSelectedField) {
    Start(AllKinds());
    Named("CommandSave").setFocus();
    Fields().selectionModel()->select(Fields().model()->index(NotesRow, 0), QItemSelectionModel::ClearAndSelect);
    Settle();
    EXPECT_EQ(CurrentField, NotesRow);
    EXPECT_TRUE(Named("Text1_3").isVisible());
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Habits, ADragOverTheFieldListSelectsTheRowUnderThePointer) {
    Start(AllKinds());
    Drag(Fields(), {TitleRow, AbstractRow, NotesRow});
    EXPECT_EQ(SelectedRow(Fields()), NotesRow);
    EXPECT_EQ(CurrentField, NotesRow);
    EXPECT_TRUE(Named("Text1_3").isVisible());
}

// A value that is only looked at stays, however the choice of another one is reached.
TEST_F(Habits, ADragOverTheChoicesShowsTheOtherBoxAndKeepsEveryInstance) {
    Start(AllKinds());
    RowValue[ColourRow] = "Red|Mango";
    ClickRow(Fields(), ColourRow);
    Drag(Choices(), {1, 3, 4});
    EXPECT_EQ(SelectedRow(Choices()), 4);
    EXPECT_TRUE(Named("Text2_2").isVisible());
    ScrollThereAndBack();
    EXPECT_EQ(RowValue[ColourRow], "Red|Mango");
    EXPECT_FALSE(Named("Text2_2").isVisible());
    Drag(Choices(), {4, 3});
    EXPECT_EQ(SelectedRow(Choices()), 3);
    EXPECT_FALSE(Named("Text2_2").isVisible());
}

TEST_F(Habits, OtherSelectedByAnAssistiveProgramShowsItsBoxAndKeepsEveryInstance) {
    Start(AllKinds());
    RowValue[ColourRow] = "Red|Mango";
    ClickRow(Fields(), ColourRow);
    Choices().selectionModel()->select(Choices().model()->index(4, 0), QItemSelectionModel::ClearAndSelect);
    Settle();
    EXPECT_TRUE(Named("Text2_2").isVisible());
    ScrollThereAndBack();
    EXPECT_EQ(RowValue[ColourRow], "Red|Mango");
}

TEST_F(Habits, MakingTheWindowSmallInTheMiddleOfAnEditKeepsIt) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    Type("Wel");
    MainWindow()->showMinimized();
    Settle();
    MainWindow()->showNormal();
    Settle();
    EXPECT_EQ(FocusName(), "Text1_1");
    Type("ls");
    EXPECT_EQ(Box().toPlainText(), "Wells");
    EXPECT_EQ(RowValue[TitleRow], "");
}
