// The events of List1 (field_list.h).
#include "screen/field_list.h"

#include "form/main_window.h"
#include "groups/occurrence.h"
#include "model/field_model.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "screen/command_keys.h"
#include "screen/selected_field.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

namespace {

constexpr std::string_view DeleteTitle = "DELETING FIELD DATA";

bool RowHoldsData() {
    if (GroupIsOpen()) return !RTrim(MemberText(CurrentField)).empty();
    return CurrentField <= RowValue.UpperBound() && !RowValue[CurrentField].empty();
}

void EmptySelectedRow() {
    if (GroupIsOpen())
        StoreMemberText(CurrentField, "");
    else
        RowValue[CurrentField].clear();
    ShowValueInRow(CurrentField, "");
    MarkChanged();
    ShowSelectedField(Restart);
}

void DeleteRowData() {
    const Integer element = SelectedElement();
    if (!GroupIsOpen() && IsGroupStart(element)) {
        MsgBox("You can not remove all entered data associated with this Repeating Group from here! Go into the group "
               "itself and remove entered data from there!",
               InformationIcon, DeleteTitle);
        return;
    }
    if (IsSection(element) || !RowHoldsData()) return;
    if (MsgBox("Do you want to remove all entered data associated with this field?", YesNo + QuestionIcon,
               DeleteTitle) == YesAnswer)
        EmptySelectedRow();
}

} // namespace

void List1_GotFocus(Integer Index) {
    SetBackColor(Quintave.List1.at(static_cast<std::size_t>(Index)), White);
    ShowHelpLine();
}

void List1_LostFocus(Integer Index) { SetBackColor(Quintave.List1.at(static_cast<std::size_t>(Index)), LightGrey); }

void List1_Click(Integer /*Index*/) {
    if (AcceptingChoice == True) MarkChanged();
    UserKey = False;
    ShowSelectedField(Restart);
    ShowHelpLine();
}

void List1_DblClick(Integer /*Index*/) {
    ShowSelectedField(Restart, TakeFocus);
    ShowHelpLine();
}

void List1_KeyDown(Integer /*Index*/, Integer &KeyCode, Integer Shift) {
    CtrlHeld = False;
    if (Shift == CtrlMask) {
        CtrlHeld = True;
        HandleCommandKey(KeyCode);
    }
    if (KeyCode == DeleteKey) DeleteRowData();
}

void List1_ForeignKey(std::string_view Character) {
    PendingKey = Character;
    UserKey = True;
    List1_DblClick(ActiveList);
}

void List1_KeyPress(Integer Index, Integer &KeyAscii) {
    if (CtrlHeld == True) return;
    PendingKey.clear();
    if (KeyAscii == EnterCode || KeyAscii == CtrlEnterCode) {
        UserKey = False;
    } else if (!RefuseReservedKey(KeyAscii)) {
        PendingKey = CharacterWithCode(KeyAscii);
        UserKey = True;
    }
    KeyAscii = 0;
    List1_DblClick(Index);
}
