// Dialogues with the user that interrupt the program: message boxes, input boxes, the common file dialog. Each front
// answers them: qt/dialogs.cpp with windows, console/dialogs.cpp with answers given in advance.
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>
#include <vector>

// A style is the sum of a set of buttons, an icon and the default button.
enum MessageStyle : Integer {
    OkOnly = 0,
    OkCancel = 1,
    YesNoCancel = 3,
    YesNo = 4,
    CriticalIcon = 16,
    QuestionIcon = 32,
    ExclamationIcon = 48,
    InformationIcon = 64,
    SecondIsDefault = 256,
};

inline constexpr Integer ButtonsMask = 15;
inline constexpr Integer IconMask = 112;

enum Answer : Integer { OkAnswer = 1, CancelAnswer = 2, YesAnswer = 6, NoAnswer = 7 };

// Shows a message until it is answered. In the text CR LF and LF CR LF CR are one and two line breaks. Escape and
// closing the box count as Cancel, or as OK where that is the only button; they cannot close a Yes/No box.
Answer MsgBox(std::string_view text, int style, std::string_view title);

// Asks for a line of text; "" when cancelled.
std::string InputBox(std::string_view prompt, std::string_view title, std::string_view proposal);

enum DialogFlag : Integer { OverwritePrompt = 2, HideReadOnly = 4, FileMustExist = 4096 };

// The common file dialog. FileName is the proposed name before, and afterwards the full path that was chosen, "" when
// none was. The filter is "label|patterns|label|patterns", patterns separated by ";" and matched whatever the case.
struct CommonDialog {
    std::string Title{};
    std::string InitDir{};
    std::string Filter{};
    std::string FileName{};
    Integer Flags = 0;
    std::vector<std::string> Places{}; // directories that are offered beside the files
};

// May throw the error of a directory that cannot be shown.
void ShowOpen(CommonDialog &dialog);
void ShowSave(CommonDialog &dialog);

// The file that the user picks in one of the two, "" for none; an error is told.
std::string PickFile(CommonDialog &dialog, void (*show)(CommonDialog &));
