// Typing into the free-text boxes.
#include "screen/value_entry.h"

#include "main/session.h"
#include "model/row_text.h"
#include "report/save_command.h"
#include "screen/selected_field.h"
#include "support/screen_test.h"
#include "support/template_lines.h"

using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;

namespace {

constexpr auto ReservedBar =
    "'|' is a reserved character in Quintave and is not allowed as input. Please choose another character.";
constexpr auto ReservedQuote =
    "the 'double quote' or 'seconds' symbol is a reserved character in Quintave and is not allowed as input. Please "
    "choose another character or spell out the appropriate word.";

enum EntryRow : Integer { TitleRow, CodeRow, NotesRow, ColourRow, LastRow };

class ValueEntry : public ScreenTest {
protected:
    void SetUp() override {
        Start(Join({{Element(1, 60, "TEXT", "Title"), Element(1, 5, "TEXT", "Code"), Element(1, 20, "MEMO", "Notes")},
                    ListOf(1, 20, "Colour", {"Red", "Rose", "OTHER..."}),
                    {Element(1, 30, "TEXT", "Last")}}));
    }

    // Gives a row a value that was loaded.
    static void Give(Integer row, const std::string &value) {
        RowValue[row] = value;
        SetRow(Quintave.List1[0], row, RowWithValue(Row(static_cast<std::size_t>(row)), value));
    }

    // Opens Text2 beside the choice list.
    static void OpenOther() {
        Open(ColourRow);
        ClickRow(Quintave.List2[0], 2);
        DoubleClickRow(Quintave.List2[0], 2);
    }

    Control &title = Quintave.Text1[2];
    Control &code = Quintave.Text1[1];
    Control &notes = Quintave.Text1[3];
    Control &other = Quintave.Text2[2];
};

} // namespace

// Reserved and foreign characters
// ------------------------------------------------------------------------------

TEST_F(ValueEntry, TypingABarIsRefusedAndChangesNothing) {
    Open(TitleRow);
    Type("a|b");
    EXPECT_THAT(Dialogs.Messages, ElementsAre(FieldsAre("Quintave", ReservedBar, OkOnly)));
    EXPECT_EQ(title.Text, "ab");
    EXPECT_EQ(Focused(), &title);
}

TEST_F(ValueEntry, TypingADoubleQuoteIsRefusedAndChangesNothing) {
    Open(TitleRow);
    Type("a\"b");
    EXPECT_THAT(Dialogs.Messages, ElementsAre(FieldsAre("Quintave", ReservedQuote, OkOnly)));
    EXPECT_EQ(title.Text, "ab");
}

TEST_F(ValueEntry, TheOtherBoxAndAMemoRefuseTheSameCharacters) {
    OpenOther();
    Type("|\"");
    Open(NotesRow);
    Type("|\"");
    EXPECT_THAT(Dialogs.Messages,
                ElementsAre(FieldsAre("Quintave", ReservedBar, OkOnly), FieldsAre("Quintave", ReservedQuote, OkOnly),
                            FieldsAre("Quintave", ReservedBar, OkOnly), FieldsAre("Quintave", ReservedQuote, OkOnly)));
    EXPECT_EQ(other.Text, "");
    EXPECT_EQ(notes.Text, "");
}

TEST_F(ValueEntry, ARefusedCharacterNeitherCommitsNorChanges) {
    Open(TitleRow);
    Type("|");
    EXPECT_EQ(DataChanged, False);
    Type("a|");
    EXPECT_EQ(RowValue[TitleRow], "");
    EXPECT_EQ(EntryFlag, True);
}

TEST_F(ValueEntry, PastedReservedCharactersAreRemovedAtTheCommit) {
    Open(TitleRow);
    Paste(title, "a|b\"c  ");
    EXPECT_EQ(title.Text, "a|b\"c  ");
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(RowValue[TitleRow], "abc");
    EXPECT_EQ(Row(TitleRow), RowOf("Title", "abc"));
    EXPECT_EQ(title.Text, "abc");
    EXPECT_EQ(MessageCount(), 1u);
}

TEST_F(ValueEntry, ABlankBeforeAReservedCharacterIsNoneAtTheEnd) {
    Open(TitleRow);
    Paste(title, "abc \"  ");
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(RowValue[TitleRow], "abc ");
}

TEST_F(ValueEntry, CharactersOfAllScriptsAreTypedAndPasted) {
    Open(TitleRow);
    Type("a\u03A9b");
    EXPECT_EQ(title.Text, "a\u03A9b");
    Paste(title, " \u5C71\u7530 \U0001F468\u200D\U0001F469\u200D\U0001F467");
    EXPECT_EQ(title.Text, "a\u03A9b \u5C71\u7530 \U0001F468\u200D\U0001F469\u200D\U0001F467");
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(ValueEntry, WhatAPasteLosesIsToldOnceWithTheQuotesThatStay) {
    Open(TitleRow);
    Paste(title, "\"a\"|b|\u201Cc\u201D");
    EXPECT_THAT(Dialogs.Messages,
                ElementsAre(FieldsAre("Quintave",
                                      "'|' and the 'double quote' or 'seconds' symbol are reserved characters in "
                                      "Quintave and are left out of what you entered. The quotes \u201C and \u201D may "
                                      "be used.",
                                      OkOnly)));
    PressEnter();
    EXPECT_EQ(RowValue[TitleRow], "ab\u201Cc\u201D");
}

TEST_F(ValueEntry, DamagedCharactersOfAPasteAreTold) {
    Open(TitleRow);
    Paste(title, "a\uFFFDb");
    EXPECT_THAT(Dialogs.Messages,
                ElementsAre(FieldsAre("Quintave",
                                      "Some of what you entered was damaged before it came here. In the place of its "
                                      "characters stands \uFFFD.",
                                      OkOnly)));
}

TEST_F(ValueEntry, ALetterWithItsMarksIsOneCharacterOfTheLimit) {
    Open(CodeRow);
    Paste(code, "x\u030Cx\u030Cx\u030Cx\u030Cx\u030Cx\u030C");
    EXPECT_EQ(code.Text, "x\u030Cx\u030Cx\u030Cx\u030Cx\u030C");
    PressKey(DeleteKey);
    code.Caret = 0;
    PressKey(DeleteKey);
    EXPECT_EQ(code.Text, "x\u030Cx\u030Cx\u030Cx\u030C");
}

TEST_F(ValueEntry, PastedLineBreaksAndControlCodesFollowTheKindOfBox) {
    Open(TitleRow);
    Paste(title, "a\r\n\n\tb\x01"
                 "c");
    EXPECT_EQ(title.Text, "a b c");
    Open(NotesRow);
    Paste(notes, "a\nb\rc\r\nd\te");
    EXPECT_EQ(notes.Text, "a\r\nb\r\nc\r\nd e");
    OpenOther();
    Paste(other, "a\n\nb");
    EXPECT_EQ(other.Text, "a b");
    EXPECT_EQ(MessageCount(), 0u);
}

// Length
// ------------------------------------------------------------------------------

TEST_F(ValueEntry, ASixthCharacterOfFiveIsCutAtOnceAndTheCaretStays) {
    Open(CodeRow);
    Type("abcdef");
    EXPECT_EQ(code.Text, "abcde");
    EXPECT_EQ(code.Caret, 5);
    code.Caret = 2;
    Type("x");
    EXPECT_EQ(code.Text, "abxcd");
    EXPECT_EQ(code.Caret, 3);
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(ValueEntry, APastedTextIsCutToTheLimit) {
    Open(CodeRow);
    Paste(code, "abcdefgh");
    EXPECT_EQ(code.Text, "abcde");
}

TEST_F(ValueEntry, TheCaretStaysBehindAPasteThatIsCut) {
    Open(CodeRow);
    Type("abcde");
    code.Caret = 2;
    Paste(code, "XY");
    EXPECT_EQ(code.Text, "abXYc");
    EXPECT_EQ(code.Caret, 4);
    code.Caret = 2;
    Paste(code, "12345678");
    EXPECT_EQ(code.Text, "ab123");
    EXPECT_EQ(code.Caret, 5);
}

TEST_F(ValueEntry, TheOtherBoxHasTheLimitOfItsField) {
    OpenOther();
    Paste(other, std::string(25, 'a'));
    EXPECT_EQ(other.Text, std::string(20, 'a'));
}

TEST_F(ValueEntry, ALimitOf999AllowsAnyLength) {
    Open(NotesRow);
    Paste(notes, std::string(3000, 'a'));
    PressEnter(CtrlMask);
    EXPECT_EQ(RowValue[NotesRow], std::string(3000, 'a'));
}

TEST_F(ValueEntry, ALoadedValueOverTheLimitStaysUntilItIsEdited) {
    Give(CodeRow, "abcdefgh");
    Open(CodeRow);
    EXPECT_EQ(code.Text, "abcdefgh");
    UserEnters(Quintave.List1[0]);
    EXPECT_EQ(RowValue[CodeRow], "abcdefgh");
    Open(CodeRow);
    code.Caret = 0;
    Type("x");
    EXPECT_EQ(code.Text, "xabcd");
}

namespace {

constexpr int MostLines = 32767;

// That many lines of no characters.
std::string LinesOfNone(int count) {
    std::string text;
    for (int line = 1; line < count; ++line) text += "\r\n";
    return text;
}

} // namespace

TEST_F(ValueEntry, NoLineBreakIsTakenBehindTheLastLineAReportCanCount) {
    Give(NotesRow, LinesOfNone(MostLines - 1));
    Open(NotesRow);
    PressEnter();
    EXPECT_TRUE(notes.Text == LinesOfNone(MostLines));
    PressEnter();
    EXPECT_TRUE(notes.Text == LinesOfNone(MostLines));
    Type("x");
    PressEnter(CtrlMask);
    EXPECT_TRUE(RowValue[NotesRow] == LinesOfNone(MostLines) + "x");
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(ValueEntry, APasteIsCutBehindTheLastLineAndThatIsTold) {
    Give(NotesRow, LinesOfNone(MostLines - 1));
    Open(NotesRow);
    Paste(notes, "a\nb");
    EXPECT_TRUE(notes.Text == LinesOfNone(MostLines - 1) + "a\r\nb");
    EXPECT_EQ(MessageCount(), 0u);
    Paste(notes, "c\nd\ne\nf");
    EXPECT_TRUE(notes.Text == LinesOfNone(MostLines - 1) + "a\r\nbc");
    EXPECT_THAT(
        Dialogs.Messages,
        ElementsAre(FieldsAre("Quintave", "The text was longer than its field allows and was cut. Lines left out: 3",
                              OkOnly + InformationIcon)));
}

TEST_F(ValueEntry, EnterCutsALoadedValueOverTheLimitAndTellsIt) {
    struct Loaded {
        const char *Value;
        Integer Shift;
        std::string Left;
    };
    for (const auto &[value, shift, left] : {Loaded{"abcdefgh", 0, "3"}, {"abcdef", CtrlMask, "1"}}) {
        Give(CodeRow, value);
        Open(CodeRow);
        PressEnter(shift);
        EXPECT_EQ(RowValue[CodeRow], "abcde");
        EXPECT_EQ(Row(CodeRow), RowOf("Code", "abcde"));
        EXPECT_EQ(DataChanged, True);
        EXPECT_EQ(CurrentField, NotesRow);
        EXPECT_EQ(Focused(), &Quintave.List1[0]);
        EXPECT_THAT(
            Dialogs.Messages,
            ElementsAre(FieldsAre("Quintave",
                                  "The text was longer than its field allows and was cut. Characters left out: " + left,
                                  OkOnly + InformationIcon)));
        Dialogs.Messages.clear();
    }
}

TEST_F(ValueEntry, EnterOnAValueWithinTheLimitTellsNothing) {
    Give(CodeRow, "abcde");
    Open(CodeRow);
    PressEnter();
    Open(CodeRow);
    Type("f");
    PressEnter();
    EXPECT_EQ(RowValue[CodeRow], "abcde");
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(ValueEntry, EveryOtherWayOutKeepsALoadedValueOverTheLimit) {
    const std::vector<void (*)()> ways{
        [] { UserEnters(Quintave.CommandSave); },
        [] { ClickRow(Quintave.List1[0], LastRow); },
        [] { DoubleClickRow(Quintave.List1[0], TitleRow); },
        [] { PressCtrl('S'); },
        [] { CloseMainWindow(); },
    };
    for (const auto &way : ways) {
        Give(CodeRow, "abcdefgh");
        Open(CodeRow);
        way();
        EXPECT_EQ(RowValue[CodeRow], "abcdefgh");
        EXPECT_EQ(DataChanged, False);
        EXPECT_EQ(MessageCount(), 0u);
    }
}

TEST_F(ValueEntry, ALoadedValueThatNobodyEditsKeepsItsBlanks) {
    Give(TitleRow, "Wells  ");
    Open(TitleRow);
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(RowValue[TitleRow], "Wells  ");
    Give(TitleRow, "a  |b ");
    Select(TitleRow);
    for (const Integer instance : {Integer{2}, Integer{1}, Integer{2}}) {
        UserEnters(title);
        UserScrolls(Quintave.FIScroll, instance);
    }
    EXPECT_EQ(RowValue[TitleRow], "a  |b ");
    EXPECT_EQ(DataChanged, False);
}

// Committing
// ------------------------------------------------------------------------------

TEST_F(ValueEntry, EnterCommitsAndSelectsTheNextRowWithTheFocusOnTheList) {
    Open(TitleRow);
    Type("Wells  ");
    PressEnter();
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(Row(TitleRow), RowOf("Title", "Wells"));
    EXPECT_EQ(CurrentField, CodeRow);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(ValueEntry, EnterInAMemoBreaksTheLineAndCtrlEnterCommits) {
    Open(NotesRow);
    Type("one");
    PressEnter();
    Type("two");
    EXPECT_EQ(notes.Text, "one\r\ntwo");
    EXPECT_EQ(RowValue[NotesRow], "");
    PressEnter(CtrlMask);
    EXPECT_EQ(RowValue[NotesRow], "one\r\ntwo");
    EXPECT_EQ(Row(NotesRow), RowOf("Notes", "one\r\ntwo"));
    EXPECT_EQ(CurrentField, ColourRow);
}

TEST_F(ValueEntry, CtrlEnterCommitsInEveryBox) {
    Open(TitleRow);
    Type("a");
    PressEnter(CtrlMask);
    EXPECT_EQ(RowValue[TitleRow], "a");
    OpenOther();
    Type("b");
    PressEnter(CtrlMask);
    EXPECT_EQ(RowValue[ColourRow], "b");
    EXPECT_EQ(CurrentField, LastRow);
}

TEST_F(ValueEntry, EnterOnTheLastRowCommitsAndKeepsItSelected) {
    Open(LastRow);
    Type("end");
    PressEnter();
    EXPECT_EQ(RowValue[LastRow], "end");
    EXPECT_EQ(CurrentField, LastRow);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(ValueEntry, EnterMarksTheEntriesChangedEvenWithoutAnEdit) {
    Open(TitleRow);
    PressEnter();
    EXPECT_EQ(DataChanged, True);
}

TEST_F(ValueEntry, EnterInAnUneditedOtherBoxMarksNothing) {
    Give(ColourRow, "Ochre");
    Open(ColourRow);
    ASSERT_EQ(Focused(), &other);
    PressEnter();
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(RowValue[ColourRow], "Ochre");
    EXPECT_EQ(CurrentField, LastRow);
}

TEST_F(ValueEntry, EveryWayOutOfABoxCommitsToTheRowItBelongsTo) {
    const std::vector<void (*)()> ways{
        [] { UserEnters(Quintave.CommandSave); },     // Tab
        [] { ClickRow(Quintave.List1[0], LastRow); }, // another row
        [] { DoubleClickRow(Quintave.List1[0], CodeRow); },
        [] { ClickRow(Quintave.List1[0], TitleRow); }, // its own row
        [] { Press(Quintave.FIScroll); },
        [] { PressCtrl('R'); }, // cancelled below
        [] { CloseMainWindow(); },
    };
    for (std::size_t i = 0; i < ways.size(); ++i) {
        const std::string value = "way " + std::to_string(i);
        RowValue[TitleRow].clear();
        Open(TitleRow);
        Type(value);
        EXPECT_EQ(RowValue[TitleRow], "");
        Dialogs.Answers = {CancelAnswer, CancelAnswer};
        ways[i]();
        EXPECT_EQ(RowValue[TitleRow], value);
        EXPECT_EQ(Row(TitleRow), RowOf("Title", value));
        for (const Integer row : {CodeRow, NotesRow, ColourRow, LastRow}) EXPECT_EQ(RowValue[row], "");
    }
}

TEST_F(ValueEntry, SavingFromInsideABoxWritesTheTextJustTyped) {
    Open(TitleRow);
    Type("Wells");
    Dialogs.Texts.push_back(folder.Path() + "a.rpx");
    PressCtrl('S');
    EXPECT_EQ(folder.Read("a.rpx"), "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"Title\",\"Wells\"\r\n");
    EXPECT_EQ(DataChanged, False);
    UserEnters(Quintave.CommandQuit);
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(ValueEntry, ACancelledSaveLeavesTheBoxAsItIs) {
    Open(TitleRow);
    Paste(title, "Hello| ");
    title.Caret = 5;
    PressCtrl('S');
    ASSERT_EQ(Dialogs.Asked.size(), 1u);
    EXPECT_EQ(title.Text, "Hello| ");
    EXPECT_EQ(title.Caret, 5);
    EXPECT_EQ(title.BackColor, White);
    EXPECT_EQ(RowValue[TitleRow], "Hello");
    EXPECT_EQ(Row(TitleRow), RowOf("Title", "Hello"));
}

TEST_F(ValueEntry, TypingGoesOnBehindABlankAfterACancelledSave) {
    Open(TitleRow);
    Type("Hello ");
    PressCtrl('S');
    ASSERT_EQ(Dialogs.Asked.size(), 1u);
    EXPECT_EQ(Focused(), &title);
    Type("world");
    PressEnter();
    EXPECT_EQ(RowValue[TitleRow], "Hello world");
}

TEST_F(ValueEntry, LeavingAnUnchangedBoxChangesNothing) {
    Give(TitleRow, "Wells");
    Open(TitleRow);
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Open File");
}

TEST_F(ValueEntry, TheFirstCharacterMarksTheEntriesChangedAndMakesAddAMerge) {
    Open(TitleRow);
    EXPECT_EQ(DataChanged, False);
    Type("a");
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_EQ(RowValue[TitleRow], "");
    EXPECT_EQ(Row(TitleRow), RowOf("Title"));
}

TEST_F(ValueEntry, AnotherAddCaptionIsLeftAlone) {
    SetCaption(Quintave.CommandAdd, "^Add/Merge File");
    Open(TitleRow);
    Type("a");
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
}

TEST_F(ValueEntry, AMousePasteIsAnEdit) {
    Open(CodeRow);
    Paste(code, "abcdefg");
    EXPECT_EQ(DataChanged, True);
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(RowValue[CodeRow], "abcde");
}

TEST_F(ValueEntry, ChangesByTheProgramAreNoEdits) {
    Give(TitleRow, "Wells");
    Give(ColourRow, "Ochre");
    for (const Integer row : {TitleRow, NotesRow, ColourRow, LastRow, CodeRow}) Open(row);
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Open File");
}

TEST_F(ValueEntry, ABoxThatNeverHadTheFocusCommitsNothing) {
    Select(TitleRow);
    SetText(title, "by the program", 0);
    Select(CodeRow);
    EXPECT_EQ(RowValue[TitleRow], "");
    EXPECT_EQ(EntryFlag, False);
}

TEST_F(ValueEntry, ABoxIsWhiteWithTheFocusAndLightGreyWithout) {
    for (const auto &[row, box] : {std::pair{TitleRow, &title}, {CodeRow, &code}, {NotesRow, &notes}}) {
        Open(row);
        EXPECT_EQ(box->BackColor, 0xFFFFFF);
        UserEnters(Quintave.CommandSave);
        EXPECT_EQ(box->BackColor, 0xC0C0C0);
    }
    OpenOther();
    EXPECT_EQ(other.BackColor, 0xFFFFFF);
    PressEnter();
    EXPECT_EQ(other.BackColor, 0xC0C0C0);
}

TEST_F(ValueEntry, AMessageLeavesTheEditAsItIs) {
    Open(TitleRow);
    Type("ab|");
    EXPECT_EQ(title.Text, "ab");
    EXPECT_EQ(Focused(), &title);
    EXPECT_EQ(RowValue[TitleRow], "");
    Type("c");
    PressEnter();
    EXPECT_EQ(RowValue[TitleRow], "abc");
}

TEST_F(ValueEntry, ACommitReplacesOnlyTheInstanceShown) {
    Give(TitleRow, "a|b|c");
    Select(TitleRow);
    UserScrolls(Quintave.FIScroll, 2);
    UserEnters(title);
    Type("2");
    UserEnters(Quintave.CommandSave);
    EXPECT_EQ(RowValue[TitleRow], "a|b2|c");
    EXPECT_EQ(Row(TitleRow), RowOf("Title", "a|b2|c"));
}

// Letters typed on the field list
// ------------------------------------------------------------------------------

TEST_F(ValueEntry, ALetterTypedOnARowOpensItsBoxWithTheLetterAppended) {
    Give(TitleRow, "Well");
    Select(TitleRow);
    Type("s and x");
    EXPECT_EQ(title.Text, "Wells and x");
    EXPECT_EQ(Focused(), &title);
    EXPECT_EQ(DataChanged, True);
    Select(NotesRow);
    Type("\u00E9");
    EXPECT_EQ(notes.Text, "é");
}

TEST_F(ValueEntry, ALetterTypedOnAFullRowFollowsTheLimit) {
    Give(CodeRow, "abcde");
    Select(CodeRow);
    Type("f");
    EXPECT_EQ(code.Text, "abcde");
    EXPECT_EQ(DataChanged, True);
}

TEST_F(ValueEntry, BackspaceAndEscapeOnARowOnlyOpenItsBox) {
    Give(TitleRow, "Wells");
    for (const char *key : {"\b", "\x1b"}) {
        Select(TitleRow);
        UserKeyPress(Quintave.List1[0], key);
        EXPECT_EQ(Focused(), &title);
        EXPECT_EQ(title.Text, "Wells");
        EXPECT_EQ(DataChanged, False);
    }
}

TEST_F(ValueEntry, ReservedCharactersTypedOnARowAreToldAndOpenItsBox) {
    for (const auto &[key, text] : {std::pair{"|", ReservedBar}, {"\"", ReservedQuote}}) {
        Dialogs.Messages.clear();
        Select(TitleRow);
        Type(key);
        EXPECT_THAT(Dialogs.Messages, ElementsAre(FieldsAre("Quintave", text, OkOnly)));
        EXPECT_EQ(Focused(), &title);
        EXPECT_EQ(title.Text, "");
        Select(ColourRow);
        Type(key);
        EXPECT_EQ(Focused(), &Quintave.List2[0]);
        EXPECT_EQ(Quintave.List2[0].ListIndex, -1);
        EXPECT_EQ(PendingKey, "");
    }
    EXPECT_EQ(DataChanged, False);
}

TEST_F(ValueEntry, ALetterOfAnyScriptTypedOnARowOpensItsBoxWithIt) {
    Select(TitleRow);
    Type("\u03A9");
    EXPECT_EQ(MessageCount(), 0u);
    EXPECT_EQ(Focused(), &title);
    EXPECT_EQ(title.Text, "\u03A9");
    EXPECT_EQ(DataChanged, True);
}
