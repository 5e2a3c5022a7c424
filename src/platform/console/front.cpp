// The front without a display: nothing is shown, a character is as wide as ten to the inch make it.
#include "platform/front.h"

#include "platform/characters.h"
#include "platform/clock.h"
#include "platform/console/progress.h"
#include "platform/controls.h"

#include <array>
#include <ctime>
#include <utility>

ConsoleProgress Progress;

namespace {

constexpr long TwipsPerCharacter = 120;

// EndProgram was called.
bool Ended = false;

} // namespace

void FrontShowFocus(Control & /*control*/) {}

long TextWidth(const Control & /*control*/, std::string_view text) {
    return static_cast<long>(Columns(text)) * TwipsPerCharacter;
}

void ShowBanner(std::string_view /*text*/) {}

void HideBanner() {}

void ShowNote(std::string_view text) { Progress.Note = text; }

void ShowBusyPointer(bool busy) { Progress.PointerIsBusy = busy; }

void KeepWindowAlive() {}

void RepaintNow(Control &control) {
    if (Progress.OnRepaint != nullptr) Progress.OnRepaint(control);
}

ScreenTwips ScreenSize() { return {19200, 15360}; } // 1280 x 1024 pixels

void OpenForm(Control &form, std::initializer_list<Control *> parts) {
    for (Control *part : parts) part->Container = &form;
    SetVisible(form, true);
}

void CloseForm(Control &form) { SetVisible(form, false); }

void EndProgram() { Ended = true; }

bool ProgramEnded() { return std::exchange(Ended, false); }

std::string ShortDate() {
    const std::time_t now = std::time(nullptr);
    std::tm date{};
    localtime_r(&now, &date);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%x", &date)};
}

long long SteadyMilliseconds() { return Progress.Clock += Progress.ClockStep; }
