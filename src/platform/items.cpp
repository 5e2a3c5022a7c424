// Item input and output (items.h).
#include "platform/items.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

bool IsBlankOrTab(char c) { return c == ' ' || c == '\t'; }
bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

void SkipBlanks(ItemInput &input) {
    while (input.At < input.Bytes.size() && IsBlankOrTab(input.Bytes[input.At])) ++input.At;
}

// Takes a comma or one line end; false where another character stands.
bool TakeDelimiter(ItemInput &input) {
    if (input.At >= input.Bytes.size()) return true;
    const char c = input.Bytes[input.At];
    if (c != ',' && !IsLineEnd(c)) return false;
    ++input.At;
    if (c == '\r' && input.At < input.Bytes.size() && input.Bytes[input.At] == '\n') ++input.At;
    return true;
}

std::string_view ReadQuoted(ItemInput &input, Input fault) {
    const auto first = input.At + 1;
    const auto closing = input.Bytes.find('"', first);
    if (closing == std::string::npos) throw RuntimeError{InputPastEnd};
    input.At = closing + 1;
    SkipBlanks(input);
    if (!TakeDelimiter(input) && fault == Input::Strict) throw RuntimeError{TypeMismatch};
    return std::string_view(input.Bytes).substr(first, closing - first);
}

std::size_t DigitsAt(std::string_view text, std::size_t at) {
    std::size_t count = 0;
    while (at + count < text.size() && text[at + count] >= '0' && text[at + count] <= '9') ++count;
    return count;
}

// [+|-]digits[.digits][E[+|-]digits], nothing before or behind it.
bool IsNumber(std::string_view text) {
    std::size_t i = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    const std::size_t whole = DigitsAt(text, i);
    i += whole;
    if (whole == 0) return false;
    if (i < text.size() && text[i] == '.') {
        const std::size_t fraction = DigitsAt(text, i + 1);
        if (fraction == 0) return false;
        i += 1 + fraction;
    }
    if (i < text.size() && (text[i] == 'E' || text[i] == 'e')) {
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
        const std::size_t exponent = DigitsAt(text, i);
        if (exponent == 0) return false;
        i += exponent;
    }
    return i == text.size();
}

// A number written with a point or an exponent, rounded; error 6 for one that is too large for its type.
double Rounded(std::string_view text) {
    // from_chars, unlike strtod, reads a point whatever the user's locale; it takes no plus sign.
    double number = 0;
    const char *const first = text.data() + (text[0] == '+' ? 1 : 0);
    const auto read = std::from_chars(first, text.data() + text.size(), number);
    if (read.ec == std::errc()) return std::nearbyint(number);
    // Out of its range are also numbers too small to tell from 0, which is what they are rounded to.
    if (text.find('-', 1) == std::string_view::npos) throw RuntimeError{Overflow};
    return 0;
}

double ReadNumber(ItemInput &input, Input fault, double least, double most) {
    const std::string_view text = ReadItem(input, fault);
    std::int32_t whole = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), whole);
    double number = whole;
    // Nearly every number is a whole one; the others take the long way.
    if (read.ec != std::errc() || read.ptr != text.data() + text.size()) {
        if (!IsNumber(text)) {
            if (fault == Input::Strict) throw RuntimeError{TypeMismatch};
            return 0;
        }
        number = Rounded(text);
    }
    if (number < least || number > most) throw RuntimeError{Overflow};
    return number;
}

} // namespace

ItemInput ItemsOf(std::string text) {
    constexpr char EndOfFile = 0x1A;
    text.resize(std::min(text.find(EndOfFile), text.size()));
    if (text.starts_with(ByteOrderMark)) text.erase(0, ByteOrderMark.size());
    return {std::move(text)};
}

long LineAt(LinePlace &counted, std::string_view bytes, std::size_t at) {
    for (; counted.At < std::min(at, bytes.size()); ++counted.At) {
        const bool halfOfPair =
            bytes[counted.At] == '\r' && counted.At + 1 < bytes.size() && bytes[counted.At + 1] == '\n';
        if (IsLineEnd(bytes[counted.At]) && !halfOfPair) ++counted.Line;
    }
    return counted.Line;
}

bool AtEnd(const ItemInput &input) {
    return std::all_of(input.Bytes.begin() + static_cast<std::ptrdiff_t>(input.At), input.Bytes.end(),
                       [](char c) { return IsBlankOrTab(c) || IsLineEnd(c); });
}

void BeginRecord(ItemInput &input) {
    while (input.At < input.Bytes.size() && (IsBlankOrTab(input.Bytes[input.At]) || IsLineEnd(input.Bytes[input.At])))
        ++input.At;
}

std::string_view ReadItem(ItemInput &input, Input fault) {
    SkipBlanks(input);
    const std::string_view bytes = input.Bytes;
    if (input.At >= bytes.size()) throw RuntimeError{InputPastEnd};
    if (bytes[input.At] == '"') return ReadQuoted(input, fault);
    const auto first = input.At;
    while (input.At < bytes.size() && bytes[input.At] != ',' && !IsLineEnd(bytes[input.At])) ++input.At;
    auto last = input.At;
    while (last > first && IsBlankOrTab(bytes[last - 1])) --last;
    TakeDelimiter(input);
    return bytes.substr(first, last - first);
}

std::string ReadText(ItemInput &input, Input fault) { return std::string(ReadItem(input, fault)); }

Integer ReadInteger(ItemInput &input, Input fault) {
    return static_cast<Integer>(ReadNumber(input, fault, INT16_MIN, INT16_MAX));
}

std::int32_t ReadLong(ItemInput &input, Input fault) {
    return static_cast<std::int32_t>(ReadNumber(input, fault, INT32_MIN, INT32_MAX));
}

std::string ReadTextLine(ItemInput &input, Input fault) {
    BeginRecord(input);
    return ReadText(input, fault);
}

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string WithWholeLineBreaks(std::string_view text) {
    if (text.find_first_of("\r\n") == std::string_view::npos) return std::string(text);
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!IsLineEnd(text[i])) {
            result += text[i];
            continue;
        }
        result += "\r\n";
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    }
    return result;
}
