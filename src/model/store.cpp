// Group stores as files (store.h).
#include "model/store.h"

#include "model/field_model.h"
#include "model/work_files.h"

#include <algorithm>

namespace {

// What WrittenStores and StoreChanges tell.
std::set<Integer> Written;
long Changes = 0;

Integer CountAt(std::string_view bytes, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(bytes[i])); };
    return static_cast<Integer>(static_cast<std::uint16_t>(byte(at) | (byte(at + 1) << 8)));
}

} // namespace

GroupCounts CountsIn(std::string_view header, Integer head) {
    GroupCounts counts;
    if (header.size() >= static_cast<std::size_t>(GroupHeader)) counts = {CountAt(header, 0), CountAt(header, 2)};
    if (counts.Items != LengthOf(head) || header.size() < static_cast<std::size_t>(GroupHeader))
        throw RuntimeError{InputPastEnd};
    if (counts.Occurrences < 0) throw RuntimeError{Overflow};
    return counts;
}

GroupCounts CountsOf(Integer head) {
    if (WorkFilesAreHeld()) return CountsIn(ReadWorkFile(GroupFileName(head)), head);
    BinaryFile file;
    file.Open(ResourceDir + GroupFileName(head));
    return CountsIn(file.Read(1, std::min<long>(file.Size(), GroupHeader)), head);
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
    const Integer length = LengthOf(head);
    const Integer count = length == 0 ? Integer{1} : ToInteger(occurrences.size() / static_cast<std::size_t>(length));
    if (WorkFilesAreHeld()) {
        HoldWorkFile(GroupFileName(head), GroupStoreHeader(length, count).append(occurrences));
    } else {
        BinaryFile rewritten;
        const auto writeAll = [&](OutputFile &file) {
            file.Write(GroupStoreHeader(length, count));
            file.Write(occurrences);
        };
        RewriteStoreFile(ResourceDir + GroupFileName(head), writeAll, rewritten);
    }
    NoteStoreChange(head);
    if (count == 1 && IsBlank(occurrences)) Written.erase(head);
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

void NoteStoreChange(Integer head) {
    Written.insert(head);
    ++Changes;
}

void ForgetStores() { Written.clear(); }

bool IsBlank(std::string_view cells) { return cells.find_first_not_of(' ') == std::string_view::npos; }
