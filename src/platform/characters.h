// The characters of a text. All text inside the program is UTF-8, and a character is what a reader takes for one: a
// letter with its marks, an emoji of several code points. Limits and cells count characters, rows and prints columns.
// The bytes of files: codepage.h.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Only bytes below 80 hex: each is a character of one column.
bool IsAscii(std::string_view text);

// The code point at a place, which moves behind it; a byte that is no UTF-8 gives U+FFFD.
char32_t TakeCodePoint(std::string_view text, std::size_t &at);

void AppendCodePoint(std::string &text, char32_t c);

// The code points of a text; a faulty sequence gives U+FFFD for each of its bytes.
std::u32string CodePoints(std::string_view text);

inline constexpr std::size_t LongestCharacter = 128; // bytes: more marks than any writing needs begin another one

// The bytes of the character that begins at a place. CR LF is two characters.
std::size_t CharacterLength(std::string_view text, std::size_t at);

// The number of characters.
std::size_t Length(std::string_view text);

// The first (last) characters of a text: all of it when it is shorter.
std::string_view FirstCharacters(std::string_view text, std::size_t count);
std::string_view LastCharacters(std::string_view text, std::size_t count);

// The columns that a text takes where each letter has the same width: two for a wide East Asian character or an emoji,
// none for one that is never seen, one for any other.
std::size_t Columns(std::string_view text);

// The longest beginning (end) of whole characters that is not wider.
std::string_view FirstColumns(std::string_view text, std::size_t columns);
std::string_view LastColumns(std::string_view text, std::size_t columns);

// Letters and their marks in the shortest form that the standard has for them (NFC).
std::string Composed(std::string_view text);

// The letters one for one; every other character unchanged. A letter of Windows-1252 whose other case is not there
// stays, too.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);
