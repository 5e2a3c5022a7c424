// Entering a value: typing into a free-text box, or picking from the choice list. The events of Text1, Text2 and List2.
#pragma once

#include "model/field_model.h"
#include "platform/runtime.h"

#include <string>
#include <string_view>

struct Control;

extern Integer EntryFlag;       // true while a free-text box has the focus: leaving it commits
extern Integer UserKey;         // true: the next selection of an occurrence is the user's
extern Integer CtrlHeld;        // true: the last key went down with Ctrl alone; 13 for Ctrl+Enter
extern Integer AcceptingChoice; // true while a choice is being accepted

// Commits the edit of the free-text box that has the focus, which keeps it.
void CommitPendingEdit();

// What a commit of that edit would make of the selected row's value, or of the items of the open group's occurrence.
// Nothing changes by the question; without an edit they are what they are.
std::string EditedValue();
Cells EditedItems();

// Appends a character to a box as if the user had typed it there.
void TypeIntoBox(Control &box, std::string_view character);

// Takes the selected choice as the value of the selected row and moves on.
void AcceptChoice();

// "|" or the double quote was typed: tells that it is reserved, and is true.
bool RefuseReservedKey(Integer keyAscii);

void Text1_GotFocus(Integer Index);
void Text1_KeyDown(Integer Index, Integer &KeyCode, Integer Shift);
void Text1_KeyPress(Integer Index, Integer &KeyAscii);
void Text1_Change(Integer Index);
void Text1_LostFocus(Integer Index);

void Text2_GotFocus(Integer Index);
void Text2_KeyDown(Integer Index, Integer &KeyCode, Integer Shift);
void Text2_KeyPress(Integer Index, Integer &KeyAscii);
void Text2_Change(Integer Index);
void Text2_LostFocus(Integer Index);

// A text was put into a box at once: tells of what of it is left out or was damaged.
void Box_Pasted(std::string_view Text);

void List2_GotFocus(Integer Index);
void List2_LostFocus(Integer Index);
void List2_KeyDown(Integer Index, Integer &KeyCode, Integer Shift);
void List2_MouseDown(Integer Index);
void List2_Click(Integer Index);
void List2_DblClick(Integer Index);
void List2_KeyPress(Integer Index, Integer &KeyAscii);
void List2_ForeignKey(std::string_view Character);
