// The controls beside the list, brought into line with the selected row.
#pragma once

#include "platform/runtime.h"

#include <string>

enum ShowMode {
    Continue, // the instance shown and the choice marked stay
    Restart,  // begin again at the first instance and at the stored choice
};

enum ShowFocus {
    LeaveFocus,
    TakeFocus,   // into the entry control; a group is entered
    PutAwayOnly, // the old entry control is put away, and nothing shown in its place
};

// Character code of a letter typed on the field list that is still to be looked for in the choice list; 0 for none.
extern std::string PendingKey;

// The procedures that led to the present refresh, for diagnosis; nothing branches on it.
extern std::string CallTrail;

// Called after every change of selection or value.
void ShowSelectedField(ShowMode Mode, ShowFocus Focus = LeaveFocus);

// Selects the next entry of the choice list that begins with PendingKey; the only one that does is accepted at once.
void SelectChoiceByLetter();

// The help line of the selected row, and the file More Help would show.
void ShowHelpLine();
