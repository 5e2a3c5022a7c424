// The store of the open group (open_store.h).
#include "groups/open_store.h"

#include "model/field_model.h"
#include "model/store.h"
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

constexpr long BlockBytes = 1L << 20; // copied at a time, so that the largest store needs no more memory than this

long PositionOf(long occurrence) { return occurrence * GroupRecordLength + GroupHeader + 1; }

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

// Somebody deleted the store, with its directory even, or put another file in its place, which is told: what was read
// and written until now is made anew from the file that is still open.
void NeedStore() {
    if (OpenFile.IsAt(OpenPath)) return;
    const bool replaced = NameTaken(OpenPath);
    MakeDirectory(ResourceDir);
    BinaryFile rewritten;
    RewriteStoreFile(
        OpenPath,
        [](OutputFile &file) {
            CopyRanges(file, {{1, PositionOf(GroupOccurrenceCount)}});
        },
        rewritten);
    OpenFile.Swap(rewritten);
    if (replaced) throw RuntimeError{FileNotFound};
}

// What lies behind that many occurrences stays where it is.
void RewriteStore(Integer count, Range before, std::string_view between, Range behind) {
    NeedStore();
    const Range rest{PositionOf(count), OpenFile.Size() + 1};
    BinaryFile rewritten;
    const auto writeAll = [&](OutputFile &file) {
        file.Write(GroupStoreHeader(GroupItemCount, count));
        CopyRanges(file, {before});
        file.Write(between);
        CopyRanges(file, {behind, rest});
    };
    RewriteStoreFile(OpenPath, writeAll, rewritten);
    OpenFile.Swap(rewritten);
    GroupOccurrenceCount = count;
    NoteStoreChange(OpenHead);
}

// In the place of the loaded occurrence, and in hand once it is there.
void PutOccurrence(const std::string &items) {
    NeedStore();
    OpenFile.Write(PositionOf(GroupLoadedOccurrence), items);
    const std::string stored = StoredItems;
    Hold(items, GroupLoadedOccurrence);
    if (GroupItems != stored) NoteStoreChange(OpenHead);
}

} // namespace

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
    NoteStoreChange(OpenHead);
}

void InsertBlankOccurrence(Integer at) {
    const Integer count = ToInteger(GroupOccurrenceCount + 1);
    RewriteStore(count, {PositionOf(0), PositionOf(at)}, BlankRecord(), {PositionOf(at), PositionOf(count - 1)});
    Hold(BlankRecord(), at);
}

void RemoveOccurrence(Integer at) {
    const Integer count = ToInteger(GroupOccurrenceCount - 1);
    // The one in hand from now on is read while nothing has changed yet: later it could not be put right.
    const std::string items = OpenFile.Read(PositionOf(at == 0 ? 1 : at - 1), GroupItemCount);
    RewriteStore(count, {PositionOf(0), PositionOf(at)}, "", {PositionOf(at + 1L), PositionOf(count + 1L)});
    Hold(items, std::max<Integer>(ToInteger(at - 1), 0));
}
