// The commands of the entry screen: what their controls are called, which letter runs them, what they do.
#pragma once

#include "platform/controls.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

// One command. Its caption begins with "^" where Ctrl and the letter behind it run the command, too.
struct Command {
    std::string_view Name; // of the control
    Control *Of = nullptr;
    std::string_view Caption;
    std::string_view Hint; // what it does, as a sentence without its end
    Handler Run;
    bool InGroupOnly = false;
    bool HandsKeysOn = true; // while its control has the focus the letters of all commands run them
    Integer Key = 0;         // of a command without such a letter; 0 for none
};

std::span<const Command> Commands();

// The key that runs a command together with Ctrl; 0 for none.
constexpr Integer KeyOf(const Command &command) {
    return command.Caption.starts_with('^') ? static_cast<Integer>(command.Caption[1]) : command.Key;
}

// One line of the list of keys.
struct KeyLine {
    std::string Key; // "Ctrl+S"
    std::string Does;
    bool InGroupOnly = false;
};

// The keys of all commands by their letters, those of an open group last.
std::vector<KeyLine> KeyLines();

// Connects every control of the main window with what runs when something happens to it, and gives those of commands
// their captions.
void ConnectMainWindow();
