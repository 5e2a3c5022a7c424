// quintave.tbl, the resource table: default template, start file and colour.
#pragma once

#include "platform/controls.h"
#include "platform/runtime.h"

#include <string>
#include <string_view>

inline constexpr std::string_view ResourceTableName = "quintave.tbl";

struct ResourceTable {
    std::string Kept;           // first item; nothing reads it
    std::string Template;       // trimmed; "" for none
    std::string Start;          // trimmed; "-1" for none
    Colour Back = DesignColour; // of the frames and the section path
};

// The table in a directory, its name in any letter case. False where it is not there or cannot be read.
bool ReadResourceTable(const std::string &directory, ResourceTable &table);
