// The help window: a plain text about the selected field.
#pragma once

#include "platform/controls.h"

#include <string>
#include <string_view>

struct HelpWindow {
    Control HelpForm{.Type = Kind::Form, .Name = "HelpForm", .Caption = "Quintave Help", .Visible = false};
    Control HelpText{.Type = Kind::TextBox,
                     .Name = "HelpText",
                     .Title = "Help text",
                     .Face = Font::Fixed,
                     .ManyLines = true,
                     .TakesFocus = false, // the field being edited keeps the focus of the main window
                     .BackColor = White,
                     .ReadOnly = true};
    Control HelpQuit{.Type = Kind::Button, .Name = "HelpQuit", .Caption = "Close Help", .TakesFocus = false};
};

extern HelpWindow Help;

// Event of CommandMoreHelp: opens the window on the file that the button's tag names; nothing while it is open. A file
// that cannot be read gives its message, and no window opens.
void CommandMoreHelp_Click();

// Shows a text in the window, which opens where it is not open yet.
void OpenHelpOn(std::string_view text);

// Another field was selected: an open window shows its text, where it has one.
void FollowHelp();

// Shows the text of a file in HelpText: each of its lines behind a line break. Errors of ReadFile.
void ShowHelp(const std::string &fileName);

// Closes an open window.
void HelpQuit_Click();

void HelpForm_Resize();
void HelpForm_Unload();
