// The occurrence in hand: the cells of its members in GroupItems().
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>

// The cells of the member on a row of the open group's list, blanks at the end included.
std::string MemberText(Integer row);

// Puts a text into the member's cells, cut to their number, the rest blanks.
void StoreMemberText(Integer row, std::string_view text);

// GroupItems() as that would leave it.
std::string ItemsWith(Integer row, std::string_view text);
