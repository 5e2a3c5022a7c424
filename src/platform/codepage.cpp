// The code page's characters (codepage.h).
#include "platform/codepage.h"

#include "platform/characters.h"

#include <algorithm>
#include <array>

namespace {

constexpr char32_t Replacement = 0xFFFD; // also a character of its own, which takes three bytes

// Bytes 80 to 9F hex; all others are the character of the same number.
constexpr std::array<char32_t, 32> HighControls{0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                                0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

char32_t CharacterOf(unsigned char byte) { return byte >= 0x80 && byte <= 0x9F ? HighControls[byte - 0x80U] : byte; }

// Where a text has its first byte that is no UTF-8, from a place on; npos for none.
std::size_t FaultFrom(std::string_view bytes, std::size_t at) {
    while (at < bytes.size()) {
        const std::size_t first = at;
        if (TakeCodePoint(bytes, at) == Replacement && at == first + 1) return first;
    }
    return std::string_view::npos;
}

} // namespace

std::optional<char> ToCodePage(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<char>(static_cast<unsigned char>(character));
    const auto *found = std::find(HighControls.begin(), HighControls.end(), character);
    if (found == HighControls.end()) return std::nullopt;
    return static_cast<char>(static_cast<unsigned char>(0x80 + (found - HighControls.begin())));
}

std::string CharacterWithCode(int code) {
    return ToUtf8(std::string(1, static_cast<char>(static_cast<unsigned char>(code))));
}

bool FitsCodePage(std::string_view text) {
    if (IsAscii(text)) return true;
    for (std::size_t at = 0; at < text.size();)
        if (!ToCodePage(TakeCodePoint(text, at))) return false;
    return true;
}

std::string ToUtf8(std::string_view bytes) {
    if (IsAscii(bytes)) return std::string(bytes);
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        if (static_cast<unsigned char>(byte) < 0x80)
            text += byte;
        else
            AppendCodePoint(text, CharacterOf(static_cast<unsigned char>(byte)));
    }
    return text;
}

std::string FromUtf8(std::string_view text, bool *replaced) {
    if (IsAscii(text)) return std::string(text);
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto byte = ToCodePage(TakeCodePoint(text, at));
        bytes += byte.value_or('?');
        if (!byte && replaced != nullptr) *replaced = true;
    }
    return bytes;
}

bool IsUtf8(std::string_view bytes) { return IsAscii(bytes) || FaultFrom(bytes, 0) == std::string_view::npos; }

std::string RepairedUtf8(std::string bytes, std::size_t &firstFault) {
    firstFault = IsAscii(bytes) ? std::string::npos : FaultFrom(bytes, 0);
    if (firstFault == std::string::npos) return bytes;
    std::string text;
    std::size_t at = 0;
    for (auto fault = firstFault; fault != std::string::npos; fault = FaultFrom(bytes, at)) {
        text.append(bytes, at, fault - at);
        text += ToUtf8(bytes.substr(fault, 1));
        at = fault + 1;
    }
    return text.append(bytes, at);
}

std::string NameText(std::string_view name) { return IsUtf8(name) ? std::string(name) : ToUtf8(name); }
