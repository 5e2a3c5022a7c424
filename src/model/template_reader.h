// A Fields Template File read into memory and checked; nothing of the program changes by it. What is done with it:
// field_tables.h.
#pragma once

#include "platform/items.h"
#include "platform/runtime.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

enum class ElementType : unsigned char { Unknown, Text, Memo, List, GroupStart, GroupEnd };

// One element record. A group start that stands inside a group and a group end without a group are Unknown.
struct TemplateElement {
    Integer Level = 0;
    Integer Kind = 0;
    ElementType Type = ElementType::Unknown;
    bool InGroup = false;
    std::string Title;
    std::string Extra;
    std::string File;
    std::vector<std::string> Choices{};
    Integer Cells = 0; // of a group start: those of one occurrence
};

struct TemplateContent {
    std::vector<TemplateElement> Elements; // element f is Elements[f - 1]
    Integer Rows = 0;                      // upper bound for the row tables
    Integer LargestGroup = 0;
    Integer DeepestLevel = 0; // largest absolute level
};

inline constexpr std::string_view TemplateIdentifier = "QUINTAVE FIELDS TEMPLATE FILE";
inline constexpr std::string_view EndOfChoices = "XXX-1XXX"; // with or without blanks around

// A number that differs where the elements of two templates differ in their order, titles, types, lengths or levels;
// help texts and choices do not count.
std::uint64_t MarkOf(const TemplateContent &content);

// What the user is told of a file that is no template, and of one that cannot be read.
inline constexpr std::string_view WrongHeaderText =
    "This is not a valid Fields Template File!\n\r\n\rPlease Try Again.";
std::string UnreadableText(Integer error);

// The suffix behind the version identifier in a template's header. False where the header is none. May throw the error
// of a file that cannot be read.
bool ReadTemplateHeader(const std::string &path, std::string &suffix);

// The same at the start of an input, which stands behind the header afterwards.
bool ReadTemplateHeader(ItemInput &input, std::string &suffix);

// A template's header has this suffix: instances are turned off, its level is not shown.
bool TurnsInstancesOff(std::string_view suffix);

// The elements of a template with a good header. Error 62 where a record, a choice list or a group is not ended; error
// 6 for a number or a count past 16 bits. The error leaves the line where the file goes wrong, which may be far before
// its end, in faultLine where asked for.
TemplateContent ReadTemplate(ItemInput input, long *faultLine = nullptr);
