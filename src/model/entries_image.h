// The entries as values, and what one state of them has where another one differs: as much as has changed, however
// large the entries are.
#pragma once

#include "model/field_model.h"
#include "platform/runtime.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// One state of the entries. The chosen entries of lists follow from the values.
struct EntriesImage {
    Table<std::string> Rows;         // RowValue
    std::map<Integer, Cells> Stores; // the occurrences of groups, by the elements that start them

    bool operator==(const EntriesImage &) const = default;
};

// Where the occurrences of a group differ: bytes that stand there in the one state for some of the other.
struct StoreDifference {
    Integer Head = 0;
    std::size_t At = 0;
    std::string Bytes;
    std::size_t Others = 0; // the number of bytes that the other state has there
    std::size_t Record = 0; // layout of the one state
    bool Wide = false;
    std::size_t Occurrence = 0; // and its member that alone has another text;
    Integer Member = 0;         // 0 for more than one
};

struct EntriesDifference {
    std::vector<std::pair<Integer, std::string>> Rows; // in rising order
    std::vector<StoreDifference> Stores;

    bool IsEmpty() const { return Rows.empty() && Stores.empty(); }
};

// Brings what is known of the entries up to what they are now, and keeps what it was before. Of one store in one
// difference once.
void TakeRows(EntriesImage &known, const Table<std::string> &now, EntriesDifference &former);
void TakeStore(EntriesImage &known, Integer head, const Cells &now, EntriesDifference &former);

// The same for so many bytes of a store, which keeps its layout.
void TakePart(EntriesImage &known, Integer head, std::size_t at, std::size_t count, std::string_view now,
              EntriesDifference &former);

// Exchanges a state's parts with those of the difference: the state is the other one then, and the difference leads
// back.
void Exchange(EntriesImage &state, EntriesDifference &difference);
