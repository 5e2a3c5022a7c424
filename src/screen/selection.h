// The ground of the entry screen: which list is in use, which row of it is selected, and what its controls show.
#pragma once

#include "platform/controls.h"
#include "platform/runtime.h"

#include <string>
#include <string_view>

// The list in use and the controls that go with it.
Control &ActiveRows();
Control &ActiveChoices();
Control &OtherBox(Integer list); // Text2 of a list (0 or GroupList)

// The free-text box for an element of type code -1, -2 or -3 in the list in use.
Control &ValueBox(Integer typeCode);

// The element of the selected row; 0 where there is none.
Integer SelectedElement();

// The instance of the selected row's value that is shown, from 1, and how many there are to choose from.
Integer ShownInstance();
Integer InstancesShown();

// The value of the selected row as the entry controls show it: the instance shown, or the open group's cells.
std::string ShownText();

// The text of the selected entry of the choice list in use; "" without one.
std::string SelectedChoice();

// The list index of the choice that a text means in the choice list in use (ChoiceOf in report/choice_matching.h).
Integer FindChoice(std::string_view text);

// The value of the selected row was replaced or extended by the user.
void MarkChanged();

// What the next report does to the entries, as the caption of CommandAdd: it is merged into some, or opened.
inline constexpr std::string_view OpenCaption = "^Add/Open File";
inline constexpr std::string_view MergeCaption = "^Add/Merge File";
void OfferMerge(bool merges);

// Selects the row below the selected one; none below the last.
void SelectNextRow();

// Rewrites the value part of a row of the list in use.
void ShowValueInRow(Integer row, std::string_view value);
