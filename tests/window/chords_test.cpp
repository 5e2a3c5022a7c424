// Keys together with Ctrl, Alt or the desktop's own key: none of them types; letters count by their key.
#include "window/window_test.h"

#include "window/templates.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>

namespace {

struct Chord {
    const char *Name;
    Qt::KeyboardModifiers With;
};

constexpr Chord Chords[] = {
    {"Ctrl", Qt::ControlModifier},
    {"CtrlShift", Qt::ControlModifier | Qt::ShiftModifier},
    {"CtrlAlt", Qt::ControlModifier | Qt::AltModifier},
    {"Alt", Qt::AltModifier},
    {"AltShift", Qt::AltModifier | Qt::ShiftModifier},
    {"Meta", Qt::MetaModifier},
};

void PrintTo(const Chord &chord, std::ostream *out) { *out << chord.Name; }

// A key as the keyboard of a country has it, by its number on X11 and Wayland.
struct ForeignKey {
    int Code;
    const char *Character;
    quint32 Number;
};

constexpr ForeignKey CyrillicC{0x0421, "с", 54};
constexpr ForeignKey CyrillicS{0x042B, "ы", 39};
constexpr ForeignKey CyrillicV{0x041C, "м", 55};
constexpr ForeignKey CyrillicZ{0x042F, "я", 52};
constexpr ForeignKey CyrillicN{0x0422, "т", 57};
constexpr ForeignKey TurkishDotlessI{0x0131, "ı", 31};

void Press(const ForeignKey &key, Qt::KeyboardModifiers with) {
    QKeyEvent event(QEvent::KeyPress, key.Code, with, key.Number, 0, 0, key.Character);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    Settle();
}

class TypingNothing : public WindowTest, public testing::WithParamInterface<Chord> {
protected:
    static void PressAll() {
        Key(Qt::Key_1, GetParam().With, "1");
        Key(Qt::Key_J, GetParam().With, GetParam().With & Qt::ControlModifier ? "\n" : "j");
        Key(Qt::Key_BracketLeft, GetParam().With, "é");
        Key(Qt::Key_BracketRight, GetParam().With, "|");
        Press({0x0416, "ж", 47}, GetParam().With);
    }
};

class ByTheirKey : public WindowTest {};

} // namespace

TEST_P(TypingNothing, OnTheFieldList) {
    Start(AllKinds());
    PressAll();
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_EQ(Box().toPlainText(), "");
}

TEST_P(TypingNothing, OnAFieldWithChoices) {
    Start({R"(1,20,"LIST","Letter","","")", "Jade", "1 m", "XXX-1XXX"});
    PressAll();
    EXPECT_EQ(FocusName(), "List1_0");
    Key(Qt::Key_Return, Qt::NoModifier, "\r");
    EXPECT_EQ(FocusName(), "List2_0");
    PressAll();
    EXPECT_EQ(RowValue[0], "");
}

TEST_P(TypingNothing, InABox) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    Type("a");
    PressAll();
    EXPECT_EQ(Box().toPlainText(), "a");
}

INSTANTIATE_TEST_SUITE_P(Chords, TypingNothing, testing::ValuesIn(Chords),
                         [](const auto &chord) { return std::string(chord.param.Name); });

TEST_F(ByTheirKey, ShortcutsWorkOnAKeyboardOfAnotherScript) {
    Start(AllKinds());
    Dialogs.CancelFile();
    Press(CyrillicS, Qt::ControlModifier);
    EXPECT_THAT(Dialogs.Titles, testing::ElementsAre("Name a Quintave report (*.RPX) output file..."));
    DoubleClickRow(Fields(), SamplesRow);
    Press(CyrillicN, Qt::ControlModifier);
    EXPECT_EQ(GroupOccurrenceCount, 2);
}

TEST_F(ByTheirKey, TheClipboardAndUndoWorkOnSuchAKeyboard) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    Type("ab");
    Box().selectAll();
    Press(CyrillicC, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "ab");
    Key(Qt::Key_End);
    Press(CyrillicV, Qt::ControlModifier);
    EXPECT_EQ(Box().toPlainText(), "abab");
    Press(CyrillicZ, Qt::ControlModifier);
    EXPECT_NE(Box().toPlainText(), "abab");
}

// A Latin keyboard says itself which of its keys is which letter.
TEST_F(ByTheirKey, LatinLettersAreTheirOwnKeys) {
    Start(AllKinds());
    DoubleClickRow(Fields(), SamplesRow);
    Press(TurkishDotlessI, Qt::ControlModifier);
    EXPECT_EQ(GroupOccurrenceCount, 1);
    // The key with the letter A of a French keyboard lies where others have Q.
    Dialogs.CancelFile();
    Press({Qt::Key_A, "\x01", 24}, Qt::ControlModifier);
    EXPECT_THAT(Dialogs.Titles, testing::ElementsAre("Pick a '*.RPX' file to add..."));
}

TEST_F(ByTheirKey, ALetterOfAnotherScriptIsStillTyped) {
    Start(AllKinds());
    Press(CyrillicS, Qt::NoModifier);
    EXPECT_EQ(Box().toPlainText(), "ы");
}
