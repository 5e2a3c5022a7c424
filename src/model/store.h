// The store of a group as a file: a header of two counts, then the occurrences, each as long as its members together.
// The store of the open group, which changes occurrence by occurrence: groups/open_store.h.
#pragma once

#include "platform/files.h"
#include "platform/runtime.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>

struct GroupCounts {
    Integer Items = 0; // bytes of one occurrence
    Integer Occurrences = 0;
};

// The counts in the header of a group's store; error 62 where it was cut short or belongs to another group, 6 where it
// counts more than 32,767 occurrences.
GroupCounts CountsIn(std::string_view header, Integer head);

// Those of a group's store, whose occurrences are left unread; error 53 where it is missing.
GroupCounts CountsOf(Integer head);

// The counts of a group's store and its occurrences, one string of at most Items x Occurrences bytes; those behind its
// end are blank. Error 53 where the store is missing; error 62 where its header does not belong to the group.
GroupCounts ReadStore(Integer head, std::string &occurrences);

// Puts occurrences in the place of a group's store; error 6 for more than 32,767.
void ReplaceStore(Integer head, std::string_view occurrences);

// Makes a store anew beside itself and puts it in its own place, so that a fault leaves it as it was. Gives the new
// file, open.
void RewriteStoreFile(const std::string &path, const std::function<void(OutputFile &)> &writeAll,
                      BinaryFile &rewritten);

// The groups whose stores were written since the template was loaded, but for those that are one blank occurrence, by
// the elements that start them; and how often their contents changed.
const std::set<Integer> &WrittenStores();
long StoreChanges();
void NoteStoreChange(Integer head);

// A template has come with stores of its own: none was written yet.
void ForgetStores();

// Only blanks: no value.
bool IsBlank(std::string_view cells);
