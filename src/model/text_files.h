// The encodings of the program's text files. Windows-1252 (platform/codepage.h) holds what it can; other text is UTF-8,
// and the file says so: by a mark behind the identifier in its second item, or by a byte-order mark.
#pragma once

#include "platform/items.h"

#include <string>
#include <string_view>

inline constexpr std::string_view VersionIdentifier = "QuintaveV2"; // begins the second item of templates and reports
inline constexpr std::string_view Utf8Mark = " UTF-8";              // may stand behind it, at the item's end

// A report's bytes as a text. UTF-8 by its marks alone.
ItemInput ReportText(std::string bytes);

// The bytes of a template, or of another file that the user may have written with any editor: UTF-8 also without a mark
// where all of it is.
ItemInput TemplateText(std::string bytes);

// The line in which a text that says that it is UTF-8 is not; 0 where there is none.
long LineNotUtf8(const ItemInput &input);

// The same of a file that has no items.
std::string PlainText(std::string bytes);

// A text as the bytes of a file of the program's own, and back: UTF-8 with a byte-order mark where it is needed.
std::string FileBytes(std::string_view text);
std::string FileText(std::string_view bytes);
