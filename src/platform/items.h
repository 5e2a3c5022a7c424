// Comma-and-line delimited items: reading them from a text file, and writing them. Files themselves: files.h.
#pragma once

#include "platform/runtime.h"

#include <cstdint>
#include <string>
#include <string_view>

// What a fault in an item does. Lenient: a text that is no number is 0, and characters behind a closing quote begin the
// next item. Strict: both are error 13.
enum class Input { Lenient, Strict };

// What some editors put in front of a text; it is no part of the first item.
inline constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

// The text of a file being read, a byte-order mark in front left out. Its end is the end of the text or the first byte
// 1A hex.
struct ItemInput {
    std::string Bytes;
    std::size_t At = 0;
    std::size_t NotUtf8At = std::string::npos; // the first byte that should be UTF-8 and was none; npos for none
    bool LooksUtf8 = false;                    // the file had another encoding, by which all of it reads as UTF-8, too
};

// Items from a text in hand (UTF-8).
ItemInput ItemsOf(std::string text);

// The line of a place in a text; it remembers how far it has counted, so that places asked for in order cost no more
// than the text is long.
struct LinePlace {
    std::size_t At = 0;
    long Line = 1;
};

long LineAt(LinePlace &counted, std::string_view bytes, std::size_t at);

// Only blanks (spaces, tabs) and line ends remain.
bool AtEnd(const ItemInput &input);

// To be called before the first item of each record, choice line or continuation line: skips blanks and line ends.
void BeginRecord(ItemInput &input);

// The next item, as it stands in the input's bytes. Error 62 at the end of the file or where a closing quote is
// missing.
std::string_view ReadItem(ItemInput &input, Input fault);

// The same as a text of its own.
std::string ReadText(ItemInput &input, Input fault);

// The next item as a number, rounded half to even; error 6 outside its range.
Integer ReadInteger(ItemInput &input, Input fault);
std::int32_t ReadLong(ItemInput &input, Input fault);

// One record of a single text item: a choice line or a continuation line.
std::string ReadTextLine(ItemInput &input, Input fault);

// An item as it is written: in double quotes, nothing escaped.
std::string Quoted(std::string_view text);

// Every lone carriage return or line feed made the pair of both.
std::string WithWholeLineBreaks(std::string_view text);
