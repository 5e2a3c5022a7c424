// Insert, delete and jump (table_commands.h).
#include "groups/table_commands.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "groups/open_store.h"
#include "model/field_model.h"
#include "screen/command_keys.h"
#include "screen/selected_field.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

namespace {

void Insert() {
    StoreShownOccurrence();
    InsertBlankOccurrence(GroupLoadedOccurrence);
    AddRow(Quintave.TblFldNum, std::to_string(GroupOccurrenceCount));
    MarkChanged();
    ShowLoadedOccurrence();
    SetFocus(ActiveRows());
}

// A group keeps one occurrence, which is emptied instead.
void Delete() {
    StoreShownOccurrence();
    if (GroupOccurrenceCount == 1) {
        BlankOccurrence();
    } else {
        RemoveOccurrence(GroupLoadedOccurrence);
        RemoveRow(Quintave.TblFldNum, GroupOccurrenceCount);
    }
    ShowLoadedOccurrence();
    MarkChanged();
    SetFocus(ActiveRows());
}

void Jump() {
    const Integer index = Quintave.TblFldNum.ListIndex;
    StoreShownOccurrence();
    ShowSelectedField(Restart, PutAwayOnly);
    ShowOccurrence(index);
    SetFocus(Quintave.TblFldNum);
}

} // namespace

void TblFldInsert_Click() { RunGroupCommand(Insert); }

void TblFldDelete_Click() { RunGroupCommand(Delete); }

void TblFldNum_Click() {
    if (UserKey != True || Quintave.TblFldNum.ListIndex == GroupLoadedOccurrence) return;
    RunGroupCommand(Jump);
}

void TblFldNum_GotFocus() { UserKey = True; }

void TblFldNum_LostFocus() { UserKey = False; }

void TblFldNum_KeyDown(Integer /*Index*/, Integer &KeyCode, Integer Shift) {
    CtrlHeld = False;
    UserKey = True;
    if (Shift == CtrlMask) {
        CtrlHeld = True;
        HandleCommandKey(KeyCode);
    }
    if (KeyCode == EnterCode) SetFocus(ActiveRows());
}
