// The occurrences of a group in a report being read: built in memory, and put into the group's store when their block
// ends.
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>

// A load begins: no block is open, nothing was cut.
void StartBlocks();

// An occurrence marker. It goes on with the block of the same group or ends it and begins another. False where the
// group is unknown and the user stops the load.
bool BeginOccurrence(Integer level, const std::string &title);

// A block is open; the records go to an occurrence of the group that this element starts.
bool InOccurrence();
Integer OpenBlock();

// The records belong to an occurrence of a group that the template does not have.
bool SkipsOccurrence();

// Puts a value into the cells of a member of the occurrence being built.
void PlaceMember(Integer member, std::string_view value);

// Puts a block into its store: in the place of the stored occurrences, or behind them, as the user decided. A block
// without any value changes nothing.
void EndBlock();

// After a load: tells which values did not fit into their cells.
void TellCutMembers();
