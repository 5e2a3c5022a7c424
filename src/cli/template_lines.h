// A template as its author sees it: a line for each record and each choice, and on it the items that a load reads. What
// the records mean: template_walk.h.
#pragma once

#include "platform/items.h"

#include <string>
#include <string_view>
#include <vector>

enum class Quotes : unsigned char { Sound, Stray, Doubled, NotClosed }; // the worst of a line

struct LineItem {
    std::string Text{};
    bool Quoted = false;
};

struct TemplateLine {
    long Number = 0;
    std::vector<LineItem> Items{}; // those that a load would find if the line stood alone
    Quotes Quoting = Quotes::Sound;
    char Divider = ','; // a semicolon or a tab where the line is a record only by that
};

struct TemplateLines {
    ItemInput Input;
    LinePlace Counted{};
};

// The next line that is not blank; false at the end. A quoted item that is closed on a later line takes that one along.
bool NextLine(TemplateLines &lines, TemplateLine &line);

// The line that NextLine would give, without going on to it.
bool PeekLine(TemplateLines &lines, TemplateLine &line);

// The item is what a comma at the end of the line makes: empty.
bool IsBehindLastComma(const LineItem &item, const TemplateLine &line);

// The item is a whole number, as levels and kinds are.
bool IsWholeNumber(std::string_view text);

// TEXT, MEMO, LIST, GROUP START or GROUP END, in any letters.
bool IsKnownType(std::string_view type);

// Level, kind and type stand where a record has them, or all but one of them.
bool LooksLikeRecord(const TemplateLine &line);

// What is wrong with the items of a line that is to be a record of this name, one choice, or one or more choices: ""
// for nothing. It begins with a small letter.
std::string SlipOfRecord(const TemplateLine &line, std::string_view name);
std::string SlipOfChoices(const TemplateLine &line);

// An item without the marks around it that are meant for double quotes, such as curly ones.
std::string WithoutOddQuotes(const LineItem &item);

// The line is what other files have for a comment.
bool IsComment(const TemplateLine &line);
