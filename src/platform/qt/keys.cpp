// Keys of the toolkit as the program knows them (focusable.h).
#include "platform/qt/focusable.h"

#include <string_view>
#include <utility>

namespace {

constexpr Integer OtherKey = 255;    // a key of no meaning to the program
constexpr Integer ComposedKey = 229; // no key of its own

Integer ShiftStateOf(const QKeyEvent &event) {
    int state = 0;
    if (event.modifiers() & Qt::ShiftModifier) state |= ShiftMask;
    if (event.modifiers() & Qt::ControlModifier) state |= CtrlMask;
    if (event.modifiers() & Qt::AltModifier) state |= AltMask;
    return static_cast<Integer>(state);
}

bool IsModifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr ||
           key == Qt::Key_Meta || key == Qt::Key_CapsLock || key == Qt::Key_NumLock;
}

// The letter on this key in the United States; 0 for a key without one. X11 and Wayland number keys alike.
Integer LetterAt(quint32 key) {
    constexpr std::pair<quint32, std::string_view> Rows[] = {{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};
    for (const auto &[first, letters] : Rows)
        if (key >= first && key - first < letters.size()) return static_cast<unsigned char>(letters[key - first]);
    return 0;
}

bool IsLetterOfAnotherScript(int key) {
    if (key < 0x80 || key > static_cast<int>(QChar::LastValidCodePoint)) return false;
    const auto character = static_cast<char32_t>(key);
    return QChar::isLetter(character) && QChar::script(character) != QChar::Script_Latin;
}

// Pressed to do something, not to type.
bool IsChord(const QKeyEvent &event) {
    return event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

// The character that a key gives; "" for none, "\n" for Ctrl+Enter.
std::string CharacterOf(const QKeyEvent &event, Integer keyCode, Integer shift) {
    if (keyCode == EnterCode) return shift == CtrlMask ? "\n" : "\r";
    if (keyCode == BackspaceCode) return "\b";
    if (event.key() == Qt::Key_Escape) return "\x1b";
    const QString text = event.text();
    return IsChord(event) || text.isEmpty() || text[0].unicode() < ' ' || text[0].unicode() == 0x7F
               ? ""
               : text.toStdString();
}

} // namespace

Integer KeyCodeOf(const QKeyEvent &event) {
    const int key = event.key();
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9) || key == Qt::Key_Space)
        return static_cast<Integer>(key);
    if (IsLetterOfAnotherScript(key) && LetterAt(event.nativeScanCode()) != 0) return LetterAt(event.nativeScanCode());
    switch (key) {
    case Qt::Key_Backspace: return BackspaceCode;
    case Qt::Key_Return:
    case Qt::Key_Enter: return EnterCode;
    case Qt::Key_PageUp: return PageUpKey;
    case Qt::Key_PageDown: return PageUpKey + 1;
    case Qt::Key_End: return PageUpKey + 2;
    case Qt::Key_Home: return PageUpKey + 3;
    case Qt::Key_Left: return PageUpKey + 4;
    case Qt::Key_Up: return PageUpKey + 5;
    case Qt::Key_Right: return PageUpKey + 6;
    case Qt::Key_Down: return DownArrowKey;
    case Qt::Key_Delete: return DeleteKey;
    case Qt::Key_F1: return F1Key;
    default: return OtherKey;
    }
}

bool ReportKey(Control &control, const QKeyEvent &event) {
    if (IsModifier(event.key())) return true;
    const Integer keyCode = KeyCodeOf(event);
    const Integer shift = ShiftStateOf(event);
    bool passed = true;
    Report([&] {
        passed = UserKeyDown(control, keyCode, shift);
        // A box would take what such a key gives with Alt.
        if (IsChord(event) && !event.text().isEmpty() && event.text()[0].isPrint())
            passed = passed && shift == CtrlMask;
        if (!passed) return;
        const std::string character = CharacterOf(event, keyCode, shift);
        if (!character.empty()) passed = UserKeyPress(control, character);
    });
    return passed;
}

bool ReportComposed(Control &control, const QString &character) {
    bool passed = true;
    Report([&] { passed = UserKeyDown(control, ComposedKey, 0) && UserKeyPress(control, character.toStdString()); });
    return passed;
}
