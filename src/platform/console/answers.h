// The console front's dialogues: a test or a batch command gives the answers in advance and reads what was asked.
#pragma once

#include "platform/dialogs.h"

#include <deque>
#include <string>
#include <vector>

// A message that was shown.
struct ShownMessage {
    std::string Title;
    std::string Text;
    int Style = 0;
};

// An input box or a file dialog that was shown.
struct ShownDialog {
    std::string Title;
    std::string Text; // prompt of an input box, filter of a file dialog
    std::string Proposal;
    std::string Directory;
    Integer Flags = 0;
    std::vector<std::string> Places{};
};

struct ConsoleDialogs {
    std::vector<ShownMessage> Messages;
    std::vector<ShownDialog> Asked;

    // Answers still to be given. When there is none left, a message is answered by its default button, an input box
    // and a file dialog are cancelled.
    std::deque<Answer> Answers;
    std::deque<std::string> Texts;
    std::deque<Integer> DialogErrors; // a number other than 0 fails the next file dialog

    // Answers every message in the place of all that; nothing is kept of them then.
    Answer (*Reply)(const ShownMessage &message) = nullptr;
};

extern ConsoleDialogs Dialogs;

// The answer that the default button of a style gives.
Answer DefaultAnswer(int style);
