// Cells of the occurrence in hand (occurrence.h).
#include "groups/occurrence.h"

#include "model/cells.h"
#include "model/field_model.h"
#include "platform/characters.h"

namespace {

const GroupMembers &MembersOf(Integer row) { return Members(FieldGroup[RowField[row]]); }

std::size_t CellCount(Integer row) { return static_cast<std::size_t>(LengthOf(RowField[row])); }

} // namespace

std::string MemberText(Integer row) {
    std::string room;
    return std::string(MemberIn(GroupItems, MembersOf(row), 0, static_cast<std::size_t>(row), room));
}

Cells ItemsWith(Integer row, std::string_view text) {
    std::string_view fitting = FirstCharacters(text, CellCount(row));
    if (fitting.size() < text.size() && fitting.ends_with('\r')) fitting.remove_suffix(1); // half a line break
    Cells items = GroupItems;
    PutMember(items, MembersOf(row), 0, static_cast<std::size_t>(row), fitting);
    return OccurrenceIn(items, MembersOf(row), 0);
}

void StoreMemberText(Integer row, std::string_view text) { GroupItems = ItemsWith(row, text); }
