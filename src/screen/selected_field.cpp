// Showing the selected row's path, level, instances and entry control (selected_field.h). What the user does with the
// entry control: value_entry.cpp.
#include "screen/selected_field.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "help/help_window.h"
#include "model/field_model.h"
#include "model/work_files.h"
#include "platform/characters.h"
#include "report/choice_matching.h"
#include "screen/instances.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

#include <algorithm>
#include <utility>

std::string PendingKey;
std::string CallTrail;

namespace {

constexpr int IndentPerLevel = 4;
constexpr long OtherBoxRight = 7695; // twips

void ShowSectionPath(Integer element) {
    Control &path = Quintave.SectionLabel;
    ClearRows(path);
    const Integer section = FieldSection[element];
    if (section == 0) {
        AddRow(path, "No Sections Specified");
        return;
    }
    for (Integer e = FieldAbove[element]; e > section && LevelOf(e) > LevelOf(section); e = FieldAbove[e])
        InsertRow(path, 0,
                  std::string(static_cast<std::size_t>((LevelOf(e) - 1) * IndentPerLevel), ' ') + FieldTitle[e]);
    InsertRow(path, 0, FieldTitle[section]);
}

void PutAway(Control &box) {
    SetVisible(box, false);
    SetText(box, "", 0);
}

// Hides the entry control of the row that was selected before.
void PutOldControlsAway(Integer element, ShowMode mode) {
    const Integer code = FieldInfo[element][TypeCode];
    if (code >= 0 && OtherBox(ActiveList).Visible) PutAway(OtherBox(ActiveList));
    if (mode == Restart && code >= 0) {
        SetVisible(ActiveChoices(), false);
        return;
    }
    if (code >= Memo && code <= ShortText) PutAway(ValueBox(code));
}

void FillChoices(Integer element) {
    Control &choices = ActiveChoices();
    const std::string path = ResourceDir + ChoiceFileName(element);
    if (choices.Tag == path && !choices.Rows.empty()) return;
    ClearRows(choices);
    choices.Tag = path;
    try {
        for (const auto &choice : ReadChoiceFile(element)) AddRow(choices, choice);
    } catch (const RuntimeError &) { // a missing file is an empty list, and is looked for again
        ClearRows(choices);
    }
}

void ShowChoices(Integer element, ShowMode mode) {
    FillChoices(element);
    Control &choices = ActiveChoices();
    SetPlace(choices, 0, FieldInfo[element][TypeCode]);
    SetVisible(choices, true);
    if (mode != Restart) return;
    const Integer chosen = FindChoice(ShownText());
    FieldInfo[element][Choice] = chosen;
    ShowListIndex(choices, chosen);
    ListTop = chosen;
}

void FillBox(Control &box) {
    const std::string text = ShownText();
    SetText(box, text, static_cast<long>(text.size()));
    SetVisible(box, true);
}

void ShowOtherBox() {
    Control &box = OtherBox(ActiveList);
    const long left = ActiveChoices().Left;
    SetPlace(box, left, OtherBoxRight - left);
    FillBox(box);
}

// The entry control that is shown for an element; null for none.
Control *EntryControl(Integer element) {
    if (element == 0 || !HasValue(element)) return nullptr;
    if (!IsList(element)) return &ValueBox(FieldInfo[element][TypeCode]);
    return OtherBox(ActiveList).Visible ? &OtherBox(ActiveList) : &ActiveChoices();
}

// What becomes of a character typed on the field list, now that the entry control has the focus.
void ApplyPendingKey(Integer element) {
    UserKey = False;
    if (!PendingKey.empty() && IsList(element)) {
        PendingKey = UpperCase(PendingKey);
        SelectChoiceByLetter();
        return;
    }
    const std::string key = std::exchange(PendingKey, "");
    const bool types = !key.empty() && static_cast<unsigned char>(key[0]) >= ' ';
    if (types && element != 0 && HasValue(element)) TypeIntoBox(ValueBox(FieldInfo[element][TypeCode]), key);
}

} // namespace

void ShowSelectedField(ShowMode Mode, ShowFocus Focus) {
    CallTrail += "Choices";
    CommitPendingEdit();
    PutOldControlsAway(SelectedElement(), Mode);
    if (Focus == PutAwayOnly) return;
    if (Mode == Restart) ResetInstanceControls();
    CurrentField = std::max<Integer>(ActiveRows().ListIndex, 0);
    const Integer element = SelectedElement();
    ShowSectionPath(element);
    SetCaption(Quintave.DataLevelLabel, std::to_string(LevelOf(element)));
    ShowInstanceControls(element, Mode == Restart);
    if (IsList(element)) ShowChoices(element, Mode);
    if (Focus == TakeFocus && !GroupIsOpen() && IsGroupStart(element)) {
        PendingKey.clear();
        OpenGroup(element);
        return;
    }
    if (IsList(element) && IsOther(SelectedChoice())) ShowOtherBox();
    Control *const entry = EntryControl(element);
    if (entry != nullptr && entry->Type == Kind::TextBox && !IsList(element)) FillBox(*entry);
    if (Focus != TakeFocus) return;
    if (entry != nullptr) SetFocus(*entry);
    ApplyPendingKey(element);
}

void SelectChoiceByLetter() {
    Control &choices = ActiveChoices();
    const std::string letter = std::exchange(PendingKey, "");
    const Integer selected = choices.ListIndex;
    Integer matches = 0;
    Integer first = -1;
    Integer next = -1;
    for (Integer i = 0; i < ToInteger(choices.Rows.size()); ++i) {
        const std::string &row = choices.Rows[static_cast<std::size_t>(i)];
        if (FirstCharacters(row, 1) != letter) continue;
        ++matches;
        if (first < 0) first = i;
        if (next < 0 && i > selected) next = i;
    }
    if (matches > 0) {
        UserKey = True;
        SetListIndex(choices, next >= 0 ? next : first);
    }
    if (matches == 1)
        AcceptChoice();
    else
        SetFocus(choices);
}

void ShowHelpLine() {
    const auto &[line, file] = FieldExtra[SelectedElement()];
    SetCaption(Quintave.helpline, line);
    Quintave.CommandMoreHelp.Tag = TemplateDir + file;
    SetEnabled(Quintave.CommandMoreHelp, !file.empty());
    FollowHelp();
}
