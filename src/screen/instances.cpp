// Several instances of one field (instances.h).
#include "screen/instances.h"

#include "form/main_window.h"
#include "model/field_model.h"
#include "report/choice_matching.h"
#include "screen/instance_text.h"
#include "screen/selected_field.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

namespace {

// A change of FIScroll by the program, which its handler is to leave alone.
void SetScroll(Integer max, Integer value) {
    Quintave.FIScroll.Tag = "AddDel";
    SetMax(Quintave.FIScroll, max);
    SetValue(Quintave.FIScroll, value);
    Quintave.FIScroll.Tag.clear();
}

bool HasEntry(Integer element) { return !IsList(element) || ActiveChoices().ListIndex >= 0; }

// What the entry controls hold, a pending edit committed first.
std::string EntryText(Integer element) {
    CommitPendingEdit();
    if (!IsList(element)) return ShownText();
    std::string choice = SelectedChoice();
    if (IsClear(choice)) return "";
    if (!IsOther(choice)) return choice;
    return OtherBox(ActiveList).Visible ? OtherBox(ActiveList).Text : ShownText();
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
    if (count >= InstancesShown()) return;
    SetScroll(count, Quintave.FIScroll.Value);
    SetCaption(Quintave.FILabel[0], std::to_string(count));
}

// The instance controls act on fields that hold a value in the field list.
bool HasInstances(Integer element) { return !GroupIsOpen() && element != 0 && HasValue(element); }

} // namespace

void ResetInstanceControls() {
    SetCaption(Quintave.FILabel[0], "1");
    SetCaption(Quintave.FILabel[1], "1");
    SetScroll(1, 1);
}

void ShowInstanceControls(Integer element, bool restart) {
    SetVisible(Quintave.MultiInstanceFrame,
               AllowInstances != False && HasInstances(element) && FieldInfo[element][LevelItem] >= 0);
    if (GroupIsOpen() || !restart || CurrentField > RowValue.UpperBound()) return;
    const Integer count = InstanceCount(RowValue[CurrentField]);
    SetScroll(count, 1);
    SetCaption(Quintave.FILabel[0], std::to_string(count));
}

namespace {

void LoadInstance() {
    const Integer element = SelectedElement();
    const std::string text = InstanceText(RowValue[CurrentField], ShownInstance());
    if (!IsList(element)) {
        SetText(ValueBox(FieldInfo[element][TypeCode]), text, static_cast<long>(text.size()));
        return;
    }
    // The box may still hold the instance shown before, and the refresh below would commit it.
    SetText(OtherBox(ActiveList), text, static_cast<long>(text.size()));
    ShowListIndex(ActiveChoices(), FindChoice(text));
    ListTop = ActiveChoices().ListIndex;
    FieldInfo[element][Choice] = ListTop;
    ShowSelectedField(Continue);
}

} // namespace

void ShowFieldInstance(InstanceAct act, const std::string &text) {
    if (act == InstanceAct::Load) {
        LoadInstance();
        return;
    }
    std::string &value = RowValue[CurrentField];
    value = act == InstanceAct::Delete ? WithoutInstance(value, ShownInstance())
                                       : WithInstance(value, ShownInstance(), text);
    ShowValueInRow(CurrentField, value);
}

void ShowInstance(Integer number) {
    if (!HasInstances(SelectedElement())) return;
    SetScroll(InstancesShown(), number);
    SetCaption(Quintave.FILabel[1], std::to_string(Quintave.FIScroll.Value));
    ShowFieldInstance(InstanceAct::Load);
}

void FIAdd_Click() {
    const Integer element = SelectedElement();
    if (!HasInstances(element)) return;
    const std::string text = EntryText(element);
    if (RTrim(text).empty() || RowValue[CurrentField].ends_with('|') || !HasEntry(element)) return;
    CallTrail += "FIAdd";
    ShowFieldInstance(InstanceAct::Store, text);
    const Integer count = ToInteger(InstancesShown() + 1);
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
    ShowFieldInstance(InstanceAct::Delete);
    if (InstancesShown() > 1) SetScroll(ToInteger(InstancesShown() - 1), Quintave.FIScroll.Value);
    SetCaption(Quintave.FILabel[0], std::to_string(InstancesShown()));
    SetCaption(Quintave.FILabel[1], std::to_string(Quintave.FIScroll.Value));
    MarkChanged();
    ShowFieldInstance(InstanceAct::Load);
}

void FIScroll_Change() {
    const Integer element = SelectedElement();
    if (Quintave.FIScroll.Tag == "AddDel" || !HasInstances(element)) return;
    const std::string text = EntryText(element);
    CallTrail += "FIScrollChange";
    if (HasEntry(element)) {
        if (text != InstanceText(RowValue[CurrentField], ShownInstance())) MarkChanged();
        ShowFieldInstance(InstanceAct::Store, text);
    }
    DropEmptyInstances();
    SetCaption(Quintave.FILabel[1], std::to_string(Quintave.FIScroll.Value));
    ShowFieldInstance(InstanceAct::Load);
}
