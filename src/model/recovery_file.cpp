// Writing and reading the file of unsaved entries (recovery_file.h).
#include "model/recovery_file.h"

#include "model/field_model.h"
#include "model/work_files.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace {

constexpr std::string_view FirstLine = "Quintave 2 unsaved entries\n";
constexpr std::string_view EndKind = "end";
constexpr std::size_t SumDigits = 16;

// A name of the kind that every start deletes what is left of.
std::string UnfinishedPath() { return ResourceDir + StagedName(std::string(RecoveryName)); }

// The last item: the checksum of all before it, in hexadecimal digits.
std::string EndItem(const Checksum &sum) {
    std::array<char, SumDigits + 1> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(sum.Value()));
    std::string item;
    AddItem(item, EndKind, 0, digits.data());
    return item;
}

// Takes the text up to a character, which goes too; false where it is not there.
bool TakeUntil(std::string_view &text, char end, std::string_view &taken) {
    const auto at = text.find(end);
    if (at == std::string_view::npos) return false;
    taken = text.substr(0, at);
    text.remove_prefix(at + 1);
    return true;
}

template <class Number> bool IsNumber(std::string_view digits, Number &number) {
    const char *const end = digits.data() + digits.size();
    const auto [last, fault] = std::from_chars(digits.data(), end, number);
    return fault == std::errc() && last == end;
}

bool TakeItem(std::string_view &text, RecoveryItem &item) {
    std::string_view number;
    std::string_view length;
    std::size_t bytes = 0;
    if (!TakeUntil(text, ' ', item.Kind) || !TakeUntil(text, ' ', number) || !TakeUntil(text, '\n', length) ||
        !IsNumber(number, item.Number) || !IsNumber(length, bytes) || bytes >= text.size() || text[bytes] != '\n')
        return false;
    item.Bytes = text.substr(0, bytes);
    text.remove_prefix(bytes + 1);
    return true;
}

} // namespace

std::string ItemLine(std::string_view kind, Integer number, std::size_t length) {
    return std::string(kind) + " " + std::to_string(number) + " " + std::to_string(length) + "\n";
}

void AddItem(std::string &items, std::string_view kind, Integer number, std::string_view bytes) {
    items += ItemLine(kind, number, bytes.size());
    items += bytes;
    items += '\n';
}

RecoveryWriter::RecoveryWriter() : file(UnfinishedPath(), OutputFile::Access::Own) { Write(FirstLine); }

void RecoveryWriter::Write(std::string_view bytes) {
    sum.Add(bytes);
    file.Write(bytes);
}

void RecoveryWriter::Close() {
    file.Write(EndItem(sum));
    file.Close(false);
    RenameFile(UnfinishedPath(), ResourceDir + std::string(RecoveryName));
}

void DeleteUnfinishedRecovery() { TryToDelete(UnfinishedPath()); }

bool ReadRecoveryFile(std::string &bytes, std::vector<RecoveryItem> &items) {
    bytes = ReadFile(ResourceDir + std::string(RecoveryName));
    std::string_view text = bytes;
    const std::size_t endLength = EndItem({}).size();
    if (text.size() < FirstLine.size() + endLength || !text.starts_with(FirstLine)) return false;
    const std::string_view end = text.substr(text.size() - endLength);
    text.remove_suffix(endLength);
    if (end != EndItem(Checksum().Add(text))) return false;
    text.remove_prefix(FirstLine.size());
    while (!text.empty()) {
        items.emplace_back();
        if (!TakeItem(text, items.back())) return false;
    }
    return true;
}
