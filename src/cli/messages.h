// What quintave-cli tells: findings on standard output, messages on standard error, one line each, and how far a long
// run has come.
#pragma once

#include "platform/runtime.h"

#include <cstddef>
#include <string>
#include <string_view>

// A text of the code page as one line of UTF-8: line breaks and control characters become blanks.
std::string OneLine(std::string_view text);

// "NAME:LINE: TEXT", of a text of the code page; without the line where it is 0.
void TellFinding(std::string_view file, long line, std::string_view text);
void TellMessage(std::string_view file, long line, std::string_view text);

// A file cannot be used; the exit status.
int TellFileError(std::string_view file, Integer number);

// Writes a result (UTF-8) to standard output.
void WriteResult(std::string_view utf8);

// Ends standard output; false after its message where not all of it could be written.
bool EndResults();

// On a terminal: "done of all", where there are many.
void ShowProgress(std::size_t done, std::size_t all);
