// Dialogues without a display (answers.h).
#include "platform/dialogs.h"

#include "platform/console/answers.h"

ConsoleDialogs Dialogs;

namespace {

template <class T> T Next(std::deque<T> &given, T otherwise) {
    if (given.empty()) return otherwise;
    T next = given.front();
    given.pop_front();
    return next;
}

void ShowDialog(CommonDialog &dialog) {
    Dialogs.Asked.push_back(
        {dialog.Title, dialog.Filter, dialog.FileName, dialog.InitDir, dialog.Flags, dialog.Places});
    const Integer error = Next(Dialogs.DialogErrors, Integer{0});
    if (error != 0) throw RuntimeError{error};
    dialog.FileName = Next(Dialogs.Texts, std::string());
}

} // namespace

Answer DefaultAnswer(int style) {
    const bool second = (style & SecondIsDefault) != 0;
    switch (style & ButtonsMask) {
    case OkCancel: return second ? CancelAnswer : OkAnswer;
    case YesNo:
    case YesNoCancel: return second ? NoAnswer : YesAnswer;
    default: return OkAnswer;
    }
}

Answer MsgBox(std::string_view text, int style, std::string_view title) {
    const ShownMessage message{std::string(title), std::string(text), style};
    if (Dialogs.Reply != nullptr) return Dialogs.Reply(message);
    Dialogs.Messages.push_back(message);
    return Next(Dialogs.Answers, DefaultAnswer(style));
}

std::string InputBox(std::string_view prompt, std::string_view title, std::string_view proposal) {
    Dialogs.Asked.push_back({std::string(title), std::string(prompt), std::string(proposal), "", 0});
    return Next(Dialogs.Texts, std::string());
}

void ShowOpen(CommonDialog &dialog) { ShowDialog(dialog); }

void ShowSave(CommonDialog &dialog) { ShowDialog(dialog); }
