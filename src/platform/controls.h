// Controls: their state, and the rules by which a change of it or an act of the user becomes an event. The window that
// shows them is a front (front.h); the procedures that events run are connected in main/commands.cpp.
#pragma once

#include "platform/runtime.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// A colour number, 0x00BBGGRR.
using Colour = std::int32_t;

inline constexpr Colour DesignColour = -1; // as the desktop's own style paints it
inline constexpr Colour LightGrey = 0xC0C0C0;
inline constexpr Colour White = 0xFFFFFF;

enum class Kind : std::uint8_t { Frame, Label, Button, List, TextBox, ComboBox, ScrollBar, Image, Timer, Form };

enum class Font : std::uint8_t { Plain, Fixed, Serif, Banner };

// Aspects of a control that a front may have to show anew.
enum Aspect : unsigned {
    ShownAspect = 1,   // Visible, Enabled, TabStop
    TextAspect = 2,    // Caption, Text, Caret
    RowsAspect = 4,    // the number of rows, or many of them
    RowAspect = 8,     // the rows listed in ChangedRows
    IndexAspect = 16,  // ListIndex
    ColourAspect = 32, // BackColor
    PlaceAspect = 64,  // Left, Width, Top, Height
    RangeAspect = 128, // Max, Value
};

// One control. Which of the fields have a meaning depends on its kind; the procedures below change them.
struct Control {
    Kind Type{};
    std::string_view Name{};  // "" where an index of a control array is not in use
    Integer Index = -1;       // its index in a control array; -1 outside one
    std::string Caption{};    // button, label, frame
    std::string_view Title{}; // accessible name of a control without a caption of its own
    std::string_view Hint{};  // of a button: what it does
    Font Face = Font::Plain;
    bool ManyLines = false; // text box: Enter makes a new line
    bool Visible = true;
    bool Enabled = true;
    bool TabStop = true;
    bool TakesFocus = true; // a list that is only looked at does not
    Colour BackColor = DesignColour;
    std::string Tag{};               // a free text of the program's
    std::string Text{};              // text box; lines end in CR LF
    long Caret = 0;                  // bytes of the text before it
    std::vector<std::string> Rows{}; // list, combo box
    Integer ListIndex = -1;          // the selected row; -1 for none
    Integer Max = 1;                 // scroll bar; its least value is 1
    Integer Value = 1;
    long Left = 0; // twips, of a control or a window that the program places
    long Width = 0;
    long Top = 0; // of what stands in a window without a layout
    long Height = 0;
    bool ReadOnly = false;        // a text box that only shows
    Integer Interval = 0;         // timer: milliseconds between its events; 0 as soon as nothing else is to be done
    Control *Container = nullptr; // the frame it stands in, known once the layout was shown

    unsigned Changed = 0; // aspects that the front has not shown yet
    std::vector<Integer> ChangedRows{};
};

enum class Event : std::uint8_t {
    Click,
    DblClick,
    Change,
    GotFocus,
    LostFocus,
    KeyDown,
    KeyPress,
    MouseDown,
    Timer,
    ForeignKey, // a typed character that has no code of 8 bits
    Pasted,     // a text was put into a box at once
    Resize,     // of a form: its Width and Height are the new ones
    Unload,     // a form was closed
};

// Key codes and shift states of KeyDown, character codes of KeyPress. A handler that sets its code to 0 discards the
// key.
inline constexpr Integer BackspaceCode = 8;
inline constexpr Integer CtrlEnterCode = 10;
inline constexpr Integer EnterCode = 13;
inline constexpr Integer PageUpKey = 33; // ... 40: page down, end, home and the four arrows
inline constexpr Integer DownArrowKey = 40;
inline constexpr Integer DeleteKey = 46;
inline constexpr Integer F1Key = 368; // behind the codes of all keys that the program has always known
inline constexpr Integer ShiftMask = 1;
inline constexpr Integer CtrlMask = 2;
inline constexpr Integer AltMask = 4;

using PlainHandler = void (*)();
using IndexHandler = void (*)(Integer index);
using TextHandler = void (*)(std::string_view text);
using KeyPressHandler = void (*)(Integer index, Integer &keyAscii);
using KeyDownHandler = void (*)(Integer index, Integer &keyCode, Integer shift);
using Handler = std::variant<PlainHandler, IndexHandler, TextHandler, KeyPressHandler, KeyDownHandler>;

struct Connection {
    std::string_view Name;
    Event On{};
    Handler Run;
};

constexpr bool operator<(const Connection &a, const Connection &b) {
    return a.Name != b.Name ? a.Name < b.Name : a.On < b.On;
}

// The table that events run from, sorted and without duplicates; it must live as long as the program.
void ConnectEvents(std::span<const Connection> table);

// Runs the handler of an event without the event having happened: the control's index is handed to it.
void RunEvent(Control &control, Event event);

// Runs a procedure as the handler of the window's own event: an error that it did not trap is told, and the program
// goes on.
void RunAsEvent(const std::function<void()> &procedure);

// Handlers change the program's state in steps. What runs behind each of them: it is handed the name of the button
// whose command the step was, "" for none. A step ends where the outermost handler does, and where the user's act
// itself begins: leaving a box for a button is a step, what the button does another one.
void ConnectSteps(void (*ended)(const std::string &command));
void EndStep();

// The handler at work began in the middle of another one, which waits for a dialogue or lets the window live.
bool IsInterrupting();

// Changes by the program.

void SetCaption(Control &control, std::string_view caption);
void SetVisible(Control &control, bool visible); // hiding the control with the focus runs its LostFocus
void SetEnabled(Control &control, bool enabled); // so does disabling it
void SetTabStop(Control &control, bool tabStop);
void SetBackColor(Control &control, Colour colour);
void SetPlace(Control &control, long left, long width);  // twips
void SetHeight(Control &control, long top, long height); // twips

// A change by the program is never an edit of the user's: it runs nothing.
void SetText(Control &box, std::string_view text, long caret);

void ClearRows(Control &list); // no row, no selection; runs nothing
void AddRow(Control &list, std::string_view row);
void InsertRow(Control &list, Integer at, std::string_view row);
void RemoveRow(Control &list, Integer at);
void SetRow(Control &list, Integer at, std::string_view row);

// Selects a row and runs Click, for the same row too; a row outside the list means none (-1).
void SetListIndex(Control &list, Integer row);

// Selects a row without an event.
void ShowListIndex(Control &list, Integer row);

// Changes the range or the position; a lowered maximum lowers the value. Runs Change where the value differs.
void SetMax(Control &bar, Integer max);
void SetValue(Control &bar, Integer value);

// The text of a list's selected row; "" without one.
std::string SelectedRow(const Control &list);

// The control with the focus, or none.
Control *Focused();

// Moves the focus: LostFocus of the old control, GotFocus of the new. Nothing happens where the control has it already,
// or cannot have it.
void SetFocus(Control &control);

// The control and all that it stands in are visible and enabled.
bool IsUsable(const Control &control);

// As long as one lives, a dialogue waits for its answer: what the user does to a control meanwhile, by an assistive
// program that reaches behind the dialogue, changes nothing.
class WaitingForAnswer {
public:
    WaitingForAnswer();
    ~WaitingForAnswer();
    WaitingForAnswer(const WaitingForAnswer &) = delete;
    WaitingForAnswer &operator=(const WaitingForAnswer &) = delete;
};

bool IsWaitingForAnswer();

// Acts of the user, reported by the front.

void UserEnters(Control &control); // the focus came by Tab or by a mouse click
void UserSelects(Control &list, Integer row);
void UserDoubleClicks(Control &list);
void UserPressesMouse(Control &control);
void UserPresses(Control &button);
void UserScrolls(Control &bar, Integer value);
void UserTicks(Control &timer);
void UserResizes(Control &form, long width, long height); // inner size in twips
void UserCloses(Control &form);

// A key goes down. False where the toolkit must not act on it.
bool UserKeyDown(Control &control, Integer keyCode, Integer shift);

// A key gives a character, which may be one of the control characters. False where it is discarded.
bool UserKeyPress(Control &control, std::string_view character);

// The text of a box as the user has changed it; caret in bytes.
void UserEdits(Control &box, std::string_view text, long caret);

// What a text that is pasted, dropped or composed puts into a box: composed characters, and line breaks and control
// characters as the kind of box has them.
std::string PastedText(const Control &box, std::string_view text);

// Such a text was put in.
void UserPasted(Control &box, std::string_view text);

// For a front.

// The controls that changed since the last call; the aspects stand in each control and are the front's to clear.
std::vector<Control *> TakeChanges();

// "Save" for "^Save": a caption without its key mark and with single ampersands.
std::string AccessibleName(const Control &control);

// "Ctrl+S" for "^Save", "" for a caption without a mark.
std::string KeyOf(const Control &control);
