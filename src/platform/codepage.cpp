// The code page's characters and letters (codepage.h).
#include "platform/codepage.h"

#include <algorithm>
#include <array>

namespace {

constexpr char32_t Faulty = 0xFFFD;

// Bytes 80 to 9F hex; all others are the character of the same number.
constexpr std::array<char32_t, 32> HighControls{0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                                0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

char32_t CharacterOf(unsigned char byte) { return byte >= 0x80 && byte <= 0x9F ? HighControls[byte - 0x80U] : byte; }

void AppendUtf8(std::string &text, char32_t c) {
    const auto put = [&](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

// The number of bytes that follow a leading byte; 4 for a byte that leads nothing.
std::size_t Following(unsigned char lead) {
    if (lead < 0x80) return 0;
    if (lead >= 0xC2 && lead < 0xE0) return 1;
    if (lead >= 0xE0 && lead < 0xF0) return 2;
    if (lead >= 0xF0 && lead < 0xF5) return 3;
    return 4;
}

// The least character that a sequence of that many following bytes is the shortest form of.
constexpr std::array<char32_t, 4> LeastOf{0, 0x80, 0x800, 0x10000};

bool IsCharacter(char32_t c) { return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF); }

unsigned char Upper(unsigned char c) {
    if ((c >= 'a' && c <= 'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7)) return static_cast<unsigned char>(c - 0x20);
    if (c == 0x9A || c == 0x9C || c == 0x9E) return static_cast<unsigned char>(c - 0x10);
    return c == 0xFF ? 0x9F : c;
}

unsigned char Lower(unsigned char c) {
    if ((c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) return static_cast<unsigned char>(c + 0x20);
    if (c == 0x8A || c == 0x8C || c == 0x8E) return static_cast<unsigned char>(c + 0x10);
    return c == 0x9F ? 0xFF : c;
}

std::string Mapped(std::string_view bytes, unsigned char (*map)(unsigned char)) {
    std::string result(bytes);
    std::transform(result.begin(), result.end(), result.begin(),
                   [&](char c) { return static_cast<char>(map(static_cast<unsigned char>(c))); });
    return result;
}

} // namespace

std::optional<char> ToCodePage(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<char>(static_cast<unsigned char>(character));
    const auto *found = std::find(HighControls.begin(), HighControls.end(), character);
    if (found == HighControls.end()) return std::nullopt;
    return static_cast<char>(static_cast<unsigned char>(0x80 + (found - HighControls.begin())));
}

std::string ToUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) AppendUtf8(text, CharacterOf(static_cast<unsigned char>(byte)));
    return text;
}

std::u32string Characters(std::string_view utf8) {
    std::u32string result;
    result.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i++]);
        const std::size_t following = Following(lead);
        if (following == 0) {
            result += lead;
            continue;
        }
        char32_t c = following > 3 ? 0 : lead & (0x3FU >> following);
        std::size_t read = 0;
        while (following <= 3 && read < following && i + read < utf8.size() &&
               (static_cast<unsigned char>(utf8[i + read]) & 0xC0) == 0x80)
            c = (c << 6) | (static_cast<unsigned char>(utf8[i + read++]) & 0x3FU);
        const bool whole = following <= 3 && read == following && c >= LeastOf.at(following) && IsCharacter(c);
        result += whole ? c : Faulty;
        if (whole) i += following;
    }
    return result;
}

std::string FromUtf8(std::string_view utf8, bool *replaced) {
    std::string bytes;
    bytes.reserve(utf8.size());
    for (const char32_t c : Characters(utf8)) {
        const auto byte = ToCodePage(c);
        bytes += byte.value_or('?');
        if (!byte && replaced != nullptr) *replaced = true;
    }
    return bytes;
}

std::string NameText(std::string_view name) {
    return Characters(name).find(Faulty) == std::u32string::npos ? FromUtf8(name) : std::string(name);
}

std::string UpperCase(std::string_view bytes) { return Mapped(bytes, Upper); }

std::string LowerCase(std::string_view bytes) { return Mapped(bytes, Lower); }
