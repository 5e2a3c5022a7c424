// Narrow and wide occurrences (cells.h).
#include "model/cells.h"

#include "platform/characters.h"
#include "platform/codepage.h"

#include <algorithm>

namespace {

constexpr char MemberEnd = '\xFF';

using Texts = std::vector<std::string>; // of an occurrence, by member

std::string_view RecordIn(const Cells &cells, std::size_t occurrence) {
    return std::string_view(cells.Bytes).substr(std::min(occurrence * cells.Record, cells.Bytes.size()), cells.Record);
}

std::size_t LengthOf(const GroupMembers &members) {
    return members.empty() ? 0 : members.back().First + members.back().Cells;
}

std::string_view WithoutBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1); // behind npos is 0
}

// Of a wide occurrence.
std::string_view WideMember(std::string_view record, std::size_t member) {
    for (; member > 0; --member) record.remove_prefix(std::min(record.find(MemberEnd), record.size() - 1) + 1);
    return record.substr(0, record.find(MemberEnd));
}

Texts TextsOf(const Cells &cells, const GroupMembers &members, std::size_t occurrence) {
    Texts texts;
    std::string room;
    for (std::size_t i = 0; i < members.size(); ++i)
        texts.emplace_back(WithoutBlanks(MemberIn(cells, members, occurrence, i, room)));
    return texts;
}

std::string WideRecord(const Texts &texts) {
    std::string record;
    for (const std::string &text : texts) (record += text) += MemberEnd;
    return record;
}

std::string NarrowRecord(const Texts &texts, const GroupMembers &members) {
    std::string record;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        record += FromUtf8(texts[i]);
        record.resize(members[i].First + members[i].Cells, ' ');
    }
    return record;
}

// The next change need not make all of them longer again.
constexpr std::size_t WithReserve(std::size_t record) { return record + record / 4; }

void PutRecord(Cells &cells, const GroupMembers &members, std::size_t occurrence, std::string record) {
    if (record.size() > cells.Record) Widen(cells, members, WithReserve(record.size()));
    record.resize(cells.Record, ' ');
    cells.Bytes.replace(occurrence * cells.Record, cells.Record, record);
}

bool FitsCodePage(const Texts &texts) {
    return std::all_of(texts.begin(), texts.end(), [](const std::string &text) { return ::FitsCodePage(text); });
}

void PutTexts(Cells &cells, const GroupMembers &members, std::size_t occurrence, const Texts &texts) {
    if (!cells.Wide && !FitsCodePage(texts)) Widen(cells, members, WithReserve(WideRecord(texts).size()));
    PutRecord(cells, members, occurrence, cells.Wide ? WideRecord(texts) : NarrowRecord(texts, members));
}

} // namespace

Cells BlankCells(std::size_t length, std::size_t count) { return {length, false, std::string(length * count, ' ')}; }

Cells NarrowCells(std::size_t length, std::string bytes) { return {length, false, std::move(bytes)}; }

std::size_t CountIn(const Cells &cells) { return cells.Record == 0 ? 0 : cells.Bytes.size() / cells.Record; }

Cells OccurrenceIn(const Cells &cells, const GroupMembers &members, std::size_t occurrence) {
    if (!cells.Wide) return {cells.Record, false, std::string(RecordIn(cells, occurrence))};
    const Texts texts = TextsOf(cells, members, occurrence);
    std::string record = FitsCodePage(texts) ? NarrowRecord(texts, members) : WideRecord(texts);
    return {record.size(), !FitsCodePage(texts), std::move(record)};
}

std::string_view MemberIn(const Cells &cells, const GroupMembers &members, std::size_t occurrence, std::size_t member,
                          std::string &room) {
    const std::string_view record = RecordIn(cells, occurrence);
    if (cells.Wide) return WideMember(record, member);
    const std::string_view bytes = record.substr(std::min(members[member].First, record.size()), members[member].Cells);
    if (IsAscii(bytes)) return bytes;
    room = ToUtf8(bytes);
    return room;
}

void PutMember(Cells &cells, const GroupMembers &members, std::size_t occurrence, std::size_t member,
               std::string_view text) {
    if (!cells.Wide && ::FitsCodePage(text)) {
        std::string bytes = FromUtf8(text);
        bytes.resize(members[member].Cells, ' ');
        cells.Bytes.replace(occurrence * cells.Record + members[member].First, bytes.size(), bytes);
        return;
    }
    Texts texts = TextsOf(cells, members, occurrence);
    texts[member] = WithoutBlanks(text);
    PutTexts(cells, members, occurrence, texts);
}

void AppendBlankOccurrence(Cells &cells, const GroupMembers &members) {
    std::string record(cells.Wide ? members.size() : 0, MemberEnd);
    record.resize(cells.Record, ' ');
    cells.Bytes += record;
}

void AppendCells(Cells &cells, const GroupMembers &members, const Cells &more) {
    if (!cells.Wide && !more.Wide) {
        cells.Bytes += more.Bytes;
        return;
    }
    Widen(cells, members, more.Record);
    Cells other = more;
    Widen(other, members, cells.Record);
    Widen(cells, members, other.Record); // its texts may have been longer than the cells before
    cells.Bytes += other.Bytes;
}

void PutOccurrence(Cells &cells, const GroupMembers &members, std::size_t occurrence, const Cells &one) {
    PutTexts(cells, members, occurrence, TextsOf(one, members, 0));
}

void Narrow(Cells &cells, const GroupMembers &members) {
    if (!cells.Wide) return;
    Cells narrow = BlankCells(LengthOf(members), 0);
    for (std::size_t k = 0; k < CountIn(cells); ++k) {
        const Texts texts = TextsOf(cells, members, k);
        if (!FitsCodePage(texts)) return;
        narrow.Bytes += NarrowRecord(texts, members);
    }
    cells = std::move(narrow);
}

void Tighten(Cells &cells, const GroupMembers &members) {
    Narrow(cells, members);
    if (!cells.Wide) return;
    const Cells loose = std::move(cells);
    cells = BlankCells(LengthOf(members), 0);
    for (std::size_t k = 0; k < CountIn(loose); ++k) AppendCells(cells, members, OccurrenceIn(loose, members, k));
}

void Widen(Cells &cells, const GroupMembers &members, std::size_t record) {
    if (cells.Wide && record <= cells.Record) return;
    std::vector<std::string> records;
    for (std::size_t k = 0; k < CountIn(cells); ++k) {
        records.push_back(WideRecord(TextsOf(cells, members, k)));
        record = std::max(record, records.back().size());
    }
    cells = {record, true, ""};
    for (std::string &bytes : records) {
        bytes.resize(record, ' ');
        cells.Bytes += bytes;
    }
}

bool IsBlank(const Cells &cells) {
    return cells.Bytes.find_first_not_of(cells.Wide ? std::string{' ', MemberEnd} : " ") == std::string::npos;
}
