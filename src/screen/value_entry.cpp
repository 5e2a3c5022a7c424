// Entering a value (value_entry.h). Which control is shown for a row: selected_field.cpp; several instances of a value:
// instances.cpp.
#include "screen/value_entry.h"

#include "form/main_window.h"
#include "groups/occurrence.h"
#include "model/field_model.h"
#include "platform/characters.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "report/choice_matching.h"
#include "screen/command_keys.h"
#include "screen/instance_text.h"
#include "screen/instances.h"
#include "screen/selected_field.h"
#include "screen/selection.h"

#include <algorithm>
#include <climits>

Integer EntryFlag = False;
Integer UserKey = False;
Integer CtrlHeld = False;
Integer AcceptingChoice = False;

namespace {

Control &Text1At(Integer index) { return Quintave.Text1.at(static_cast<std::size_t>(index)); }
Control &Text2At(Integer index) { return Quintave.Text2.at(static_cast<std::size_t>(index)); }
Control &List2At(Integer index) { return Quintave.List2.at(static_cast<std::size_t>(index)); }

void BeginEdit(Control &box) {
    SetBackColor(box, White);
    EntryFlag = True;
}

// What every free-text box and the choice list do first with a key.
void NoteKey(Integer &keyCode, Integer shift) {
    CtrlHeld = False;
    if (shift != CtrlMask) return;
    CtrlHeld = True;
    HandleCommandKey(keyCode);
}

// The longest value of the selected field in characters: its cells in a group, where they are all there is room for.
long LengthLimit() {
    const Integer limit = LengthOf(SelectedElement());
    return limit >= NoLimit && !GroupIsOpen() ? LONG_MAX : limit;
}

// The text cut to a length in characters; half a line break at its end goes too.
std::string CutText(std::string_view text, long limit) {
    std::string cut(FirstCharacters(text, static_cast<std::size_t>(limit)));
    if (cut.size() < text.size() && cut.ends_with('\r')) cut.pop_back();
    return cut;
}

void LimitLength(Control &box) {
    const std::string cut = CutText(box.Text, LengthLimit());
    if (cut.size() < box.Text.size()) SetText(box, cut, box.Caret);
}

// Of a box: where its last line ends that the count of a report's record can tell; npos where there is no line behind.
std::size_t EndOfLastLine(const std::string &text) {
    constexpr int MostLines = INT16_MAX;
    std::size_t end = text.find(NL);
    for (int line = 1; line < MostLines && end != std::string::npos; ++line) end = text.find(NL, end + NL.size());
    return end;
}

void TellCut(std::string_view what, std::size_t count) {
    MsgBox("The text was longer than its field allows and was cut. " + std::string(what) +
               " left out: " + std::to_string(count),
           InformationIcon, "Quintave");
}

void LimitLines(Control &box) {
    const std::size_t end = EndOfLastLine(box.Text);
    if (end == std::string::npos) return;
    const auto left = std::count(box.Text.begin() + static_cast<std::ptrdiff_t>(end), box.Text.end(), '\n');
    SetText(box, box.Text.substr(0, end), box.Caret);
    TellCut("Lines", static_cast<std::size_t>(left));
}

std::string WithoutReserved(std::string_view text) {
    std::string clean = RTrim(text);
    std::erase_if(clean, [](char c) { return c == '|' || c == '"'; });
    return clean;
}

// Stores a text as the value of the selected row, or of its instance shown, and rewrites the row.
void StoreValue(const std::string &text, const std::string &trail) {
    if (GroupIsOpen()) {
        StoreMemberText(CurrentField, text);
        ShowValueInRow(CurrentField, RTrim(MemberText(CurrentField)));
    } else if (InstancesShown() >= 2) {
        CallTrail = trail;
        ShowFieldInstance(InstanceAct::Store, text);
    } else {
        RowValue[CurrentField] = text;
        ShowValueInRow(CurrentField, text);
    }
}

// A text that nobody edited stays as it was loaded.
bool IsEdited(const Control &box) { return box.Text != ShownText(); }

// The box itself stays as it is: the user may go on in it.
void StoreEdit(const Control &box) {
    if (IsEdited(box)) StoreValue(WithoutReserved(box.Text), std::string(box.Name) + "-LostFocus");
}

void CommitEdit(Control &box) {
    SetBackColor(box, LightGrey);
    EntryFlag = False;
    StoreEdit(box);
    if (IsEdited(box)) SetText(box, WithoutReserved(box.Text), box.Caret);
}

// The free-text box whose edit is still to be committed; null for none.
Control *EditedBox() {
    Control *const box = Focused();
    return EntryFlag == True && box != nullptr && box->Type == Kind::TextBox ? box : nullptr;
}

void LeaveForNextRow() {
    SetFocus(ActiveRows());
    SelectNextRow();
}

// A key of a free-text box is the box's, or refused; false for one that finishes the value, and is none of the box's.
bool TakesKey(const Control &box, Integer &keyAscii) {
    if (CtrlHeld == True) return true;
    const bool breaksLine = keyAscii == EnterCode && FieldInfo[SelectedElement()][TypeCode] == Memo;
    const bool refused =
        RefuseReservedKey(keyAscii) || (breaksLine && EndOfLastLine(box.Text + std::string(NL)) != std::string::npos);
    const bool finishes = !refused && !breaksLine && (keyAscii == CtrlEnterCode || keyAscii == EnterCode);
    if (refused || finishes) keyAscii = 0;
    return !finishes;
}

// An accepted "OTHER...": the free text before it stays, a listed choice gives way to an empty text.
std::string FreeTextOf(const std::string &value) {
    const Integer choice = FindChoice(value);
    return !IsOther(value) && choice >= 0 && IsOther(ActiveChoices().Rows[static_cast<std::size_t>(choice)]) ? value
                                                                                                             : "";
}

} // namespace

void CommitPendingEdit() {
    Control *const box = EditedBox();
    if (box == nullptr || !IsEdited(*box)) return;
    StoreEdit(*box);
    SetText(*box, box->Text, box->Caret); // the edit is the screen's to undo from now on
}

std::string EditedValue() {
    const Control *const box = EditedBox();
    const std::string &value = RowValue[CurrentField];
    if (box == nullptr || !IsEdited(*box)) return value;
    const std::string text = WithoutReserved(box->Text);
    return InstancesShown() < 2 ? text : WithInstance(value, ShownInstance(), text);
}

Cells EditedItems() {
    const Control *const box = EditedBox();
    return box == nullptr || !IsEdited(*box) ? GroupItems : ItemsWith(CurrentField, WithoutReserved(box->Text));
}

void TypeIntoBox(Control &box, std::string_view character) {
    const std::string text = box.Text + std::string(character);
    SetText(box, text, static_cast<long>(text.size()));
    RunEvent(box, Event::Change);
}

bool RefuseReservedKey(Integer keyAscii) {
    if (keyAscii == '|') {
        MsgBox("'|' is a reserved character in Quintave and is not allowed as input. Please choose another character.",
               OkOnly, "Quintave");
        return true;
    }
    if (keyAscii == '"') {
        MsgBox(
            "the 'double quote' or 'seconds' symbol is a reserved character in Quintave and is not allowed as input. "
            "Please choose another character or spell out the appropriate word.",
            OkOnly, "Quintave");
        return true;
    }
    return false;
}

void Text1_GotFocus(Integer Index) { BeginEdit(Text1At(Index)); }

void Text1_KeyDown(Integer /*Index*/, Integer &KeyCode, Integer Shift) {
    UserKey = True;
    NoteKey(KeyCode, Shift);
}

void Text1_KeyPress(Integer Index, Integer &KeyAscii) {
    const Control &box = Text1At(Index);
    if (TakesKey(box, KeyAscii)) return;
    const std::size_t loaded = Length(box.Text);
    Text1_Change(Index);
    const std::size_t left = loaded - Length(box.Text);
    LeaveForNextRow();
    if (left > 0) TellCut("Characters", left);
}

void Text1_Change(Integer Index) {
    UserKey = False;
    MarkChanged();
    LimitLength(Text1At(Index));
    LimitLines(Text1At(Index));
}

void Text1_LostFocus(Integer Index) { CommitEdit(Text1At(Index)); }

void Text2_GotFocus(Integer Index) { BeginEdit(Text2At(Index)); }

void Text2_KeyDown(Integer Index, Integer &KeyCode, Integer Shift) { Text1_KeyDown(Index, KeyCode, Shift); }

void Text2_KeyPress(Integer Index, Integer &KeyAscii) {
    if (TakesKey(Text2At(Index), KeyAscii)) return;
    LeaveForNextRow();
}

void Text2_Change(Integer Index) {
    UserKey = False;
    MarkChanged();
    ListTop = ActiveChoices().ListIndex;
    FieldInfo[SelectedElement()][Choice] = ListTop;
    LimitLength(Text2At(Index));
}

void Text2_LostFocus(Integer Index) { CommitEdit(Text2At(Index)); }

void Box_Pasted(std::string_view Text) {
    if (Text.find_first_of("|\"") != std::string_view::npos)
        MsgBox("'|' and the 'double quote' or 'seconds' symbol are reserved characters in Quintave and are left out of "
               "what you entered. The quotes \u201C and \u201D may be used.",
               OkOnly, "Quintave");
    if (Text.find("\uFFFD") != std::string_view::npos)
        MsgBox(
            "Some of what you entered was damaged before it came here. In the place of its characters stands \uFFFD.",
            OkOnly, "Quintave");
}

void List2_GotFocus(Integer Index) { SetBackColor(List2At(Index), White); }

void List2_LostFocus(Integer Index) { SetBackColor(List2At(Index), LightGrey); }

void List2_KeyDown(Integer /*Index*/, Integer &KeyCode, Integer Shift) {
    if (KeyCode >= PageUpKey && KeyCode <= DownArrowKey) UserKey = True;
    NoteKey(KeyCode, Shift);
}

void List2_MouseDown(Integer /*Index*/) { UserKey = True; }

void List2_Click(Integer Index) {
    UserKey = False;
    const Control &choices = List2At(Index);
    const auto isOtherAt = [&](Integer row) {
        return row >= 0 && static_cast<std::size_t>(row) < choices.Rows.size() &&
               IsOther(choices.Rows[static_cast<std::size_t>(row)]);
    };
    if (isOtherAt(choices.ListIndex) || isOtherAt(ListTop)) ShowSelectedField(Continue);
    ListTop = choices.ListIndex;
}

void List2_DblClick(Integer /*Index*/) {
    if (ActiveChoices().ListIndex >= 0) AcceptChoice();
}

void List2_KeyPress(Integer /*Index*/, Integer &KeyAscii) {
    constexpr Integer NeverSearched = 'c';
    if (CtrlHeld == True) return;
    if (KeyAscii == EnterCode || KeyAscii == CtrlEnterCode) {
        if (ActiveChoices().ListIndex < 0) return;
        SetFocus(ActiveRows());
        AcceptChoice();
    } else if (KeyAscii != NeverSearched) {
        PendingKey = UpperCase(CharacterWithCode(KeyAscii));
        SelectChoiceByLetter();
    }
}

void List2_ForeignKey(std::string_view Character) {
    PendingKey = UpperCase(Character);
    SelectChoiceByLetter();
}

void AcceptChoice() {
    const bool isOther = IsOther(SelectedChoice());
    const std::string text = isOther ? FreeTextOf(ShownText()) : SelectedChoice();
    ListTop = ActiveChoices().ListIndex;
    FieldInfo[SelectedElement()][Choice] = ListTop;
    StoreValue(IsClear(text) ? "" : text, "List2_DblClick");
    MarkChanged();
    AcceptingChoice = True;
    if (isOther)
        ShowSelectedField(Continue, TakeFocus);
    else
        LeaveForNextRow();
    AcceptingChoice = False;
}
