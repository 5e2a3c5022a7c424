// Group stores as files (store.h).
#include "groups/store.h"

#include "model/field_model.h"
#include "model/work_files.h"
#include "platform/files.h"

#include <algorithm>
#include <vector>

namespace {

// The store of the open group, where it lies, and the element that starts the group; closed outside groups.
BinaryFile OpenFile;
std::string OpenPath;
Integer OpenHead = 0;

// GroupItems() as the store has it.
std::string StoredItems;

// What WrittenStores and StoreChanges tell.
std::set<Integer> Written;
long Changes = 0;

void NoteChange(Integer head) {
    Written.insert(head);
    ++Changes;
}

constexpr long BlockBytes = 1L << 20; // copied at a time, so that the largest store needs no more memory than this

long PositionOf(long occurrence) { return occurrence * GroupRecordLength + GroupHeader + 1; }

Integer CountAt(std::string_view bytes, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(bytes[i])); };
    return static_cast<Integer>(static_cast<std::uint16_t>(byte(at) | (byte(at + 1) << 8)));
}

// The counts in a header; error 62 where it was cut short or belongs to another group.
GroupCounts CountsIn(std::string_view header, Integer head) {
    GroupCounts counts;
    if (header.size() >= static_cast<std::size_t>(GroupHeader)) counts = {CountAt(header, 0), CountAt(header, 2)};
    if (counts.Occurrences < 0 || counts.Items != GroupLength(head) ||
        header.size() < static_cast<std::size_t>(GroupHeader))
        throw RuntimeError{InputPastEnd};
    return counts;
}

// The loaded occurrence is this one, as the store has it.
void Hold(const std::string &items, Integer index) {
    GroupItems = " " + items;
    StoredItems = GroupItems;
    GroupLoadedOccurrence = index;
}

std::string BlankRecord() { return std::string(static_cast<std::size_t>(GroupRecordLength), ' '); }

// Bytes of the store from a position up to, not including, another.
struct Range {
    long First;
    long End;
};

void CopyRanges(OutputFile &file, const std::vector<Range> &ranges) {
    for (Range range : ranges)
        for (; range.First < range.End; range.First += BlockBytes)
            file.Write(OpenFile.Read(range.First, std::min(BlockBytes, range.End - range.First)));
}

// Makes a store anew beside itself and puts it in its own place, so that a fault leaves it as it was. What was written
// by then goes again: on a full disk it would be in the way of everything else. Gives the new file, open.
template <class WriteAll> void Rewrite(const std::string &path, const WriteAll &writeAll, BinaryFile &rewritten) {
    const std::string staged = StagedName(path);
    try {
        OutputFile file(staged, OutputFile::Access::Own);
        writeAll(file);
        file.Close(false);
        rewritten.Open(staged); // before it takes the name: behind that nothing may fail any more
        RenameFile(staged, path);
    } catch (const RuntimeError &) {
        TryToDelete(staged);
        throw;
    }
}

// Somebody deleted the store, or put another file in its place: what was read and written until now is made anew from
// the file that is still open.
void NeedStore() {
    if (OpenFile.IsAt(OpenPath)) return;
    BinaryFile rewritten;
    Rewrite(
        OpenPath,
        [](OutputFile &file) {
            CopyRanges(file, {{1, PositionOf(GroupOccurrenceCount)}});
        },
        rewritten);
    OpenFile.Swap(rewritten);
    throw RuntimeError{FileNotFound};
}

void RewriteStore(Integer count, const std::vector<Range> &before, std::string_view between,
                  const std::vector<Range> &behind) {
    NeedStore();
    BinaryFile rewritten;
    const auto writeAll = [&](OutputFile &file) {
        file.Write(GroupStoreHeader(GroupItemCount, count));
        CopyRanges(file, before);
        file.Write(between);
        CopyRanges(file, behind);
    };
    Rewrite(OpenPath, writeAll, rewritten);
    OpenFile.Swap(rewritten);
    GroupOccurrenceCount = count;
    NoteChange(OpenHead);
}

// In the place of the loaded occurrence, and in hand once it is there.
void PutOccurrence(const std::string &items) {
    NeedStore();
    OpenFile.Write(PositionOf(GroupLoadedOccurrence), items);
    const std::string stored = StoredItems;
    Hold(items, GroupLoadedOccurrence);
    if (GroupItems != stored) NoteChange(OpenHead);
}

} // namespace

Integer GroupLength(Integer head) {
    Integer length = 0;
    const Integer end = GroupEnd(head);
    for (Integer e = ToInteger(head + 1); e < end; ++e)
        if (HasValue(e)) length = ToInteger(length + FieldInfo[e][KindItem]);
    return length;
}

GroupCounts ReadStore(Integer head, std::string &occurrences) {
    occurrences = ReadWorkFile(GroupFileName(head));
    const GroupCounts counts = CountsIn(occurrences, head);
    occurrences.erase(0, static_cast<std::size_t>(GroupHeader));
    const auto items = static_cast<std::size_t>(counts.Items);
    const std::size_t whole = items * static_cast<std::size_t>(counts.Occurrences);
    if (occurrences.size() > whole) occurrences.resize(whole);
    // A file of four bytes can count a thousand million of them: what is missing is never made up.
    if (items > 0) occurrences.resize((occurrences.size() + items - 1) / items * items, ' ');
    return counts;
}

void ReplaceStore(Integer head, std::string_view occurrences) {
    const Integer length = GroupLength(head);
    const Integer count = length == 0 ? Integer{1} : ToInteger(occurrences.size() / static_cast<std::size_t>(length));
    if (WorkFilesAreHeld()) {
        HoldWorkFile(GroupFileName(head), GroupStoreHeader(length, count).append(occurrences));
    } else {
        BinaryFile rewritten;
        const auto writeAll = [&](OutputFile &file) {
            file.Write(GroupStoreHeader(length, count));
            file.Write(occurrences);
        };
        Rewrite(ResourceDir + GroupFileName(head), writeAll, rewritten);
    }
    NoteChange(head);
    if (count == 1 && occurrences.find_first_not_of(' ') == std::string_view::npos) Written.erase(head);
}

const std::set<Integer> &WrittenStores() { return Written; }

long StoreChanges() { return Changes; }

void ForgetStores() { Written.clear(); }

void OpenStore(Integer head) {
    OpenPath = ResourceDir + GroupFileName(head);
    OpenHead = head;
    OpenFile.Open(OpenPath);
    const GroupCounts counts = CountsIn(OpenFile.Read(1, std::min<long>(OpenFile.Size(), GroupHeader)), head);
    GroupItemCount = counts.Items;
    GroupRecordLength = counts.Items;
    GroupOccurrenceCount = std::max<Integer>(counts.Occurrences, 1);
    if (counts.Occurrences < 1) OpenFile.Write(1, GroupStoreHeader(GroupItemCount, GroupOccurrenceCount));
}

void CloseStore() { OpenFile.Close(); }

void WriteOccurrence() { PutOccurrence(GroupItems.substr(1)); }

void BlankOccurrence() { PutOccurrence(BlankRecord()); }

void ReadOccurrence(Integer index) { Hold(OpenFile.Read(PositionOf(index), GroupItemCount), index); }

void AppendBlankOccurrence() {
    const Integer count = ToInteger(GroupOccurrenceCount + 1);
    NeedStore();
    OpenFile.Write(PositionOf(GroupOccurrenceCount), BlankRecord());
    OpenFile.Write(1, GroupStoreHeader(GroupItemCount, count));
    GroupOccurrenceCount = count;
    NoteChange(OpenHead);
}

void InsertBlankOccurrence(Integer at) {
    const Integer count = ToInteger(GroupOccurrenceCount + 1);
    const long end = OpenFile.Size() + 1;
    RewriteStore(count, {{PositionOf(0), PositionOf(at)}}, BlankRecord(),
                 {{PositionOf(at), PositionOf(count - 1)}, {PositionOf(count), end}});
    Hold(BlankRecord(), at);
}

void RemoveOccurrence(Integer at) {
    const Integer count = ToInteger(GroupOccurrenceCount - 1);
    const long end = OpenFile.Size() + 1;
    // The one in hand from now on is read while nothing has changed yet: later it could not be put right.
    const std::string items = OpenFile.Read(PositionOf(at == 0 ? 1 : at - 1), GroupItemCount);
    RewriteStore(count, {{PositionOf(0), PositionOf(at)}}, "",
                 {{PositionOf(at + 1L), PositionOf(count + 1L)}, {PositionOf(count), end}});
    Hold(items, std::max<Integer>(ToInteger(at - 1), 0));
}
