// Windows-1252, the code page of all files and of all text inside the program: one character is one byte. The window
// and the names of the file system speak UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

// The byte of a character; none where the code page has no such character. Bytes 81, 8D, 8F, 90 and 9D hex stand for
// U+0081 ... U+009D, so every byte survives the way there and back.
std::optional<char> ToCodePage(char32_t character);

// The text as UTF-8.
std::string ToUtf8(std::string_view bytes);

// The characters of a UTF-8 text; a faulty sequence gives U+FFFD for each of its bytes.
std::u32string Characters(std::string_view utf8);

// The text in the code page, "?" for what it cannot hold; replaced (where asked for) tells whether there was any.
std::string FromUtf8(std::string_view utf8, bool *replaced = nullptr);

// A file or directory name as a text to show: UTF-8 names are decoded, others taken as bytes of the code page.
std::string NameText(std::string_view name);

// The letters of the code page one for one; every other byte unchanged.
std::string UpperCase(std::string_view bytes);
std::string LowerCase(std::string_view bytes);
