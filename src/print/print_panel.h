// The print command and its panel of options.
#pragma once

#include "platform/runtime.h"

#include <string_view>

// Captions of PrintFrameIndent; the last one shows one "&".
inline constexpr std::string_view NoIndent = "NO Section/Field Indent";
inline constexpr std::string_view TitlesIndented = "Section/Field Nested Indents";
inline constexpr std::string_view RawIndents = "Raw Sect/Field/Data Nested Indents";
inline constexpr std::string_view DataIndented = "Section/Field && Data Nested Indents";

// Captions of PrintFrameToggler.
inline constexpr std::string_view OnTitleLine = "Data Starts on Field Title Line";
inline constexpr std::string_view LineBelowTitle = "Data Start on Line Below Title";

void CommandPrint_Click();

void PrintFrameIndent_Click();
void PrintFrameToggler_Click();
void PrintIndent_KeyPress(Integer Index, Integer &KeyAscii);
void PrintIndent_LostFocus();
void PrintFramePrint_Click(Integer Index);
void PrintFrameCancel_Click();
