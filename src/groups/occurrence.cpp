// Cells of the occurrence in hand (occurrence.h).
#include "groups/occurrence.h"

#include "model/field_model.h"

namespace {

std::size_t FirstCell(Integer row) { return static_cast<std::size_t>(GroupSlot[row][SlotFirstCell]); }

std::size_t CellCount(Integer row) { return static_cast<std::size_t>(FieldInfo[RowField[row]][KindItem]); }

} // namespace

std::string MemberText(Integer row) { return GroupItems.substr(FirstCell(row), CellCount(row)); }

std::string ItemsWith(Integer row, std::string_view text) {
    const std::size_t cells = CellCount(row);
    std::string items(text.substr(0, cells));
    if (text.size() > cells && items.ends_with('\r')) items.pop_back(); // half a line break
    items.resize(cells, ' ');
    return std::string(GroupItems).replace(FirstCell(row), cells, items);
}

void StoreMemberText(Integer row, std::string_view text) { GroupItems = ItemsWith(row, text); }
