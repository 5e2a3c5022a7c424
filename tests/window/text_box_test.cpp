// Text boxes of the real window: typing, pasting, dropping, input methods, limits.
#include "window/window_test.h"

#include "platform/qt/window.h"
#include "window/templates.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QTest>

namespace {

const SeenBox BarRefused{
    "Quintave", "'|' is a reserved character in Quintave and is not allowed as input. Please choose another character.",
    QMessageBox::NoIcon, QMessageBox::Ok, QMessageBox::Ok};
const SeenBox QuoteRefused{
    "Quintave",
    "the 'double quote' or 'seconds' symbol is a reserved character in Quintave and is not allowed as input. Please "
    "choose another character or spell out the appropriate word.",
    QMessageBox::NoIcon, QMessageBox::Ok, QMessageBox::Ok};
const SeenBox LeftOut{
    "Quintave",
    "'|' and the 'double quote' or 'seconds' symbol are reserved characters in Quintave and are left out of what you "
    "entered. The quotes “ and ” may be used.",
    QMessageBox::NoIcon, QMessageBox::Ok, QMessageBox::Ok};

void Commit(const QString &text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    Settle();
}

void PasteText(const QString &text) {
    QApplication::clipboard()->setText(text);
    Ctrl('V');
}

void Drop(QPlainTextEdit &box, const QString &text) {
    QMimeData data;
    data.setText(text);
    const QPoint at = box.viewport()->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(box.viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(box.viewport(), &drop);
    Settle();
}

class TextBoxes : public WindowTest {
protected:
    // The value of a row as it is stored.
    static std::string Stored(int row) { return RowValue[static_cast<Integer>(row)]; }

    void Open(int row) {
        Start(AllKinds());
        DoubleClickRow(Fields(), row);
    }

    static void CommitEdit() { Key(Qt::Key_Return, Qt::ControlModifier, "\r"); }
};

// Ways by which a text comes into a box without keys.
struct Way {
    const char *Name;
    void (*Put)(const QString &text);
};

void PrintTo(const Way &way, std::ostream *out) { *out << way.Name; }

const Way Ways[] = {
    {"Paste", PasteText},
    {"Drop", [](const QString &text) { Drop(dynamic_cast<QPlainTextEdit &>(*QApplication::focusWidget()), text); }},
    {"InputMethod", Commit},
};

class ForeignText : public TextBoxes, public testing::WithParamInterface<Way> {};

} // namespace

TEST_F(TextBoxes, TypingABarOrAQuoteIsRefusedAndChangesNothing) {
    Open(TitleRow);
    Type("ab");
    Dialogs.Press(QMessageBox::Ok);
    Type("|");
    EXPECT_EQ(Dialogs.Boxes.back(), BarRefused);
    Dialogs.Press(QMessageBox::Ok);
    Type("\"");
    EXPECT_EQ(Dialogs.Boxes.back(), QuoteRefused);
    EXPECT_EQ(Box().toPlainText(), "ab");
}

TEST_F(TextBoxes, LettersOfAllScriptsAreTypedAndStored) {
    Open(TitleRow);
    Type("Größe € Ωж");
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "Größe € Ωж");
    EXPECT_EQ(RowText(Fields(), TitleRow), " Title                     | Größe € Ωж");
}

TEST_F(TextBoxes, AMarkTypedBehindItsLetterBecomesOneWithIt) {
    Open(TitleRow);
    Type(QString("ae\u0301b"));
    EXPECT_EQ(Box().toPlainText(), "aéb");
    EXPECT_EQ(Box().textCursor().position(), 3);
    Type(QString("x\u030Cy"));
    Key(Qt::Key_Left);
    Key(Qt::Key_Backspace, Qt::NoModifier, "\b");
    EXPECT_EQ(Box().toPlainText(), "aéby");
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "aéby");
}

TEST_F(TextBoxes, ALetterWithItsMarksIsOneToCaretAndDelete) {
    Open(TitleRow);
    PasteText(QString("ax\u030C\U0001F468\u200D\U0001F469b"));
    Key(Qt::Key_Home);
    Key(Qt::Key_Right);
    Key(Qt::Key_Delete);
    EXPECT_EQ(Box().toPlainText(), QString("a\U0001F468\u200D\U0001F469b"));
    Key(Qt::Key_Right);
    Key(Qt::Key_Backspace, Qt::NoModifier, "\b");
    EXPECT_EQ(Box().toPlainText(), "ab");
}

TEST_F(TextBoxes, HalfACharacterOfAPasteIsTold) {
    Open(TitleRow);
    Dialogs.Press(QMessageBox::Ok);
    PasteText(QString("a") + QChar(0xD800) + "b");
    EXPECT_EQ(Dialogs.Boxes.back().Text,
              "Some of what you entered was damaged before it came here. In the place of its "
              "characters stands \uFFFD.");
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "a\uFFFDb");
}

TEST_F(TextBoxes, TheLimitCutsAtOnceAndTheCaretStays) {
    Start({R"(1,5,"TEXT","A","","")"});
    DoubleClickRow(Fields(), 0);
    Type("abcdef");
    EXPECT_EQ(Box().toPlainText(), "abcde");
    EXPECT_EQ(Box().textCursor().position(), 5);
    Key(Qt::Key_Home);
    Key(Qt::Key_Right);
    Type("X");
    EXPECT_EQ(Box().toPlainText(), "aXbcd");
    EXPECT_EQ(Box().textCursor().position(), 2);
}

TEST_F(TextBoxes, TheLimitCountsALineBreakAsTwoCharacters) {
    Start({R"(2,20,"GROUP START","Samples","","")", R"(3,6,"MEMO","Log","","")", R"(2,1,"GROUP END","","","")"});
    DoubleClickRow(Fields(), 0);
    DoubleClickRow(The<QListView>("List1_3"), 0);
    Type("ab\ncdef");
    EXPECT_EQ(Box("Text1_6").toPlainText(), "ab\ncd");
}

TEST_F(TextBoxes, ALimitOf999OrMoreLimitsNothing) {
    Start({R"(1,999,"TEXT","A","","")", R"(1,20,"MEMO","B","","")", R"(1,998,"TEXT","C","","")"});
    const std::vector<std::pair<const char *, int>> lengths{{"Text1_2", 3000}, {"Text1_3", 3000}, {"Text1_2", 998}};
    for (std::size_t row = 0; row < lengths.size(); ++row) {
        DoubleClickRow(Fields(), static_cast<int>(row));
        PasteText(QString(3000, 'x'));
        EXPECT_EQ(Box(lengths[row].first).toPlainText().size(), lengths[row].second) << row;
    }
}

TEST_F(TextBoxes, EnterInATextBoxCommitsAndSelectsTheNextRow) {
    Open(TitleRow);
    Type("Wells\n");
    EXPECT_EQ(Stored(TitleRow), "Wells");
    EXPECT_EQ(SelectedRow(Fields()), 1);
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(TextBoxes, EnterOnTheLastRowKeepsItSelected) {
    Start(TextRows({"A"}));
    DoubleClickRow(Fields(), 0);
    Type("x\n");
    EXPECT_EQ(SelectedRow(Fields()), 0);
    EXPECT_EQ(RowText(Fields(), 0), " A                         | x");
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(TextBoxes, EnterInAMemoIsALineBreakAndCtrlEnterCommits) {
    Open(NotesRow);
    Type("one\ntwo\n");
    EXPECT_EQ(Box("Text1_3").toPlainText(), "one\ntwo\n");
    EXPECT_EQ(FocusName(), "Text1_3");
    Type("three");
    CommitEdit();
    EXPECT_EQ(Stored(NotesRow), "one\r\ntwo\r\nthree");
    EXPECT_EQ(SelectedRow(Fields()), NotesRow + 1);
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(TextBoxes, CtrlEnterCommitsInEveryBox) {
    Open(AbstractRow);
    Type("text");
    CommitEdit();
    EXPECT_EQ(Stored(AbstractRow), "text");
    DoubleClickRow(Fields(), ColourRow);
    DoubleClickRow(Choices(), 4);
    EXPECT_EQ(FocusName(), "Text2_2");
    Type("teal");
    CommitEdit();
    EXPECT_EQ(Stored(ColourRow), "teal");
}

TEST_F(TextBoxes, ARowWithLineBreaksIsDrawnOnOneLine) {
    Open(NotesRow);
    Type("one\ntwo");
    CommitEdit();
    EXPECT_EQ(RowText(Fields(), NotesRow), " Notes                     | one two");
    EXPECT_EQ(Fields().visualRect(Fields().model()->index(NotesRow, 0)).height(),
              Fields().visualRect(Fields().model()->index(TitleRow, 0)).height());
    EXPECT_EQ(Quintave.List1[0].Rows[NotesRow], " Notes                     | one\r\ntwo");
}

TEST_F(TextBoxes, NoBreakSpacesAreKept) {
    Open(TitleRow);
    Type(QString("a\u00A0b"));
    PasteText(QString("\u00A0c"));
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "a\u00A0b\u00A0c");
    // Shown again it is not turned into blanks either.
    DoubleClickRow(Fields(), TitleRow);
    Type("d");
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "a\u00A0b\u00A0cd");
}

TEST_P(ForeignText, ABarAndQuotesVanishWhenTheBoxIsLeft) {
    Open(TitleRow);
    Dialogs.Press(QMessageBox::Ok);
    GetParam().Put("a|b \"c\"");
    EXPECT_EQ(Dialogs.Boxes.back(), LeftOut);
    EXPECT_EQ(FocusName(), "Text1_1");
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "ab c");
    EXPECT_EQ(Dialogs.Titles.size(), 1U);
}

TEST_P(ForeignText, LettersOfAllScriptsAreTaken) {
    Open(TitleRow);
    GetParam().Put("Ωa日本b עברית");
    EXPECT_EQ(Box().toPlainText(), "Ωa日本b עברית");
    EXPECT_EQ(FocusName(), "Text1_1");
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "Ωa日本b עברית");
    EXPECT_TRUE(Dialogs.Titles.empty());
}

TEST_P(ForeignText, LettersWrittenAsBaseAndAccentAreComposed) {
    Open(TitleRow);
    GetParam().Put(QString("Ha\u0308user"));
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "Häuser");
    EXPECT_TRUE(Dialogs.Titles.empty());
}

TEST_P(ForeignText, LineBreaksInAMemoBecomeCrLf) {
    Open(NotesRow);
    GetParam().Put("one\ntwo\r\nthree\rfour\tfive");
    CommitEdit();
    EXPECT_EQ(Stored(NotesRow), "one\r\ntwo\r\nthree\r\nfour five");
}

TEST_P(ForeignText, LineBreaksInATextBecomeOneBlank) {
    Open(TitleRow);
    GetParam().Put("one\r\n\ttwo\nthree");
    EXPECT_EQ(Box().toPlainText(), "one two three");
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "one two three");
}

TEST_P(ForeignText, TheLimitHoldsAndTheEntriesCountAsChanged) {
    Open(TitleRow);
    GetParam().Put(QString(40, 'x'));
    EXPECT_EQ(Box().toPlainText(), QString(30, 'x'));
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(The<QPushButton>("CommandAdd").text(), "^Add/Merge File");
}

INSTANTIATE_TEST_SUITE_P(Ways, ForeignText, testing::ValuesIn(Ways),
                         [](const auto &way) { return std::string(way.param.Name); });

TEST_F(TextBoxes, TextIsPastedAtTheCaretInPlaceOfTheSelection) {
    Open(TitleRow);
    Type("abef");
    Key(Qt::Key_Left);
    Key(Qt::Key_Left);
    PasteText("cd");
    EXPECT_EQ(Box().toPlainText(), "abcdef");
    Key(Qt::Key_Home, Qt::ShiftModifier);
    PasteText("X");
    EXPECT_EQ(Box().toPlainText(), "Xef");
    EXPECT_EQ(Box().textCursor().position(), 1);
}

TEST_F(TextBoxes, ATextDroppedIntoABoxWithoutTheFocusIsStored) {
    Start(AllKinds());
    EXPECT_EQ(FocusName(), "List1_0");
    Drop(Box(), "dropped");
    EXPECT_EQ(FocusName(), "Text1_1");
    ClickRow(Fields(), AbstractRow);
    EXPECT_EQ(Stored(TitleRow), "dropped");
}

TEST_F(TextBoxes, OneLetterCommittedByAnInputMethodIsLikeAKey) {
    Open(TitleRow);
    Commit("ä");
    EXPECT_EQ(Box().toPlainText(), "ä");
    Dialogs.Press(QMessageBox::Ok);
    Commit("|");
    EXPECT_EQ(Dialogs.Boxes.back(), BarRefused);
    EXPECT_EQ(Box().toPlainText(), "ä");
}

TEST_F(TextBoxes, AnInputMethodMayReplaceWhatItHasTyped) {
    Open(TitleRow);
    Type("abcd");
    QInputMethodEvent event;
    event.setCommitString("XYZ", -2, 2);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    Settle();
    EXPECT_EQ(Box().toPlainText(), "abXYZ");
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "abXYZ");
}

TEST_F(TextBoxes, CopyCutAndUndoStayWithTheToolkit) {
    Open(TitleRow);
    Type("abc");
    Key(Qt::Key_Home, Qt::ShiftModifier);
    Ctrl('C');
    EXPECT_EQ(QApplication::clipboard()->text(), "abc");
    Ctrl('X');
    EXPECT_EQ(Box().toPlainText(), "");
    Ctrl('Z');
    EXPECT_EQ(Box().toPlainText(), "abc");
    CommitEdit();
    EXPECT_EQ(Stored(TitleRow), "abc");
}

TEST_F(TextBoxes, FormattedTextIsPastedAsPlainText) {
    Open(TitleRow);
    auto *const data = new QMimeData;
    data->setHtml("<b>bold</b>");
    data->setText("bold");
    QApplication::clipboard()->setMimeData(data);
    Ctrl('V');
    EXPECT_EQ(Box().toPlainText(), "bold");
}

TEST_F(TextBoxes, TheMouseMovesTheCaret) {
    Open(TitleRow);
    Type("abcdef");
    QTest::mouseClick(Box().viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(1, Box().viewport()->height() / 2));
    Type("X");
    EXPECT_EQ(Box().toPlainText(), "Xabcdef");
}

TEST_F(TextBoxes, DeleteAndBackspaceEditALineBreakAsOne) {
    Open(NotesRow);
    Type("a\nb");
    Key(Qt::Key_Left);
    Key(Qt::Key_Backspace, Qt::NoModifier, "\b");
    EXPECT_EQ(Box("Text1_3").toPlainText(), "ab");
    CommitEdit();
    EXPECT_EQ(Stored(NotesRow), "ab");
}

// A screen reader edits a box without giving it the focus first.
TEST_F(TextBoxes, ATextPutInByAScreenReaderIsStored) {
    Start(AllKinds());
    QAccessibleInterface *const box = QAccessible::queryAccessibleInterface(&Box());
    ASSERT_NE(box, nullptr);
    ASSERT_NE(box->editableTextInterface(), nullptr);
    box->editableTextInterface()->insertText(0, "spoken");
    ClickRow(Fields(), AbstractRow);
    EXPECT_EQ(Stored(TitleRow), "spoken");
}

TEST_F(TextBoxes, WhatAScreenReaderPutsInIsComposed) {
    Open(TitleRow);
    QAccessible::queryAccessibleInterface(&Box())->editableTextInterface()->insertText(0, QString("Ωe\u0301"));
    EXPECT_EQ(Box().toPlainText(), "Ωé");
}
