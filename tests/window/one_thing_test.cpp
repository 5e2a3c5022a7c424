// One thing at a time: what reaches behind an open dialogue, as assistive programs do, starts and changes nothing.
#include "window/window_test.h"

#include "platform/qt/window.h"
#include "window/templates.h"

#include <QAccessible>
#include <QInputMethodEvent>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QTest>

namespace {

void Press(const char *button) { The<QPushButton>(button).click(); }

// The toolkit shows the button pressed for a moment before it is.
void PressByScreenReader(const char *name) {
    const auto &button = The<QPushButton>(name);
    QAccessible::queryAccessibleInterface(&Named(name))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !button.isDown(); }));
    Settle();
}

void SelectByScreenReader(QListView &list, int row) {
    list.selectionModel()->select(list.model()->index(row, 0), QItemSelectionModel::ClearAndSelect);
    Settle();
}

class OneThing : public WindowTest {
protected:
    void SetUp() override {
        Start(AllKinds());
        DoubleClickRow(Fields(), TitleRow);
        Type("Wells\n");
        ClickRow(Fields(), TitleRow);
    }

    // While the question of Reset is open these acts are done; then it is cancelled, and nothing else has come.
    void DuringAQuestion(const std::function<void()> &acts) {
        Dialogs.Next([acts](QDialog &dialog) {
            acts();
            Settle();
            dynamic_cast<QMessageBox &>(dialog).button(QMessageBox::Cancel)->click();
        });
        Ctrl('R');
        EXPECT_EQ(Dialogs.Titles.size(), 1U);
    }

    static void ExpectUntouched() {
        EXPECT_EQ(FocusName(), "List1_0");
        EXPECT_EQ(SelectedRow(Fields()), TitleRow);
        EXPECT_EQ(CurrentField, TitleRow);
        EXPECT_EQ(RowValue[TitleRow], "Wells");
        EXPECT_EQ(Box().toPlainText(), "Wells");
        EXPECT_TRUE(MainWindow()->isVisible());
    }
};

} // namespace

TEST_F(OneThing, NoButtonBehindAQuestionWorks) {
    DuringAQuestion([] {
        for (const char *button : {"CommandQuit", "CommandReset", "CommandTemplate", "CommandAdd", "CommandSaveAs"}) {
            Press(button);
            PressByScreenReader(button);
        }
    });
    ExpectUntouched();
}

TEST_F(OneThing, NoButtonBehindAFileDialogueWorks) {
    Dialogs.Next([](QDialog &dialog) {
        Press("CommandQuit");
        PressByScreenReader("CommandReset");
        dialog.reject();
    });
    Ctrl('A');
    EXPECT_EQ(Dialogs.Titles.size(), 1U);
    ExpectUntouched();
}

TEST_F(OneThing, NoRowBehindAQuestionIsSelected) {
    DuringAQuestion([] {
        SelectByScreenReader(Fields(), NotesRow);
        EXPECT_EQ(SelectedRow(Fields()), TitleRow);
        Fields().setCurrentIndex(Fields().model()->index(AbstractRow, 0));
        EXPECT_EQ(SelectedRow(Fields()), TitleRow);
    });
    ExpectUntouched();
}

TEST_F(OneThing, NoTextBehindAQuestionIsChanged) {
    DuringAQuestion([] {
        QAccessible::queryAccessibleInterface(&Box())->editableTextInterface()->insertText(0, "spoken");
        QInputMethodEvent event;
        event.setCommitString("x");
        QCoreApplication::sendEvent(&Fields(), &event);
    });
    ExpectUntouched();
}

TEST_F(OneThing, NoInstanceBehindAQuestionIsShown) {
    RowValue[TitleRow] = "one|two";
    ClickRow(Fields(), TitleRow);
    DuringAQuestion([] { The<QScrollBar>("FIScroll").setValue(2); });
    EXPECT_EQ(The<QScrollBar>("FIScroll").value(), 1);
    EXPECT_EQ(Box().toPlainText(), "one");
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(OneThing, TheWindowDoesNotCloseBehindAQuestion) {
    DuringAQuestion([] { MainWindow()->close(); });
    ExpectUntouched();
}

TEST_F(OneThing, AfterTheAnswerAllWorksAgain) {
    DuringAQuestion([] { Press("CommandQuit"); });
    ClickRow(Fields(), AbstractRow);
    EXPECT_EQ(CurrentField, AbstractRow);
    Dialogs.Press(QMessageBox::Cancel);
    PressByScreenReader("CommandReset");
    EXPECT_EQ(Dialogs.Titles.size(), 2U);
}
