// The store of a group: a header of two counts, then the occurrences, each GroupRecordLength bytes.
#pragma once

#include "platform/runtime.h"

#include <set>
#include <string>
#include <string_view>

struct GroupCounts {
    Integer Items = 0; // bytes of one occurrence
    Integer Occurrences = 0;
};

// The sum of the lengths of a group's members, in bytes.
Integer GroupLength(Integer head);

// The counts of a group's store and its occurrences, one string of at most Items x Occurrences bytes; those behind its
// end are blank. Error 53 where the store is missing; error 62 where its header does not belong to the group.
GroupCounts ReadStore(Integer head, std::string &occurrences);

// Puts occurrences in the place of a group's store; error 6 for more than 32,767.
void ReplaceStore(Integer head, std::string_view occurrences);

// The groups whose stores were written since the template was loaded, but for those that are one blank occurrence, by
// the elements that start them; and how often their contents changed.
const std::set<Integer> &WrittenStores();
long StoreChanges();

// A template has come with stores of its own: none was written yet.
void ForgetStores();

// --- The store of the open group
// ----------------------------------------------------------------------------------------

void OpenStore(Integer head);
void CloseStore();

// Writes GroupItems() as the loaded occurrence. A store that somebody has deleted is made anew as it was, and error 53
// tells of it.
void WriteOccurrence();

// Makes the loaded occurrence blank, in the store and then in GroupItems().
void BlankOccurrence();

// Reads an occurrence into GroupItems(); it is the loaded one then.
void ReadOccurrence(Integer index);

// The commands on the set of occurrences. GroupOccurrenceCount follows once the store is whole again; after an error
// both are what they were. Error 6 for occurrence 32,768.
void AppendBlankOccurrence();
void InsertBlankOccurrence(Integer at); // what was there, and all behind it, moves one up; the new one is loaded
void RemoveOccurrence(Integer at); // all behind it moves one down, the one before is loaded; the file keeps its length
