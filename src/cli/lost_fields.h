// Which fields of the loaded template titles do not tell apart.
#pragma once

#include "platform/runtime.h"

#include <map>

// Each field, member and group whose record may be given to another element, and that element.
// A report leaves out what is empty, so that a record may stand below titles other than the template's: whatever may
// have been filled in before counts.
struct LostFields {
    std::map<Integer, Integer> Takers{};
    bool AllCompared = false; // false where the template is too large for that
};

LostFields FindLostFields();

// Each that has the title path of an earlier one, and that one; the levels may differ.
std::map<Integer, Integer> FindEqualPaths();
