// Text from files (text_files.h).
#include "model/text_files.h"

#include "platform/characters.h"
#include "platform/codepage.h"

#include <algorithm>

namespace {

bool IsMarked(std::string_view bytes) {
    constexpr std::size_t LongestHeader = 4096; // of it, what may stand in front of the mark
    if (bytes.starts_with(ByteOrderMark)) return true;
    bool marked = false;
    FaultOf([&] {
        ItemInput header = ItemsOf(std::string(bytes.substr(0, LongestHeader)));
        BeginRecord(header);
        ReadItem(header, Input::Lenient);
        const std::string_view identifier = ReadItem(header, Input::Lenient);
        marked = identifier.starts_with(VersionIdentifier) && identifier.ends_with(Utf8Mark);
    });
    return marked;
}

ItemInput FromUtf8Items(ItemInput input) {
    input.Bytes = RepairedUtf8(std::move(input.Bytes), input.NotUtf8At);
    return input;
}

} // namespace

ItemInput ReportText(std::string bytes) {
    const bool marked = IsMarked(bytes);
    ItemInput input = ItemsOf(std::move(bytes));
    if (IsAscii(input.Bytes)) return input;
    if (marked) return FromUtf8Items(std::move(input));
    input.LooksUtf8 = IsUtf8(input.Bytes);
    input.Bytes = ToUtf8(input.Bytes);
    return input;
}

ItemInput TemplateText(std::string bytes) {
    const bool marked = IsMarked(bytes);
    ItemInput input = ItemsOf(std::move(bytes));
    if (marked) return FromUtf8Items(std::move(input));
    if (!IsUtf8(input.Bytes)) input.Bytes = ToUtf8(input.Bytes);
    return input;
}

long LineNotUtf8(const ItemInput &input) {
    LinePlace counted;
    return input.NotUtf8At == std::string::npos ? 0 : LineAt(counted, input.Bytes, input.NotUtf8At);
}

std::string PlainText(std::string bytes) {
    if (bytes.starts_with(ByteOrderMark)) bytes.erase(0, ByteOrderMark.size());
    return IsUtf8(bytes) ? bytes : ToUtf8(bytes);
}

std::string FileText(std::string_view bytes) {
    if (!bytes.starts_with(ByteOrderMark)) return ToUtf8(bytes);
    return std::string(bytes.substr(ByteOrderMark.size()));
}

std::string FileBytes(std::string_view text) {
    return FitsCodePage(text) ? FromUtf8(text) : std::string(ByteOrderMark) + std::string(text);
}
