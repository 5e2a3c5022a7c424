// Stores of groups as tests write them down: bytes of Windows-1252, one for each cell.
#pragma once

#include "model/cells.h"
#include "model/store.h"

#include <string>

inline void PutStore(Integer head, std::string cells) {
    ReplaceStore(head, NarrowCells(static_cast<std::size_t>(LengthOf(head)), std::move(cells)));
}

inline std::string StoredCells(Integer head) {
    Cells cells;
    ReadStore(head, cells);
    return cells.Bytes;
}
