// Texts and errors of the runtime (runtime.h).
#include "platform/runtime.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

namespace {

constexpr std::array<std::pair<Integer, std::string_view>, 19> Descriptions{{
    {InvalidCall, "Invalid procedure call or argument"},
    {Overflow, "Overflow"},
    {OutOfMemory, "Out of memory"},
    {SubscriptOutOfRange, "Subscript out of range"},
    {TypeMismatch, "Type mismatch"},
    {BadFileName, "Bad file name or number"},
    {FileNotFound, "File not found"},
    {BadFileMode, "Bad file mode"},
    {FileAlreadyOpen, "File already open"},
    {DeviceError, "Device I/O error"},
    {FileAlreadyExists, "File already exists"},
    {DiskFull, "Disk full"},
    {InputPastEnd, "Input past end of file"},
    {TooManyFiles, "Too many files"},
    {DeviceUnavailable, "Device unavailable"},
    {PermissionDenied, "Permission denied"},
    {PathAccessError, "Path/File access error"},
    {PathNotFound, "Path not found"},
    {PrinterError, "Printer error"},
}};

} // namespace

std::string_view Description(Integer number) {
    for (const auto &[n, text] : Descriptions)
        if (n == number) return text;
    return "Application-defined error";
}

std::string ErrorText(Integer number) { return std::to_string(number) + " - " + std::string(Description(number)); }

std::string RTrim(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::string Trim(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? "" : RTrim(text.substr(first));
}

std::int32_t NumericValue(std::string_view text) {
    std::size_t i = std::min(text.find_first_not_of(' '), text.size());
    const bool negative = i < text.size() && text[i] == '-';
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    std::int64_t number = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
        number = std::min<std::int64_t>(number * 10 + (text[i] - '0'), INT32_MAX);
    return static_cast<std::int32_t>(negative ? -number : number);
}

double DecimalValue(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    constexpr std::string_view BeginsNumber = "0123456789.";
    double number = 0;
    if (text.empty() || BeginsNumber.find(text[0]) == std::string_view::npos) return 0; // not "inf" either
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string_view taken(text.data(), static_cast<std::size_t>(end - text.data()));
    if (error == std::errc::result_out_of_range && taken.find('-') == std::string_view::npos)
        number = std::numeric_limits<double>::infinity();
    return negative ? -number : number;
}
