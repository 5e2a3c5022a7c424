// The events of List1 (field_list.h).
#include "screen/field_list.h"

#include "groups/occurrence.h"
#include "main/main_window.h"
#include "model/field_model.h"
#include "platform/dialogs.h"
#include "screen/command_keys.h"
#include "screen/row_text.h"
#include "screen/selected_field.h"
#include "screen/value_entry.h"

namespace {

constexpr std::string_view DeleteTitle = "DELETING FIELD DATA";

bool RowHoldsData() {
    if (ActiveList == GroupList) return !RTrim(MemberText(CurrentField)).empty();
    return CurrentField <= RowValue.UpperBound() && !RowValue[CurrentField].empty();
}

void EmptySelectedRow() {
    if (ActiveList == GroupList)
        StoreMemberText(CurrentField, "");
    else
        RowValue[CurrentField].clear();
    ShowValueInRow("");
    if (IsList(SelectedElement())) FieldInfo[SelectedElement()][Choice] = -1;
    MarkChanged();
    ShowSelectedField(Restart, False);
}

void DeleteRowData() {
    const Integer element = SelectedElement();
    if (ActiveList == 0 && IsGroupStart(element)) {
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
    if (Index == GroupList && Quintave.GrpExit.Visible) ActiveList = GroupList;
    ShowHelpLine();
}

void List1_LostFocus(Integer Index) { SetBackColor(Quintave.List1.at(static_cast<std::size_t>(Index)), LightGrey); }

void List1_Click(Integer /*Index*/) {
    if (AcceptingChoice == True) MarkChanged();
    UserKey = False;
    ShowSelectedField(Restart, False);
    ShowHelpLine();
}

void List1_DblClick(Integer /*Index*/) {
    ShowSelectedField(Restart, True);
    ShowHelpLine();
}

void List1_KeyDown(Integer /*Index*/, Integer &KeyCode, Integer Shift) {
    CtrlHeld = False;
    if (Shift == CtrlMask) {
        CtrlHeld = True;
        HandleCommandKey(KeyCode);
    } else if (KeyCode == DeleteKey) {
        DeleteRowData();
    }
}

void List1_ForeignKey(std::string_view Character) {
    Box_ForeignKey(Character);
    PendingKey = 0;
    List1_DblClick(ActiveList);
}

void List1_KeyPress(Integer Index, Integer &KeyAscii) {
    if (CtrlHeld == True) return;
    PendingKey = 0;
    if (KeyAscii == EnterCode || KeyAscii == CtrlEnterCode) {
        UserKey = False;
    } else if (!RefuseReservedKey(KeyAscii)) {
        PendingKey = KeyAscii;
        UserKey = True;
    }
    KeyAscii = 0;
    List1_DblClick(Index);
}
