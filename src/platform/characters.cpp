// Characters, their widths and their cases (characters.h).
#include "platform/characters.h"

#include "platform/codepage.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utf8proc.h>

namespace {

constexpr char32_t Faulty = 0xFFFD;
constexpr char32_t FirstMark = 0x300; // below it every code point is a character of one column
constexpr int MostCodePoints = LongestCharacter / 4;
constexpr char32_t EmojiForm = 0xFE0F;
constexpr char32_t FirstFlagLetter = 0x1F1E6;
constexpr char32_t LastFlagLetter = 0x1F1FF;

utf8proc_int32_t Number(char32_t c) { return static_cast<utf8proc_int32_t>(c); }

bool IsPlain(unsigned char lead) { return lead < 0xCC; } // leads a code point below FirstMark

// A character: its bytes and the columns it takes.
struct Character {
    std::size_t Bytes;
    std::size_t Columns;
};

// Painted with what stands for a letter where it has none.
bool IsMark(char32_t c) {
    const auto category = utf8proc_category(Number(c));
    return category == UTF8PROC_CATEGORY_MN || category == UTF8PROC_CATEGORY_ME;
}

Character LongCharacterAt(std::string_view text, std::size_t at) {
    std::size_t end = at;
    char32_t last = TakeCodePoint(text, end);
    const bool isFlag = last >= FirstFlagLetter && last <= LastFlagLetter;
    int columns = last < FirstMark || IsMark(last) ? 1 : utf8proc_charwidth(Number(last));
    utf8proc_int32_t state = 0;
    for (int count = 1; count < MostCodePoints && end < text.size(); ++count) {
        std::size_t behind = end;
        const char32_t next = TakeCodePoint(text, behind);
        if ((last < FirstMark && next < FirstMark) ||
            utf8proc_grapheme_break_stateful(Number(last), Number(next), &state))
            break;
        columns = isFlag || next == EmojiForm ? 2 : std::max(columns, utf8proc_charwidth(Number(next)));
        last = next;
        end = behind;
    }
    return {end - at, static_cast<std::size_t>(columns)};
}

Character CharacterAt(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead >= 0x80) return LongCharacterAt(text, at);
    const bool alone = at + 1 == text.size() || IsPlain(static_cast<unsigned char>(text[at + 1]));
    return alone ? Character{1, 1} : LongCharacterAt(text, at);
}

// Counts each character from the first on as one (weigh) and ends before the count would pass the limit.
std::size_t BytesWithin(std::string_view text, std::size_t limit, std::size_t (*weigh)(const Character &)) {
    std::size_t at = 0;
    for (std::size_t weight = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        weight += weigh(character);
        if (weight > limit) break;
        at += character.Bytes;
    }
    return at;
}

std::size_t Total(std::string_view text, std::size_t (*weigh)(const Character &)) {
    if (IsAscii(text)) return text.size();
    std::size_t total = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        total += weigh(character);
        at += character.Bytes;
    }
    return total;
}

std::string_view FirstWithin(std::string_view text, std::size_t limit, std::size_t (*weigh)(const Character &)) {
    if (limit >= text.size()) return text; // no character weighs more than it has bytes
    if (IsAscii(text.substr(0, limit + 1))) return text.substr(0, limit);
    return text.substr(0, BytesWithin(text, limit, weigh));
}

// The end of a text is what its beginning leaves.
std::string_view LastWithin(std::string_view text, std::size_t limit, std::size_t (*weigh)(const Character &)) {
    std::size_t over = Total(text, weigh);
    std::size_t at = 0;
    while (over > limit) {
        const Character character = CharacterAt(text, at);
        over -= weigh(character);
        at += character.Bytes;
    }
    return text.substr(at);
}

std::size_t One(const Character & /*character*/) { return 1; }
std::size_t Width(const Character &character) { return character.Columns; }

std::string Mapped(std::string_view text, char (*mapAscii)(char), utf8proc_int32_t (*map)(utf8proc_int32_t)) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            result += mapAscii(text[at++]);
            continue;
        }
        const char32_t c = TakeCodePoint(text, at);
        const auto other = static_cast<char32_t>(map(Number(c)));
        AppendCodePoint(result, ToCodePage(c) && !ToCodePage(other) ? c : other);
    }
    return result;
}

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

} // namespace

bool IsAscii(std::string_view text) {
    constexpr std::uint64_t HighBits = 0x8080808080808080U;
    std::uint64_t seen = 0;
    std::size_t at = 0;
    for (; at + sizeof(seen) <= text.size(); at += sizeof(seen)) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, text.data() + at, sizeof(eight));
        seen |= eight;
    }
    for (; at < text.size(); ++at) seen |= static_cast<unsigned char>(text[at]);
    return (seen & HighBits) == 0;
}

char32_t TakeCodePoint(std::string_view text, std::size_t &at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) {
        ++at;
        return lead;
    }
    utf8proc_int32_t c = 0;
    const auto read = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t *>(text.data()) + at,
                                       static_cast<utf8proc_ssize_t>(text.size() - at), &c);
    at += read < 1 ? 1 : static_cast<std::size_t>(read);
    return read < 1 ? Faulty : static_cast<char32_t>(c);
}

void AppendCodePoint(std::string &text, char32_t c) {
    std::array<utf8proc_uint8_t, 4> bytes{};
    const auto length = utf8proc_encode_char(Number(c), bytes.data());
    text.append(reinterpret_cast<const char *>(bytes.data()), static_cast<std::size_t>(length));
}

std::u32string CodePoints(std::string_view text) {
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) result += TakeCodePoint(text, at);
    return result;
}

std::size_t CharacterLength(std::string_view text, std::size_t at) { return CharacterAt(text, at).Bytes; }

std::size_t Length(std::string_view text) { return Total(text, One); }

std::string_view FirstCharacters(std::string_view text, std::size_t count) { return FirstWithin(text, count, One); }

std::string_view LastCharacters(std::string_view text, std::size_t count) { return LastWithin(text, count, One); }

std::size_t Columns(std::string_view text) { return Total(text, Width); }

std::string_view FirstColumns(std::string_view text, std::size_t columns) { return FirstWithin(text, columns, Width); }

std::string_view LastColumns(std::string_view text, std::size_t columns) { return LastWithin(text, columns, Width); }

std::string Composed(std::string_view text) {
    if (IsAscii(text)) return std::string(text);
    utf8proc_uint8_t *bytes = nullptr;
    const auto length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t *>(text.data()),
                                     static_cast<utf8proc_ssize_t>(text.size()), &bytes,
                                     static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
    const std::unique_ptr<utf8proc_uint8_t, void (*)(void *)> owner(bytes, std::free);
    if (length < 0) return std::string(text); // no UTF-8
    return {reinterpret_cast<const char *>(bytes), static_cast<std::size_t>(length)};
}

std::string UpperCase(std::string_view text) { return Mapped(text, Upper, utf8proc_toupper); }

std::string LowerCase(std::string_view text) { return Mapped(text, Lower, utf8proc_tolower); }
