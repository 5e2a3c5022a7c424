// The event rules of controls (controls.h).
#include "platform/controls.h"

#include "platform/characters.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/front.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

namespace {

// The connected events; empty before ConnectEvents.
std::span<const Connection> Connections;

// The control with the focus; null for none.
Control *FocusedControl = nullptr;

// Handlers at work, each begun in the middle of the one before it.
int Depth = 0;

// What runs behind a step (null before ConnectSteps), and the name of the button pressed in the one at work.
void (*StepEnded)(const std::string &command) = nullptr;
std::string PressedButton;

// Dialogues that wait for their answers, each opened in the middle of the one before it.
int Waiting = 0;

// The controls with unshown changes, each once.
std::vector<Control *> ChangedControls;

void Note(Control &control, unsigned aspect) {
    if (control.Changed == 0) ChangedControls.push_back(&control);
    control.Changed |= aspect;
}

const Handler *HandlerOf(const Control &control, Event event) {
    const Connection wanted{control.Name, event, PlainHandler{}};
    const auto found = std::lower_bound(Connections.begin(), Connections.end(), wanted);
    return found == Connections.end() || wanted < *found ? nullptr : &found->Run;
}

// Runs the handler, where the event has one that takes these arguments.
template <class Run, class... Arguments> void Fire(const Control &control, Event event, Arguments &&...arguments) {
    const Handler *handler = HandlerOf(control, event);
    if (handler == nullptr) return;
    std::get<Run> (*handler)(std::forward<Arguments>(arguments)...);
}

void FireIndexed(const Control &control, Event event) {
    const Handler *handler = HandlerOf(control, event);
    if (handler == nullptr) return;
    if (event == Event::Click && control.Type == Kind::Button && Depth <= 1) PressedButton = AccessibleName(control);
    if (const auto *plain = std::get_if<PlainHandler>(handler))
        (*plain)();
    else
        std::get<IndexHandler> (*handler)(control.Index);
}

// The edge between the user and the handlers: what no command has trapped is told here, and the program goes on.
template <class Act> void AtTheEdge(Act act) {
    ++Depth;
    if (Depth == 1) PressedButton.clear();
    const Integer fault = FaultOf(act);
    if (fault != 0) MsgBox("Error: " + ErrorText(fault), CriticalIcon, "Quintave");
    EndStep();
    --Depth;
}

// An act of the user on a control. The front may have shown its effect already: a refused one is taken back.
template <class Act> void AsUser(Control &control, Act act) {
    if (Waiting > 0)
        Note(control, TextAspect | IndexAspect | RangeAspect);
    else
        AtTheEdge(act);
}

// The focus leaves its control, which was hidden or disabled or is about to be left.
void LoseFocus() {
    Control *const old = FocusedControl;
    FocusedControl = nullptr;
    if (old != nullptr) FireIndexed(*old, Event::LostFocus);
}

bool StandsIn(const Control &control, const Control &container) {
    for (const Control *c = &control; c != nullptr; c = c->Container)
        if (c == &container) return true;
    return false;
}

bool IsLineBreak(char32_t c) { return c == '\r' || c == '\n' || c == 0x2028 || c == 0x2029; }

// Not a character that a value holds.
bool IsBreakOrControl(char32_t c) { return c < 32 || IsLineBreak(c); }

} // namespace

void ConnectEvents(std::span<const Connection> table) { Connections = table; }

void RunAsEvent(const std::function<void()> &procedure) { AtTheEdge(procedure); }

void ConnectSteps(void (*ended)(const std::string &command)) { StepEnded = ended; }

void EndStep() {
    if (Depth <= 1 && StepEnded != nullptr) StepEnded(PressedButton);
}

bool IsInterrupting() { return Depth > 1; }

void RunEvent(Control &control, Event event) { FireIndexed(control, event); }

namespace {

template <class Value, class New> void Change(Control &control, Value &value, const New &wanted, unsigned aspect) {
    if (value == wanted) return;
    value = wanted;
    Note(control, aspect);
}

// The focus leaves what is put out of use.
void Use(Control &control, bool &use, bool wanted) {
    if (use && !wanted && FocusedControl != nullptr && StandsIn(*FocusedControl, control)) LoseFocus();
    Change(control, use, wanted, ShownAspect);
}

} // namespace

void SetCaption(Control &control, std::string_view caption) { Change(control, control.Caption, caption, TextAspect); }
void SetVisible(Control &control, bool visible) { Use(control, control.Visible, visible); }
void SetEnabled(Control &control, bool enabled) { Use(control, control.Enabled, enabled); }
void SetTabStop(Control &control, bool tabStop) { Change(control, control.TabStop, tabStop, ShownAspect); }
void SetBackColor(Control &control, Colour colour) { Change(control, control.BackColor, colour, ColourAspect); }

void SetPlace(Control &control, long left, long width) {
    control.Left = left;
    control.Width = width;
    Note(control, PlaceAspect);
}

void SetHeight(Control &control, long top, long height) {
    control.Top = top;
    control.Height = height;
    Note(control, PlaceAspect);
}

void SetText(Control &box, std::string_view text, long caret) {
    box.Text = text;
    box.Caret = std::clamp(caret, 0L, static_cast<long>(text.size()));
    Note(box, TextAspect);
}

void ClearRows(Control &list) {
    list.Rows.clear();
    list.ListIndex = -1;
    Note(list, RowsAspect | IndexAspect);
}

void AddRow(Control &list, std::string_view row) {
    ToInteger(list.Rows.size() + 1);
    list.Rows.emplace_back(row);
    Note(list, RowsAspect);
}

void InsertRow(Control &list, Integer at, std::string_view row) {
    if (at < 0 || static_cast<std::size_t>(at) > list.Rows.size()) throw RuntimeError{InvalidCall};
    ToInteger(list.Rows.size() + 1);
    list.Rows.emplace(list.Rows.begin() + at, row);
    if (list.ListIndex >= at) ++list.ListIndex;
    Note(list, RowsAspect | IndexAspect);
}

void RemoveRow(Control &list, Integer at) {
    if (at < 0 || static_cast<std::size_t>(at) >= list.Rows.size()) throw RuntimeError{InvalidCall};
    list.Rows.erase(list.Rows.begin() + at);
    if (list.ListIndex == at) list.ListIndex = -1;
    if (list.ListIndex > at) --list.ListIndex;
    Note(list, RowsAspect | IndexAspect);
}

void SetRow(Control &list, Integer at, std::string_view row) {
    if (at < 0 || static_cast<std::size_t>(at) >= list.Rows.size()) throw RuntimeError{InvalidCall};
    list.Rows[static_cast<std::size_t>(at)] = row;
    Note(list, RowAspect);
    list.ChangedRows.push_back(at);
}

void ShowListIndex(Control &list, Integer row) {
    list.ListIndex = row >= 0 && static_cast<std::size_t>(row) < list.Rows.size() ? row : Integer{-1};
    Note(list, IndexAspect);
}

void SetListIndex(Control &list, Integer row) {
    ShowListIndex(list, row);
    FireIndexed(list, Event::Click);
}

void SetMax(Control &bar, Integer max) {
    bar.Max = std::max<Integer>(max, 1);
    Note(bar, RangeAspect);
    SetValue(bar, bar.Value);
}

void SetValue(Control &bar, Integer value) {
    const Integer clamped = std::clamp<Integer>(value, 1, bar.Max);
    if (clamped == bar.Value) return;
    bar.Value = clamped;
    Note(bar, RangeAspect);
    FireIndexed(bar, Event::Change);
}

std::string SelectedRow(const Control &list) {
    return list.ListIndex < 0 ? "" : list.Rows[static_cast<std::size_t>(list.ListIndex)];
}

Control *Focused() { return FocusedControl; }

bool IsUsable(const Control &control) {
    for (const Control *c = &control; c != nullptr; c = c->Container)
        if (!c->Visible || !c->Enabled) return false;
    return true;
}

void SetFocus(Control &control) {
    if (FocusedControl == &control || !control.TakesFocus || !IsUsable(control)) return;
    LoseFocus();
    // Leaving the old control may have moved the focus, or put the new one out of use.
    if (FocusedControl != nullptr || !IsUsable(control)) return;
    FocusedControl = &control;
    FrontShowFocus(control);
    FireIndexed(control, Event::GotFocus);
}

WaitingForAnswer::WaitingForAnswer() { ++Waiting; }
WaitingForAnswer::~WaitingForAnswer() { --Waiting; }

bool IsWaitingForAnswer() { return Waiting > 0; }

void UserEnters(Control &control) {
    if (Waiting == 0) AtTheEdge([&] { SetFocus(control); });
}

namespace {

// Whoever acts on a control has left the one before it, a screen reader that acts without moving the focus included.
void GoTo(Control &control) {
    SetFocus(control);
    EndStep();
}

} // namespace

void UserSelects(Control &list, Integer row) {
    AsUser(list, [&] {
        GoTo(list);
        SetListIndex(list, row);
    });
}

void UserDoubleClicks(Control &list) {
    AsUser(list, [&] {
        GoTo(list);
        FireIndexed(list, Event::DblClick);
    });
}

void UserPressesMouse(Control &control) {
    AsUser(control, [&] { FireIndexed(control, Event::MouseDown); });
}

void UserPresses(Control &button) {
    AsUser(button, [&] {
        GoTo(button);
        if (IsUsable(button)) FireIndexed(button, Event::Click);
    });
}

void UserScrolls(Control &bar, Integer value) {
    AsUser(bar, [&] {
        GoTo(bar);
        SetValue(bar, value);
    });
}

void UserTicks(Control &timer) {
    AtTheEdge([&] { FireIndexed(timer, Event::Timer); });
}

void UserResizes(Control &form, long width, long height) {
    form.Width = width;
    form.Height = height;
    AtTheEdge([&] { FireIndexed(form, Event::Resize); });
}

void UserCloses(Control &form) {
    AtTheEdge([&] { FireIndexed(form, Event::Unload); });
}

bool UserKeyDown(Control &control, Integer keyCode, Integer shift) {
    if (Waiting > 0) return false;
    // With Ctrl alone the toolkit keeps the clipboard and undo; every other letter would do things of its own in a box.
    constexpr std::string_view LeftToTheToolkit = "CVXZ";
    const bool letter = keyCode >= 'A' && keyCode <= 'Z';
    const bool taken =
        shift == CtrlMask && letter && LeftToTheToolkit.find(static_cast<char>(keyCode)) == std::string_view::npos;
    AtTheEdge([&] { Fire<KeyDownHandler>(control, Event::KeyDown, control.Index, keyCode, Integer{shift}); });
    return keyCode != 0 && !taken;
}

bool UserKeyPress(Control &control, std::string_view character) {
    if (Length(character) != 1) return !character.empty();
    if (Waiting > 0) return false;
    const std::u32string codes = CodePoints(character);
    const auto byte = codes.size() == 1 ? ToCodePage(codes[0]) : std::nullopt;
    if (!byte) {
        const bool taken = HandlerOf(control, Event::ForeignKey) != nullptr;
        AtTheEdge([&] { Fire<TextHandler>(control, Event::ForeignKey, character); });
        return !taken;
    }
    Integer keyAscii = static_cast<unsigned char>(*byte);
    AtTheEdge([&] { Fire<KeyPressHandler>(control, Event::KeyPress, control.Index, keyAscii); });
    return keyAscii != 0;
}

void UserEdits(Control &box, std::string_view text, long caret) {
    AsUser(box, [&] {
        box.Text = text;
        box.Caret = caret;
        FireIndexed(box, Event::Change);
    });
}

std::string PastedText(const Control &box, std::string_view text) {
    const std::u32string characters = CodePoints(Composed(text));
    std::string result;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const char32_t c = characters[i];
        if (box.ManyLines && IsLineBreak(c)) {
            result += "\r\n";
            if (c == '\r' && i + 1 < characters.size() && characters[i + 1] == '\n') ++i;
        } else if (IsBreakOrControl(c)) {
            // One line holds a run of them as one blank; in many lines each keeps its place.
            result += ' ';
            while (!box.ManyLines && i + 1 < characters.size() && IsBreakOrControl(characters[i + 1])) ++i;
        } else {
            AppendCodePoint(result, c);
        }
    }
    return result;
}

void UserPasted(Control &box, std::string_view text) {
    AsUser(box, [&] { Fire<TextHandler>(box, Event::Pasted, text); });
}

std::vector<Control *> TakeChanges() { return std::exchange(ChangedControls, {}); }

std::string AccessibleName(const Control &control) {
    if (!control.Title.empty()) return std::string(control.Title);
    std::string name = control.Caption;
    if (name.starts_with('^')) name.erase(0, 1);
    for (auto at = name.find("&&"); at != std::string::npos; at = name.find("&&", at + 1)) name.erase(at, 1);
    return Trim(name);
}

std::string KeyOf(const Control &control) {
    return control.Caption.starts_with('^') && control.Caption.size() > 1 ? "Ctrl+" + control.Caption.substr(1, 1) : "";
}
