// Between the program's text (UTF-8, lines ending in CR LF) and the toolkit's.
#pragma once

#include <QString>

#include <string>
#include <string_view>

// A text for a box with many lines: CR LF becomes one line break.
QString ToLines(std::string_view text);

// A text of the toolkit's; half a character of two is U+FFFD.
std::string FromToolkit(const QString &text);

// A text for one line: line breaks become blanks, one each.
QString ToOneLine(std::string_view text);

// A caption: "&&" means one ampersand. AsLabel for a text that has no mnemonics, AsMnemonic for one that would make one
// of a single ampersand.
QString AsLabel(std::string_view caption);
QString AsMnemonic(std::string_view caption);

// A message: CR LF is one line break, LF CR LF CR two.
QString AsMessage(std::string_view text);
