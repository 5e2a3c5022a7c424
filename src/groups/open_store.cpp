// The store of the open group (open_store.h).
#include "groups/open_store.h"

#include "model/cells.h"
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

// How the file has its occurrences.
StoreLayout Layout;

// GroupItems() as the store has it.
Cells StoredItems;

constexpr long BlockBytes = 1L << 20; // copied at a time, so that the largest store needs no more memory than this

const GroupMembers &OpenMembers() { return Members(OpenHead); }

long PositionOf(long occurrence) {
    return occurrence * static_cast<long>(Layout.Record) + static_cast<long>(Layout.Bytes) + 1;
}

std::string HeaderBytes(Integer count) {
    StoreLayout header = Layout;
    header.Occurrences = count;
    return BytesOf(header);
}

// The loaded occurrence is this one, as the store has it.
void Hold(const Cells &items, Integer index) {
    GroupItems = items;
    StoredItems = items;
    GroupLoadedOccurrence = index;
}

Cells BlankItems() { return BlankCells(static_cast<std::size_t>(GroupItemCount)); }

// An occurrence as the file has it, or longer than its layout has room for.
std::string RecordOf(const Cells &items) {
    Cells record = items;
    if (Layout.Wide) Widen(record, OpenMembers(), Layout.Record);
    return record.Bytes;
}

Cells ItemsAt(long occurrence) {
    return OccurrenceIn(
        {Layout.Record, Layout.Wide, OpenFile.Read(PositionOf(occurrence), static_cast<long>(Layout.Record))},
        OpenMembers(), 0);
}

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
        file.Write(HeaderBytes(count));
        CopyRanges(file, {before});
        file.Write(between);
        CopyRanges(file, {behind, rest});
    };
    RewriteStoreFile(OpenPath, writeAll, rewritten);
    OpenFile.Swap(rewritten);
    GroupOccurrenceCount = count;
    NoteStoreChange(OpenHead);
}

// All occurrences as they are, and the loaded one as it shall be, in the layout that they need together.
void ChangeLayout(const Cells &items) {
    const long bytes = static_cast<long>(Layout.Record) * GroupOccurrenceCount;
    Cells all{Layout.Record, Layout.Wide, OpenFile.Read(PositionOf(0), bytes)};
    PutOccurrence(all, OpenMembers(), static_cast<std::size_t>(GroupLoadedOccurrence), items);
    Narrow(all, OpenMembers());
    const StoreLayout changed{Layout.Items, GroupOccurrenceCount, all.Wide, all.Record,
                              all.Wide ? LongestStoreHead : StoreLayout{}.Bytes};
    BinaryFile rewritten;
    const auto writeAll = [&](OutputFile &file) {
        file.Write(BytesOf(changed));
        file.Write(all.Bytes);
    };
    RewriteStoreFile(OpenPath, writeAll, rewritten);
    OpenFile.Swap(rewritten);
    Layout = changed;
}

// In the place of the loaded occurrence, and in hand once it is there.
void PutItems(const Cells &items) {
    NeedStore();
    const std::string record = RecordOf(items);
    const bool hasRoom = record.size() == Layout.Record && (Layout.Wide || !items.Wide);
    const bool mayBeNarrow = Layout.Wide && StoredItems.Wide && !items.Wide;
    if (hasRoom && !mayBeNarrow)
        OpenFile.Write(PositionOf(GroupLoadedOccurrence), record);
    else
        ChangeLayout(items);
    const Cells stored = StoredItems;
    Hold(items, GroupLoadedOccurrence);
    if (GroupItems != stored) NoteStoreChange(OpenHead);
}

} // namespace

void OpenStore(Integer head) {
    OpenPath = ResourceDir + GroupFileName(head);
    OpenHead = head;
    OpenFile.Open(OpenPath);
    Layout = LayoutIn(OpenFile.Read(1, std::min<long>(OpenFile.Size(), LongestStoreHead)), head);
    GroupItemCount = Layout.Items;
    GroupRecordLength = Layout.Items;
    GroupOccurrenceCount = std::max<Integer>(Layout.Occurrences, 1);
    if (Layout.Occurrences < 1) OpenFile.Write(1, HeaderBytes(GroupOccurrenceCount));
}

void CloseStore() { OpenFile.Close(); }

void WriteOccurrence() { PutItems(GroupItems); }

void BlankOccurrence() { PutItems(BlankItems()); }

void ReadOccurrence(Integer index) { Hold(ItemsAt(index), index); }

void AppendBlankOccurrence() {
    const Integer count = ToInteger(GroupOccurrenceCount + 1);
    NeedStore();
    OpenFile.Write(PositionOf(GroupOccurrenceCount), RecordOf(BlankItems()));
    OpenFile.Write(1, HeaderBytes(count));
    GroupOccurrenceCount = count;
    NoteStoreChange(OpenHead);
}

void InsertBlankOccurrence(Integer at) {
    const Integer count = ToInteger(GroupOccurrenceCount + 1);
    RewriteStore(count, {PositionOf(0), PositionOf(at)}, RecordOf(BlankItems()),
                 {PositionOf(at), PositionOf(count - 1)});
    Hold(BlankItems(), at);
}

void RemoveOccurrence(Integer at) {
    const Integer count = ToInteger(GroupOccurrenceCount - 1);
    // The one in hand from now on is read while nothing has changed yet: later it could not be put right.
    const Cells items = ItemsAt(at == 0 ? 1 : at - 1);
    const bool wide = StoredItems.Wide;
    RewriteStore(count, {PositionOf(0), PositionOf(at)}, "", {PositionOf(at + 1L), PositionOf(count + 1L)});
    Hold(items, std::max<Integer>(ToInteger(at - 1), 0));
    // The store is whole as it is: one that cannot be narrow now is at the next change.
    if (wide && !items.Wide) FaultOf([&] { ChangeLayout(items); });
}
