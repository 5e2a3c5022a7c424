// The controls beside the list, brought into line with the selected row.
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>

inline constexpr Integer Restart = 1;     // Mode: begin again at the first instance and at the stored choice
inline constexpr Integer PutAwayOnly = 9; // Focus: only put the old entry box away

// Character code of a letter typed on the field list that is still to be looked for in the choice list; 0 for none.
extern Integer PendingKey;

// The procedures that led to the present refresh, for diagnosis; nothing branches on it.
extern std::string CallTrail;

// Called after every change of selection or value. Mode Restart or 0; Focus True moves the focus into the entry control
// (and enters a group), PutAwayOnly returns once the old controls are put away.
void ShowSelectedField(Integer Mode, Integer Focus);

// Selects the next entry of the choice list that begins with PendingKey; the only one that does is accepted at once.
void SelectChoiceByLetter();

// The element of the selected row; 0 where there is none.
Integer SelectedElement();

// The value of the selected row as the entry controls show it: the instance shown, or the open group's cells.
std::string ShownText();

// The text of the selected entry of the choice list in use; "" without one.
std::string SelectedChoice();

// The list index of the choice that a text means in the choice list in use (ChoiceOf in report/choice_matching.h).
Integer FindChoice(std::string_view text);

// The value of the selected row was replaced or extended by the user.
void MarkChanged();

// Rewrites the value part of the selected row.
void ShowValueInRow(std::string_view value);

// The help line of the selected row, and the file More Help would show.
void ShowHelpLine();
