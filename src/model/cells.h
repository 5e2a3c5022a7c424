// The text of a group's occurrences as its store has it: one occurrence after the other, each of the same number of
// bytes. Narrow, where all characters are in the code page: a byte for each character, members one behind the other.
// Wide: each member's text in UTF-8 and a byte that UTF-8 does not have; what is left of an occurrence is blank.
#pragma once

#include "model/field_model.h"
#include "platform/runtime.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

using GroupMembers = std::vector<Member>;

// That many blank occurrences of so many cells, narrow.
Cells BlankCells(std::size_t length, std::size_t count = 1);

// Occurrences from bytes of the code page, of so many cells each.
Cells NarrowCells(std::size_t length, std::string bytes);

std::size_t CountIn(const Cells &cells);

// One of the occurrences alone, in the shortest form that holds it.
Cells OccurrenceIn(const Cells &cells, const GroupMembers &members, std::size_t occurrence);

// The text of a member, none behind the last occurrence; blanks at its end are included where they are stored: in the
// cells themselves or, where it is not there as it stands, in room.
std::string_view MemberIn(const Cells &cells, const GroupMembers &members, std::size_t occurrence, std::size_t member,
                          std::string &room);

// Puts a text into a member's cells; it must fit into them.
void PutMember(Cells &cells, const GroupMembers &members, std::size_t occurrence, std::size_t member,
               std::string_view text);

void AppendBlankOccurrence(Cells &cells, const GroupMembers &members);

// Those of the same group behind those that are there.
void AppendCells(Cells &cells, const GroupMembers &members, const Cells &more);

// The first occurrence of one in the place of an occurrence of the other.
void PutOccurrence(Cells &cells, const GroupMembers &members, std::size_t occurrence, const Cells &one);

// Narrow again, where no character needs more.
void Narrow(Cells &cells, const GroupMembers &members);

// In the one form that all have whose texts are the same: narrow, or no longer than the longest occurrence.
void Tighten(Cells &cells, const GroupMembers &members);

// In a layout that has room for occurrences of so many bytes at least; wide.
void Widen(Cells &cells, const GroupMembers &members, std::size_t record);

// No value in any occurrence.
bool IsBlank(const Cells &cells);
