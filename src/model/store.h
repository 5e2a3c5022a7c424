// The store of a group as a file: a header, then the occurrences (cells.h). The header is two counts of 16 bits, the
// low byte first: the cells of an occurrence and the occurrences. Of a wide store the first one is negative, and the
// bytes of an occurrence follow in 32 bits. The store of the open group, which changes occurrence by occurrence:
// groups/open_store.h.
#pragma once

#include "model/field_model.h"
#include "platform/files.h"
#include "platform/runtime.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

struct StoreLayout {
    Integer Items = 0; // cells of one occurrence
    Integer Occurrences = 0;
    bool Wide = false;
    std::size_t Record = 0; // bytes of one occurrence
    std::size_t Bytes = 4;  // of the header itself
};

inline constexpr std::size_t LongestStoreHead = 8;

// The header at the start of a group's store; error 62 where it was cut short or belongs to another group, 6 where it
// counts more than 32,767 occurrences.
StoreLayout LayoutIn(std::string_view bytes, Integer head);

std::string BytesOf(const StoreLayout &header);

// That of a group's store, whose occurrences are left unread; error 53 where it is missing.
StoreLayout LayoutOf(Integer head);

// The header of a group's store and its occurrences, no more than it counts; those that the file breaks off in are
// blank behind its end. Error 53 where the store is missing; error 62 where its header does not belong to the group.
StoreLayout ReadStore(Integer head, Cells &occurrences);

// Puts occurrences in the place of a group's store; error 6 for more than 32,767.
void ReplaceStore(Integer head, Cells occurrences);

// The same for several stores, where work files are files. All of them are written before the first takes its place, so
// that a full disk leaves them as they were.
void ReplaceStores(const std::map<Integer, Cells> &stores);

// Makes a store anew beside itself and puts it in its own place, so that a fault leaves it as it was. Gives the new
// file, open.
void RewriteStoreFile(const std::string &path, const std::function<void(OutputFile &)> &writeAll,
                      BinaryFile &rewritten);

// The groups whose stores were written since the template was loaded, but for those that are one blank occurrence, by
// the elements that start them; how often their contents changed, and whether that of one has since there were so many
// changes.
const std::set<Integer> &WrittenStores();
long StoreChanges();
bool StoreHasChangedSince(long changes, Integer head);
void NoteStoreChange(Integer head);

// A template has come with stores of its own: none was written yet.
void ForgetStores();

// Only blanks: no value.
bool IsBlank(std::string_view text);
