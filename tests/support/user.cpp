// What a toolkit does with keys and clicks, without one (user.h).
#include "support/user.h"

#include "platform/characters.h"

#include <algorithm>

namespace {

void Insert(Control &box, std::string_view typed) {
    const std::string text = box.Text.substr(0, static_cast<std::size_t>(box.Caret)) + std::string(typed) +
                             box.Text.substr(static_cast<std::size_t>(box.Caret));
    UserEdits(box, text, box.Caret + static_cast<long>(typed.size()));
}

void DeleteAtCaret(Control &box, bool before) {
    const auto caret = static_cast<std::size_t>(box.Caret);
    if (before ? caret == 0 : caret >= box.Text.size()) return;
    const std::string_view rest =
        before ? std::string_view(box.Text).substr(0, caret) : std::string_view(box.Text).substr(caret);
    const bool lineBreak = before ? rest.ends_with("\r\n") : rest.starts_with("\r\n");
    const std::size_t length = lineBreak ? 2 : (before ? LastCharacters(rest, 1) : FirstCharacters(rest, 1)).size();
    const std::size_t from = before ? caret - length : caret;
    std::string text = box.Text;
    text.erase(from, length);
    UserEdits(box, text, static_cast<long>(from));
}

// A character reaches the toolkit: boxes take it in, buttons and lists do nothing with it.
void TakeCharacter(Control &control, std::string_view character) {
    if (control.Type != Kind::TextBox) return;
    if (character == "\b") {
        DeleteAtCaret(control, true);
    } else if (character == "\r" || character == "\n") {
        if (control.ManyLines) Insert(control, "\r\n");
    } else {
        Insert(control, character);
    }
}

void TypeOne(std::string_view character, Integer keyCode) {
    Control *const control = Focused();
    if (control == nullptr || !UserKeyDown(*control, keyCode, 0)) return;
    // A handler may have moved the focus: the character goes where the key went down.
    if (UserKeyPress(*control, character)) TakeCharacter(*control, character);
}

void MoveSelection(Control &list, Integer keyCode) {
    if (list.Rows.empty()) return;
    const Integer last = ToInteger(list.Rows.size() - 1);
    Integer row = list.ListIndex;
    if (keyCode == UpArrowKey) row = ToInteger(row - 1);
    if (keyCode == DownArrowKey) row = ToInteger(row + 1);
    if (keyCode == HomeKey) row = 0;
    if (keyCode == EndKey) row = last;
    row = std::clamp<Integer>(row, 0, last);
    if (row != list.ListIndex) UserSelects(list, row);
}

} // namespace

void Type(std::string_view utf8) {
    while (!utf8.empty()) {
        const std::size_t length = CharacterLength(utf8, 0);
        const std::string_view character = utf8.substr(0, length);
        TypeOne(character, length == 1 ? static_cast<unsigned char>(UpperCase(character)[0]) : Integer{0xE5});
        utf8.remove_prefix(length);
    }
}

void PressEnter(Integer shift) {
    Control *const control = Focused();
    if (control == nullptr || !UserKeyDown(*control, EnterCode, shift)) return;
    const std::string_view character = shift == CtrlMask ? "\n" : "\r";
    if (UserKeyPress(*control, character)) {
        if (control->Type == Kind::Button)
            UserPresses(*control);
        else
            TakeCharacter(*control, character);
    }
}

void PressKey(Integer keyCode, Integer shift) {
    Control *const control = Focused();
    if (control == nullptr || !UserKeyDown(*control, keyCode, shift)) return;
    if (control->Type == Kind::List || control->Type == Kind::ComboBox) MoveSelection(*control, keyCode);
    if (control->Type == Kind::TextBox && keyCode == DeleteKey) DeleteAtCaret(*control, false);
}

void PressCtrl(char letter, Integer shift) {
    Control *const control = Focused();
    if (control != nullptr) UserKeyDown(*control, static_cast<unsigned char>(letter), shift);
}

void Paste(Control &box, std::string_view utf8) {
    Insert(box, PastedText(box, utf8));
    UserPasted(box, utf8);
}

void ClickRow(Control &list, Integer row) {
    UserPressesMouse(list);
    UserSelects(list, row);
}

void DoubleClickRow(Control &list, Integer row) {
    ClickRow(list, row);
    UserDoubleClicks(list);
}

void Press(Control &control) {
    UserEnters(control);
    if (control.Type == Kind::Button) UserPresses(control);
}
