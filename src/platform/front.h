// What the program asks of the window that shows it. Two fronts answer: qt/ with a real window, console/ without a
// display. Dialogues: dialogs.h; dates: clock.h.
#pragma once

#include "platform/layout.h"
#include "platform/runtime.h"

#include <initializer_list>
#include <string_view>

struct Control;

// Puts the keyboard focus on a control; nothing is reported back.
void FrontShowFocus(Control &control);

// Width of a text in the font of a control, in twips.
long TextWidth(const Control &control, std::string_view text);

// A small window with one line, while something is loaded. It takes no input and no focus.
void ShowBanner(std::string_view text);
void HideBanner();

// Tells something in passing, beside the main window's contents: it takes no input and no focus, and goes by itself. A
// screen reader says it.
void ShowNote(std::string_view text);

// The pointer shows that something takes its time, until false.
void ShowBusyPointer(bool busy);

// The same for as long as it lives.
struct BusyPointer {
    BusyPointer() { ShowBusyPointer(true); }
    ~BusyPointer() { ShowBusyPointer(false); }
    BusyPointer(const BusyPointer &) = delete;
    BusyPointer &operator=(const BusyPointer &) = delete;
};

// Lets the window be painted and answer the desktop in the middle of a long work, not more often than an eye can
// follow; the user's acts wait.
void KeepWindowAlive();

// Paints a control now, in the middle of a long work; not more often than a screen shows.
void RepaintNow(Control &control);

// The screen's size in twips.
struct ScreenTwips {
    long Width;
    long Height;
};

ScreenTwips ScreenSize();

// Opens a window of its own, without a layout, whose parts stand where the program places them, in twips. The form's
// Left and Top are the window's, Width and Height of its inside.
void OpenForm(Control &form, std::initializer_list<Control *> parts);
void CloseForm(Control &form);

// Ends the program once the running handlers have returned. Asks and saves nothing.
void EndProgram();
