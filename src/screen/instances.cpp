// Several instances of one field (instances.h).
#include "screen/instances.h"

#include "main/main_window.h"
#include "model/field_model.h"
#include "report/choice_matching.h"
#include "screen/row_text.h"
#include "screen/selected_field.h"
#include "screen/value_entry.h"

#include <algorithm>

namespace {

// A change of FIScroll by the program, which its handler is to leave alone.
void SetScroll(Integer max, Integer value) {
    Quintave.FIScroll.Tag = "AddDel";
    SetMax(Quintave.FIScroll, max);
    SetValue(Quintave.FIScroll, value);
    Quintave.FIScroll.Tag.clear();
}

// The bounds of instance n in "|value|": the positions of the "|" before and behind it.
struct Bounds {
    std::size_t Before;
    std::size_t Behind;
};

Bounds BoundsOf(std::string_view framed, std::int32_t number) {
    Bounds bounds{0, 0};
    for (std::int32_t i = 0; i < number; ++i) {
        bounds.Before = bounds.Behind;
        bounds.Behind = std::min(framed.find('|', bounds.Before + 1), framed.size() - 1);
    }
    // Past the last instance both ends are the closing bar: an empty text just before it.
    return bounds;
}

std::string Framed(std::string_view value) { return "|" + std::string(value) + "|"; }

// The value with a piece in the place of an instance and the "|" behind it.
std::string Replaced(std::string_view value, std::int32_t number, const std::string &piece) {
    std::string framed = Framed(value);
    const auto [before, behind] = BoundsOf(framed, number);
    framed = framed.substr(0, before + 1) + piece + framed.substr(behind + 1);
    std::string result = framed.size() >= 3 ? framed.substr(1, framed.size() - 2) : "";
    if (result.ends_with('|')) result.pop_back();
    return result;
}

bool HasEntry(Integer element) { return !IsList(element) || ActiveChoices().ListIndex >= 0; }

// What the entry controls hold, a pending edit committed first.
std::string EntryText(Integer element) {
    CommitPendingEdit();
    if (!IsList(element)) return ValueBox(FieldInfo[element][TypeCode]).Text;
    const std::string choice = SelectedChoice();
    if (IsClear(choice)) return "";
    return IsOther(choice) ? OtherBox(ActiveList).Text : choice;
}

// An empty entry, for the instance that was added.
void EmptyEntry(Integer element) {
    if (!IsList(element)) {
        Control &box = ValueBox(FieldInfo[element][TypeCode]);
        SetText(box, "", 0);
        SetFocus(box);
        return;
    }
    SetVisible(OtherBox(ActiveList), false);
    SetText(OtherBox(ActiveList), "", 0);
    ShowListIndex(ActiveChoices(), -1);
    ListTop = -1;
    FieldInfo[element][Choice] = -1;
}

// An empty last instance that was left is no longer part of the value: without it in the count, the next one is stored
// in its place.
void DropEmptyInstances() {
    const Integer count = InstanceCount(RowValue[CurrentField]);
    if (count >= Quintave.FIScroll.Max) return;
    SetScroll(count, Quintave.FIScroll.Value);
    SetCaption(Quintave.FILabel[0], std::to_string(count));
}

// The instance controls act on fields that hold a value in the field list.
bool HasInstances(Integer element) { return ActiveList == 0 && element != 0 && HasValue(element); }

} // namespace

std::string InstanceText(std::string_view value, std::int32_t number) {
    const std::string framed = Framed(value);
    const auto [before, behind] = BoundsOf(framed, number);
    return before >= behind ? "" : framed.substr(before + 1, behind - before - 1);
}

std::string WithInstance(std::string_view value, std::int32_t number, const std::string &text) {
    return Replaced(value, number, text + "|");
}

Integer InstanceCount(std::string_view value) {
    // The scroll bar reaches no further; what lies behind stays as it is.
    return static_cast<Integer>(std::min<std::ptrdiff_t>(std::count(value.begin(), value.end(), '|') + 1, INT16_MAX));
}

void ResetInstanceControls() {
    SetCaption(Quintave.FILabel[0], "1");
    SetCaption(Quintave.FILabel[1], "1");
    SetScroll(1, 1);
}

void ShowInstanceControls(Integer element, Integer mode) {
    const bool offered = ActiveList == 0 && AllowInstances != False && element != 0 && HasValue(element) &&
                         FieldInfo[element][LevelItem] >= 0;
    SetVisible(Quintave.MultiInstanceFrame, offered);
    if (ActiveList != 0 || mode != Restart || CurrentField > RowValue.UpperBound()) return;
    const Integer count = InstanceCount(RowValue[CurrentField]);
    SetScroll(count, 1);
    SetCaption(Quintave.FILabel[0], std::to_string(count));
}

void ShowFieldInstance(Integer Delete, Integer Load) {
    const Integer element = SelectedElement();
    const std::int32_t number = NumericValue(Quintave.FILabel[1].Caption);
    if (Load != 0) {
        const std::string text = InstanceText(RowValue[CurrentField], number);
        if (!IsList(element)) {
            Control &box = ValueBox(FieldInfo[element][TypeCode]);
            SetText(box, text, static_cast<long>(text.size()));
            return;
        }
        TmpStr = text;
        // The box may still hold the instance shown before, and the refresh below would commit it.
        SetText(OtherBox(ActiveList), text, static_cast<long>(text.size()));
        ShowListIndex(ActiveChoices(), FindChoice(text));
        ListTop = ActiveChoices().ListIndex;
        FieldInfo[element][Choice] = ListTop;
        ShowSelectedField(0, False);
        return;
    }
    RowValue[CurrentField] = Delete == True ? Replaced(RowValue[CurrentField], number, "")
                                            : WithInstance(RowValue[CurrentField], number, TmpStr);
    ShowValueInRow(RowValue[CurrentField]);
}

void FIAdd_Click() {
    const Integer element = SelectedElement();
    if (!HasInstances(element)) return;
    const std::string text = EntryText(element);
    if (RTrim(text).empty() || RowValue[CurrentField].ends_with('|') || !HasEntry(element)) return;
    CallTrail += "FIAdd";
    TmpStr = text;
    ShowFieldInstance(1, 0);
    const Integer count = ToInteger(Quintave.FIScroll.Max + 1);
    SetScroll(count, count);
    SetCaption(Quintave.FILabel[0], std::to_string(count));
    SetCaption(Quintave.FILabel[1], std::to_string(count));
    MarkChanged();
    EmptyEntry(element);
}

void FIDel_Click() {
    const Integer element = SelectedElement();
    if (!HasInstances(element)) return;
    EntryText(element);
    CallTrail = "FIDel";
    ShowFieldInstance(True, 0);
    if (Quintave.FIScroll.Max > 1) SetScroll(ToInteger(Quintave.FIScroll.Max - 1), Quintave.FIScroll.Value);
    SetCaption(Quintave.FILabel[0], std::to_string(Quintave.FIScroll.Max));
    SetCaption(Quintave.FILabel[1], std::to_string(Quintave.FIScroll.Value));
    MarkChanged();
    ShowFieldInstance(1, 1);
}

void FIScroll_Change() {
    const Integer element = SelectedElement();
    if (Quintave.FIScroll.Tag == "AddDel" || !HasInstances(element)) return;
    const std::string text = EntryText(element);
    CallTrail += "FIScrollChange";
    if (HasEntry(element)) {
        if (text != InstanceText(RowValue[CurrentField], NumericValue(Quintave.FILabel[1].Caption))) MarkChanged();
        TmpStr = text;
        ShowFieldInstance(1, 0);
    }
    DropEmptyInstances();
    SetCaption(Quintave.FILabel[1], std::to_string(Quintave.FIScroll.Value));
    ShowFieldInstance(1, 1);
}
