// The checksum (checksum.h): eight bytes at a time, for files of many megabytes.
#include "platform/checksum.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t WordSize = sizeof(std::uint64_t);

// Each step can be undone, so a difference never gets lost: the odd factor spreads it upwards, the shift downwards.
std::uint64_t Mixed(std::uint64_t sum, std::uint64_t word) {
    constexpr std::uint64_t Factor = 0x9E3779B97F4A7C15;
    sum = (sum ^ word) * Factor;
    return sum ^ (sum >> 32);
}

} // namespace

Checksum &Checksum::Add(std::string_view bytes) {
    length += bytes.size();
    while (!bytes.empty()) {
        for (; held == 0 && bytes.size() >= WordSize; bytes.remove_prefix(WordSize)) {
            std::uint64_t whole = 0;
            std::memcpy(&whole, bytes.data(), WordSize);
            sum = Mixed(sum, whole);
        }
        const std::size_t count = std::min(WordSize - held, bytes.size());
        std::memcpy(reinterpret_cast<char *>(&word) + held, bytes.data(), count);
        bytes.remove_prefix(count);
        held += count;
        if (held < WordSize) break;
        sum = Mixed(sum, word);
        word = 0;
        held = 0;
    }
    return *this;
}

std::uint64_t Checksum::Value() const { return Mixed(Mixed(sum, word), length); }
