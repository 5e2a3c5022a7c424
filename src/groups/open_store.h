// The store of the open group, read and changed occurrence by occurrence. Stores as files: model/store.h.
#pragma once

#include "platform/runtime.h"

void OpenStore(Integer head);
void CloseStore();

// Writes GroupItems() as the loaded occurrence. This and the commands below make a store that somebody has deleted
// anew; error 53 tells once of another file that was put in its place.
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
