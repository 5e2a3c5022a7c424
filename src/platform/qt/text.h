// Between the program's text (bytes of the code page, CR LF) and the toolkit's.
#pragma once

#include <QString>

#include <string>
#include <string_view>

// A text for a box with many lines: CR LF becomes one line break.
QString ToLines(std::string_view bytes);

// A text for one line: line breaks become blanks, one each.
QString ToOneLine(std::string_view bytes);

// A caption: "&&" means one ampersand. AsLabel for a text that has no mnemonics, AsMnemonic for one that would make one
// of a single ampersand.
QString AsLabel(std::string_view caption);
QString AsMnemonic(std::string_view caption);

// A message: CR LF is one line break, LF CR LF CR two.
QString AsMessage(std::string_view text);
