// Entering, moving in and leaving a group (open_group.h).
#include "groups/open_group.h"

#include "form/main_window.h"
#include "groups/occurrence.h"
#include "groups/open_store.h"
#include "model/field_model.h"
#include "model/row_text.h"
#include "model/work_files.h"
#include "platform/dialogs.h"
#include "report/choice_matching.h"
#include "screen/selected_field.h"
#include "screen/selection.h"

#include <algorithm>
#include <array>
#include <functional>
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
    Integer row = 0;
    for (const Member &member : Members(head)) {
        GroupSlot[row] = {member.Element, ToInteger(member.First + 1)};
        AddRow(rows, RowPrefix(FieldTitle[member.Element]));
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
    GroupRows().Tag = std::to_string(head);
    ShowListIndex(Quintave.TblFldNum, GroupLoadedOccurrence);
    SwapRowMaps();
    UseList(GroupList);
    ShowFieldValueLine();
    SetCaption(Quintave.TableFrame, "REPEATED GROUP: " + FieldTitle[head]);
    SetVisible(GroupRows(), true);
    SetVisible(Quintave.TableFrame, true);
    SetVisible(Quintave.GrpExit, true);
    SetListIndex(GroupRows(), 0);
    SetFocus(GroupRows());
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

void TakeOffScreen() {
    ShowSelectedField(Restart, PutAwayOnly);
    SwapRowMaps();
    CloseGroupScreen();
    CurrentField = Quintave.List1[0].ListIndex;
}

void Leave() {
    StoreShownOccurrence();
    RememberOccurrence();
    TakeOffScreen();
    SetFocus(Quintave.List1[0]);
    const bool isLast = static_cast<std::size_t>(CurrentField) + 1 >= ActiveRows().Rows.size();
    SetListIndex(ActiveRows(), isLast ? CurrentField : ToInteger(CurrentField + 1));
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
        TellWorkFileError(error.Number);
    }
}

void GrpExit_Click() { RunGroupCommand(Leave); }

bool LeaveGroup() {
    if (GroupIsOpen()) GrpExit_Click();
    return !GroupIsOpen();
}

void AbandonGroup() { TakeOffScreen(); }

void FldChange_Click(Integer Index) {
    if (Index == Previous && Quintave.TblFldNum.ListIndex == 0) return;
    RunGroupCommand([&] {
        const int here = GroupLoadedOccurrence;
        const std::array<int, 4> targets{here - 1, 0, here + 1, GroupOccurrenceCount - 1};
        MoveTo(ToInteger(targets.at(static_cast<std::size_t>(Index))));
    });
}

Integer GroupHead() { return ToInteger(static_cast<long long>(NumericValue(GroupRows().Tag))); }

void StoreShownOccurrence() {
    // Hiding the entry control ends its edit while the occurrence it belongs to is still the loaded one.
    ShowSelectedField(Restart);
    WriteOccurrence();
}

void ShowLoadedOccurrence() {
    ShowListIndex(Quintave.TblFldNum, GroupLoadedOccurrence);
    RememberOccurrence();
    ShowFieldValueLine();
    ShowSelectedField(Restart);
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

void TellWorkFileError(Integer error) { MsgBox(WorkFileErrorText(error), CriticalIcon, "Quintave"); }

void RunGroupCommand(const std::function<void()> &command) {
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
    SetVisible(Quintave.TableFrame, false);
    SetVisible(Quintave.GrpExit, false);
    UseList(0);
    GroupRows().Tag = "-1";
}
