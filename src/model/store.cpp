// Group stores as files (store.h).
#include "model/store.h"

#include "model/cells.h"
#include "model/field_model.h"
#include "model/work_files.h"

#include <algorithm>

namespace {

// What WrittenStores and StoreChanges tell.
std::set<Integer> Written;
long Changes = 0;

// By the element that starts a group: what Changes was once its store had changed.
std::map<Integer, long> LastChange;

std::uint32_t NumberAt(std::string_view bytes, std::size_t at, int length) {
    std::uint32_t number = 0;
    for (int i = length; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    return number;
}

Integer CountAt(std::string_view bytes, std::size_t at) {
    return static_cast<Integer>(static_cast<std::uint16_t>(NumberAt(bytes, at, 2)));
}

constexpr std::size_t CountBytes = 4; // of the two counts

} // namespace

StoreLayout LayoutIn(std::string_view bytes, Integer head) {
    if (bytes.size() < CountBytes) throw RuntimeError{InputPastEnd};
    StoreLayout header{CountAt(bytes, 0), CountAt(bytes, 2)};
    header.Wide = header.Items < 0;
    if (header.Wide) {
        if (bytes.size() < LongestStoreHead || header.Items < -INT16_MAX) throw RuntimeError{InputPastEnd};
        header.Items = static_cast<Integer>(-header.Items);
        header.Record = NumberAt(bytes, CountBytes, 4);
        header.Bytes = LongestStoreHead;
    } else {
        header.Record = static_cast<std::size_t>(header.Items);
    }
    if (header.Items != LengthOf(head) || header.Record < Members(head).size()) throw RuntimeError{InputPastEnd};
    if (header.Occurrences < 0) throw RuntimeError{Overflow};
    return header;
}

std::string BytesOf(const StoreLayout &header) {
    std::string bytes =
        GroupStoreHeader(header.Wide ? static_cast<Integer>(-header.Items) : header.Items, header.Occurrences);
    for (std::size_t i = 0; header.Wide && i < CountBytes; ++i)
        bytes += static_cast<char>(static_cast<unsigned char>(header.Record >> (8 * i) & 0xFF));
    return bytes;
}

StoreLayout LayoutOf(Integer head) {
    if (WorkFilesAreHeld()) return LayoutIn(ReadWorkFile(GroupFileName(head)), head);
    BinaryFile file;
    file.Open(ResourceDir + GroupFileName(head));
    return LayoutIn(file.Read(1, std::min<long>(file.Size(), LongestStoreHead)), head);
}

StoreLayout ReadStore(Integer head, Cells &occurrences) {
    std::string bytes = ReadWorkFile(GroupFileName(head));
    const StoreLayout header = LayoutIn(bytes, head);
    bytes.erase(0, header.Bytes);
    const std::size_t whole = header.Record * static_cast<std::size_t>(header.Occurrences);
    if (bytes.size() > whole) bytes.resize(whole);
    // A file of four bytes can count a thousand million of them: what is missing is never made up.
    if (header.Record > 0) bytes.resize((bytes.size() + header.Record - 1) / header.Record * header.Record, ' ');
    occurrences = {header.Record, header.Wide, std::move(bytes)};
    return header;
}

namespace {

std::string HeaderFor(Integer head, const Cells &occurrences) {
    const Integer length = LengthOf(head);
    const Integer count = length == 0 ? Integer{1} : ToInteger(CountIn(occurrences));
    return BytesOf({length, count, occurrences.Wide, occurrences.Record});
}

// Its contents are these from now on.
void NoteReplaced(Integer head, const Cells &occurrences) {
    NoteStoreChange(head);
    if (CountIn(occurrences) <= 1 && IsBlank(occurrences)) Written.erase(head);
}

void StageStore(Integer head, const Cells &occurrences) {
    OutputFile file(ResourceDir + StagedName(GroupFileName(head)), OutputFile::Access::Own);
    file.Write(HeaderFor(head, occurrences));
    file.Write(occurrences.Bytes);
    file.Close(false);
}

} // namespace

void ReplaceStore(Integer head, Cells occurrences) {
    Narrow(occurrences, Members(head));
    const std::string header = HeaderFor(head, occurrences);
    if (WorkFilesAreHeld()) {
        HoldWorkFile(GroupFileName(head), header + occurrences.Bytes);
    } else {
        BinaryFile rewritten;
        const auto writeAll = [&](OutputFile &file) {
            file.Write(header);
            file.Write(occurrences.Bytes);
        };
        RewriteStoreFile(ResourceDir + GroupFileName(head), writeAll, rewritten);
    }
    NoteReplaced(head, occurrences);
}

void ReplaceStores(const std::map<Integer, Cells> &stores) {
    const auto pathOf = [](Integer head) { return ResourceDir + GroupFileName(head); };
    try {
        for (const auto &[head, occurrences] : stores) StageStore(head, occurrences);
        for (const auto &[head, occurrences] : stores) {
            RenameFile(StagedName(pathOf(head)), pathOf(head));
            NoteReplaced(head, occurrences);
        }
    } catch (const RuntimeError &) {
        for (const auto &[head, occurrences] : stores) TryToDelete(StagedName(pathOf(head)));
        throw;
    }
}

// What was written by the time of a fault goes again: on a full disk it would be in the way of everything else.
void RewriteStoreFile(const std::string &path, const std::function<void(OutputFile &)> &writeAll,
                      BinaryFile &rewritten) {
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

const std::set<Integer> &WrittenStores() { return Written; }

long StoreChanges() { return Changes; }

bool StoreHasChangedSince(long changes, Integer head) {
    const auto found = LastChange.find(head);
    return found != LastChange.end() && found->second > changes;
}

void NoteStoreChange(Integer head) {
    Written.insert(head);
    LastChange[head] = ++Changes;
}

void ForgetStores() {
    Written.clear();
    LastChange.clear();
}

bool IsBlank(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }
