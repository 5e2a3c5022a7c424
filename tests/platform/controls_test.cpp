// Which change of a control and which act of the user becomes which event.
#include "platform/controls.h"

#include "platform/console/answers.h"
#include "support/user.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>
#include <utility>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Log; // the events that ran, in order

struct Form {
    Control Frame{.Type = Kind::Frame, .Name = "Frame"};
    Control Button{.Type = Kind::Button, .Name = "Button", .Container = &Frame};
    Control Other{.Type = Kind::Button, .Name = "Other"};
    Control List{.Type = Kind::List, .Name = "List", .Index = 3, .Rows = {"a", "b", "c"}};
    Control Looked{.Type = Kind::List, .Name = "Looked", .TakesFocus = false};
    Control Box{.Type = Kind::TextBox, .Name = "Box", .Index = 2};
    Control Bar{.Type = Kind::ScrollBar, .Name = "Bar", .Max = 5};
    Control Timer{.Type = Kind::Timer, .Name = "Timer"};
};

Form *Shown = nullptr;
Integer Discarded = 0; // a key or character code that the handlers discard

void Say(const char *what) { Log.emplace_back(what); }

constexpr Connection Table[] = {
    {"Bar", Event::Change, PlainHandler{[] { Log.push_back("bar " + std::to_string(Shown->Bar.Value)); }}},
    {"Box", Event::Change, IndexHandler{[](Integer index) { Log.push_back("change " + std::to_string(index)); }}},
    {"Box", Event::GotFocus, PlainHandler{[] { Say("box got"); }}},
    {"Box", Event::LostFocus, PlainHandler{[] { Say("box lost"); }}},
    {"Box", Event::KeyDown, KeyDownHandler{[](Integer index, Integer &code, Integer shift) {
         Log.push_back("down " + std::to_string(index) + " " + std::to_string(code) + " " + std::to_string(shift));
         if (code == Discarded) code = 0;
     }}},
    {"Box", Event::KeyPress, KeyPressHandler{[](Integer, Integer &code) {
         Log.push_back("press " + std::to_string(code));
         if (code == Discarded) code = 0;
     }}},
    {"Box", Event::ForeignKey, TextHandler{[](std::string_view key) { Log.push_back("foreign " + std::string(key)); }}},
    {"Box", Event::Pasted, TextHandler{[](std::string_view text) { Log.push_back("pasted " + std::string(text)); }}},
    {"Button", Event::Click, PlainHandler{[] { Say("click"); }}},
    {"Button", Event::GotFocus, PlainHandler{[] { Say("button got"); }}},
    {"Button", Event::LostFocus, PlainHandler{[] { Say("button lost"); }}},
    {"List", Event::Click, IndexHandler{[](Integer index) {
         Log.push_back("list " + std::to_string(index) + " row " + std::to_string(Shown->List.ListIndex));
     }}},
    {"List", Event::DblClick, PlainHandler{[] { Say("double"); }}},
    {"List", Event::GotFocus, PlainHandler{[] { Say("list got"); }}},
    {"List", Event::LostFocus, PlainHandler{[] { Say("list lost"); }}},
    {"List", Event::MouseDown, PlainHandler{[] { Say("mouse"); }}},
    {"Other", Event::Click, PlainHandler{[] { throw RuntimeError{DiskFull}; }}},
    {"Timer", Event::Timer, PlainHandler{[] { throw std::bad_alloc(); }}},
};

class Controls : public testing::Test, protected Form {
protected:
    Controls() {
        Shown = this;
        ConnectEvents(Table);
    }

    // The events since the last call.
    static std::vector<std::string> Events() { return std::exchange(Log, {}); }
};

} // namespace

TEST_F(Controls, SettingAListIndexClicksAtOnceAndForTheSameRowToo) {
    SetListIndex(List, 1);
    EXPECT_THAT(Events(), ElementsAre("list 3 row 1"));
    SetListIndex(List, 1);
    EXPECT_THAT(Events(), ElementsAre("list 3 row 1"));
}

TEST_F(Controls, ARowOutsideTheListMeansNone) {
    for (const Integer row : {Integer{-1}, Integer{-7}, Integer{3}, Integer{32767}}) {
        SetListIndex(List, 1);
        SetListIndex(List, row);
        EXPECT_EQ(List.ListIndex, -1) << row;
    }
}

TEST_F(Controls, ShowingAListIndexRunsNothing) {
    ShowListIndex(List, 2);
    EXPECT_EQ(List.ListIndex, 2);
    ShowListIndex(List, 3);
    EXPECT_EQ(List.ListIndex, -1);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Controls, ChangesOfRowsRunNothing) {
    AddRow(List, "d");
    SetRow(List, 0, "A");
    InsertRow(List, 0, "z");
    RemoveRow(List, 1);
    EXPECT_THAT(List.Rows, ElementsAre("z", "b", "c", "d"));
    ClearRows(List);
    EXPECT_THAT(List.Rows, IsEmpty());
    EXPECT_EQ(List.ListIndex, -1);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Controls, TheSelectionStaysOnItsRowWhenOthersComeAndGo) {
    ShowListIndex(List, 1);
    InsertRow(List, 0, "z");
    EXPECT_EQ(List.ListIndex, 2);
    InsertRow(List, 3, "y");
    EXPECT_EQ(List.ListIndex, 2);
    RemoveRow(List, 0);
    EXPECT_EQ(List.ListIndex, 1);
    RemoveRow(List, 1);
    EXPECT_EQ(List.ListIndex, -1);
    ShowListIndex(List, 0);
    RemoveRow(List, 0);
    EXPECT_EQ(List.ListIndex, -1);
}

TEST_F(Controls, ARowThatIsNotThereIsAnError) {
    EXPECT_THROW(SetRow(List, 3, ""), RuntimeError);
    EXPECT_THROW(SetRow(List, -1, ""), RuntimeError);
    EXPECT_THROW(RemoveRow(List, 3), RuntimeError);
    EXPECT_THROW(InsertRow(List, 4, ""), RuntimeError);
    EXPECT_NO_THROW(InsertRow(List, 3, "d"));
}

TEST_F(Controls, AListHolds32767Rows) {
    for (int i = 3; i < 32767; ++i) AddRow(List, "");
    try {
        AddRow(List, "");
        FAIL() << "one row more";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number, Overflow);
    }
    EXPECT_THROW(InsertRow(List, 0, ""), RuntimeError);
    EXPECT_EQ(List.Rows.size(), 32767U);
}

TEST_F(Controls, AClickSelectsAfterTheMouseWentDownAndTheFocusMoved) {
    SetFocus(Box);
    Events();
    ClickRow(List, 2);
    EXPECT_THAT(Events(), ElementsAre("mouse", "box lost", "list got", "list 3 row 2"));
    ClickRow(List, 2);
    EXPECT_THAT(Events(), ElementsAre("mouse", "list 3 row 2"));
}

TEST_F(Controls, ADoubleClickIsAClickFirst) {
    SetFocus(List);
    Events();
    DoubleClickRow(List, 0);
    EXPECT_THAT(Events(), ElementsAre("mouse", "list 3 row 0", "double"));
}

TEST_F(Controls, TheFocusIsLostBeforeItIsGot) {
    UserEnters(Box);
    UserEnters(Button);
    UserEnters(Button);
    EXPECT_THAT(Events(), ElementsAre("box got", "box lost", "button got"));
    EXPECT_EQ(Focused(), &Button);
}

TEST_F(Controls, HidingOrDisablingTheFocusedControlLosesTheFocus) {
    SetFocus(Box);
    Events();
    SetVisible(Box, false);
    EXPECT_THAT(Events(), ElementsAre("box lost"));
    EXPECT_EQ(Focused(), nullptr);
    SetFocus(Button);
    Events();
    SetEnabled(Button, false);
    EXPECT_THAT(Events(), ElementsAre("button lost"));
    SetEnabled(Button, false);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Controls, TheControlIsStillVisibleWhenItLosesTheFocusByHiding) {
    static bool visible = false;
    constexpr static Connection Look[] = {
        {"Box", Event::LostFocus, PlainHandler{[] { visible = Shown->Box.Visible; }}}};
    ConnectEvents(Look);
    SetFocus(Box);
    SetVisible(Box, false);
    EXPECT_TRUE(visible);
}

TEST_F(Controls, SoDoesHidingOrDisablingItsFrame) {
    SetFocus(Button);
    Events();
    SetVisible(Frame, false);
    EXPECT_THAT(Events(), ElementsAre("button lost"));
    SetVisible(Frame, true);
    SetFocus(Button);
    Events();
    SetEnabled(Frame, false);
    EXPECT_THAT(Events(), ElementsAre("button lost"));
}

TEST_F(Controls, HidingAnotherControlLeavesTheFocus) {
    SetFocus(Box);
    Events();
    SetVisible(Frame, false);
    SetVisible(List, false);
    EXPECT_THAT(Events(), IsEmpty());
    EXPECT_EQ(Focused(), &Box);
}

TEST_F(Controls, WhatCannotBeUsedGetsNoFocus) {
    SetFocus(Box);
    SetVisible(Frame, false);
    SetEnabled(List, false);
    Events();
    SetFocus(Button);
    SetFocus(List);
    SetFocus(Looked);
    EXPECT_THAT(Events(), IsEmpty());
    EXPECT_EQ(Focused(), &Box);
    EXPECT_FALSE(IsUsable(Button));
    EXPECT_FALSE(IsUsable(List));
    EXPECT_TRUE(IsUsable(Looked));
}

TEST_F(Controls, AFocusThatLeavingMovedElsewhereStaysThere) {
    constexpr static Connection Move[] = {
        {"Box", Event::LostFocus, PlainHandler{[] { SetFocus(Shown->List); }}},
        {"Button", Event::GotFocus, PlainHandler{[] { Say("button got"); }}},
    };
    ConnectEvents(Move);
    SetFocus(Box);
    SetFocus(Button);
    EXPECT_EQ(Focused(), &List);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Controls, AButtonThatLeavingPutOutOfUseIsNotPressed) {
    constexpr static Connection Hide[] = {
        {"Box", Event::LostFocus, PlainHandler{[] { SetEnabled(Shown->Button, false); }}},
        {"Button", Event::Click, PlainHandler{[] { Say("click"); }}},
    };
    ConnectEvents(Hide);
    SetFocus(Box);
    UserPresses(Button);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Controls, PressingAButtonMovesTheFocusFirst) {
    SetFocus(Box);
    Events();
    UserPresses(Button);
    EXPECT_THAT(Events(), ElementsAre("box lost", "button got", "click"));
}

TEST_F(Controls, AMessageBoxIsNoLossOfFocus) {
    SetFocus(Box);
    Events();
    MsgBox("text", OkOnly, "title");
    EXPECT_THAT(Events(), IsEmpty());
    EXPECT_EQ(Focused(), &Box);
}

TEST_F(Controls, AKeyIsDownPressAndChange) {
    SetFocus(Box);
    Events();
    Type("a");
    EXPECT_THAT(Events(), ElementsAre("down 2 65 0", "press 97", "change 2"));
    EXPECT_EQ(Box.Text, "a");
}

TEST_F(Controls, ADiscardedCharacterReachesNoBox) {
    SetFocus(Box);
    Events();
    Discarded = '|';
    Type("a|b");
    EXPECT_EQ(Box.Text, "ab");
    EXPECT_FALSE(UserKeyPress(Box, "|"));
    EXPECT_TRUE(UserKeyPress(Box, "b"));
    Discarded = DeleteKey;
    EXPECT_FALSE(UserKeyDown(Box, DeleteKey, 0));
    EXPECT_TRUE(UserKeyDown(Box, PageUpKey, 0));
    Discarded = 0;
}

TEST_F(Controls, EnterIsThirteenAndWithCtrlTen) {
    SetFocus(Box);
    Events();
    PressEnter();
    EXPECT_THAT(Events(), ElementsAre("down 2 13 0", "press 13"));
    PressEnter(CtrlMask);
    EXPECT_THAT(Events(), ElementsAre("down 2 13 2", "press 10"));
}

TEST_F(Controls, TheToolkitKeepsOnlyTheClipboardAndUndoOfTheCtrlLetters) {
    for (Integer letter = 'A'; letter <= 'Z'; ++letter) {
        const bool kept = std::string_view("CVXZ").find(static_cast<char>(letter)) != std::string_view::npos;
        EXPECT_EQ(UserKeyDown(Box, letter, CtrlMask), kept) << static_cast<char>(letter);
        EXPECT_TRUE(UserKeyDown(Box, letter, 0));
        EXPECT_TRUE(UserKeyDown(Box, letter, CtrlMask + ShiftMask));
    }
    EXPECT_THAT(Log.front(), "down 2 65 2");
}

TEST_F(Controls, ACharacterOutsideTheCodePageIsToldAndDiscarded) {
    EXPECT_FALSE(UserKeyPress(Box, "Ω"));
    EXPECT_THAT(Events(), ElementsAre("foreign Ω"));
    EXPECT_TRUE(UserKeyPress(Box, "€"));
    EXPECT_THAT(Events(), ElementsAre("press 128"));
}

TEST_F(Controls, AnEditOfTheUsersIsAChangeAndOneOfTheProgramsIsNone) {
    UserEdits(Box, "abc", 1);
    EXPECT_THAT(Events(), ElementsAre("change 2"));
    SetText(Box, "program", 100);
    EXPECT_THAT(Events(), IsEmpty());
    EXPECT_EQ(Box.Caret, 7);
    SetText(Box, "program", -1);
    EXPECT_EQ(Box.Caret, 0);
}

TEST_F(Controls, PastingIsOneChangeAndThenToldWithItsText) {
    Paste(Box, "aΩ東b");
    EXPECT_THAT(Events(), ElementsAre("change 2", "pasted aΩ東b"));
    EXPECT_EQ(Box.Text, "aΩ東b");
}

TEST_F(Controls, APastedLetterAndItsMarkAreComposed) {
    EXPECT_EQ(PastedText(Box, "e\u0301 Z\u030C x\u030C"), "\u00E9 \u017D x\u030C");
}

TEST_F(Controls, OnOneLineARunOfBreaksAndControlsBecomesOneBlank) {
    EXPECT_EQ(PastedText(Box, "a\r\nb\tc\n\n\td\x01"
                              "e"),
              "a b c d e");
}

TEST_F(Controls, OnManyLinesEachBreakBecomesThePairAndAControlABlank) {
    Box.ManyLines = true;
    EXPECT_EQ(PastedText(Box, "a\nb\rc\r\nd\te\n\nf"), "a\r\nb\r\nc\r\nd e\r\n\r\nf");
}

TEST_F(Controls, ALineSeparatorOfUnicodeIsALineBreak) {
    EXPECT_EQ(PastedText(Box, "a\u2028\nb"), "a b");
    EXPECT_EQ(PastedText(Box, "a\n\u2028b"), "a b");
}

TEST_F(Controls, AScrollBarStaysInItsRangeAndChangesOnlyWhenItDiffers) {
    SetValue(Bar, 3);
    SetValue(Bar, 3);
    SetValue(Bar, 9);
    SetValue(Bar, -2);
    EXPECT_THAT(Events(), ElementsAre("bar 3", "bar 5", "bar 1"));
}

TEST_F(Controls, ALoweredMaximumLowersTheValue) {
    SetValue(Bar, 5);
    Events();
    SetMax(Bar, 2);
    EXPECT_THAT(Events(), ElementsAre("bar 2"));
    SetMax(Bar, 4);
    EXPECT_THAT(Events(), IsEmpty());
    SetMax(Bar, 0);
    EXPECT_EQ(Bar.Max, 1);
    EXPECT_THAT(Events(), ElementsAre("bar 1"));
}

TEST_F(Controls, AnErrorThatNoCommandTrapsIsToldAndTheProgramGoesOn) {
    UserPresses(Other);
    ASSERT_EQ(Dialogs.Messages.size(), 1U);
    EXPECT_EQ(Dialogs.Messages[0].Title, "Quintave");
    EXPECT_EQ(Dialogs.Messages[0].Text, "Error: 61 - Disk full");
    EXPECT_EQ(Dialogs.Messages[0].Style, CriticalIcon);
    UserTicks(Timer);
    EXPECT_EQ(Dialogs.Messages[1].Text, "Error: 7 - Out of memory");
    RunAsEvent([] { throw std::out_of_range("row"); });
    EXPECT_EQ(Dialogs.Messages[2].Text, "Error: 9 - Subscript out of range");
}

TEST_F(Controls, OnlyWhatChangedIsShownAnew) {
    TakeChanges();
    SetCaption(Button, "");
    SetVisible(Button, true);
    SetEnabled(Button, true);
    SetBackColor(Button, DesignColour);
    EXPECT_THAT(TakeChanges(), IsEmpty());
    SetCaption(Button, "x");
    SetVisible(Button, false);
    EXPECT_THAT(TakeChanges(), ElementsAre(&Button));
    EXPECT_EQ(Button.Changed, TextAspect | ShownAspect);
    SetRow(List, 1, "B");
    EXPECT_EQ(List.Changed, RowAspect);
    EXPECT_THAT(List.ChangedRows, ElementsAre(1));
}

TEST_F(Controls, EachChangeTellsWhatOfItsControlIsToBeShownAnew) {
    const auto told = [](Control &control, const std::function<void()> &change) {
        TakeChanges();
        control.Changed = 0;
        change();
        EXPECT_THAT(TakeChanges(), ElementsAre(&control));
        return control.Changed;
    };
    EXPECT_EQ(told(Button, [&] { SetCaption(Button, "x"); }), TextAspect);
    EXPECT_EQ(told(Button, [&] { SetVisible(Button, false); }), ShownAspect);
    EXPECT_EQ(told(Button, [&] { SetEnabled(Button, false); }), ShownAspect);
    EXPECT_EQ(told(Button, [&] { SetTabStop(Button, !Button.TabStop); }), ShownAspect);
    EXPECT_EQ(told(Button, [&] { SetBackColor(Button, 1); }), ColourAspect);
    EXPECT_EQ(told(Button, [&] { SetPlace(Button, 1, 2); }), PlaceAspect);
    EXPECT_EQ(told(Button, [&] { SetHeight(Button, 1, 2); }), PlaceAspect);
    EXPECT_EQ(told(Box, [&] { SetText(Box, "", 0); }), TextAspect); // also where the text is the same
    EXPECT_EQ(told(List, [&] { AddRow(List, "d"); }), RowsAspect);
    EXPECT_EQ(told(List, [&] { InsertRow(List, 0, "z"); }), RowsAspect | IndexAspect);
    EXPECT_EQ(told(List, [&] { RemoveRow(List, 0); }), RowsAspect | IndexAspect);
    EXPECT_EQ(told(List, [&] { SetRow(List, 0, "A"); }), RowAspect);
    EXPECT_EQ(told(List, [&] { ShowListIndex(List, 1); }), IndexAspect);
    EXPECT_EQ(told(List, [&] { SetListIndex(List, 0); }), IndexAspect);
    EXPECT_EQ(told(List, [&] { ClearRows(List); }), RowsAspect | IndexAspect);
    EXPECT_EQ(told(Bar, [&] { SetMax(Bar, 7); }), RangeAspect);
    EXPECT_EQ(told(Bar, [&] { SetValue(Bar, 7); }), RangeAspect);
}

TEST(ControlNames, AreTheCaptionWithoutItsKeyMark) {
    EXPECT_EQ(AccessibleName({.Caption = "^Add/Open File"}), "Add/Open File");
    EXPECT_EQ(AccessibleName({.Caption = "Cancel "}), "Cancel");
    EXPECT_EQ(AccessibleName({.Caption = "Section/Field && Data"}), "Section/Field & Data");
    EXPECT_EQ(AccessibleName({.Caption = "x", .Title = "Value"}), "Value");
    EXPECT_EQ(KeyOf({.Caption = "^Save"}), "Ctrl+S");
    EXPECT_EQ(KeyOf({.Caption = "SaveAs"}), "");
    EXPECT_EQ(KeyOf({.Caption = "^"}), "");
}

TEST(ConsoleDialogs, AnswerWithTheDefaultButton) {
    EXPECT_EQ(DefaultAnswer(OkOnly), OkAnswer);
    EXPECT_EQ(DefaultAnswer(OkCancel), OkAnswer);
    EXPECT_EQ(DefaultAnswer(OkCancel + SecondIsDefault), CancelAnswer);
    EXPECT_EQ(DefaultAnswer(YesNo + CriticalIcon), YesAnswer);
    EXPECT_EQ(DefaultAnswer(YesNoCancel), YesAnswer);
    EXPECT_EQ(DefaultAnswer(YesNoCancel + SecondIsDefault), NoAnswer);
}

TEST_F(Controls, WhileADialogueWaitsForItsAnswerTheUserChangesNothing) {
    SetFocus(Button);
    Log.clear();
    TakeChanges();
    {
        const WaitingForAnswer waiting;
        EXPECT_TRUE(IsWaitingForAnswer());
        UserPresses(Button);
        UserEnters(Box);
        UserEdits(Box, "text", 4);
        UserPasted(Box, "text");
        UserSelects(List, 1);
        UserDoubleClicks(List);
        UserPressesMouse(List);
        UserScrolls(Bar, 3);
        EXPECT_FALSE(UserKeyDown(Box, 'A', 0));
        EXPECT_FALSE(UserKeyPress(Box, "a"));
        EXPECT_THAT(Events(), IsEmpty());
        EXPECT_EQ(Focused(), &Button);
        EXPECT_EQ(std::tie(Box.Text, List.ListIndex, Bar.Value), std::make_tuple("", -1, 1));
    }
    // What the front has shown of it is to be shown as it is.
    EXPECT_TRUE(Box.Changed & TextAspect);
    EXPECT_TRUE(List.Changed & IndexAspect);
    EXPECT_TRUE(Bar.Changed & RangeAspect);
    EXPECT_FALSE(IsWaitingForAnswer());
    UserPresses(Button);
    EXPECT_THAT(Events(), ElementsAre("click"));
}
