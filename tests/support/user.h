// A user without a display: keys go to the control that has the focus and do there what a toolkit would do.
#pragma once

#include "platform/console/progress.h"
#include "platform/controls.h"

#include <string_view>

// Keys that give no character, beside those in controls.h.
inline constexpr Integer EndKey = 35;
inline constexpr Integer HomeKey = 36;
inline constexpr Integer UpArrowKey = 38;

// Types a text (UTF-8) character by character.
void Type(std::string_view utf8);

// Presses Enter, or Ctrl with Enter.
void PressEnter(Integer shift = 0);

// Presses a key that gives no character: an arrow, Page, Home, End, Delete.
void PressKey(Integer keyCode, Integer shift = 0);

// Presses a letter together with Ctrl (and Shift or Alt).
void PressCtrl(char letter, Integer shift = CtrlMask);

// Puts a text (UTF-8) into a box at its caret, as the clipboard does.
void Paste(Control &box, std::string_view utf8);

// Clicks a row of a list, twice.
void ClickRow(Control &list, Integer row);
void DoubleClickRow(Control &list, Integer row);

// Clicks a button or a box.
void Press(Control &control);
