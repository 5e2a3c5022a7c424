// The help window (help_window.h).
#include "help/help_window.h"

#include "form/main_window.h"
#include "model/field_model.h"
#include "model/text_files.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/front.h"

#include <algorithm>

HelpWindow Help;

namespace {

// In twips: the window as it opens, the space around its parts, and the sizes below which they stay as they are.
constexpr long FormWidth = 10200; // help texts have lines of up to 80 characters
constexpr long FormHeight = 6300;
constexpr long Margin = 50;
constexpr long ButtonHeight = 450;
constexpr long LeastWidth = 180;
constexpr long LeastHeight = 800;
constexpr double ScreenShare = 0.975; // where the window's lower right corner stands

// The open marker stands in the tag of helpline.
bool IsOpen() { return Quintave.helpline.Tag == "-1"; }

void MarkOpen(bool open) { Quintave.helpline.Tag = open ? "-1" : "0"; }

void TellUnreadable(Integer number) {
    MsgBox("Error: " + ErrorText(number) + NL + "Error reading this help file! (" +
               NameText(Quintave.CommandMoreHelp.Tag) + ")",
           CriticalIcon, "More Help");
}

// The window at the lower right of the screen.
void PlaceForm() {
    MarkOpen(true);
    const ScreenTwips screen = ScreenSize();
    SetPlace(Help.HelpForm, static_cast<long>(ScreenShare * static_cast<double>(screen.Width)) - FormWidth, FormWidth);
    SetHeight(Help.HelpForm, static_cast<long>(ScreenShare * static_cast<double>(screen.Height)) - FormHeight,
              FormHeight);
}

// The next line of a text, which loses it; lines end in CR LF, LF or CR.
std::string_view TakeLine(std::string_view &text) {
    const auto end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    const bool pair = text.substr(end).starts_with("\r\n");
    text.remove_prefix(std::min(end + (pair ? 2 : 1), text.size()));
    return line;
}

void OpenHelp() {
    PlaceForm();
    LoadState = CurrentField;
    HelpForm_Resize();
    OpenForm(Help.HelpForm, {&Help.HelpQuit, &Help.HelpText});
}

} // namespace

void CommandMoreHelp_Click() {
    if (IsOpen()) return;
    try {
        ShowHelp(Quintave.CommandMoreHelp.Tag);
    } catch (const RuntimeError &error) {
        TellUnreadable(error.Number);
        return;
    }
    OpenHelp();
}

void OpenHelpOn(std::string_view text) {
    SetText(Help.HelpText, text, 0);
    if (!IsOpen()) OpenHelp();
}

void FollowHelp() {
    if (!IsOpen()) return;
    LoadState = CurrentField;
    if (!Quintave.CommandMoreHelp.Enabled) return;
    try {
        ShowHelp(Quintave.CommandMoreHelp.Tag);
    } catch (const RuntimeError &) { // the button tells of it when it is asked
    }
}

void ShowHelp(const std::string &fileName) {
    SetText(Help.HelpText, "", 0);
    const std::string bytes = PlainText(ReadFile(fileName));
    std::string text;
    for (std::string_view rest = bytes; !rest.empty();) {
        text += NL;
        text += TakeLine(rest);
    }
    SetText(Help.HelpText, text, 0);
}

void HelpQuit_Click() {
    if (!IsOpen()) return;
    CloseForm(Help.HelpForm);
    MarkOpen(false);
}

void HelpForm_Resize() {
    const long width = Help.HelpForm.Width;
    const long height = Help.HelpForm.Height;
    if (width >= LeastWidth) {
        SetPlace(Help.HelpQuit, Margin, width - 2 * Margin);
        SetPlace(Help.HelpText, Margin, width - 2 * Margin);
    }
    SetHeight(Help.HelpQuit, Margin, ButtonHeight);
    if (height >= LeastHeight) SetHeight(Help.HelpText, ButtonHeight + 2 * Margin, height - ButtonHeight - 3 * Margin);
}

void HelpForm_Unload() { MarkOpen(false); }
