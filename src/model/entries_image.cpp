// States of the entries as values (entries_image.h).
#include "model/entries_image.h"

#include <algorithm>
#include <iterator>

namespace {

// Where one text differs from another: the bytes that are gone from the first one there, and those put in their place.
struct Place {
    std::size_t At, Gone, Put;
};

Place PlaceOf(std::string_view before, std::string_view now) {
    const auto [b, n] = std::mismatch(before.begin(), before.end(), now.begin(), now.end());
    const auto [rb, rn] =
        std::mismatch(before.rbegin(), std::reverse_iterator(b), now.rbegin(), std::reverse_iterator(n));
    return {static_cast<std::size_t>(b - before.begin()), static_cast<std::size_t>(rb.base() - b),
            static_cast<std::size_t>(rn.base() - n)};
}

} // namespace

void TakeRows(EntriesImage &known, const Table<std::string> &now, EntriesDifference &former) {
    if (known.Rows == now) return;
    for (int i = 0; i <= now.UpperBound(); ++i) {
        const auto row = static_cast<Integer>(i);
        if (known.Rows[row] == now[row]) continue;
        former.Rows.emplace_back(row, std::exchange(known.Rows[row], now[row]));
    }
}

void TakeStore(EntriesImage &known, Integer head, const Cells &now, EntriesDifference &former) {
    Cells &store = known.Stores[head];
    if (store == now) return;
    const Place place = PlaceOf(store.Bytes, now.Bytes);
    former.Stores.push_back(
        {head, place.At, store.Bytes.substr(place.At, place.Gone), place.Put, store.Record, store.Wide});
    store.Bytes.replace(place.At, place.Gone, now.Bytes, place.At, place.Put);
    store.Record = now.Record;
    store.Wide = now.Wide;
}

void TakePart(EntriesImage &known, Integer head, std::size_t at, std::size_t count, std::string_view now,
              EntriesDifference &former) {
    Cells &store = known.Stores[head];
    const std::string_view before = std::string_view(store.Bytes).substr(at, count);
    if (before == now) return;
    const Place place = PlaceOf(before, now);
    former.Stores.push_back(
        {head, at + place.At, std::string(before.substr(place.At, place.Gone)), place.Put, store.Record, store.Wide});
    store.Bytes.replace(at + place.At, place.Gone, now.substr(place.At, place.Put));
}

void Exchange(EntriesImage &state, EntriesDifference &difference) {
    for (auto &[row, value] : difference.Rows) std::swap(state.Rows[row], value);
    for (StoreDifference &part : difference.Stores) {
        Cells &store = state.Stores[part.Head];
        std::string others = store.Bytes.substr(part.At, part.Others);
        store.Bytes.replace(part.At, part.Others, part.Bytes);
        part.Others = part.Bytes.size();
        part.Bytes = std::move(others);
        std::swap(store.Record, part.Record);
        std::swap(store.Wide, part.Wide);
    }
}
