// A number that tells texts apart, so that damage to a file shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// The checksum of a text that comes in pieces. However it is divided, the same text gives the same number; a text that
// differs in one place gives another, and any other text does by all likelihood.
class Checksum {
public:
    Checksum &Add(std::string_view bytes);
    std::uint64_t Value() const;

private:
    std::uint64_t sum = 0xCBF29CE484222325; // anything but 0, which leading zeros would not change
    std::uint64_t word = 0;                 // the bytes that do not make a whole word yet
    std::size_t held = 0;                   // their number
    std::uint64_t length = 0;
};
