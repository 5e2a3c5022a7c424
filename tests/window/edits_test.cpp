// What an edit of a box leaves alone: the history of other values, the other places of the same one.
#include "window/window_test.h"

#include "window/templates.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QTest>

namespace {

class Edits : public WindowTest {
protected:
    static void Erase(int characters) {
        for (int i = 0; i < characters; ++i) Key(Qt::Key_Backspace, Qt::NoModifier, "\b");
    }

    static void Undo() { Ctrl('Z'); }
    static void Redo() { Ctrl('Z', Qt::ShiftModifier); }
    static void CommitEdit() { Key(Qt::Key_Return, Qt::ControlModifier, "\r"); }
    static QAccessibleEditableTextInterface &ByScreenReader(QPlainTextEdit &box) {
        return *QAccessible::queryAccessibleInterface(&box)->editableTextInterface();
    }
    static std::string Text(const char *box) { return Box(box).toPlainText().toStdString(); }
};

constexpr const char *LoadedNotes = "a\tb\r\n\tc  d\r\n";

} // namespace

TEST_F(Edits, AnotherFieldsTextDoesNotComeBack) {
    Start(TextRows({"Title", "Place"}));
    Type("secret");
    Erase(6);
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    EXPECT_EQ(FocusName(), "Text1_1");
    EXPECT_EQ(CurrentField, 1);
    Undo();
    EXPECT_EQ(Text("Text1_1"), "");
}

TEST_F(Edits, TextOfBeforeAResetDoesNotComeBack) {
    Start(TextRows({"Title"}));
    Type("secret");
    Erase(6);
    Dialogs.Press(QMessageBox::No);
    Ctrl('R');
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    EXPECT_EQ(FocusName(), "Text1_1");
    Undo();
    EXPECT_EQ(Text("Text1_1"), "");
}

TEST_F(Edits, AnotherOccurrencesTextDoesNotComeBack) {
    Start(AllKinds());
    DoubleClickRow(Fields(), SamplesRow);
    Type("5 m");
    Erase(3);
    Ctrl('N');
    DoubleClickRow(The<QListView>("List1_3"), 0);
    EXPECT_EQ(The<QComboBox>("TblFldNum").currentText(), "2");
    Undo();
    EXPECT_EQ(Text("Text1_4"), "");
}

TEST_F(Edits, AMessageLeavesTheHistoryAlone) {
    Start(TextRows({"Title"}));
    DoubleClickRow(Fields(), 0);
    Type("ab");
    Dialogs.Press(QMessageBox::Ok);
    Type("|");
    Undo();
    EXPECT_EQ(Text("Text1_1"), "");
    Redo();
    Key(Qt::Key_Home);
    QApplication::clipboard()->setText("\"");
    Dialogs.Press(QMessageBox::Ok);
    Ctrl('V');
    EXPECT_EQ(Text("Text1_1"), "\"ab");
    Undo();
    EXPECT_EQ(Text("Text1_1"), "ab");
}

TEST_F(Edits, AtTheLimitTheHistoryStays) {
    Start({R"(1,5,"TEXT","A","","")"});
    DoubleClickRow(Fields(), 0);
    Type("abc");
    Key(Qt::Key_Left);
    Type("defgh");
    EXPECT_EQ(Text("Text1_1"), "abdef");
    Undo();
    EXPECT_EQ(Text("Text1_1"), "abc");
    Redo();
    EXPECT_EQ(Text("Text1_1"), "abdef");
    Undo();
    Undo();
    EXPECT_EQ(Text("Text1_1"), "");
    Redo();
    CommitEdit();
    EXPECT_EQ(RowValue[0], "abc");
}

TEST_F(Edits, APasteCutAtTheLimitIsOneStep) {
    Start({R"(1,5,"TEXT","A","","")"});
    DoubleClickRow(Fields(), 0);
    Type("xy");
    Key(Qt::Key_Left, Qt::ShiftModifier);
    QApplication::clipboard()->setText("0123456789");
    Ctrl('V');
    EXPECT_EQ(Text("Text1_1"), "x0123");
    Undo();
    EXPECT_EQ(Text("Text1_1"), "xy");
    Type("z");
    EXPECT_EQ(Text("Text1_1"), "xyz");
    Undo();
    EXPECT_EQ(Text("Text1_1"), "xy");
}

TEST_F(Edits, TabsAndLinesOfALoadedMemoStay) {
    Start(AllKinds());
    RowValue[NotesRow] = LoadedNotes;
    DoubleClickRow(Fields(), NotesRow);
    Type("x");
    CommitEdit();
    EXPECT_EQ(RowValue[NotesRow], std::string(LoadedNotes) + "x");
}

TEST_F(Edits, LinesOfALoadedTextStay) {
    Start(AllKinds());
    RowValue[TitleRow] = "one\r\ntwo\tthree";
    DoubleClickRow(Fields(), TitleRow);
    Type("x");
    EXPECT_EQ(Text("Text1_1"), "one\ntwo\tthreex");
    Key(Qt::Key_Home, Qt::ControlModifier);
    Type("y");
    CommitEdit();
    EXPECT_EQ(RowValue[TitleRow], "yone\r\ntwo\tthreex");
}

TEST_F(Edits, WhatIsTakenBackComesBackAsItWas) {
    Start(AllKinds());
    RowValue[TitleRow] = "one\r\ntwo\tthree";
    DoubleClickRow(Fields(), TitleRow);
    Box().selectAll();
    Key(Qt::Key_Delete);
    EXPECT_EQ(Text("Text1_1"), "");
    Undo();
    CommitEdit();
    EXPECT_EQ(RowValue[TitleRow], "one\r\ntwo\tthree");
}

TEST_F(Edits, APasteIntoALoadedTextIsConvertedAlone) {
    Start(AllKinds());
    RowValue[TitleRow] = "one\r\ntwo";
    DoubleClickRow(Fields(), TitleRow);
    QApplication::clipboard()->setText("\tthree\nfour");
    Ctrl('V');
    CommitEdit();
    EXPECT_EQ(RowValue[TitleRow], "one\r\ntwo three four");
}

TEST_F(Edits, WhatAScreenReaderPutsIntoALoadedTextIsConvertedAlone) {
    Start(AllKinds());
    RowValue[TitleRow] = "one\r\ntwo";
    DoubleClickRow(Fields(), TitleRow);
    ByScreenReader(Box()).insertText(3, "\tand\na half");
    EXPECT_EQ(Text("Text1_1"), "one and a half\ntwo");
    CommitEdit();
    EXPECT_EQ(RowValue[TitleRow], "one and a half\r\ntwo");
}

TEST_F(Edits, ALineBegunAtTheLowerEdgeOfAMemoIsSeen) {
    Start(AllKinds());
    DoubleClickRow(Fields(), NotesRow);
    QPlainTextEdit &box = Box("Text1_3");
    for (int line = 0; line < 40; ++line) {
        Type("\n");
        ASSERT_TRUE(box.viewport()->rect().contains(box.cursorRect().center())) << line;
    }
}
