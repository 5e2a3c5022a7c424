// The occurrence in hand: the cells of its members in GroupItems().
#pragma once

#include "model/field_model.h"
#include "platform/runtime.h"

#include <string>
#include <string_view>

// The text of the member on a row of the open group's list, with or without the blanks at its end.
std::string MemberText(Integer row);

// Puts a text into the member's cells, cut to their number, the rest blanks.
void StoreMemberText(Integer row, std::string_view text);

// GroupItems() as that would leave it.
Cells ItemsWith(Integer row, std::string_view text);
