// Entering, moving in and leaving a group (open_group.h).
#include "groups/open_group.h"

#include "groups/occurrence.h"
#include "groups/store.h"
#include "main/main_window.h"
#include "model/field_model.h"
#include "model/work_files.h"
#include "platform/dialogs.h"
#include "report/choice_matching.h"
#include "screen/field_list.h"
#include "screen/row_text.h"
#include "screen/selected_field.h"
#include "screen/value_entry.h"

#include <algorithm>
#include <utility>

namespace {

Control &GroupRows() { return Quintave.List1[GroupList]; }

// The map of the list that comes into view goes into RowField(), the other one into GroupSlot().
void SwapRowMaps() {
    for (Integer row = 0; row < ToInteger(GroupRows().Rows.size()); ++row)
        std::swap(GroupSlot[row][SlotField], RowField[row]);
}

void ListMembers(Integer head) {
    Control &rows = GroupRows();
    ClearRows(rows);
    rows.Tag = std::to_string(head);
    Integer row = 0;
    int cell = 1; // behind the last cell of the longest group it needs more than an Integer
    const Integer end = GroupEnd(head);
    for (Integer e = ToInteger(head + 1); e < end; ++e) {
        if (!HasValue(e)) continue;
        GroupSlot[row] = {e, ToInteger(cell)};
        AddRow(rows, RowPrefix(FieldTitle[e]));
        cell += FieldInfo[e][KindItem];
        ++row;
    }
}

void ListOccurrences() {
    ClearRows(Quintave.TblFldNum);
    for (int number = 1; number <= GroupOccurrenceCount; ++number) AddRow(Quintave.TblFldNum, std::to_string(number));
}

void RememberOccurrence() { FieldInfo[GroupHead()][Choice] = GroupLoadedOccurrence; }

// Only the list in use takes part in the order of the Tab key.
void UseList(Integer list) {
    ActiveList = list;
    SetTabStop(Quintave.List1[0], list == 0);
    SetTabStop(GroupRows(), list == GroupList);
}

void ShowGroupScreen(Integer head) {
    ListMembers(head);
    ListOccurrences();
    ReadOccurrence(std::clamp<Integer>(FieldInfo[head][Choice], 0, ToInteger(GroupOccurrenceCount - 1)));
    ShowListIndex(Quintave.TblFldNum, GroupLoadedOccurrence);
    SwapRowMaps();
    UseList(GroupList);
    CurrentField = 0;
    ShowFieldValueLine();
    SetCaption(Quintave.TableFrame, "REPEATED GROUP: " + FieldTitle[head]);
    SetVisible(GroupRows(), true);
    SetVisible(Quintave.TableFrame, true);
    SetVisible(Quintave.GrpExit, true);
    SetListIndex(GroupRows(), 0);
    SetFocus(GroupRows());
}

void HideGroupControls() {
    SetVisible(Quintave.TableFrame, false);
    SetVisible(Quintave.GrpExit, false);
    for (const Integer code : {ShortText, LongText, Memo})
        SetVisible(Quintave.Text1.at(static_cast<std::size_t>(GroupList - code)), false);
    SetVisible(Quintave.List2[GroupList], false);
    SetVisible(OtherBox(GroupList), false);
}

void AddOccurrence() {
    AppendBlankOccurrence();
    AddRow(Quintave.TblFldNum, std::to_string(GroupOccurrenceCount));
}

void MoveTo(Integer index) {
    StoreShownOccurrence();
    const Integer last = ToInteger(GroupOccurrenceCount - 1);
    if (index > last) AddOccurrence();
    ShowOccurrence(index);
    SetFocus(ActiveRows());
}

void ToPrevious() { MoveTo(ToInteger(GroupLoadedOccurrence - 1)); }
void ToTop() { MoveTo(0); }
void ToNext() { MoveTo(ToInteger(GroupLoadedOccurrence + 1)); }
void ToBottom() { MoveTo(ToInteger(GroupOccurrenceCount - 1)); }

void TakeOffScreen() {
    SetVisible(Quintave.TableFrame, false);
    ShowSelectedField(Restart, PutAwayOnly);
    SwapRowMaps();
    CloseStore();
    HideGroupControls();
    UseList(0);
    GroupRows().Tag = "-1";
    CurrentField = Quintave.List1[0].ListIndex;
}

void Leave() {
    StoreShownOccurrence();
    RememberOccurrence();
    TakeOffScreen();
    SetFocus(Quintave.List1[0]);
    if (static_cast<std::size_t>(CurrentField) + 1 < Quintave.List1[0].Rows.size())
        SetListIndex(Quintave.List1[0], ToInteger(CurrentField + 1));
    else
        List1_Click(0);
}

} // namespace

void OpenGroup(Integer head) {
    try {
        ForgetChoices(); // somebody may have changed a file since
        OpenStore(head);
        if (GroupItemCount == 0) {
            CloseStore();
            MsgBox("There are no data fields in this Repeating Group!", InformationIcon, "REPEATABLE GROUP");
            return;
        }
        ShowGroupScreen(head);
    } catch (const RuntimeError &error) {
        CloseStore();
        GroupRows().Tag = "-1";
        TellWorkFileError(error.Number);
    }
}

void GrpExit_Click() { RunGroupCommand(Leave); }

bool LeaveGroup() {
    if (Quintave.GrpExit.Visible) GrpExit_Click();
    return !Quintave.GrpExit.Visible;
}

void AbandonGroup() { TakeOffScreen(); }

void FldChange_Click(Integer Index) {
    constexpr std::array<void (*)(), 4> Moves{ToPrevious, ToTop, ToNext, ToBottom};
    if (Index == Previous && Quintave.TblFldNum.ListIndex == 0) return;
    RunGroupCommand(Moves.at(static_cast<std::size_t>(Index)));
}

Integer GroupHead() { return ToInteger(static_cast<long long>(NumericValue(GroupRows().Tag))); }

void StoreShownOccurrence() {
    // Hiding the entry control ends its edit while the occurrence it belongs to is still the loaded one.
    ShowSelectedField(Restart, False);
    WriteOccurrence();
}

void ShowLoadedOccurrence() {
    ShowListIndex(Quintave.TblFldNum, GroupLoadedOccurrence);
    RememberOccurrence();
    ShowFieldValueLine();
    ShowSelectedField(Restart, False);
}

void ShowOccurrence(Integer index) {
    ReadOccurrence(index);
    ShowLoadedOccurrence();
}

void ShowFieldValueLine() {
    for (Integer row = 0; row < ToInteger(GroupRows().Rows.size()); ++row) {
        const Integer member = RowField[row];
        const std::string value = RTrim(MemberText(row));
        SetRow(GroupRows(), row, RowWithValue(RowPrefix(FieldTitle[member]), value));
        if (!IsList(member)) continue;
        try {
            FieldInfo[member][Choice] = ChoiceOf(member, value);
        } catch (const RuntimeError &) { // without its file the list is shown empty
            FieldInfo[member][Choice] = -1;
        }
    }
}

void RunGroupCommand(void (*command)()) {
    try {
        command();
    } catch (const RuntimeError &error) {
        ShowListIndex(Quintave.TblFldNum, GroupLoadedOccurrence);
        // Storing has put the entry box away, and the focus with it.
        if (Focused() == nullptr) SetFocus(ActiveRows());
        TellWorkFileError(error.Number);
    }
}

void CloseGroupScreen() {
    CloseStore();
    HideGroupControls();
    UseList(0);
    GroupRows().Tag = "-1";
}
