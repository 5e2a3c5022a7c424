// Commands on the occurrences of the open group: insert, delete, jump by number.
#pragma once

#include "platform/runtime.h"

void TblFldInsert_Click();
void TblFldDelete_Click();

void TblFldNum_Click();
void TblFldNum_GotFocus();
void TblFldNum_LostFocus();
void TblFldNum_KeyDown(Integer Index, Integer &KeyCode, Integer Shift);
