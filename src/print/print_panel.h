// The print command and its panel of options.
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>

// The caption of PrintFrameIndent that the panel begins with, and those of PrintFrameToggler.
inline constexpr std::string_view NoIndent = "NO Section/Field Indent";
inline constexpr std::string_view OnTitleLine = "Data Starts on Field Title Line";
inline constexpr std::string_view LineBelowTitle = "Data Start on Line Below Title";

void CommandPrint_Click();

void PrintFrameIndent_Click();
void PrintFrameToggler_Click();
void PrintIndent_KeyPress(Integer Index, Integer &KeyAscii);
void PrintIndent_LostFocus();
void PrintFramePrint_Click(Integer Index);
void PrintFrameCancel_Click();

// Prints ReportFileDir & ReportFileName as copy number `copy`, a job of its own. Error 482 from the printer; 53, 13, 62
// from the report, what was read of it having been printed.
void PrintReportToPrinter(Integer copy);

// Writes the report at a path to ReportFileDir & ReportFileName, replacing what is there. Error 55 where both are the
// same file; 53, 13, 62 from the report, what was read of it having been written; 75, 76, 61 and others from the
// output.
void PrintReportToFile(const std::string &source);
