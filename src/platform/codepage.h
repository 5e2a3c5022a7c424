// Windows-1252, the code page of files whose text it can hold: one character is one byte. Bytes 81, 8D, 8F, 90 and 9D
// hex stand for U+0081 ... U+009D, so every byte survives the way there and back. Inside the program all text is UTF-8
// (characters.h).
#pragma once

#include <optional>
#include <string>
#include <string_view>

// The byte of a code point; none where the code page has no such character.
std::optional<char> ToCodePage(char32_t character);

// The character of a code of 8 bits, as a key has it.
std::string CharacterWithCode(int code);

// Every character of a text is in the code page.
bool FitsCodePage(std::string_view text);

// Bytes of the code page as a text.
std::string ToUtf8(std::string_view bytes);

// The text in the code page, "?" for each code point it cannot hold; replaced (where asked for) tells whether there was
// any.
std::string FromUtf8(std::string_view text, bool *replaced = nullptr);

// The bytes are a text as they stand.
bool IsUtf8(std::string_view bytes);

// Bytes that are meant to be UTF-8 as a text, where some are not with those bytes read by the code page. Hands out the
// place in the text of the first of them, npos for none.
std::string RepairedUtf8(std::string bytes, std::size_t &firstFault);

// A file or directory name as a text to show: UTF-8 names as they are, others taken as bytes of the code page.
std::string NameText(std::string_view name);
