// A group's store as the bytes it should hold.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

// The two counts at its start.
inline std::string StoreHeader(std::size_t items, std::size_t occurrences) {
    const auto low = [](std::size_t n) { return static_cast<char>(static_cast<unsigned char>(n & 0xFF)); };
    return {low(items), low(items >> 8), low(occurrences), low(occurrences >> 8)};
}

// Counts and occurrences, each padded with blanks to its length; bytes behind them.
inline std::string Store(std::size_t items, const std::vector<std::string> &occurrences,
                         const std::string &behind = "") {
    std::string bytes = StoreHeader(items, occurrences.size());
    for (std::string occurrence : occurrences) {
        occurrence.resize(items, ' ');
        bytes += occurrence;
    }
    return bytes + behind;
}
