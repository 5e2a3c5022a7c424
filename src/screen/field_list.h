// The events of the field list and of the list of an open group (List1).
#pragma once

#include "platform/runtime.h"

#include <string_view>

void List1_GotFocus(Integer Index);
void List1_LostFocus(Integer Index);
void List1_Click(Integer Index);
void List1_DblClick(Integer Index);
void List1_KeyDown(Integer Index, Integer &KeyCode, Integer Shift);
void List1_ForeignKey(std::string_view Character);
void List1_KeyPress(Integer Index, Integer &KeyAscii);
